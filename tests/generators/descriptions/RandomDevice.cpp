#include "generators/descriptions/RandomDevice.h"

#include "canopen/COHelper.h"
#include "canopen/DataTypeTable.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int objects = 60;
constexpr int firstOwnType = 100;

QList<int> dataTypes()
{
    QList<int> types;
    for (const DataTypeRow &row : dataTypeTable)
        if (row.number < firstOwnType)
            types.append(row.number);
    return types;
}

bool isString(int dataType)
{
    return dataType == CAN::VisibleString || dataType == CAN::OctetString || dataType == CAN::UnicodeString;
}

/** The PDO direction that an access type stands for once a value may be mapped. */
PDOMapping mapped(const QString &access)
{
    if (access == "ro"_L1 || access == "rwr"_L1)
        return PDOMapping::TPDO;
    if (access == "wo"_L1 || access == "rww"_L1)
        return PDOMapping::RPDO;
    return PDOMapping::Allowed;
}

} // namespace

void RandomDevice::make()
{
    makeSettings();
    m_desk.mandatoryObjects();
    for (int i = 0; i < objects; ++i) {
        const bool isManufacturer = oneIn(2);
        const int index = isManufacturer ? 0x2000 + below(0x4000) : 0x6000 + below(0x9FFF);
        makeObject(quint16(index));
    }
}

void RandomDevice::makeSettings()
{
    for (const char *const key : {"VendorName", "ProductName", "OrderCode", "CreatedBy", "ModifiedBy"})
        m_desk.describe(QString::fromLatin1(key), key == "ProductName"_L1 ? text(30).trimmed() : text(30));
    for (const char *const key :
         {"BaudRate_10", "BaudRate_1000", "LSS_Supported", "Dummy0001", "Dummy0003", "Dummy0007"})
        m_desk.describe(QString::fromLatin1(key), QString::number(below(2)));
    m_desk.describe(u"FileVersion"_s, QString::number(below(256)));
    m_desk.describe(u"FileRevision"_s, QString::number(below(256)));
    m_desk.describe(u"Comment"_s, text(30).simplified() + u"\n\nlast"_s);
}

void RandomDevice::makeObject(quint16 index)
{
    if (m_desk.store->indexExists(0, index))
        return;
    const int code = anyOf(QList<int>{CANopen::Var, CANopen::Array, CANopen::Record, CANopen::Domain});
    if (code == CANopen::Var || code == CANopen::Domain)
        makeVariable(index, code);
    else
        makeStructure(index, code);
}

void RandomDevice::makeVariable(quint16 index, int code)
{
    DescriptionDesk::Object object;
    object.name = text(40);
    object.objecttype = code;
    Sub sub = subIndex(object.name);
    if (code == CANopen::Domain)
        sub = DescriptionDesk::sub(object.name, CAN::Domain, {}, u"rw"_s);
    object.datatype = sub.datatype;
    object.description = sub.description;
    m_desk.store->addIndex(0, index, object);
    m_desk.store->addSubIndex(0, index, 0, sub);
}

void RandomDevice::makeStructure(quint16 index, int code)
{
    const int entries = 1 + below(8);
    const int gap = below(4);
    QMap<quint8, Sub> subs{{0, count(entries + gap)}};
    for (int entry = 1; entry <= entries; ++entry)
        subs.insert(quint8(entry + (entry == entries ? gap : 0)), subIndex(text(40)));
    m_desk.object(index, text(40), code, subs, description());
    if (code == CANopen::Array)
        m_desk.store->setObjectIndexSqlValue(u"Objects0"_s, index, u"datatype"_s,
                                             subs.upperBound(0)->datatype);
}

RandomDevice::Sub RandomDevice::count(int value)
{
    return DescriptionDesk::sub(u"Highest sub-index supported"_s, CAN::Unsigned8, QString::number(value),
                                u"ro"_s);
}

RandomDevice::Sub RandomDevice::subIndex(const QString &name)
{
    const int dataType = anyOf(dataTypes());
    const QString access = QString::fromLatin1(anyOf(CANopen::accessTypes).word);
    Sub sub = DescriptionDesk::sub(name, dataType, oneIn(4) ? QString() : value(dataType), access);
    sub.implementation = below(4);
    const bool isProcessValue = access == "rwr"_L1 || access == "rww"_L1;
    if (isProcessValue || oneIn(2))
        sub.pdomapping = mapped(access);
    if (m_xml && !isProcessValue && access != "rw"_L1)
        sub.pdomapping =
            anyOf(QList{PDOMapping::Forbidden, PDOMapping::Allowed, PDOMapping::RPDO, PDOMapping::TPDO});
    sub.description = description();
    sub.refuseread = oneIn(4);
    sub.refusewrite = oneIn(4);
    if (!sub.lowlimit.isEmpty() && oneIn(3)) {
        sub.lowlimit = value(dataType);
        sub.uplimit = value(dataType);
        sub.limitineds = true;
    }
    return sub;
}

QString RandomDevice::text(int longest)
{
    static const QString characters = u"abcXYZ 0189 =;#[]\"'<>&$%|\\/_-+.äß€Ω漢"_s;
    QString result;
    const int length = 1 + below(longest);
    for (int i = 0; i < length; ++i)
        result += anyOf(characters);
    if (m_xml && oneIn(4))
        result += u"\ttab\nand line"_s;
    return result.trimmed().isEmpty() ? u"name"_s : result;
}

QString RandomDevice::description()
{
    if (oneIn(2))
        return {};
    QStringList lines;
    const int count = 1 + below(4);
    for (int i = 0; i < count; ++i)
        lines.append(oneIn(5) ? QString() : text(200));
    if (oneIn(3))
        lines.append(u"long words of a text "_s.repeated(10 + below(40)) + u"end"_s);
    return lines.join(u'\n');
}

QString RandomDevice::number(int bits, bool isSigned)
{
    const quint64 mask = bits < 64 ? (quint64(1) << bits) - 1 : ~quint64(0);
    const quint64 pattern = m_random.generate64() & (isSigned ? mask >> 1 : mask);
    if (oneIn(3))
        return u"0x"_s + QString::number(pattern, 16).toUpper();
    const QString digits = QString::number(pattern);
    return isSigned && pattern != 0 && oneIn(2) ? QString(u'-' + digits) : digits;
}

QString RandomDevice::value(int dataType)
{
    if (isString(dataType))
        return oneIn(4) ? u"|x00ff7f0A"_s : text(60);
    const DataTypeRow *row = dataTypeRow(quint16(dataType));
    if (!row || row->range == DataTypeRange::None)
        return QString::number(m_random.generateDouble());
    if (row->number == CAN::Unsigned32 && oneIn(4))
        return u"$NODEID+0x"_s + QString::number(below(0x800), 16);
    return number(row->bits, row->range == DataTypeRange::Signed);
}
