#pragma once

#include "importers/BaseDataImporter.h"
#include "importers/CsvCommands.h"
#include "importers/CsvHeader.h"

#include <QMap>

#include <bitset>

class CsvRow;
class TextLineReader;

/**
 * Reads a table of objects (".csv", ".icsv"), one sub-index a row, in columns that its header names.
 *
 * The table may hold commands, too. They are collected while reading and carried out when asked for, after
 * the objects have reached the line they are for. A line that does not fit is skipped; the log tells its
 * number. A row that comes twice counts with its last values.
 */
class CsvImporter : public BaseDataImporter
{
    Q_OBJECT

public:
    CsvImporter() = default;
    ~CsvImporter() override;

    void doImport() override;

    /** A file has no sensible use for more; bounds memory and time. */
    static constexpr qsizetype mostCommands = 100'000;

    /** Bytes. A description alone may have 65,536 characters, each of up to four bytes as a row has it. */
    static constexpr qsizetype longestRow = qsizetype(1024) * 1024;

    /** The commands of the last read, in the order of the file. */
    const QList<CsvCommands::Copy> &copyCommands() const { return m_copyCommands; }
    const QList<CsvCommands::Delete> &deleteCommands() const { return m_deleteCommands; }

    /** Copies first, deletes then. */
    bool carryOutCommands(quint8 line) override;

private:
    static constexpr int subIndexCount = 256;

    struct Object
    {
        ObjectDataBase::INDEX_DATA_T data;
        std::bitset<subIndexCount> subs; ///< of the file
        bool isNew = false;
        bool hasOwnRow = false; ///< its type is told by a row for the whole object
        int countImplementation = 0; ///< of a sub-index 0 that no row gives
    };

    /** A line of the file as text, with its number. */
    struct TextLine
    {
        QString text;
        qint64 number = 0;
        bool mayHaveOpenQuote = true; ///< false where a search for the closing quote has failed
    };

    void readLines(TextLineReader &reader, qint64 size);
    bool nextLine(TextLineReader &reader, TextLine &line);
    bool readLine(TextLineReader &reader, TextLine &line);
    void joinQuotedLines(TextLineReader &reader, TextLine &line);
    void takeLine(const TextLine &line);
    void takeHeader(const TextLine &line);
    void takeCommand(const TextLine &line);
    void takeRow(const TextLine &textLine);
    bool isForAnotherLine(const CsvRow &row) const;
    void takeSubIndex(CsvRow &row, Object &object, qint64 number);
    Object &objectOf(const CsvRow &row);
    void writeObjects();
    void writeCount(quint16 index, const Object &object);
    void remark(qint64 line, const QString &text);
    void closeRemarks();

    CsvHeader m_header;
    bool m_hasHeader = false;
    QMap<quint16, Object> m_objects;
    QList<TextLine> m_waitingLines; ///< read ahead for a quote that nothing closed
    QList<CsvCommands::Copy> m_copyCommands;
    QList<CsvCommands::Delete> m_deleteCommands;
    qint64 m_remarks = 0;
    qint64 m_rowsOutOfRange = 0;
    qint64 m_tooLongLines = 0;
};
