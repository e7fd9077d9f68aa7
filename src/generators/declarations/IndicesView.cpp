#include "generators/declarations/IndicesView.h"

#include "canopen/Helper.h"
#include "generators/LineProtocols.h"
#include "generators/RunFacts.h"
#include "store/ObjectDataBase.h"

#include <QRegularExpression>

#include <array>

using namespace Qt::StringLiterals;

namespace {

using DefineNames::identifier;
using DefineNames::Request;

// CiA 301: below are the data types
constexpr quint16 firstObject = 0x1000;
constexpr quint16 firstReceivePdo = 0x1400;
constexpr quint16 lastReceivePdo = 0x15FF;
constexpr quint16 firstTransmitPdo = 0x1800;
constexpr quint16 lastTransmitPdo = 0x19FF;

constexpr std::array<quint8, 2> directions{ObjectDataBase::Receive, ObjectDataBase::Transmit};

QString hexadecimal(quint32 number)
{
    return QString::number(number, 16);
}

QString decimalValue(quint32 number)
{
    return u"\t%1u"_s.arg(number);
}

/** "RPDO" or "TPDO": what the object is on this device; the name may tell of the other end. */
QString pdoWord(quint16 index, const QString &named)
{
    if (index >= firstReceivePdo && index <= lastReceivePdo)
        return u"RPDO"_s;
    return index >= firstTransmitPdo && index <= lastTransmitPdo ? u"TPDO"_s : named;
}

/** Shortens the names that a master gives to the PDOs of its nodes; any other name stays. */
QString withoutPdoWords(const QString &name, quint16 index)
{
    static const QRegularExpression linePrefix(u"^L[0-9]+_"_s);
    static const QRegularExpression pdo(
        u"^I_([RT]PDO)_COMM_PAR_([0-9]+)_FOR_NODE_([0-9]+)_([A-Za-z0-9_]+)$"_s);
    const QRegularExpressionMatch match = pdo.match(QString(name).remove(linePrefix));
    if (!match.hasMatch())
        return name;
    return u"%1_%2_%3_%4"_s.arg(pdoWord(index, match.captured(1)), match.captured(2), match.captured(3),
                                match.captured(4));
}

/** Reads what the lines have names for. */
class Reader
{
public:
    Reader(ObjectDataBase &store, bool multiLineForm) : m_store(store), m_multiLineForm(multiLineForm) { }

    void readLine(quint8 line)
    {
        m_line = line;
        m_prefix = m_multiLineForm ? u"L%1_"_s.arg(line) : QString();
        const int type = RunFacts::lineType(m_store, line);
        if (LineProtocols::hasCANopen(type))
            readObjects();
        if (LineProtocols::hasRawCan(type))
            readCanIds();
        if (LineProtocols::hasJ1939(type))
            readParameterGroups();
    }
    const QList<Request> &requests() const { return m_requests; }

private:
    void add(const QString &name, quint32 number, const QString &value, const QString &place)
    {
        m_requests.append({.name = m_prefix + name, .number = number, .value = value, .place = place});
    }
    void readObjects();
    void addObject(quint16 index, const ObjectDataBase::INDEX_DATA_T &object);
    void readSubIndex(quint16 index, quint8 number);
    void readCanIds();
    void readParameterGroups();
    void readSignals(quint32 pgn, quint8 direction);

    ObjectDataBase &m_store;
    bool m_multiLineForm;
    quint8 m_line = 0;
    QString m_prefix;
    QList<Request> m_requests;
};

void Reader::readObjects()
{
    m_store.visitIndices(m_line, [this](quint16 index, const ObjectDataBase::INDEX_DATA_T &object) {
        if (index < firstObject)
            return;
        addObject(index, object);
        const QList<quint8> numbers = m_store.getSubIndexList(m_line, index);
        for (const quint8 number : numbers)
            readSubIndex(index, number);
    });
}

/** What a define is called after: its own word, else the name. */
QString namingText(const MetadataMap &metadata, const QString &key, const QString &name)
{
    QString own = metadata.value(key);
    if (!own.isEmpty())
        return own;
    return name.isEmpty() ? u"unnamed object"_s : name;
}

void Reader::addObject(quint16 index, const ObjectDataBase::INDEX_DATA_T &object)
{
    const QString text = Helper::substituteVariables(
        namingText(object.metadata, u"objectdefine"_s, object.name), index, 0, m_line);
    const QString place = hexadecimal(index);
    add(withoutPdoWords(identifier(u"I_", text), index), index, u"\t0x%1u"_s.arg(place), place);
}

void Reader::readSubIndex(quint16 index, quint8 number)
{
    ObjectDataBase::SUBINDEX_DATA_T sub;
    m_store.getSubIndex(m_line, index, number, sub);
    const QString text = Helper::substituteVariables(namingText(sub.metadata, u"subdefine"_s, sub.name),
                                                     index, number, m_line);
    add(identifier(u"S_", text), number, decimalValue(number),
        hexadecimal(index) + u'_' + QString::number(number));
}

void Reader::readCanIds()
{
    for (const quint8 direction : directions) {
        const QList<quint32> ids = m_store.getCANIDList(m_line, direction);
        for (const quint32 id : ids)
            add(u"ID_%1"_s.arg(id), id, decimalValue(id), QString::number(id));
    }
}

void Reader::readParameterGroups()
{
    for (const quint8 direction : directions) {
        const QList<quint32> pgns = m_store.getPGNList(m_line, direction);
        for (const quint32 pgn : pgns) {
            const QString name = m_store.getPGNName(m_line, pgn, direction);
            add(identifier(u"PGN_", name), pgn, decimalValue(pgn) + u" /* 0x%1 */"_s.arg(hexadecimal(pgn)),
                QString::number(pgn));
            readSignals(pgn, direction);
        }
    }
}

void Reader::readSignals(quint32 pgn, quint8 direction)
{
    const QList<quint32> spns = m_store.getSPNList(m_line, pgn, direction);
    for (const quint32 spn : spns) {
        const QString name = m_store.getSPNName(m_line, pgn, direction, spn) + u"_%1_%2"_s.arg(pgn).arg(spn);
        add(identifier(u"SPN_", name), spn, decimalValue(spn), QString::number(spn));
    }
}

} // namespace

IndicesView IndicesView::read(ObjectDataBase &store, const IndicesRequest &request)
{
    Reader reader(store, request.multiLineForm);
    for (const quint8 line : request.lines)
        reader.readLine(line);
    return {DefineNames::resolve(reader.requests(), {.name = lastName.toString()})};
}
