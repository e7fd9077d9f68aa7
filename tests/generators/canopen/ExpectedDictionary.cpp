#include "generators/canopen/ExpectedDictionary.h"

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "canopen/Helper.h"
#include "generators/canopen/DictionaryTypes.h"
#include "generators/canopen/GeneratedDevice.h"
#include "store/ObjectDataBase.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

using namespace DictionaryTypes;

using Sub = ObjectDataBase::SUBINDEX_DATA_T;

constexpr quint16 firstObject = 0x1000;
constexpr int noCompactRow = 256;

class Describer
{
public:
    explicit Describer(ObjectDataBase &store)
        : m_store(store), m_services(store),
          m_isCompact(isOn(u"compact_array_description"_s) && !isJ1939Server(store)),
          m_limits(isOn(u"limit_check"_s)),
          m_stringDefaults(isOn(u"generate_string_defaults"_s) && !isJ1939Server(store))
    {
        const QList<quint8> lines = m_store.getLines();
        for (const quint8 line : lines)
            if (line < ObjectDataBase::MaximumLines)
                placeVariables(line);
    }

    QStringList object(quint8 line, quint16 index);

private:
    bool isOn(const QString &key) const { return m_store.getGeneralSetting(key).toInt() > 0; }
    Sub sub(quint8 line, quint16 index, quint8 number) const
    {
        Sub data;
        m_store.getSubIndex(line, index, number, data);
        return data;
    }
    int compactRow(quint8 line, quint16 index) const;
    void placeVariables(quint8 line);
    qsizetype rows(quint8 line, quint16 index) const;
    QString place(const Sub &data, quint8 line, quint16 index, quint8 number) const;
    int attributes(const Sub &data) const;
    QString value(const Sub &data, quint8 line, quint16 index, quint8 number) const;
    QString applicationValue(const Sub &data, const QString &variable) const;
    QString limits(const Sub &data) const;

    static quint32 key(quint8 line, quint16 index, quint8 number)
    {
        return quint32(line) << 24 | quint32(index) << 8 | number;
    }

    ObjectDataBase &m_store;
    Services m_services;
    QHash<QString, int> m_variables; ///< of the stack, by type
    QHash<quint32, int> m_places; ///< of its variables in their tables
    bool m_isCompact;
    bool m_limits;
    bool m_stringDefaults;
};

bool areAlike(const Sub &a, const Sub &b)
{
    return a.datatype == b.datatype && a.accesstype == b.accesstype && a.pdomapping == b.pdomapping
        && a.lowlimit == b.lowlimit && a.uplimit == b.uplimit && a.size == b.size
        && a.defaultineds == b.defaultineds && a.limitineds == b.limitineds
        && a.implementation == b.implementation && a.varname.simplified() == b.varname.simplified()
        && a.defaultvalue == b.defaultvalue && a.nvstorage == b.nvstorage && a.category == b.category;
}

int Describer::compactRow(quint8 line, quint16 index) const
{
    const QList<quint8> subs = m_store.getSubIndexList(line, index);
    if (!m_isCompact || index < 0x1200 || subs.size() < 3)
        return noCompactRow;
    const Sub last = sub(line, index, subs.last());
    qsizetype row = subs.size() - 1;
    for (; row > 0; --row) {
        if (subs[row] != subs[row - 1] + 1)
            return noCompactRow;
        if (!areAlike(sub(line, index, subs[row - 1]), last))
            break;
    }
    return row == subs.size() - 1 ? noCompactRow : subs[row];
}

int Describer::attributes(const Sub &data) const
{
    const bool isReadable = data.accesstype != "wo"_L1;
    const bool isMappable = data.pdomapping.toUInt() != 0;
    int bits = data.datatype < 9 || data.datatype == 22 ? 0x01 : 0;
    bits |= isReadable ? 0x02 : 0;
    bits |= isWritable(data) ? 0x04 : 0;
    bits |= isMappable && isReadable && data.accesstype != "rww"_L1 ? 0x08 : 0;
    bits |= isMappable && isWritable(data) && data.accesstype != "rwr"_L1 ? 0x10 : 0;
    bits |= data.defaultineds ? 0x20 : 0;
    bits |= data.limitineds ? 0x40 : 0;
    bits |= data.nvstorage ? 0x80 : 0;
    return bits;
}

void Describer::placeVariables(quint8 line)
{
    for (const quint16 index : m_store.getIndexList(line, firstObject))
        for (const quint8 number : m_store.getSubIndexList(line, index)) {
            const Sub data = sub(line, index, number);
            const Type kind = type(data.datatype);
            const bool hasTable = kind.isNumber() || data.datatype == CAN::Integer24;
            if (data.implementation != CANopen::ManagedVariable || !hasTable || (data.sharedlines && line > 0)
                || isKeptByStack(index, number))
                continue;
            int &count = m_variables[kind.name == "BOOL"_L1 ? u"U8"_s : kind.name];
            m_places.insert(key(line, index, number), count++);
        }
}

