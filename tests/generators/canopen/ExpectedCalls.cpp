#include "canopen/CANopenTypes.h"
#include "generators/canopen/DictionaryTypes.h"
#include "generators/canopen/ExpectedDictionary.h"
#include "store/ObjectDataBase.h"

using namespace Qt::StringLiterals;

namespace {

using Sub = ObjectDataBase::SUBINDEX_DATA_T;

constexpr quint16 firstObject = 0x1000;

/** In decimal; what the node identifier adds at run time is not part of it. */
QString plainNumber(const QString &text)
{
    return QString::number(QString(text).remove(u"$nodeid+"_s, Qt::CaseInsensitive).toUInt(nullptr, 0));
}

/** Lengths of mapped objects are bits where the project says so and some mapping has several entries. */
bool hasBitLengths(ObjectDataBase &store)
{
    bool hasSeveral = false;
    for (const quint8 line : store.getLines())
        for (const quint16 index : store.getIndexList(line, 0x1600, 0x1BFF))
            if (index < 0x1800 || index >= 0x1A00)
                hasSeveral = hasSeveral || store.getSubIndexList(line, index).size() > 2;
    return hasSeveral && store.getGeneralSetting(u"bitwise_mapping"_s).toInt() != 0;
}

/** The calls that start the services of a line. */
class Starter
{
public:
    Starter(ObjectDataBase &store, quint8 line, bool isMultiLine)
        : m_store(store), m_line(line), m_isMultiLine(isMultiLine)
    {
    }

    QStringList calls();
    /** COB-IDs that the application sets when it loads parameters. */
    QStringList cobIds();
    /** Objects, PDOs and SDOs as the stack reserves memory for them. */
    QString counts() const;

private:
    /** A number of the settings; a list has one for each line, and the last one for all others. */
    int setting(const QString &key) const
    {
        const QStringList numbers = m_store.getGeneralSetting(key).split(u',');
        return numbers.value(qMin<qsizetype>(m_line, numbers.size() - 1)).toInt();
    }
    /** The application starts lines in turn as FD masters and as slaves on classical CAN, if they may be
     * either. */
    bool isOddOne() const { return m_line % 2 != 0; }
    bool has(quint16 index) const { return m_store.indexExists(m_line, index); }
    qsizetype count(quint16 first, quint16 last) const
    {
        return m_store.getIndexList(m_line, first, last).size();
    }
    qsizetype entries(quint16 index) const
    {
        const QList<quint8> subs = m_store.getSubIndexList(m_line, index);
        return subs.size() - qsizetype(subs.contains(0));
    }
    /** Those that are not virtual. */
    qsizetype describedObjects() const
    {
        QList<quint16> indices = m_store.getIndexList(m_line, firstObject);
        indices.removeIf([this](quint16 index) {
            Sub data;
            m_store.getSubIndex(m_line, index, 0, data);
            return data.implementation == CANopen::VirtualObject;
        });
        return indices.size();
    }
    QString number(quint16 index, quint8 sub) const
    {
        Sub data;
        const bool exists = m_store.subIndexExists(m_line, index, sub);
        return exists && m_store.getSubIndex(m_line, index, sub, data) ? plainNumber(data.defaultvalue)
                                                                       : u"0"_s;
    }
    void add(const QString &service, const QStringList &arguments = {})
    {
        const QStringList words = QStringList{u"call"_s, QString::number(m_line), service} + arguments;
        m_calls.append(words.join(u' '));
    }
    void addIf(quint16 index, const QString &service, const QStringList &arguments = {})
    {
        if (has(index))
            add(service, arguments);
    }
    void addIfSet(const QString &key, const QString &service)
    {
        if (setting(key) > 0)
            add(service);
    }
    void addSdos();
    void addPredefined();
    void addNetworkManagement();
    void addCobIds(quint16 first, quint16 last, quint8 most, bool mayNameNode);
    void addPdos(quint16 first, const QString &service, const QList<quint8> &parameters);
    int sendingPdo(quint8 line, quint32 entry) const;
    QString routing(quint32 entry) const;
    QStringList mapping(quint16 index, bool isReceived) const;

