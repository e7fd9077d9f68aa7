#pragma once

#include "canopen/CANopenTypes.h"
#include "importers/DeviceDescriptionImporter.h"

#include <QCoreApplication>
#include <QSharedPointer>
#include <QStandardPaths>
#include <QTemporaryFile>

#include <cstdlib>

/** What the fuzz programs of the importers of device descriptions share. */
namespace FuzzImport {

inline void require(bool condition)
{
    if (!condition)
        std::abort();
}

/** One store for the whole run, as making one costs more than an import. */
inline const QSharedPointer<ObjectDataBase> &store()
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
    static const QSharedPointer<ObjectDataBase> store = [] {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        QStandardPaths::setTestModeEnabled(true);
        auto made = QSharedPointer<ObjectDataBase>::create();
        require(made->createNewDataBase());
        return made;
    }();
    return store;
}

inline void checkRows(ObjectDataBase &project, quint16 index)
{
    const QList<quint8> subs = project.getSubIndexList(0, index);
    ObjectDataBase::INDEX_DATA_T object;
    require(project.getIndex(0, index, object));
    const bool structured = object.objecttype == CANopen::Array || object.objecttype == CANopen::Record;
    require(!structured || subs.isEmpty() || subs.constFirst() == 0
            || (subs.size() == 1 && subs.constFirst() == 0xFF));
    for (const quint8 sub : subs) {
        ObjectDataBase::SUBINDEX_DATA_T row;
        require(project.getSubIndex(0, index, sub, row) && !row.accesstype.isEmpty());
    }
}

/** Imports the bytes as a file into an empty line, and aborts where the result contradicts itself. */
inline void run(DeviceDescriptionImporter &importer, const uchar *data, size_t size)
{
    const QSharedPointer<ObjectDataBase> &project = store();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    QTemporaryFile file;
    require(file.open() && file.write(bytes) == bytes.size() && file.flush());
    importer.setDatabase(project);
    importer.setLine(0);
    importer.setRange(0x1000, 0xFFFF);
    require(importer.setFile(file.fileName()));
    importer.doImport();

    const QList<quint16> indices = project->getIndexList(0, 0x1000);
    require(indices == importer.importedObjects().keys());
    const QList<EdsFinding> &findings = importer.findings();
    for (const EdsFinding &finding : findings)
        require(finding.line >= 0 && !finding.text.isEmpty());
    for (const quint16 index : indices) {
        checkRows(*project, index);
        project->removeIndex(0, index);
    }
    // Numbers of PDOs would go on to the next file.
    for (const char *key : {"NrOfRXPDO", "NrOfTXPDO"})
        project->setDescriptionSetting(QString::fromLatin1(key), QStringLiteral("0"));
    project->removeUnusedStrings();
}

} // namespace FuzzImport