/** How many rows describe the object. */
qsizetype Describer::rows(quint8 line, quint16 index) const
{
    const int last = compactRow(line, index);
    const QList<quint8> subs = m_store.getSubIndexList(line, index);
    return std::count_if(subs.begin(), subs.end(), [&](quint8 number) {
        return number <= last && sub(line, index, number).implementation != CANopen::VirtualObject;
    });
}

/** Specifier and reference. */
QString Describer::place(const Sub &data, quint8 line, quint16 index, quint8 number) const
{
    if (data.implementation == CANopen::ManagedConst)
        return u"CONST -"_s;
    const Service holder = m_services.of(line, index, number);
    if (!holder.specifier.isEmpty())
        return u"%1 %2"_s.arg(holder.specifier).arg(holder.reference);
    return data.implementation == CANopen::ApplicationVariable
        ? u"PTR -"_s
        : u"VAR %1"_s.arg(m_places.value(key(line, index, number)));
}

QString Describer::applicationValue(const Sub &data, const QString &variable) const
{
    const Type kind = type(data.datatype);
    const QString name = TestApplication::plainName(variable);
    if (kind.kind == Type::Block)
        return u"0/0/o"_s;
    if (kind.kind == Type::Real)
        return real(float(TestApplication::valueOf(name)));
    if (kind.kind != Type::Text)
        return kind.isNumber() ? QString::number(TestApplication::valueOf(name)) : u"-"_s;
    const QByteArray text = TestApplication::textAtStart(name, data, m_stringDefaults);
    return u"%1/%1/t%2"_s.arg(data.size).arg(QString::fromLatin1(text.toHex()));
}

QString Describer::value(const Sub &data, quint8 line, quint16 index, quint8 number) const
{
    const Type kind = type(data.datatype);
    if (data.implementation == CANopen::ManagedConst && kind.kind == Type::Text)
        return u"t"_s + QString::fromLatin1(textBytes(data.defaultvalue).toHex());
    if (data.implementation == CANopen::ManagedConst)
        return defaultNumber(data);
    if (m_services.hold(line, index, number))
        return u"-"_s;
    if (data.implementation == CANopen::ApplicationVariable)
        return applicationValue(data, Helper::substituteVariables(data.varname, index, number, line));
    return atStart(m_store, data);
}

QString Describer::limits(const Sub &data) const
{
    if (!m_limits || !data.limitineds || !isWritable(data))
        return u"- -"_s;
    const Type kind = type(data.datatype);
    return number(kind, data.lowlimit, 10) + u' ' + number(kind, data.uplimit, 10);
}

QStringList Describer::object(quint8 line, quint16 index)
{
    static const QHash<int, QString> codes{{2, u"DOM"_s}, {7, u"VAR"_s}, {8, u"ARRAY"_s}, {9, u"STRUCT"_s}};
    QStringList lines;
    const QList<quint8> subs = m_store.getSubIndexList(line, index);
    if (!subs.contains(0) || sub(line, index, 0).implementation == CANopen::VirtualObject)
        return lines;
    ObjectDataBase::INDEX_DATA_T head;
    m_store.getIndex(line, index, head);
    const int row = compactRow(line, index);
    const qsizetype rowCount = rows(sub(line, index, 0).sharedlines ? 0 : line, index);
    for (const quint8 number : subs) {
        Sub data = sub(line, index, number);
        if (data.implementation == CANopen::VirtualObject)
            continue;
        const quint8 owner = data.sharedlines ? 0 : line;
        data = sub(owner, index, number);
        const bool hasVariable = data.implementation == CANopen::ManagedVariable
            && !m_services.hold(owner, index, number) && type(data.datatype).isNumber();
        const QString variable =
            hasVariable ? u"%1.%2:%3"_s.arg(owner).arg(index, 4, 16, '0'_L1).arg(number) : u"-"_s;
        lines.append(u"od %1 %2:%3 %4 %5/%6 %7 %8 %9 %10"_s.arg(line)
                         .arg(index, 4, 16, '0'_L1)
                         .arg(number)
                         .arg(codes.value(head.objecttype))
                         .arg(subs.last())
                         .arg(rowCount)
                         .arg(type(data.datatype).name, place(data, owner, index, number))
                         .arg(attributes(data) | (number >= row ? 0x100 : 0), 3, 16, '0'_L1)
                         .arg(defaultNumber(data))
                     + u' ' + value(data, owner, index, number) + u' ' + variable + u' ' + limits(data));
    }
    return lines;
}

} // namespace

QStringList ExpectedDictionary::objects(ObjectDataBase &store)
{
    QStringList lines;
    Describer describer(store);
    const QList<quint8> numbers = store.getLines();
    for (const quint8 line : numbers)
        if (line < ObjectDataBase::MaximumLines)
            for (const quint16 index : store.getIndexList(line, firstObject))
                lines.append(describer.object(line, index));
    return lines;
}
