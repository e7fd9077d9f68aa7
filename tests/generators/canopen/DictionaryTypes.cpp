#include "generators/canopen/DictionaryTypes.h"

#include "canopen/CANTypes.h"

#include <QHash>

#include <bit>
#include <cmath>

using namespace Qt::StringLiterals;

using DictionaryTypes::Type;

namespace {

QString withoutNodeId(const QString &text)
{
    return QString(text).remove(u"$nodeid+"_s, Qt::CaseInsensitive);
}

QString inRange(qint64 value, int bits)
{
    const int unused = 64 - bits;
    return QString::number(qint64(quint64(value) << unused) >> unused);
}

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

quint32 key(quint8 line, quint16 index, quint8 sub)
{
    return quint32(line) << 24 | quint32(index) << 8 | sub;
}

} // namespace

Type DictionaryTypes::type(int dataType)
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
        {18, {u"I40"_s}},
        {19, {u"I48"_s}},
        {20, {u"I56"_s}},
        {21, {u"I64"_s}},
        {22, {u"U24"_s, Type::Unsigned, 24}},
        {24, {u"U40"_s, Type::Unsigned, 40}},
        {25, {u"U48"_s, Type::Unsigned, 48}},
        {26, {u"U56"_s}},
        {27, {u"U64"_s, Type::Unsigned, 64}},
        {53, {u"BIT6"_s}},
        {124, {u"UTF8"_s, Type::Text}},
    };
    if (dataType >= 100 && dataType <= 105)
        return types.value(CAN::Unsigned8);
    return types.value(dataType, {u"unknown type"_s});
}

float DictionaryTypes::realValue(const QString &text)
{
    const float value = text.toFloat();
    return std::isfinite(value) && value != 0 ? value : 0;
}

QString DictionaryTypes::real(float value)
{
    return u"f%1"_s.arg(std::bit_cast<quint32>(value), 8, 16, '0'_L1);
}

QString DictionaryTypes::number(const Type &type, const QString &text, int signedBase)
{
    const quint64 mask = type.bits == 64 ? ~quint64(0) : (quint64(1) << type.bits) - 1;
    if (type.kind == Type::Signed)
        return inRange(text.toInt(nullptr, signedBase), type.bits);
    if (type.kind == Type::Real)
        return real(realValue(text));
    if (type.kind != Type::Unsigned)
        return u"-"_s;
    const quint64 value = type.bits > 32 ? text.toULongLong(nullptr, 0) : text.toUInt(nullptr, 0);
    return QString::number(value & mask);
}

QString DictionaryTypes::defaultNumber(const ObjectDataBase::SUBINDEX_DATA_T &sub)
{
    return number(type(sub.datatype), withoutNodeId(sub.defaultvalue), 0);
}

QString DictionaryTypes::atStart(ObjectDataBase &store, const ObjectDataBase::SUBINDEX_DATA_T &sub)
{
    constexpr int digits = 7; // behind the point of a number in scientific notation
    const bool hasInitialiser = store.getGeneralSetting(u"init_static_variables"_s) == "1"_L1;
    if (type(sub.datatype).kind != Type::Real || !hasInitialiser)
        return defaultNumber(sub);
    return real(QString::number(double(realValue(withoutNodeId(sub.defaultvalue))), 'e', digits).toFloat());
}

QByteArray DictionaryTypes::textBytes(const QString &text)
{
    return text.startsWith(u"|x"_s) ? QByteArray::fromHex(text.sliced(2).toLatin1()) : text.toUtf8();
}

bool DictionaryTypes::isJ1939Server(ObjectDataBase &store)
{
    return store.getGeneralSetting(u"line0type"_s) == "2"_L1;
}

bool DictionaryTypes::isWritable(const ObjectDataBase::SUBINDEX_DATA_T &sub)
{
    return sub.accesstype == "wo"_L1 || sub.accesstype.startsWith("rw"_L1);
}

DictionaryTypes::Services::Services(ObjectDataBase &store)
{
    if (store.getGeneralSetting(u"static_srdo_data"_s) != "1"_L1)
        return;
    const QList<quint8> lines = store.getLines();
    for (const quint8 line : lines)
        for (const quint16 index : store.getIndexList(line, 0x1380, 0x13B0))
            for (const quint8 number : store.getSubIndexList(line, index)) {
                const quint32 entry = store.getSubIndexDefault(line, index, number).toUInt(nullptr, 0);
                m_srdoData.insert(key(line, quint16(entry >> 16), quint8(entry >> 8)));
            }
}

DictionaryTypes::Service DictionaryTypes::Services::of(quint8 line, quint16 index, quint8 sub) const
{
    if (m_srdoData.contains(key(line, index, sub)))
        return {u"SRDO"_s, index};
    for (const Held &held : heldObjects())
        if (held.first <= index && index <= held.last && held.firstSub <= sub && sub <= held.lastSub)
            return {QString::fromLatin1(held.specifier), held.base < 0 ? 0 : index - held.base};
    return {};
}

bool DictionaryTypes::isKeptByStack(quint16 index, quint8 sub)
{
    static const QList<quint16> always{0x1005, 0x1006, 0x100C, 0x100D, 0x1012, 0x1016,
                                       0x1017, 0x1019, 0x102A, 0x1F10, 0x1F11};
    const bool isBehindCount = sub != 0
        && (index == 0x1010 || index == 0x1011 || (index >= 0x1200 && index <= 0x12FF)
            || (index >= 0x1400 && index <= 0x1BFF));
    return always.contains(index) || isBehindCount || (index >= 0x1300 && index <= 0x13FF)
        || (index == 0x1029 && sub == 1);
}
