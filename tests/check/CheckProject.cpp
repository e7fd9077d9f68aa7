#include "check/CheckProject.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace CheckTest {

Sub sub(const QString &name, int type, const QString &access, const QString &value)
{
    Sub data;
    data.name = name;
    data.datatype = type;
    data.accesstype = access;
    data.defaultvalue = value;
    data.defaultineds = true;
    data.writedefaulttoeds = true;
    data.implementation = access == "const"_L1 ? CANopen::ManagedConst : CANopen::ManagedVariable;
    data.pdomapping = PDOMapping(PDOMapping::Allowed);
    return data;
}

Sub countSub(int highest)
{
    return sub(u"Highest sub-index"_s, CAN::Unsigned8, u"const"_s, QString::number(highest));
}

Project::Project(int lineType) : store(QSharedPointer<ObjectDataBase>::create())
{
    require(store->createNewDataBase());
    set(u"co_timer_interval"_s, u"1000"_s);
    setMisc(u"costackpath"_s, stackFolder());
    addLine(0, lineType);
}

Project::Project(const QString &path) : store(QSharedPointer<ObjectDataBase>::create())
{
    require(store->openDataBase(path));
}

void Project::require(bool success)
{
    if (!success)
        qFatal("the store refused to work for the test");
}

void Project::addLine(quint8 number, int lineType)
{
    line = number;
    require(store->nodeExists(number) || store->addNode(number, {}));
    set(u"line%1type"_s.arg(number), QString::number(lineType));
    for (const QString &key : {u"receivebuffersize"_s, u"transmitbuffersize"_s})
        setForLine(key, u"10"_s);
    setForLine(u"co_node_id"_s, QString::number(number + 1));
    setDescription(u"Granularity"_s, u"8"_s);
    if (lineType == CANopenLine || lineType == CANopenAndJ1939 || lineType == CANopenAndRawCan)
        addCANopen();
    if (lineType == J1939Line || lineType == CANopenAndJ1939 || lineType == J1939AndRawCan)
        addJ1939();
    if (lineType == RawCanLine || lineType == CANopenAndRawCan || lineType == J1939AndRawCan)
        addRawCan();
}

void Project::addCANopen() const
{
    variable(0x1000, sub(u"Device Type"_s, CAN::Unsigned32, u"const"_s, u"0x00000000"_s));
    variable(0x1001, sub(u"Error Register"_s, CAN::Unsigned8, u"ro"_s, u"0"_s));
    variable(0x1005, sub(u"COB-ID SYNC"_s, CAN::Unsigned32, u"rw"_s, u"0x80"_s));
    variable(0x1017, sub(u"Producer Heartbeat Time"_s, CAN::Unsigned16, u"rw"_s, u"0"_s));
    object(0x1018, CANopen::Record, u"Identity Object"_s);
    put(0x1018, 0, countSub(4));
    put(0x1018, 1, sub(u"Vendor-ID"_s, CAN::Unsigned32, u"const"_s, u"0x319"_s));
    put(0x1018, 2, sub(u"Product Code"_s, CAN::Unsigned32, u"const"_s, u"0x1"_s));
    put(0x1018, 3, sub(u"Revision Number"_s, CAN::Unsigned32, u"const"_s, u"0x10000"_s));
    put(0x1018, 4, sub(u"Serial Number"_s, CAN::Unsigned32, u"ro"_s, u"0x0"_s));
    pdo(0x1400, u"$NODEID+0x200"_s, {u"0x20000108"_s});
    pdo(0x1800, u"$NODEID+0x180"_s, {u"0x20010010"_s});
    object(0x2000, CANopen::Array, u"Bytes"_s);
    put(0x2000, 0, countSub(2));
    for (const quint8 subIndex : {1, 2})
        put(0x2000, subIndex, sub(u"Byte %1"_s.arg(subIndex), CAN::Unsigned8, u"rw"_s, u"0"_s));
    variable(0x2001, sub(u"Speed"_s, CAN::Unsigned16, u"rw"_s, u"0"_s));
    implementation(0x2001, 0, CANopen::ApplicationVariable);
    varName(0x2001, 0, u"speed"_s);
    variable(0x2002, sub(u"Label"_s, CAN::VisibleString, u"const"_s, u"text"_s));
}

