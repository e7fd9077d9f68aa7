#pragma once

#include "canopen/EdsFinding.h"
#include "importers/ImporterTest.h"

/** One import of a device description into the staging line of a project, and what came of it. */
template <typename Importer>
class DescriptionImport
{
public:
    using Object = ObjectDataBase::INDEX_DATA_T;
    using Sub = ObjectDataBase::SUBINDEX_DATA_T;

    Importer importer;
    QSharedPointer<ObjectDataBase> store = ImporterTest::newStore();
    QStringList errors;
    QStringList findings; ///< "line: text"

    DescriptionImport()
    {
        importer.setDatabase(store);
        importer.setRange(0x1000, 0xFFFF);
        store->setDescriptionLine(ImporterTest::staging);
    }

    /** False when the import never ended, or told its end in a wrong way. */
    bool file(const QString &path)
    {
        const ImporterTest::Recorder recorder(importer);
        const ImporterTest::DebugLines lines;
        if (!importer.setFile(path) || !ImporterTest::run(importer)
            || !QTest::qWaitFor([&] { return recorder.ends == 1; }, ImporterTest::waitMs))
            return false;
        errors = recorder.errors;
        log = ImporterTest::DebugLines::all();
        findings.clear();
        const QList<EdsFinding> &found = importer.findings();
        for (const EdsFinding &finding : found)
            findings.append(QStringLiteral("%1: %2").arg(finding.line).arg(finding.text));
        return recorder.percents.last() == 100
            && importer.importedObjects().size() == recorder.objects.size();
    }

    bool bytes(const QByteArray &content)
    {
        const QString path = m_folder.filePath(QStringLiteral("device"));
        return ImporterTest::write(path, content) && file(path);
    }

    QStringList rows() const { return ImporterTest::rows(*store, ImporterTest::staging); }
    Object object(int index) const
    {
        return ImporterTest::object(*store, ImporterTest::staging, quint16(index));
    }
    Sub sub(int index, int subIndex) const
    {
        return ImporterTest::sub(*store, ImporterTest::staging, quint16(index), quint8(subIndex));
    }
    QString setting(const char *key) const { return store->getDescriptionSetting(QString::fromLatin1(key)); }
    /** "name | type | access | value | low..high | mapping"; limits only where the file gives them. */
    QString summary(int index, int subIndex) const
    {
        const Sub row = sub(index, subIndex);
        const QString limits = row.limitineds ? row.lowlimit + QStringLiteral("..") + row.uplimit : QString();
        return QStringList{row.name,       QString::number(row.datatype),
                           row.accesstype, row.defaultvalue,
                           limits,         QString::number(row.pdomapping.toUInt())}
            .join(QStringLiteral(" | "));
    }

    QStringList log;

private:
    QTemporaryDir m_folder;
};
