#include "generators/canopen/SrdoView.h"

#include "check/MappingEntry.h"
#include "generators/ObjectKey.h"
#include "generators/canopen/SrdoVariables.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

using Kind = SrdoValueForm::Kind;
using Table = CValues::Table;

constexpr std::array<SrdoValueForm, 12> valueForms{{
    {Table::U8, Kind::Unsigned, 1, u"UNSIGNED8", u"tmpU8"},
    {Table::U16, Kind::Unsigned, 2, u"UNSIGNED16", u"tmpU16"},
    {Table::U32, Kind::Unsigned, 4, u"UNSIGNED32", u"tmpU32"},
    {Table::I8, Kind::Signed, 1, u"UNSIGNED8", u"tmpU8"},
    {Table::I16, Kind::Signed, 2, u"UNSIGNED16", u"tmpU16"},
    {Table::I32, Kind::Signed, 4, u"UNSIGNED32", u"tmpU32"},
    {Table::R32, Kind::Real, 4, u"UNSIGNED32", u"tmpU32"},
    {Table::U24, Kind::Bytes, 3, u"UNSIGNED8", u"tmpU64"},
    {Table::U40, Kind::Bytes, 5, u"UNSIGNED8", u"tmpU64"},
    {Table::U48, Kind::Bytes, 6, u"UNSIGNED8", u"tmpU64"},
    {Table::U64, Kind::Bytes, 8, u"UNSIGNED8", u"tmpU64"},
    {Table::I24, Kind::Bytes, 3, u"UNSIGNED8", u"tmpU64"},
}};

// CiA 304: communication and mapping parameters of the SRDOs, signatures of their configuration
constexpr quint16 firstCommunication = 0x1301;
constexpr quint16 lastCommunication = 0x1340;
constexpr quint16 mappingDistance = 0x80;
constexpr quint16 signatures = 0x13FF;
enum CommunicationSub : quint8 { Direction = 1, RefreshTime = 2, ValidationTime = 3, CobId1 = 5, CobId2 = 6 };

/** Mapping objects whose variables stand in the SRDO source; the object dictionary has the same ones. */
constexpr quint16 firstStaticMapping = 0x1380;
constexpr quint16 lastStaticMapping = 0x13B0;

constexpr quint8 lastEntry = 254; // sub-index 255 describes the object itself (CiA 301)

constexpr int bitsPerByte = 8;
constexpr int messageSize = 8; // bytes of a CAN message

/** COB-IDs of the pre-defined connection set (CiA 304), where the project does not say them in numbers. */
constexpr auto predefinedCobId1 = "0xfful + (ownNodeId * 2ul)"_L1;
constexpr auto predefinedCobId2 = "0x100ul + (ownNodeId * 2ul)"_L1;

/** Builds the SRDOs of one line. */
class LineReader
{
public:
    LineReader(const DictionaryLine &line, bool namesLine, SrdoVariables &variables)
        : m_line(line), m_namesLine(namesLine), m_variables(variables)
    {
    }

    SrdoLine read()
    {
        SrdoLine result{.number = m_line.number};
        for (const DictionaryObject &object : m_line.objectRange(firstCommunication, lastCommunication))
            result.srdos.append(readSrdo(object.index));
        return result;
    }

private:
    Srdo readSrdo(quint16 index)
    {
        const auto number = quint16(index - firstCommunication + 1);
        const QString suffix = m_namesLine ? u"_line%1"_s.arg(m_line.number) : QString();
        Srdo srdo{
            .index = index,
            .number = number,
            .id = QString::number(number) + suffix,
            .direction = value<quint8>(index, Direction),
            .refreshTime = value<quint16>(index, RefreshTime),
            .validationTime = value<quint8>(index, ValidationTime),
            .cobId1 = cobId(text(index, CobId1), predefinedCobId1),
            .cobId2 = cobId(text(index, CobId2), predefinedCobId2),
            .signature = value<quint16>(signatures, quint8(number)),
        };
        readMapping(srdo);
        return srdo;
    }