    ObjectDataBase &m_store;
    quint8 m_line;
    bool m_isMultiLine;
    QStringList m_calls;
};

void Starter::addSdos()
{
    const bool isFd = m_store.getGeneralSetting(u"canfd_supported"_s).toInt() > 0;
    if (isFd && isOddOne()) {
        add(u"coSdoServerInit"_s, {u"1"_s});
    } else if (isFd) {
        add(u"coUsdoServerInit"_s);
        if (setting(u"usdo_client_enabled"_s) > 0)
            addIfSet(u"usdo_client_cnt"_s, u"coUsdoClientInit"_s);
    } else {
        add(u"coSdoServerInit"_s, {u"1"_s});
        for (const quint16 index : m_store.getIndexList(m_line, 0x1201, 0x127F))
            add(u"coSdoServerInit"_s, {QString::number(index - 0x11FF)});
    }
    for (const quint16 index : has(0x1280) ? m_store.getIndexList(m_line, 0x1280, 0x12FF) : QList<quint16>())
        add(u"coSdoClientInit"_s, {QString::number(index - 0x127F)});
}

void Starter::addPredefined()
{
    const QString consumers = QString::number(entries(0x1016));
    addIf(0x1017, u"coErrorCtrlInit"_s, {number(0x1017, 0), consumers});
    if (!has(0x1017))
        addIf(0x100C, u"coErrorCtrlInit"_s, {u"0"_s, consumers});
    addIf(0x1014, u"coEmcyProducerInit"_s);
    addIf(0x1005, u"coSyncInit"_s, {number(0x1005, 0), number(0x1006, 0), number(0x1019, 0)});
    addIf(0x1028, u"coEmcyConsumerInit"_s, {QString::number(entries(0x1028))});
    const quint32 time = number(0x1012, 0).toUInt();
    addIf(0x1012, u"coTimeInit"_s, {QString::number(time >> 31), QString::number(time >> 30 & 1U)});
}

/** The TPDO that sends an entry; 0 where none does. */
int Starter::sendingPdo(quint8 line, quint32 entry) const
{
    constexpr quint16 beforeFirst = 0x19FF;
    for (const quint16 index : m_store.getIndexList(line, beforeFirst + 1, 0x1BFF)) {
        const int count = plainNumber(m_store.getSubIndexDefault(line, index, 0)).toInt();
        for (int i = 1; i <= count; ++i)
            if (plainNumber(m_store.getSubIndexDefault(line, index, quint8(i))).toUInt() == entry)
                return index - beforeFirst;
    }
    return 0;
}

/** CiA 302: where a received value goes to from here; nothing in a device that does not route. */
QString Starter::routing(quint32 entry) const
{
    bool hasRouting = false;
    QStringList numbers;
    const auto index = quint16(entry >> 16);
    const auto sub = quint8(entry >> 8);
    Sub variable;
    const bool isShared = m_store.subIndexExists(m_line, index, sub)
        && m_store.getSubIndex(m_line, index, sub, variable) && variable.sharedlines;
    const QList<quint8> lines = m_store.getLines();
    for (const quint8 line : lines) {
        hasRouting = hasRouting || m_store.indexExists(line, 0x1F2C);
        if (line < ObjectDataBase::MaximumLines)
            numbers.append(QString::number(isShared ? sendingPdo(line, entry) : 0));
    }
    return hasRouting ? QString(u'>' + numbers.join(u',')) : QString();
}

QStringList Starter::mapping(quint16 index, bool isReceived) const
{
    Sub head;
    m_store.getSubIndex(m_line, index, 0, head);
    const int count = plainNumber(head.defaultvalue).toInt();
    if (head.accesstype == "rw"_L1 || count == 0)
        return {u"dynamic"_s};
    const bool isBitwise = hasBitLengths(m_store);
    QStringList rows;
    for (int i = 1; i <= count; ++i) {
        const quint32 entry = number(index, quint8(i)).toUInt();
        const quint32 bits = entry & 0xFF;
        rows.append(u"%1/%2"_s.arg(entry, 8, 16, '0'_L1).arg(isBitwise ? bits : bits / 8)
                    + (isReceived ? routing(entry) : QString()));
    }
    return rows;
}

void Starter::addPdos(quint16 first, const QString &service, const QList<quint8> &parameters)
{
    constexpr quint16 highestNumber = 0x1FF;
    constexpr quint16 toMapping = 0x200;
    for (const quint16 index : m_store.getIndexList(m_line, first, first + highestNumber)) {
        QStringList arguments{QString::number(index - first + 1)};
        for (const quint8 parameter : parameters)
            arguments.append(number(index, parameter));
        add(service, arguments + mapping(quint16(index + toMapping), first == 0x1400));
    }
}

void Starter::addNetworkManagement()
{
    constexpr int chosenAtStart = 2;
    const int role = setting(u"nmtmaster"_s);
    const bool isMaster = role == 1 || (role == chosenAtStart && !isOddOne());
    if (m_store.getGeneralSetting(u"lss_supported"_s).toInt() > 0)
        add(isMaster ? u"coLssMasterInit"_s : u"coLssInit"_s);
    add(u"coNmtInit"_s, {isMaster ? u"1"_s : u"0"_s});
}

QStringList Starter::calls()
{
    add(u"coOdInitOdPtr"_s);
    if (!m_isMultiLine)
        addIfSet(u"event_led"_s, u"coLedInit"_s);
    addSdos();
    addPredefined();
    addPdos(0x1800, u"coPdoTransmitInit"_s, {2, 3, 5, 6});
    addPdos(0x1400, u"coPdoReceiveInit"_s, {2, 3, 5});
    addIf(0x1F10, u"coSrdInit"_s);
    addIf(0x1300, u"coGfcInit"_s, {u"1"_s, u"1"_s});
    if (const qsizetype srdos = count(0x1301, 0x1340); srdos > 0)
        add(u"coSrdoInit"_s, {QString::number(srdos)});
    if (m_isMultiLine)
        addIfSet(u"event_led"_s, u"coLedInit"_s);
    addIfSet(u"isotp_connection_cnt"_s, u"isoTpInit"_s);
    addIfSet(u"idnego_supported"_s, u"coIdNegoInit"_s);
    if (has(0x1F81) || setting(u"bootup_manager"_s) > 0)
        add(u"coGuardingInit"_s);
    addNetworkManagement();
    return m_calls;
}

void Starter::addCobIds(quint16 first, quint16 last, quint8 most, bool mayNameNode)
{
    const int nodeId = m_line + 1;
    for (const quint16 index : m_store.getIndexList(m_line, first, last))
        for (quint8 sub = 1; sub <= most; ++sub) {
            Sub data;
            if (!m_store.subIndexExists(m_line, index, sub) || !m_store.getSubIndex(m_line, index, sub, data))
                continue;
            const bool namesNode =
                mayNameNode && data.defaultvalue.contains(u"$nodeid+"_s, Qt::CaseInsensitive);
            const quint32 cobId = plainNumber(data.defaultvalue).toUInt() + quint32(namesNode ? nodeId : 0);
            add(u"coOdSetCobid"_s, {QString::number(index), QString::number(sub), QString::number(cobId)});
        }
}

QStringList Starter::cobIds()
{
    m_calls.clear();
    if (setting(u"overwrite_predef"_s) != 1)
        return {};
    addCobIds(0x1201, 0x127F, 2, false);
    addCobIds(0x1280, 0x12FF, 2, false);
    addCobIds(0x1400, 0x15FF, 1, true);
    addCobIds(0x1800, 0x19FF, 1, true);
    return m_calls;
}

QString Starter::counts() const
{
    const QList<qsizetype> numbers{describedObjects(),    count(0x1800, 0x19FF),
                                   count(0x1400, 0x15FF), qMax<qsizetype>(count(0x1200, 0x127F), 1),
                                   count(0x1280, 0x12FF), m_line + 1};
    QStringList texts;
    for (const qsizetype number : numbers)
        texts.append(QString::number(number));
    return texts.join(u'/');
}

QStringList objectDictionaryCalls(const QList<quint8> &lines)
{
    QStringList calls;
    for (const quint8 line : lines)
        calls.append(u"call %1 coOdInitOdPtr"_s.arg(line));
    return calls;
}

/** The bits of CORE_PROT_TYPE for a CANopen line. */
int protocols(ObjectDataBase &store)
{
    constexpr int canopen = 0x01;
    constexpr int uds = 0x08;
    const bool hasUds = store.getGeneralSetting(u"udsserver_supported"_s) == "1"_L1
        || store.getGeneralSetting(u"udsclient_supported"_s) == "1"_L1;
    return hasUds ? canopen | uds : canopen;
}

} // namespace

