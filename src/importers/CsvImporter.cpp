#include "importers/CsvImporter.h"

#include "canopen/LegacyText.h"
#include "importers/CsvLine.h"
#include "importers/CsvNumber.h"
#include "importers/CsvRow.h"
#include "importers/ImplementationRules.h"
#include "importers/ImportedRows.h"
#include "importers/TextLineReader.h"

#include <QDebug>
#include <QFile>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/** A quoted text may have so many line breaks; bounds the search for the closing quote. */
constexpr int longestQuotedText = 32; // lines
constexpr qint64 remarksInLog = 100;
constexpr QChar comment(u'#');
constexpr QLatin1StringView separatorDirective = "sep="_L1; // a spreadsheet's own first line

QString indexName(quint32 index)
{
    return u"0x%1"_s.arg(index, 4, 16, QLatin1Char('0'));
}

bool isBlank(QStringView text, QChar separator)
{
    return std::all_of(text.begin(), text.end(),
                       [separator](QChar c) { return c == separator || c.isSpace(); });
}

} // namespace

CsvImporter::~CsvImporter()
{
    endWorker();
}

void CsvImporter::doImport()
{
    const Session session(*this);
    m_copyCommands.clear();
    m_deleteCommands.clear();
    if (!session.isOpen())
        return;
    m_header = CsvHeader();
    m_hasHeader = false;
    m_objects.clear();
    m_waitingLines.clear();
    m_remarks = 0;
    m_rowsOutOfRange = 0;
    m_tooLongLines = 0;
    QFile file(fileName());
    if (!file.open(QIODevice::ReadOnly)) {
        Q_EMIT importError(u"File %1 is not readable."_s.arg(fileName()));
        return;
    }
    TextLineReader reader(file, longestRow);
    readLines(reader, file.size());
    writeObjects();
    closeRemarks();
    m_objects.clear();
}

void CsvImporter::readLines(TextLineReader &reader, qint64 size)
{
    TextLine line;
    while (!isCancelled() && nextLine(reader, line)) {
        takeLine(line);
        reportProgress(reader.position(), size);
    }
}

bool CsvImporter::nextLine(TextLineReader &reader, TextLine &line)
{
    if (!readLine(reader, line))
        return false;
    if (m_hasHeader && line.mayHaveOpenQuote && !line.text.startsWith(comment)
        && m_header.split(line.text).hasOpenQuote)
        joinQuotedLines(reader, line);
    return true;
}

bool CsvImporter::readLine(TextLineReader &reader, TextLine &line)
{
    if (!m_waitingLines.isEmpty()) {
        line = m_waitingLines.takeFirst();
        return true;
    }
    const qint64 before = reader.lineNumber();
    QByteArray bytes;
    const bool isThere = reader.next(bytes);
    if (reader.tooLongLines() > m_tooLongLines)
        remark(before, u"a line behind this one is too long and is skipped"_s);
    m_tooLongLines = reader.tooLongLines();
    if (isThere)
        line = {.text = LegacyText::decode(bytes).text, .number = reader.lineNumber()};
    return isThere;
}

// A quoted text may go on in the next lines. Where none of them closes it, or one is a row of the table
// itself, the quote is no more than a character and those lines are read for themselves.
void CsvImporter::joinQuotedLines(TextLineReader &reader, TextLine &line)
{
    QList<TextLine> ahead;
    QString joined = line.text;
    TextLine next;
    while (ahead.size() < longestQuotedText && joined.size() < longestRow && readLine(reader, next)) {
        ahead.append(next);
        if (csvNumber<quint16>(next.text.section(m_header.separator(), 0, 0)))
            break;
        const CsvLine::QuoteEnd end = CsvLine::quoteEnd(next.text, m_header.separator());
        joined += u'\n' + next.text;
        if (end == CsvLine::QuoteEnd::Closed && !m_header.split(joined).hasOpenQuote) {
            line.text = joined;
            return;
        }
        ahead.last().mayHaveOpenQuote = false;
        if (end == CsvLine::QuoteEnd::Broken)
            break;
    }
    m_waitingLines = ahead + m_waitingLines;
}

void CsvImporter::takeLine(const TextLine &line)
{
    if (line.text.startsWith(comment) || isBlank(line.text, m_header.separator()))
        return;
    if (line.text.contains(QChar::Null))
        remark(line.number, u"the line holds zero bytes and is skipped"_s);
    else if (!m_hasHeader)
        takeHeader(line);
    else if (CsvCommands::isCommand(line.text))
        takeCommand(line);
    else
        takeRow(line);
}

void CsvImporter::takeHeader(const TextLine &line)
{
    if (line.text.startsWith(separatorDirective, Qt::CaseInsensitive))
        return;
    m_hasHeader = true;
    m_header = CsvHeader(line.text);
    if (!m_header.has(CsvColumn::Index))
        remark(line.number, u"the header has no column \"index\""_s);
}

void CsvImporter::takeCommand(const TextLine &line)
{
    QStringList fields = m_header.split(line.text).texts;
    // Spreadsheets give every line the width of the table.
    const bool isPadded = fields.size() == m_header.width() && fields.size() > CsvCommands::mostFields;
    while (isPadded && fields.constLast().isEmpty())
        fields.removeLast();
    if (m_copyCommands.size() + m_deleteCommands.size() >= mostCommands) {
        remark(line.number, u"there are too many commands"_s);
        return;
    }
    const CsvCommands::Command command = CsvCommands::parse(fields);
    if (const auto *const copy = std::get_if<CsvCommands::Copy>(&command))
        m_copyCommands.append(*copy);
    else if (const auto *const removal = std::get_if<CsvCommands::Delete>(&command))
        m_deleteCommands.append(*removal);
    else
        remark(line.number, u"the command is refused"_s);
}

