#include "canopen/CANTypes.h"
#include "canopen/EdsNumber.h"
#include "canopen/EdsObjectName.h"
#include "canopen/EdsObjects.h"
#include "canopen/EdsValue.h"

using namespace Qt::StringLiterals;

namespace {

const QStringList &objectLists()
{
    static const QStringList names{u"MandatoryObjects"_s, u"OptionalObjects"_s, u"ManufacturerObjects"_s};
    return names;
}

} // namespace

void EdsObjects::compactSubIndices(const Section &section, Object &object) const
{
    const quint16 index = object.record.index;
    CANopenSubindex count;
    count.index = index;
    count.name = u"Highest subindex supported"_s;
    count.dataType = CAN::Unsigned8;
    count.accessType = u"ro"_s;
    count.defaultValue = QString::number(object.record.subIndexCount);
    object.subIndices.append(count);

    const QMap<quint8, QString> names = edsCompactEntries(m_document, index, u"Name"_s);
    const QMap<quint8, QString> values = edsCompactEntries(m_document, index, u"Value"_s);
    const QMap<quint8, QString> denotations = edsCompactEntries(m_document, index, u"Denotation"_s);
    CANopenSubindex entry = subIndex(section, index, 1, false);
    entry.description.clear();
    for (quint8 sub = 1; sub <= object.record.subIndexCount; ++sub) {
        entry.subIndex = sub;
        entry.name = normalizedEdsValue(names.value(sub), CAN::VisibleString).text;
        if (entry.name.isEmpty())
            entry.name = u"%1 %2"_s.arg(object.record.name, QString::number(sub));
        entry.parameterValue = compactValue(index, sub, values.value(sub), entry.dataType);
        entry.denotation = denotations.value(sub);
        object.subIndices.append(entry);
    }
}

QString EdsObjects::compactValue(quint16 index, quint8 sub, const QString &text, quint16 dataType) const
{
    const EdsValue value = normalizedEdsValue(text, dataType);
    if (value.remark.isEmpty())
        return value.text;
    const Section *list = m_document.section(QString::number(index, 16).rightJustified(4, u'0') + u"Value"_s);
    const QString key = QString::number(sub);
    const QString finding = u"%1 of [%2]: %3."_s.arg(key, list->name, value.remark);
    if (value.usable)
        m_findings.note(list->lineOf(key), finding);
    else
        m_findings.warn(list->lineOf(key), finding);
    return value.text;
}

/** What belongs to no entry of a compact object would get lost in silence. */
void EdsObjects::checkCompactLists() const
{
    for (const Section &section : m_document.sections()) {
        const auto owner = edsListOwner(section.name);
        if (!owner)
            continue;
        const Section *object = m_places.value(*owner).object;
        const quint64 entries = object ? number(*object, u"CompactSubObj"_s, 0xFF) : 0;
        if (entries > 0)
            checkCompactList(section, qMin(entries, quint64(edsHighestEntry)));
        else
            m_findings.warn(
                section.line,
                u"[%1] belongs to no object with CompactSubObj and is left out."_s.arg(section.name));
    }
}

void EdsObjects::checkCompactList(const Section &section, quint64 entries) const
{
    const QString countKey = u"NrOfEntries"_s;
    qsizetype count = 0;
    for (const EdsDocument::Entry &entry : section.entries) {
        if (entry.key.compare(countKey, Qt::CaseInsensitive) == 0)
            continue;
        ++count;
        const auto sub = edsNumber(entry.key);
        if (!sub || *sub < 1 || *sub > entries)
            m_findings.warn(entry.line,
                            u"\"%1\" in [%2] is none of the object's %3 entries; it is left out."_s.arg(
                                entry.key, section.name, QString::number(entries)));
    }
    const auto declared = qsizetype(number(section, countKey, 0xFF));
    if (section.find(countKey) && declared != count)
        m_findings.note(section.lineOf(countKey),
                        u"NrOfEntries of [%1] is %2, but %3 entries are listed."_s.arg(section.name)
                            .arg(declared)
                            .arg(count));
}

void EdsObjects::checkLists() const
{
    checkCompactLists();
    QMap<quint16, bool> listed;
    bool anyList = false;
    for (const QString &name : objectLists()) {
        anyList |= m_document.section(name) != nullptr;
        checkList(name, listed);
    }
    if (!anyList)
        return;
    for (auto place = m_places.begin(); place != m_places.end(); ++place) {
        const int line = place->object ? place->object->line : place->subIndices.first()->line;
        if (!listed.contains(place.key()))
            m_findings.note(line, u"The object %1 stands in no list of objects."_s.arg(hex(place.key())));
    }
}

void EdsObjects::checkList(const QString &name, QMap<quint16, bool> &listed) const
{
    const Section *section = m_document.section(name);
    if (!section)
        return;
    const QString countKey = u"SupportedObjects"_s;
    qsizetype count = 0;
    for (const EdsDocument::Entry &entry : section->entries) {
        if (!edsNumber(entry.key))
            continue;
        const auto index = edsNumber(withoutEdsRemark(entry.value));
        if (!index || *index > 0xFFFF) {
            m_findings.warn(entry.line, u"\"%1\" in [%2] is no index."_s.arg(entry.value, name));
            continue;
        }
        ++count;
        listed.insert(quint16(*index), true);
        if (!m_places.contains(quint16(*index)))
            m_findings.warn(
                entry.line,
                u"The object %1 is listed in [%2], but not described."_s.arg(hex(quint16(*index)), name));
    }
    const auto declared = qsizetype(number(*section, countKey, 0xFFFF));
    if (declared != count)
        m_findings.note(
            section->lineOf(countKey),
            u"SupportedObjects of [%1] is %2, but %3 objects are listed."_s.arg(name).arg(declared).arg(
                count));
}

QMap<quint8, QString> edsCompactEntries(const EdsDocument &document, quint16 index, const QString &kind)
{
    QMap<quint8, QString> result;
    const EdsDocument::Section *section =
        document.section(QString::number(index, 16).rightJustified(4, u'0') + kind);
    if (!section)
        return result;
    for (const EdsDocument::Entry &entry : section->entries) {
        const auto sub = edsNumber(entry.key); // leaves out NrOfEntries
        if (sub && *sub >= 1 && *sub <= edsHighestEntry)
            result.insert(quint8(*sub), entry.value);
    }
    return result;
}