    QString text(quint16 index, quint8 sub) const
    {
        const DictionarySubIndex *found = m_line.subIndex(index, sub);
        return found ? found->defaultValue : QString();
    }
    /** A number that the parameter has no room for counts as none. */
    template <typename Parameter>
    quint32 value(quint16 index, quint8 sub) const
    {
        const quint32 number = text(index, sub).trimmed().toUInt(nullptr, 0);
        return number <= std::numeric_limits<Parameter>::max() ? number : 0;
    }

    static QString cobId(const QString &text, QLatin1StringView predefined)
    {
        static const QRegularExpression multiple(
            u"^\\s*(?<base>0x[0-9a-f]+|\\d+)\\s*\\+\\s*(?<factor>\\d+)\\s*\\*\\s*\\$nodeid\\s*$"_s,
            QRegularExpression::CaseInsensitiveOption);
        if (!text.contains("$nodeid"_L1, Qt::CaseInsensitive))
            return u"0x%1ul"_s.arg(text.trimmed().toUInt(nullptr, 0), 0, 16);
        const QRegularExpressionMatch match = multiple.match(text);
        bool hasBase = false;
        bool hasFactor = false;
        const quint32 base = match.captured(u"base"_s).toUInt(&hasBase, 0);
        const quint32 factor = match.captured(u"factor"_s).toUInt(&hasFactor);
        if (!hasBase || !hasFactor)
            return predefined;
        return u"0x%1ul + (ownNodeId * %2ul)"_s.arg(base, 0, 16).arg(factor);
    }

    void readMapping(Srdo &srdo)
    {
        const quint16 index = srdo.index + mappingDistance;
        if (const DictionaryObject *object = m_line.object(index))
            for (const DictionarySubIndex &sub : object->subIndices)
                if (sub.number > 0 && sub.number <= lastEntry) {
                    // The table is looked into by sub-index, so that a missing one is an empty entry.
                    srdo.mapTable.resize(sub.number);
                    srdo.mapTable.last() = MappingEntry::fromText(sub.defaultValue).value;
                }
        srdo.mapCnt = std::min(value<quint8>(index, 0), quint32(srdo.mapTable.size()));
        QList<MappingEntry> entries;
        for (quint32 i = 0; i < srdo.mapCnt; ++i)
            entries.append(MappingEntry{.value = srdo.mapTable.at(i)});
        readValues(srdo, entries, hasInvertedEntries(entries));
    }

    /**
     * CiA 304: behind every entry stands the one of the inverted copy, whatever the two objects are called.
     * Mappings that cannot be read so name the values alone; they are served, too.
     */
    bool hasInvertedEntries(const QList<MappingEntry> &entries) const
    {
        if (entries.size() % 2 != 0)
            return false;
        for (qsizetype i = 0; i < entries.size(); i += 2)
            if (!isInvertedCopy(entries[i], entries[i + 1]))
                return false;
        return true;
    }
    bool isInvertedCopy(MappingEntry normal, MappingEntry inverted) const
    {
        const DictionarySubIndex *first = m_line.subIndex(normal.index(), normal.subIndex());
        const DictionarySubIndex *second = m_line.subIndex(inverted.index(), inverted.subIndex());
        const bool areAlike = !first || !second || first->table == second->table;
        return normal.bits() == inverted.bits() && areAlike;
    }

    void readValues(Srdo &srdo, const QList<MappingEntry> &entries, bool hasInverted)
    {
        int bits = 0;
        for (qsizetype i = 0; i < entries.size(); i += hasInverted ? 2 : 1) {
            srdo.values.append(readValue(entries[i], bits));
            bits += entries[i].bits();
            SrdoValue &value = srdo.values.last();
            if (hasInverted && value.variable >= 0)
                addInvertedCopy(value, entries[i + 1]);
        }
        srdo.mapLen = std::min((bits + bitsPerByte - 1) / bitsPerByte, messageSize);
    }