void Project::addJ1939() const
{
    for (const QString &key :
         {u"identitynumber"_s, u"manufacturercode"_s, u"ecuinstance"_s, u"functioninstance"_s, u"function"_s,
          u"vehiclesystem"_s, u"vehicleinstance"_s, u"industrygroup"_s})
        setJ1939(key, u"1"_s);
    setJ1939(u"startaddress"_s, u"84"_s);
    for (const QString &key :
         {u"bamsupport"_s, u"cmdtsupport"_s, u"safetysupport"_s, u"dynsupport"_s, u"addresscapable"_s})
        setJ1939(key, u"0"_s);
    setJ1939(u"cmdtpackets"_s, u"3"_s);
    pgn(61444, ObjectDataBase::Receive);
    spn(61444, ObjectDataBase::Receive, 190, CAN::Unsigned16, 16, 0);
    spn(61444, ObjectDataBase::Receive, 899, CAN::Unsigned4, 4, 16);
    pgn(65226, ObjectDataBase::Transmit);
    spn(65226, ObjectDataBase::Transmit, 1213, CAN::Unsigned8, 8, 0);
}

void Project::addRawCan() const
{
    canId(0x123, ObjectDataBase::Receive);
    element(0x123, ObjectDataBase::Receive, 1, CAN::Unsigned16, 16, 0);
    element(0x123, ObjectDataBase::Receive, 2, CAN::Unsigned8, 8, 16);
    canId(0x124, ObjectDataBase::Transmit);
    element(0x124, ObjectDataBase::Transmit, 1, CAN::Unsigned32, 32, 0);
}

void Project::set(const QString &key, const QString &value) const
{
    require(store->setGeneralSetting(key, value));
}

void Project::setForLine(const QString &key, const QString &value) const
{
    require(store->setGeneralSettingForLine(key, value, line));
}

void Project::setDescription(const QString &key, const QString &value) const
{
    const quint8 former = store->descriptionLine();
    store->setDescriptionLine(line);
    require(store->setDescriptionSetting(key, value));
    store->setDescriptionLine(former);
}

void Project::setJ1939(const QString &key, const QString &value) const
{
    require(store->setJ1939Setting(key, value));
}

void Project::setMisc(const QString &key, const QString &value) const
{
    require(store->setMiscSetting(key, value));
}

void Project::makeFd() const
{
    set(u"canfd_supported"_s, u"1"_s);
    array(0x1000, {u"0x0"_s});
}

void Project::object(quint16 index, int objectCode, const QString &name) const
{
    require(store->addIndex(line, index, {.name = name, .datatype = 7, .objecttype = objectCode}));
}

void Project::variable(quint16 index, const Sub &data) const
{
    object(index, CANopen::Var, data.name);
    put(index, 0, data);
}

void Project::array(quint16 index, const QStringList &values) const
{
    object(index, CANopen::Array);
    put(index, 0, countSub(int(values.size())));
    for (int i = 0; i < values.size(); ++i)
        put(index, quint8(i + 1), sub(u"Entry %1"_s.arg(i + 1), CAN::Unsigned32, u"rw"_s, values.at(i)));
}

void Project::put(quint16 index, quint8 subIndex, const Sub &data) const
{
    require(store->addSubIndex(line, index, subIndex, data));
}

Sub Project::get(quint16 index, quint8 subIndex) const
{
    Sub data;
    require(store->getSubIndex(line, index, subIndex, data));
    return data;
}

void Project::value(quint16 index, quint8 subIndex, const QString &text) const
{
    require(store->subIndexExists(line, index, subIndex));
    require(store->setSubIndexDefault(line, index, subIndex, text));
}

void Project::type(quint16 index, quint8 subIndex, int dataType, const QString &text) const
{
    edit(index, subIndex, [&](Sub &data) {
        data.datatype = dataType;
        data.defaultvalue = text;
    });
}

void Project::access(quint16 index, quint8 subIndex, const QString &access) const
{
    edit(index, subIndex, [&](Sub &data) { data.accesstype = access; });
}

void Project::implementation(quint16 index, quint8 subIndex, int kind) const
{
    edit(index, subIndex, [&](Sub &data) { data.implementation = kind; });
}

void Project::varName(quint16 index, quint8 subIndex, const QString &name) const
{
    edit(index, subIndex, [&](Sub &data) { data.varname = name; });
}

void Project::writeDefault(quint16 index, quint8 subIndex, WriteDefault when) const
{
    require(store->executeSql(
        u"update SubObjects%1 set writedefaulttoeds = %2 where objectindex = %3 and subindex = %4"_s.arg(line)
            .arg(int(when))
            .arg(index)
            .arg(subIndex)));
}