void CsvImporter::takeRow(const TextLine &textLine)
{
    QString obstacle;
    std::optional<CsvRow> row = CsvRow::read(m_header, m_header.split(textLine.text).texts, obstacle);
    if (!row) {
        remark(textLine.number, u"the row is skipped: "_s + obstacle);
        return;
    }
    if (!isInRange(row->index())) {
        ++m_rowsOutOfRange;
        return;
    }
    if (isForAnotherLine(*row))
        remark(textLine.number,
               u"the row is for line \"%1\" and is read into line %2"_s.arg(row->line()).arg(line()));
    Object &object = objectOf(*row);
    if (row->subIndex())
        takeSubIndex(*row, object, textLine.number);
    const QStringList remarks = row->remarks();
    for (const QString &text : remarks)
        remark(textLine.number, text);
}

// A staging line stands for whatever line the user will choose.
bool CsvImporter::isForAnotherLine(const CsvRow &row) const
{
    return line() != StagingLine && !row.line().isEmpty() && csvNumber<quint8>(row.line()) != line();
}

void CsvImporter::takeSubIndex(CsvRow &row, Object &object, qint64 number)
{
    const quint8 subIndex = *row.subIndex();
    if (object.subs.test(subIndex))
        remark(number, u"%1:%2 comes again, the last row counts"_s.arg(indexName(row.index())).arg(subIndex));
    object.subs.set(subIndex);
    if (subIndex > 0 && !object.hasOwnRow && object.data.datatype == CAN::NoDataType
        && object.data.objecttype == CANopen::Array)
        object.data.datatype = row.dataType();
    addSubIndex(row.index(), subIndex, row.sub());
}

CsvImporter::Object &CsvImporter::objectOf(const CsvRow &row)
{
    const bool isKnown = m_objects.contains(row.index());
    Object &object = m_objects[row.index()];
    const bool isWhole = !row.subIndex() || !ImplementationRules::hasCount(row.objectCode());
    if (!isKnown) {
        object.isNew = !database().getIndex(line(), row.index(), object.data);
        object.countImplementation = row.isVirtual() ? CANopen::VirtualObject : CANopen::ManagedVariable;
    }
    if (!isKnown && object.isNew) {
        object.data.name = row.objectName();
        object.data.objecttype = row.objectCode();
        object.data.datatype = isWhole ? row.dataType() : quint16(CAN::NoDataType);
        object.hasOwnRow = isWhole;
        if (!row.subIndex())
            object.data.description = row.description();
    } else if (!row.subIndex()) {
        object.hasOwnRow = true;
        object.data.objecttype = row.objectCode();
        if (!row.name().isEmpty())
            object.data.name = row.name();
        if (row.dataType() != CAN::NoDataType)
            object.data.datatype = row.dataType();
        if (!row.description().isEmpty())
            object.data.description = row.description();
    }
    return object;
}

void CsvImporter::writeObjects()
{
    for (auto entry = m_objects.cbegin(); entry != m_objects.cend(); ++entry) {
        if (!addObject(entry.key(), entry->data)) {
            Q_EMIT importError(u"Object %1 could not be stored."_s.arg(indexName(entry.key())));
            return;
        }
        if (ImplementationRules::hasCount(entry->data.objecttype) && !entry->subs.test(0))
            writeCount(entry.key(), *entry);
    }
}

// Sub-index 0 of an array or record whose rows do not give one.
void CsvImporter::writeCount(quint16 index, const Object &object)
{
    int highest = 0;
    for (int subIndex = 1; subIndex < subIndexCount; ++subIndex) {
        if (object.subs.test(std::size_t(subIndex)))
            highest = subIndex;
    }
    if (!object.isNew) {
        const QList<quint8> present = database().getSubIndexList(line(), index);
        if (present.contains(0))
            return;
        highest = std::max(highest, present.isEmpty() ? 0 : int(present.constLast()));
    }
    ObjectDataBase::SUBINDEX_DATA_T count = ImportedRows::count(highest);
    count.name = u"Highest Subindex supported"_s;
    if (object.countImplementation == CANopen::VirtualObject)
        count.implementation = CANopen::VirtualObject;
    addSubIndex(index, 0, count);
}

bool CsvImporter::carryOutCommands(quint8 line)
{
    bool success = true;
    for (const CsvCommands::Copy &copy : std::as_const(m_copyCommands))
        success &= CsvCommands::apply(database(), line, copy);
    for (const CsvCommands::Delete &removal : std::as_const(m_deleteCommands))
        success &= CsvCommands::apply(database(), line, removal);
    return success;
}

void CsvImporter::remark(qint64 line, const QString &text)
{
    if (++m_remarks <= remarksInLog)
        qWarning().noquote() << u"%1:%2: %3"_s.arg(fileName()).arg(line).arg(text);
}

void CsvImporter::closeRemarks()
{
    if (m_remarks > remarksInLog)
        qWarning().noquote() << u"%1: %2 more remarks"_s.arg(fileName()).arg(m_remarks - remarksInLog);
    if (m_rowsOutOfRange > 0)
        qInfo().noquote() << u"%1: %2 rows outside of the range %3 to %4 are left out"_s.arg(fileName())
                                 .arg(m_rowsOutOfRange)
                                 .arg(indexName(startIndex()), indexName(endIndex()));
}
