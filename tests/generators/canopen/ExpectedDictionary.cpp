#include "generators/canopen/ExpectedDictionary.h"

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "canopen/Helper.h"
#include "generators/canopen/GeneratedDevice.h"
#include "store/ObjectDataBase.h"

#include <QHash>

#include <bit>

using namespace Qt::StringLiterals;

namespace {

using Sub = ObjectDataBase::SUBINDEX_DATA_T;

constexpr quint16 firstObject = 0x1000;
constexpr int noCompactRow = 256;

/** How the stack keeps the values of a type. */
struct Type
{
    enum Kind { NoTable, Unsigned, Signed, Real, Text, Block };

    QString name;
    Kind kind = NoTable;
    int bits = 0;
    bool isNumber() const { return kind == Unsigned || kind == Signed || kind == Real; }
};

Type type(int dataType)
{
    static const QHash<int, Type> types{
        {0, {u"NON_NUMERIC"_s}},
        {1, {u"BOOL"_s, Type::Unsigned, 8}},
        {2, {u"I8"_s, Type::Signed, 8}},
        {3, {u"I16"_s, Type::Signed, 16}},
        {4, {u"I32"_s, Type::Signed, 32}},
        {5, {u"U8"_s, Type::Unsigned, 8}},
        {6, {u"U16"_s, Type::Unsigned, 16}},
        {7, {u"U32"_s, Type::Unsigned, 32}},
        {8, {u"R32"_s, Type::Real, 32}},
        {9, {u"STRING_NULL"_s, Type::Text}},
        {10, {u"OCTET_STRING"_s, Type::Text}},
        {11, {u"US"_s}},
        {12, {u"U48"_s, Type::Unsigned, 48}},
        {13, {u"TD"_s}},
        {15, {u"DOMAIN"_s, Type::Block}},
        {16, {u"I24"_s}}, // has tables, but the stack no member for them
        {17, {u"R64"_s}},
        {21, {u"I64"_s}},
        {22, {u"U24"_s, Type::Unsigned, 24}},
        {24, {u"U40"_s, Type::Unsigned, 40}},
        {25, {u"U48"_s, Type::Unsigned, 48}},
        {26, {u"U56"_s}},
        {27, {u"U64"_s, Type::Unsigned, 64}},
        {124, {u"UTF8"_s, Type::Text}},
    };
    if (dataType >= 100 && dataType <= 105)
        return types.value(CAN::Unsigned8);
    return types.value(dataType, {u"unknown type"_s});
}

QString real(float value)
{
    return u"f%1"_s.arg(std::bit_cast<quint32>(value), 8, 16, '0'_L1);
}

QString inRange(qint64 value, int bits)
{
    const int unused = 64 - bits;
    return QString::number(qint64(quint64(value) << unused) >> unused);
}

/** A text of the project as the type's number; `base` as QString has it. */
QString number(const Type &type, const QString &text, int signedBase)
{
    const quint64 mask = type.bits == 64 ? ~quint64(0) : (quint64(1) << type.bits) - 1;
    if (type.kind == Type::Signed)
        return inRange(text.toInt(nullptr, signedBase), type.bits);
    if (type.kind == Type::Real)
        return real(text.toFloat());
    if (type.kind != Type::Unsigned)
        return u"-"_s;
    const quint64 value = type.bits > 32 ? text.toULongLong(nullptr, 0) : text.toUInt(nullptr, 0);
    return QString::number(value & mask);
}

QString defaultNumber(const Sub &sub)
{
    const QString text = QString(sub.defaultvalue).remove(u"$nodeid+"_s, Qt::CaseInsensitive);
    return number(type(sub.datatype), text, 0);
}

QByteArray textBytes(const QString &text)
{
    return text.startsWith(u"|x"_s) ? QByteArray::fromHex(text.sliced(2).toLatin1()) : text.toUtf8();
}

// --- Services that hold values --------------------------------------------------------------------

struct Held
{
    int first;
    int last;
    int firstSub;
    int lastSub;
    const char *specifier;
    int base; ///< the reference is the index less this; no reference if negative
};

constexpr int none = -1;
const QList<Held> &heldObjects()
{
    static const QList<Held> objects{
        {0x1003, 0x1003, 0, 255, "EMCY", 0},
        {0x1005, 0x1006, 0, 255, "SYNC", 0},
        {0x100C, 0x100D, 0, 255, "ERRCTRL", 0},
        {0x1010, 0x1011, 1, 255, "STORE", 0},
        {0x1012, 0x1012, 0, 255, "TIME", none},
        {0x1014, 0x1015, 0, 255, "EMCY", 0},
        {0x1016, 0x1016, 1, 255, "ERRCTRL", 0},
        {0x1017, 0x1017, 0, 255, "ERRCTRL", 0},
        {0x1019, 0x1019, 0, 255, "SYNC", 0},
        {0x1028, 0x1028, 1, 255, "EMCY", 0},
        {0x1029, 0x1029, 1, 1, "ERRCTRL", 0},
        {0x102A, 0x102A, 0, 255, "NMT", 0},
        {0x1032, 0x1032, 0, 255, "EMCY", 0},
        {0x1200, 0x127F, 1, 255, "SDO_SERVER", 0x11FF},
        {0x1280, 0x12FF, 1, 255, "SDO_CLIENT", 0x127F},
        {0x1300, 0x1300, 0, 255, "GFC", none},
        {0x1301, 0x13F0, 1, 255, "SRDO", 0},
        {0x13FE, 0x13FF, 0, 255, "SRDO", 0},
        {0x1400, 0x15FF, 1, 255, "RPDO", 0x13FF},
        {0x1600, 0x17FF, 0, 255, "RMAP", 0x15FF},
        {0x1800, 0x19FF, 1, 255, "TPDO", 0x17FF},
        {0x1A00, 0x1BFF, 0, 255, "TMAP", 0x19FF},
        {0x1F10, 0x1F11, 0, 255, "SRD", none},
        {0x1F2C, 0x1F2C, 1, 255, "NETWORK", 0},
        {0x1F80, 0x1F82, 0, 255, "NMT", 0},
        {0x1F90, 0x1F90, 1, 255, "FLYMA", 0},
    };
    return objects;
}

const Held *holder(quint16 index, quint8 sub)
{
    for (const Held &held : heldObjects())
        if (held.first <= index && index <= held.last && held.firstSub <= sub && sub <= held.lastSub)
            return &held;
    return nullptr;
}

// --- Lines ----------------------------------------------------------------------------------------

/** Values that have no variable in the tables, whoever describes them (CiA 301, CiA 302, CiA 304). */
bool isKeptByStack(quint16 index, quint8 sub)
{
    static const QList<quint16> always{0x1005, 0x1006, 0x100C, 0x100D, 0x1012, 0x1016,
                                       0x1017, 0x1019, 0x102A, 0x1F10, 0x1F11};
    const bool isBehindCount = sub != 0
        && (index == 0x1010 || index == 0x1011 || (index >= 0x1200 && index <= 0x12FF)
            || (index >= 0x1400 && index <= 0x1BFF));
    return always.contains(index) || isBehindCount || (index >= 0x1300 && index <= 0x13FF)
        || (index == 0x1029 && sub == 1);
}

class Describer
{
public:
    explicit Describer(ObjectDataBase &store)
        : m_store(store), m_isCompact(isOn(u"compact_array_description"_s)), m_limits(isOn(u"limit_check"_s)),
          m_stringDefaults(isOn(u"generate_string_defaults"_s))
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
    QHash<QString, int> m_variables; ///< of the stack, by type
    QHash<quint32, int> m_places; ///< of its variables in their tables
    bool m_isCompact;
    bool m_limits;
    bool m_stringDefaults;
};

bool isWritable(const Sub &data)
{
    return data.accesstype == "wo"_L1 || data.accesstype.startsWith("rw"_L1);
}

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
    for (qsizetype i = 1; i < subs.size(); ++i)
        if (subs[i] != subs[i - 1] + 1)
            return noCompactRow;
    const Sub last = sub(line, index, subs.last());
    qsizetype row = subs.size() - 1;
    while (row > 0 && areAlike(sub(line, index, subs[row - 1]), last))
        --row;
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
    if (const Held *held = holder(index, number))
        return u"%1 %2"_s.arg(QLatin1StringView(held->specifier))
            .arg(held->base < 0 ? 0 : index - held->base);
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
    QByteArray text = TestApplication::textOf(name, data.size);
    if (m_stringDefaults && data.datatype != CAN::Utf8String) {
        const QByteArray bytes = textBytes(data.defaultvalue);
        text.replace(0, bytes.size(), bytes);
    }
    return u"%1/%1/t%2"_s.arg(data.size).arg(QString::fromLatin1(text.toHex()));
}

QString Describer::value(const Sub &data, quint8 line, quint16 index, quint8 number) const
{
    const Type kind = type(data.datatype);
    if (data.implementation == CANopen::ManagedConst && kind.kind == Type::Text)
        return u"t"_s + QString::fromLatin1(textBytes(data.defaultvalue).toHex());
    if (data.implementation == CANopen::ManagedConst)
        return defaultNumber(data);
    if (holder(index, number))
        return u"-"_s;
    if (data.implementation == CANopen::ApplicationVariable)
        return applicationValue(data, Helper::substituteVariables(data.varname, index, number, line));
    return defaultNumber(data);
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
        const bool hasVariable = data.implementation == CANopen::ManagedVariable && !holder(index, number)
            && type(data.datatype).isNumber();
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