QStringList ExpectedDictionary::calls(ObjectDataBase &store)
{
    QString core = u"call coreStackInit 1"_s;
    QString counts = u"call coCanOpenStackVarInit"_s;
    QStringList services;
    QStringList cobIds;
    bool hasRouting = false;
    QList<quint8> numbers = store.getLines();
    numbers.removeIf([](quint8 line) { return line >= ObjectDataBase::MaximumLines; });
    const bool isMultiLine = numbers.size() > 1 || store.getMiscSetting(u"generateML"_s) == "true"_L1;
    for (const quint8 line : std::as_const(numbers)) {
        Starter starter(store, line, isMultiLine);
        core += u" 10/10/%1"_s.arg(protocols(store)); // behind the numbers of buffers
        counts += u' ' + starter.counts();
        services += starter.calls();
        cobIds += starter.cobIds();
        hasRouting = hasRouting || store.indexExists(line, 0x1F2C);
    }
    if (DictionaryTypes::isJ1939Server(store)) // a J1939 device starts its stack elsewhere
        return objectDictionaryCalls(numbers);
    QStringList all;
    if (isMultiLine || store.getGeneralSetting(u"new_init_structure"_s) == "1"_L1)
        all.append(core);
    all.append(counts);
    all += services;
    if (isMultiLine && hasRouting)
        all.append(u"call coPdoNetworkRouting"_s);
    return all + cobIds;
}
