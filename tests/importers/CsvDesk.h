#pragma once

#include "importers/CsvImporter.h"
#include "importers/ImporterTest.h"

/** A table of objects read into the staging line of a new project, and what the import told. */
class CsvDesk
{
public:
    static constexpr quint8 line = ImporterTest::staging;

    CsvDesk() : m_store(ImporterTest::newStore()) { m_importer.setDatabase(m_store); }

    bool importBytes(const QByteArray &content)
    {
        return ImporterTest::write(path(), content) && importFile(path());
    }

    /** True when the read came to its end with 100 percent. */
    bool importFile(const QString &file)
    {
        const ImporterTest::DebugLines lines;
        m_errors.clear();
        m_newObjects.clear();
        m_percent = 0;
        QObject context;
        listen(context);
        if (!m_importer.setFile(file) || !ImporterTest::run(m_importer))
            return false;
        const bool ended = QTest::qWaitFor([this] { return m_percent == 100; }, ImporterTest::waitMs);
        m_log = ImporterTest::DebugLines::all();
        return ended;
    }

    QString path() const { return m_folder.filePath(QStringLiteral("table.csv")); }
    CsvImporter &importer() { return m_importer; }
    ObjectDataBase &store() { return *m_store; }
    ObjectDataBase::SUBINDEX_DATA_T sub(quint16 index, quint8 subIndex = 0)
    {
        return ImporterTest::sub(*m_store, line, index, subIndex);
    }
    ObjectDataBase::INDEX_DATA_T object(quint16 index) { return ImporterTest::object(*m_store, line, index); }
    QStringList rows() { return ImporterTest::rows(*m_store, line); }
    const QStringList &errors() const { return m_errors; }
    const QList<CANopen::CANopenIndex> &newObjects() const { return m_newObjects; }
    /** The log's lines about one line of the table: "5: the row is skipped: ..." */
    QStringList remarks() const
    {
        QStringList remarks;
        const QString prefix = path() + u':';
        for (const QString &text : m_log) {
            if (text.startsWith(prefix))
                remarks.append(text.mid(prefix.size()));
        }
        return remarks;
    }

private:
    void listen(QObject &context)
    {
        QObject::connect(&m_importer, &BaseDataImporter::importError, &context,
                         [this](const QString &text) { m_errors.append(text); });
        QObject::connect(&m_importer, &BaseDataImporter::newIndex, &context,
                         [this](const CANopen::CANopenIndex &object) { m_newObjects.append(object); });
        QObject::connect(&m_importer, &BaseDataImporter::progress, &context,
                         [this](quint8 percent) { m_percent = percent; });
    }

    QTemporaryDir m_folder;
    QSharedPointer<ObjectDataBase> m_store;
    CsvImporter m_importer;
    QStringList m_errors;
    QList<CANopen::CANopenIndex> m_newObjects;
    QStringList m_log;
    int m_percent = 0;
};
