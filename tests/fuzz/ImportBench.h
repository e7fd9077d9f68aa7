#pragma once

#include "importers/BaseDataImporter.h"

#include <QCoreApplication>
#include <QFile>
#include <QSharedPointer>
#include <QTemporaryDir>

#include <cstdlib>

/** Feeds importers with any bytes as a file, in the thread of the fuzzer. */
class ImportBench
{
public:
    static constexpr quint8 line = 0;
    static constexpr quint16 firstIndex = 0x1000;

    static ImportBench &instance()
    {
        static int argc = 1;
        static char name[] = "fuzz";
        static char *argv[] = {name, nullptr};
        static const QCoreApplication application(argc, argv);
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        static ImportBench bench;
        return bench;
    }

    /** Reads the bytes into an empty line and checks what every importer promises. */
    void run(BaseDataImporter &importer, const uchar *data, size_t size)
    {
        prepareStore();
        int percent = -1;
        QObject::connect(&importer, &BaseDataImporter::progress, &importer, [&percent](quint8 value) {
            require(value > percent && value <= 100);
            percent = value;
        });
        importer.setDatabase(m_store);
        importer.setLine(line);
        importer.setRange(firstIndex, 0xFFFF);
        require(writeFile(data, size) && importer.setFile(m_file));
        importer.doImport();
        require(percent == 100 && !importer.isBusy() && !m_store->isWriteLocked());
        const QList<quint16> indices = m_store->getIndexList(line);
        require(importer.importedObjects().keys() == indices);
        require(indices.isEmpty() || indices.constFirst() >= firstIndex);
    }

    ObjectDataBase &store() { return *m_store; }

    static void require(bool condition)
    {
        if (!condition)
            std::abort();
    }

private:
    // Qt's list of connections must be there first, as it must outlive the store.
    ImportBench() { prepareStore(); }

    // A new store now and then: texts stay in the string pool of an old one.
    void prepareStore()
    {
        constexpr int runsPerStore = 500;
        if (m_runs++ % runsPerStore == 0) {
            m_store.reset(new ObjectDataBase);
            require(m_store->createNewDataBase());
        }
        for (const QString &table : {QStringLiteral("Objects%1"), QStringLiteral("SubObjects%1")})
            require(m_store->executeSql(QStringLiteral("delete from ") + table.arg(line)));
        // Numbers of PDOs would go on to the next file.
        for (const QString &key : {QStringLiteral("NrOfRXPDO"), QStringLiteral("NrOfTXPDO")})
            require(m_store->setDescriptionSetting(key, QStringLiteral("0")));
    }

    bool writeFile(const uchar *data, size_t size)
    {
        QFile file(m_file);
        return file.open(QIODevice::WriteOnly)
            && file.write(reinterpret_cast<const char *>(data), qint64(size)) == qint64(size);
    }

    QTemporaryDir m_folder;
    QString m_file = m_folder.filePath(QStringLiteral("input"));
    QSharedPointer<ObjectDataBase> m_store;
    int m_runs = 0;
};
