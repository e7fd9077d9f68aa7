#include "generators/declarations/ExternalVariables.h"

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "generators/CText.h"
#include "generators/LineProtocols.h"
#include "generators/ObjectKey.h"
#include "generators/RunFacts.h"
#include "generators/declarations/VariableTypes.h"
#include "store/ObjectDataBase.h"

#include <QSet>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr quint16 firstObject = 0x1000; // CiA 301: below are the data types
constexpr int bitsPerByte = 8;
constexpr int severalSources = 2; // from so many on the stack keeps a value for each of them

constexpr std::array<quint8, 2> directions{ObjectDataBase::Receive, ObjectDataBase::Transmit};

/** Words of C99 that no variable can be called. */
constexpr std::array<QStringView, 37> keywords{
    u"auto",     u"break",  u"case",   u"char",     u"const",     u"continue", u"default",  u"do",
    u"double",   u"else",   u"enum",   u"extern",   u"float",     u"for",      u"goto",     u"if",
    u"inline",   u"int",    u"long",   u"register", u"restrict",  u"return",   u"short",    u"signed",
    u"sizeof",   u"static", u"struct", u"switch",   u"typedef",   u"union",    u"unsigned", u"void",
    u"volatile", u"while",  u"_Bool",  u"_Complex", u"_Imaginary"};

bool isPlainName(const QString &name)
{
    const auto isLetter = [](QChar c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
    };
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    return !name.isEmpty() && !isDigit(name.front())
        && std::ranges::all_of(name, [&](QChar c) { return isLetter(c) || isDigit(c); })
        && std::ranges::find(keywords, name) == keywords.end();
}

QString dimension(int size)
{
    return u"[%1]"_s.arg(std::max(size, 1)); // C has no empty arrays
}

/** Collects the variables line by line. */
class Reader
{
public:
    explicit Reader(ObjectDataBase &store) : m_store(store) { }

    ExternalVariables::Line readLine(quint8 line)
    {
        m_result = {.number = line};
        readObjects();
        const int type = RunFacts::lineType(m_store, line);
        if (LineProtocols::hasRawCan(type))
            readCanIds();
        if (LineProtocols::hasJ1939(type))
            readParameterGroups();
        return m_result;
    }

private:
    void add(const QString &type, const QString &name, const QString &dimensions, const QString &source)
    {
        if (type.isEmpty() || !isPlainName(name) || m_known.contains(name))
            return;
        m_known.insert(name);
        m_result.variables.append({type, name + dimensions, source});
    }
    void readObjects();
    void readCanIds();
    void readParameterGroups();
    void readSignals(quint32 pgn, quint8 direction);

    ObjectDataBase &m_store;
    QSet<QString> m_known;
    ExternalVariables::Line m_result;
};

// The tables of objects take those of every line, whatever the line carries: a J1939 line can have an SDO
// server (CiA 510).
void Reader::readObjects()
{
    const quint8 line = m_result.number;
    const auto places = m_store.findSubIndices(line, u"implementation"_s,
                                               QString::number(CANopen::ApplicationVariable), false);
    for (const auto &[index, number] : places) {
        ObjectDataBase::SUBINDEX_DATA_T sub;
        if (index < firstObject || !m_store.getSubIndex(line, index, number, sub))
            continue;
        const bool isArray = VariableTypes::isArray(sub.datatype);
        add(VariableTypes::ofObject(sub.datatype),
            CText::variableName(sub.varname, ObjectKey::make(line, index, number)),
            isArray ? dimension(sub.size) : QString(),
            u"/* %1/0x%2 */"_s.arg(u"0x"_s + QString::number(index, 16), QString::number(number, 16)));
    }
}

template <typename Signal>
QString signalDimension(const Signal &signal)
{
    if (!VariableTypes::isArray(signal.datatype))
        return {};
    return dimension((signal.bitsize + bitsPerByte - 1) / bitsPerByte);
}

void Reader::readCanIds()
{
    const quint8 line = m_result.number;
    for (const quint8 direction : directions) {
        const QList<quint32> ids = m_store.getCANIDList(line, direction);
        for (const quint32 id : ids) {
            const QList<quint32> elements = m_store.getDataElementList(line, id, direction);
            for (const quint32 number : elements) {
                ObjectDataBase::DataElement element;
                m_store.getDataElement(line, id, direction, number, element);
                if (element.implementation == CANopen::ApplicationVariable)
                    add(VariableTypes::ofSignal(element.datatype), element.varname, signalDimension(element),
                        u"/* CAN-ID 0x%1 */"_s.arg(id, 0, 16));
            }
        }
    }
}

void Reader::readParameterGroups()
{
    for (const quint8 direction : directions) {
        const QList<quint32> pgns = m_store.getPGNList(m_result.number, direction);
        for (const quint32 pgn : pgns)
            readSignals(pgn, direction);
    }
}

void Reader::readSignals(quint32 pgn, quint8 direction)
{
    const quint8 line = m_result.number;
    ObjectDataBase::PGN group;
    m_store.getPGN(line, pgn, direction, group);
    const bool hasSources =
        direction == ObjectDataBase::Receive && group.multisourceaddress >= severalSources;
    const QString sources = hasSources ? dimension(group.multisourceaddress) : QString();
    const QList<quint32> spns = m_store.getSPNList(line, pgn, direction);
    for (const quint32 spn : spns) {
        ObjectDataBase::SPN signal;
        m_store.getSPN(line, pgn, direction, spn, signal);
        if (signal.implementation == CANopen::ApplicationVariable)
            add(VariableTypes::ofSignal(signal.datatype), signal.varname, sources + signalDimension(signal),
                u"/* PGN 0x%1 */"_s.arg(pgn, 0, 16));
    }
}

} // namespace

ExternalVariables ExternalVariables::read(ObjectDataBase &store)
{
    ExternalVariables variables;
    Reader reader(store);
    const QList<quint8> lines = RunFacts::projectLines(store);
    for (const quint8 line : lines)
        if (line < ObjectDataBase::MaximumLines)
            variables.lines.append(reader.readLine(line));
    return variables;
}