    /** Values in parts of bytes, of a width that is not that of the variable or behind the end have none. */
    SrdoValue readValue(MappingEntry entry, int bitOffset)
    {
        SrdoValue value{.entry = entry.value,
                        .offset = bitOffset / bitsPerByte,
                        .size = (entry.bits() + bitsPerByte - 1) / bitsPerByte};
        const DictionarySubIndex *sub = m_line.subIndex(entry.index(), entry.subIndex());
        const SrdoValueForm *form = sub ? SrdoValueForm::of(sub->table) : nullptr;
        const bool fits = form && bitOffset % bitsPerByte == 0 && entry.bits() == form->size * bitsPerByte
            && value.offset + value.size <= messageSize;
        if (fits)
            value.variable = m_variables.add(m_line.number, entry.index(), entry.subIndex());
        if (value.variable >= 0)
            m_variables.addTemporary(value.variable);
        return value;
    }

    /** A copy out of reach makes the value one: nobody could tell the inverted message of it. */
    void addInvertedCopy(SrdoValue &value, MappingEntry entry)
    {
        const int copy = m_variables.add(m_line.number, entry.index(), entry.subIndex());
        if (copy < 0)
            value = {.entry = entry.value, .offset = value.offset, .size = value.size};
        else if (!m_variables.areOne(value.variable, copy))
            value.inverted = copy;
    }

    const DictionaryLine &m_line;
    const bool m_namesLine;
    SrdoVariables &m_variables;
};

/** Every mapped object of a line once, as the numbers of rows in gen_define.h count them. */
void addOdEntries(const DictionaryLine &line, SrdoVariables &variables, SrdoView &view)
{
    QSet<quint32> known;
    for (const DictionaryObject &object : line.objectRange(firstStaticMapping, lastStaticMapping))
        for (const DictionarySubIndex &mapped : object.subIndices) {
            const auto entry = MappingEntry::fromText(mapped.defaultValue);
            const quint32 key = ObjectKey::make(line.number, entry.index(), entry.subIndex());
            const DictionarySubIndex *sub = line.subIndex(entry.index(), entry.subIndex());
            if (mapped.number == 0 || !sub || known.contains(key))
                continue;
            known.insert(key);
            if (std::ranges::find(SrdoView::odEntryTables, sub->table) == SrdoView::odEntryTables.end())
                continue;
            const int place = variables.add(line.number, entry.index(), entry.subIndex());
            view.odEntries[sub->table].append(
                {.line = line.number,
                 .index = entry.index(),
                 .subIndex = entry.subIndex(),
                 .address = place < 0 ? u"NULL"_s : view.variables.at(place).address});
        }
}

} // namespace

const SrdoValueForm *SrdoValueForm::of(CValues::Table table)
{
    const auto *found = std::ranges::find(valueForms, table, &SrdoValueForm::table);
    return found == valueForms.end() ? nullptr : found;
}

SrdoView SrdoView::read(const ObjectDictionaryView &dictionary, bool withOdEntries)
{
    SrdoView view{.isMultiLineForm = dictionary.settings.isMultiLineForm(),
                  .applicationHeaders = dictionary.settings.applicationHeaders,
                  .lineCount = std::max<qsizetype>(dictionary.projectLines.size(), 1)};
    SrdoVariables variables(dictionary, view.variables);
    for (const DictionaryLine &line : dictionary.lines) {
        const SrdoLine srdos = LineReader(line, view.isMultiLineForm, variables).read();
        if (!srdos.srdos.isEmpty())
            view.lines.append(srdos);
        if (withOdEntries)
            addOdEntries(line, variables, view);
    }
    return view;
}

bool SrdoView::usesNodeId() const
{
    return std::ranges::any_of(lines, [](const SrdoLine &line) {
        return std::ranges::any_of(line.srdos, [](const Srdo &srdo) {
            return srdo.cobId1.contains("ownNodeId"_L1) || srdo.cobId2.contains("ownNodeId"_L1);
        });
    });
}