void Project::limits(quint16 index, quint8 subIndex, const QString &low, const QString &up) const
{
    edit(index, subIndex, [&](Sub &data) {
        data.limitineds = true;
        data.lowlimit = low;
        data.uplimit = up;
    });
}

void Project::rename(quint16 index, const QString &name) const
{
    require(store->renameIndex(line, index, name));
}

void Project::remove(quint16 index) const
{
    require(store->removeIndex(line, index));
}

void Project::removeSub(quint16 index, quint8 subIndex) const
{
    require(store->removeSubIndex(line, index, subIndex));
}

void Project::pdo(quint16 index, const QString &cobId, const QStringList &entries,
                  const QString &access) const
{
    pdoCommunication(index, cobId);
    mapping(quint16(index + 0x200), entries, access);
}

void Project::pdoCommunication(quint16 index, const QString &cobId) const
{
    object(index, CANopen::Record, u"PDO Communication"_s);
    put(index, 0, countSub(5));
    put(index, 1, sub(u"COB-ID"_s, CAN::Unsigned32, u"rw"_s, cobId));
    put(index, 2, sub(u"Transmission type"_s, CAN::Unsigned8, u"rw"_s, u"255"_s));
    put(index, 3, sub(u"Inhibit time"_s, CAN::Unsigned16, u"rw"_s, u"0"_s));
    put(index, 5, sub(u"Event timer"_s, CAN::Unsigned16, u"rw"_s, u"0"_s));
}

void Project::mapping(quint16 index, const QStringList &entries, const QString &access,
                      const QString &count) const
{
    store->removeIndex(line, index);
    object(index, CANopen::Record, u"PDO Mapping"_s);
    Sub head = countSub(int(entries.size()));
    head.accesstype = access;
    head.implementation = access == "const"_L1 ? CANopen::ManagedConst : CANopen::ManagedVariable;
    if (!count.isEmpty())
        head.defaultvalue = count;
    put(index, 0, head);
    for (int i = 0; i < entries.size(); ++i)
        put(index, quint8(i + 1), sub(u"Entry %1"_s.arg(i + 1), CAN::Unsigned32, access, entries.at(i)));
}

void Project::pgn(quint32 number, quint8 direction, const QString &name) const
{
    Pgn data;
    data.name = name;
    data.priority = 6;
    data.direction = direction;
    require(store->addPGN(line, number, data));
}

void Project::spn(quint32 pgn, quint8 direction, quint32 number, int type, int bits, int position) const
{
    Spn data;
    data.name = u"Signal %1"_s.arg(number);
    data.datatype = type;
    data.implementation = CANopen::ApplicationVariable;
    data.varname = u"v%1_%2_%3"_s.arg(pgn).arg(number).arg(direction);
    data.pos = int(store->getSPNList(line, pgn, direction).size());
    data.bitsize = bits;
    data.bitposition = position;
    require(store->addSPN(line, pgn, direction, number, data));
    store->setPGNMappingCount(line, pgn, direction, data.pos + 1);
}

void Project::removePgn(quint32 number, quint8 direction) const
{
    require(store->removePGN(line, number, direction));
}

void Project::removeSpn(quint32 pgn, quint8 direction, quint32 number) const
{
    require(store->removeSPN(line, pgn, direction, number));
}

void Project::canId(quint32 id, quint8 direction) const
{
    require(store->addCANID(line, id, {.name = u"Message"_s, .direction = direction}));
}

void Project::element(quint32 id, quint8 direction, quint32 number, int type, int bits, int position) const
{
    Element data;
    data.name = QString::number(number);
    data.datatype = type;
    data.implementation = CANopen::ApplicationVariable;
    data.varname = u"v%1_%2_%3"_s.arg(id).arg(number).arg(direction);
    data.pos = int(store->getDataElementList(line, id, direction).size());
    data.bitsize = bits;
    data.bitpos = position;
    require(store->addDataElement(line, id, direction, number, data));
}

void Project::removeElement(quint32 id, quint8 direction, quint32 number) const
{
    require(store->removeDataElement(line, id, direction, number));
}

QString stackFolder()
{
    static const QTemporaryDir folder;
    QString path = folder.filePath(u"stack"_s);
    if (QDir(path).exists())
        return path;
    QFile file(path + "/co_featureinfo_1.xml"_L1);
    if (!QDir().mkpath(path) || !file.open(QIODevice::WriteOnly)
        || file.write("<featureinfo><required_tool_version>4.3</required_tool_version></featureinfo>") < 0)
        qFatal("cannot write the stack's version");
    return path;
}

} // namespace CheckTest
