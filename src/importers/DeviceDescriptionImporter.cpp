#include "importers/DeviceDescriptionImporter.h"

#include "canopen/CANTypes.h"
#include "importers/ImplementationRules.h"
#include "importers/ImportedRows.h"

#include <QDebug>
#include <QScopeGuard>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/** Sub-index 0xFF holds the structure of an object and is no entry (CiA 301). */
constexpr quint8 structureSubIndex = 0xFF;

struct IndexRange
{
    quint16 first;
    quint16 last;
};

/** Error history and PDO mappings: sub-index 0 counts what is in use, not what there is (CiA 301). */
constexpr IndexRange runTimeCounts[] = {{0x1003, 0x1003}, {0x1600, 0x17FF}, {0x1A00, 0x1BFF}};

bool countsAtRunTime(quint16 index)
{
    return std::ranges::any_of(
        runTimeCounts, [index](IndexRange range) { return index >= range.first && index <= range.last; });
}

void log(const EdsFinding &finding)
{
    const QString line = finding.line > 0 ? u":%1"_s.arg(finding.line) : QString();
    const QString text = finding.file + line + u": " + finding.text;
    if (finding.severity == EdsFinding::Severity::Note)
        qInfo().noquote() << text;
    else
        qWarning().noquote() << text;
}

} // namespace

void DeviceDescriptionImporter::doImport()
{
    const Session session(*this);
    m_findings.clear();
    if (!session.isOpen())
        return;
    // The keys of the description settings mean the line that was chosen last, by whomever.
    const auto chosen =
        qScopeGuard([this, former = database().descriptionLine()] { database().setDescriptionLine(former); });
    database().setDescriptionLine(line());
    m_notes.start(fileName());
    const QList<quint16> present = database().getIndexList(line());
    m_existing = QSet<quint16>(present.begin(), present.end());
    m_skipped = 0;
    m_refused = false;
    read();
    writePendingRows();
    if (m_skipped > 0)
        m_notes.note(0,
                     u"%1 objects outside of the range 0x%2 to 0x%3 are left out."_s.arg(m_skipped)
                         .arg(startIndex(), 4, 16, '0'_L1)
                         .arg(endIndex(), 4, 16, '0'_L1));
    tell(m_notes.list());
}

void DeviceDescriptionImporter::tell(const QList<EdsFinding> &findings)
{
    for (const EdsFinding &finding : findings)
        log(finding);
    m_findings += findings;
}

void DeviceDescriptionImporter::storeObject(quint16 index, ObjectDataBase::INDEX_DATA_T object, Rows rows,
                                            int declared, int sourceLine)
{
    if (m_refused || isCancelled())
        return;
    completeRows(index, object, rows, declared, sourceLine);
    const auto element = std::as_const(rows).upperBound(0);
    if (object.objecttype == CANopen::Array && object.datatype == CAN::NoDataType
        && element != rows.constEnd())
        object.datatype = element->datatype;
    // Sub-indices that the former object had and the file does not must not stay.
    if (m_existing.contains(index))
        database().removeIndex(line(), index);
    if (!addObject(index, object)) {
        m_refused = true;
        Q_EMIT importError(u"Object 0x%1 could not be stored."_s.arg(index, 4, 16, '0'_L1));
        return;
    }
    for (auto row = rows.constBegin(); row != rows.constEnd(); ++row)
        addSubIndex(index, row.key(), *row);
}

// A device finds an object by its sub-index 0, which tells the highest of the others (CiA 301).
void DeviceDescriptionImporter::completeRows(quint16 index, const ObjectDataBase::INDEX_DATA_T &object,
                                             Rows &rows, int declared, int sourceLine)
{
    if (!ImplementationRules::hasCount(object.objecttype))
        return;
    QList<quint8> entries = rows.keys();
    entries.removeOne(structureSubIndex);
    const int described = entries.isEmpty() ? 0 : entries.constLast();
    const auto count = rows.find(0);
    if (count == rows.end()) {
        const int highest = entries.isEmpty() ? declared : described;
        if (highest == 0)
            return;
        rows.insert(0, ImportedRows::count(highest));
        m_notes.note(sourceLine,
                     u"The object 0x%1 gets a sub-index 0 with the value %2."_s.arg(index, 4, 16, '0'_L1)
                         .arg(highest));
        return;
    }
    if (count->defaultvalue.isEmpty() && described > 0 && !countsAtRunTime(index)) {
        ImportedRows::setDefaultValue(*count, QString::number(described));
        m_notes.note(
            sourceLine,
            u"Sub-index 0 of the object 0x%1 has no value; %2 is assumed."_s.arg(index, 4, 16, '0'_L1)
                .arg(described));
    }
    // What nothing changes is a constant of the generated code.
    if (count->accesstype == "const"_L1)
        count->implementation = CANopen::ManagedConst;
}
