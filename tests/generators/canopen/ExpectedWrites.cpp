#include "canopen/CANopenTypes.h"
#include "canopen/Helper.h"
#include "generators/canopen/DictionaryTypes.h"
#include "generators/canopen/ExpectedDictionary.h"
#include "generators/canopen/GeneratedDevice.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

using namespace DictionaryTypes;

using Sub = ObjectDataBase::SUBINDEX_DATA_T;

constexpr quint16 firstObject = 0x1000;

/** The number that the run-time writes. */
int sample(quint8 line, quint16 index, quint8 number)
{
    constexpr int most = 113; // fits into eight bits with sign
    return (line * 29 + index * 7 + number * 13) % most + 1;
}

/** A sub-index on the line that it is reached by. */
struct Place
{
    quint8 line;
    quint16 index;
    quint8 number;
    Sub data; ///< of the line that owns it
    QString variable; ///< what it is stored in; empty where that is none

    QString name() const { return u"%1 %2:%3"_s.arg(line).arg(index, 4, 16, '0'_L1).arg(number); }
};

/** A text of the application. */
struct Text
{
    QByteArray bytes;
    int length = 0; ///< that the stack believes to be in use
};

/** The variables of a device while its clients write to it. */
class Memory
{
public:
    explicit Memory(ObjectDataBase &store)
        : m_store(store), m_services(store), m_limits(isOn(u"limit_check"_s)),
          m_stringDefaults(isOn(u"generate_string_defaults"_s) && !isJ1939Server(store))
    {
        const QList<quint8> lines = m_store.getLines();
        for (const quint8 line : lines)
            if (line < ObjectDataBase::MaximumLines)
                addLine(line);
    }

    QStringList writeAll();
    QStringList readAll() const;

private:
    bool isOn(const QString &key) const { return m_store.getGeneralSetting(key).toInt() > 0; }
    Sub sub(quint8 line, quint16 index, quint8 number) const
    {
        Sub data;
        m_store.getSubIndex(line, index, number, data);
        return data;
    }
    void addLine(quint8 line);
    void add(quint8 line, quint16 index, quint8 number);
    QString variable(const Place &place, quint8 owner) const;
    QString write(const Place &place);
    bool isInLimits(const Sub &data, int value) const;
    static QString repeated(const Type &kind, int byte);

    ObjectDataBase &m_store;
    Services m_services;
    bool m_limits;
    bool m_stringDefaults;
    QList<Place> m_places;
    QHash<QString, QString> m_numbers; ///< by variable
    QHash<QString, Text> m_texts;
};

void Memory::addLine(quint8 line)
{
    for (const quint16 index : m_store.getIndexList(line, firstObject)) {
        const QList<quint8> subs = m_store.getSubIndexList(line, index);
        if (!subs.contains(0) || sub(line, index, 0).implementation == CANopen::VirtualObject)
            continue;
        for (const quint8 number : subs)
            if (sub(line, index, number).implementation != CANopen::VirtualObject)
                add(line, index, number);
    }
}

void Memory::add(quint8 line, quint16 index, quint8 number)
{
    const quint8 owner = sub(line, index, number).sharedlines ? 0 : line;
    Place place{line, index, number, sub(owner, index, number), {}};
    place.variable = variable(place, owner);
    const Type kind = type(place.data.datatype);
    const bool isApplication = place.data.implementation == CANopen::ApplicationVariable;
    if (!place.variable.isEmpty() && kind.kind == Type::Text) {
        const QByteArray text = TestApplication::textAtStart(place.variable, place.data, m_stringDefaults);
        m_texts.insert(place.variable, {text, place.data.size});
    } else if (!place.variable.isEmpty()) {
        const int value = TestApplication::valueOf(place.variable);
        const QString ofApplication = kind.kind == Type::Real ? real(float(value)) : QString::number(value);
        m_numbers.insert(place.variable, isApplication ? ofApplication : atStart(m_store, place.data));
    }
    m_places.append(place);
}

QString Memory::variable(const Place &place, quint8 owner) const
{
    const Type kind = type(place.data.datatype);
    const bool isText = kind.kind == Type::Text;
    if (m_services.hold(owner, place.index, place.number) || (!kind.isNumber() && !isText))
        return {};
    if (place.data.implementation == CANopen::ApplicationVariable)
        return TestApplication::plainName(
            Helper::substituteVariables(place.data.varname, place.index, place.number, owner));
    if (place.data.implementation != CANopen::ManagedVariable || isText)
        return {};
    return u"%1 of line %2"_s.arg(place.name().section(u' ', 1)).arg(owner);
}

bool Memory::isInLimits(const Sub &data, int value) const
{
    const Type kind = type(data.datatype);
    if (!m_limits || !data.limitineds || !kind.isNumber())
        return true;
    if (kind.kind == Type::Real)
        return realValue(data.lowlimit) <= float(value) && float(value) <= realValue(data.uplimit);
    const QString low = number(kind, data.lowlimit, 10);
    const QString up = number(kind, data.uplimit, 10);
    const QString written = repeated(kind, value);
    if (kind.kind == Type::Signed)
        return low.toLongLong() <= written.toLongLong() && written.toLongLong() <= up.toLongLong();
    return low.toULongLong() <= written.toULongLong() && written.toULongLong() <= up.toULongLong();
}

/** A number of the type with the same value in all of its bytes. */
QString Memory::repeated(const Type &kind, int byte)
{
    quint64 value = 0;
    for (int bit = 0; bit < kind.bits; bit += 8)
        value |= quint64(byte) << bit;
    return QString::number(value);
}

/** Why not, or that it has been written. */
QString Memory::write(const Place &place)
{
    const Type kind = type(place.data.datatype);
    const int value = sample(place.line, place.index, place.number);
    if (!isWritable(place.data))
        return u"access"_s;
    if (place.data.implementation == CANopen::ManagedConst)
        return u"const"_s;
    if (m_services.hold(place.line, place.index, place.number))
        return u"service"_s;
    if (place.variable.isEmpty())
        return u"none"_s;
    if (!isInLimits(place.data, value))
        return u"limit"_s;
    if (kind.kind == Type::Text) {
        Text &text = m_texts[place.variable];
        text.length = place.data.size / 2;
        text.bytes.replace(0, text.length, QByteArray(text.length, char(value)));
    } else {
        m_numbers[place.variable] = kind.kind == Type::Real ? real(float(value)) : repeated(kind, value);
    }
    return u"ok"_s;
}

QStringList Memory::writeAll()
{
    QStringList lines;
    for (const Place &place : std::as_const(m_places))
        lines.append(u"write %1 %2"_s.arg(place.name(), write(place)));
    return lines;
}

QStringList Memory::readAll() const
{
    QStringList lines;
    for (const Place &place : m_places) {
        const bool isText = type(place.data.datatype).kind == Type::Text;
        const Text text = m_texts.value(place.variable);
        const QString value = isText ? u"%1/%2/t%3"_s.arg(place.data.size)
                                           .arg(text.length)
                                           .arg(QString::fromLatin1(text.bytes.toHex()))
                                     : m_numbers.value(place.variable);
        if (!place.variable.isEmpty())
            lines.append(u"read %1 %2"_s.arg(place.name(), value));
    }
    return lines;
}

} // namespace

QStringList ExpectedDictionary::writes(ObjectDataBase &store)
{
    Memory memory(store);
    const QStringList results = memory.writeAll();
    return results + memory.readAll();
}
