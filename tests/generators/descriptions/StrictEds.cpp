#include "generators/descriptions/StrictEds.h"

#include <QRegularExpression>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QRegularExpression &objectName()
{
    static const QRegularExpression form(u"^[0-9A-F]{4}$"_s);
    return form;
}

const QRegularExpression &subIndexName()
{
    static const QRegularExpression form(u"^([0-9A-F]{4})sub(0|[1-9A-F][0-9A-F]?)$"_s);
    return form;
}

/** Decimal without leading zeros, or hexadecimal behind "0x", or minus and decimal. */
bool isNumber(const QString &text, qlonglong *result = nullptr)
{
    static const QRegularExpression form(u"^(0|-?[1-9][0-9]*|0x[0-9A-Fa-f]+)$"_s);
    if (!form.match(text).hasMatch())
        return false;
    bool ok = false;
    const qlonglong number =
        text.startsWith(u"0x"_s) ? text.sliced(2).toLongLong(&ok, 16) : text.toLongLong(&ok);
    if (ok && result)
        *result = number;
    return ok || text.size() > 16;
}

/** What CiA 306 lets stand in the place of a number of an object: with the node-ID in a sum, or alone. */
bool isValue(const QString &text)
{
    static const QRegularExpression sum(u"^\\$NODEID(\\+(0x[0-9A-Fa-f]+|[0-9]+))?$"_s);
    return isNumber(text) || sum.match(text).hasMatch();
}

bool isIntegerType(int type)
{
    return (type >= 1 && type <= 7) || type == 16 || (type >= 18 && type <= 22) || (type >= 24 && type <= 27);
}

QStringList names(const char *words)
{
    return QString::fromLatin1(words).split(u' ');
}

} // namespace

StrictEds::StrictEds(const QByteArray &file)
{
    readLines(file);
    checkInformation();
    checkComments();
    checkLists();
    for (const QString &name : std::as_const(m_order)) {
        if (objectName().match(name).hasMatch())
            checkObject(name);
        else if (const auto match = subIndexName().match(name); match.hasMatch()) {
            checkEntry(name);
            if (!m_sections.contains(match.captured(1)))
                error(u"[%1] belongs to no object"_s.arg(name));
        }
    }
}

QString StrictEds::value(const QString &section, const QString &key) const
{
    return m_sections.value(section).value(key, u"<missing>"_s);
}

void StrictEds::readLines(const QByteArray &file)
{
    if (file.isEmpty() || file.back() != '\n')
        error(u"the last line does not end"_s);
    static const QRegularExpression header(u"^\\[([A-Za-z0-9]+)\\]$"_s);
    static const QRegularExpression control(u"[\\x00-\\x09\\x0B-\\x1F\\x7F-\\x9F\\x{2028}\\x{2029}]"_s);
    int number = 0;
    const QStringList lines = QString::fromUtf8(file).split(u'\n');
    for (const QString &line : lines) {
        ++number;
        if (control.match(line).hasMatch())
            error(u"%1: control character"_s.arg(number));
        if (line.isEmpty() || line.startsWith(u';'))
            continue;
        const QRegularExpressionMatch match = header.match(line);
        if (!match.hasMatch()) {
            readEntry(line, number);
            continue;
        }
        if (m_sections.contains(match.captured(1)))
            error(u"%1: [%2] comes again"_s.arg(number).arg(match.captured(1)));
        m_order.append(match.captured(1));
        m_sections.insert(match.captured(1), {});
    }
}

void StrictEds::readEntry(const QString &line, int number)
{
    static const QRegularExpression entry(u"^([A-Za-z0-9_]+)=(|\\S|\\S.*\\S)$"_s);
    const QRegularExpressionMatch match = entry.match(line);
    if (!match.hasMatch()) {
        error(u"%1: no entry: %2"_s.arg(number).arg(line));
        return;
    }
    if (m_order.isEmpty()) {
        error(u"%1: entry without section"_s.arg(number));
        return;
    }
    Section &section = m_sections[m_order.constLast()];
    if (section.contains(match.captured(1)))
        error(u"%1: %2 comes again"_s.arg(number).arg(match.captured(1)));
    section.insert(match.captured(1), match.captured(2));
}

void StrictEds::checkKeys(const QString &section, const QStringList &keys)
{
    QStringList expected = keys;
    expected.sort();
    const QStringList found = m_sections.value(section).keys();
    if (found != expected)
        error(u"[%1] has the keys %2"_s.arg(section, found.join(u' ')));
}

void StrictEds::checkFlags(const QString &section, const QStringList &keys)
{
    for (const QString &key : keys)
        checkNumber(section, key, 0, 1);
}

void StrictEds::checkInformation()
{
    const QStringList rates =
        names("BaudRate_10 BaudRate_20 BaudRate_50 BaudRate_125 BaudRate_250 BaudRate_500 "
              "BaudRate_800 BaudRate_1000");
    const QStringList flags =
        names("SimpleBootupSlave SimpleBootupMaster LSS_Supported DynamicChannelsSupported GroupMessaging");
    const QStringList dummies =
        names("Dummy0001 Dummy0002 Dummy0003 Dummy0004 Dummy0005 Dummy0006 Dummy0007");
    checkKeys(u"FileInfo"_s,
              names("FileName FileVersion FileRevision EDSVersion Description CreationTime CreationDate "
                    "ModificationTime ModificationDate CreatedBy ModifiedBy"));
    checkKeys(u"DeviceInfo"_s,
              names("VendorName VendorNumber ProductName ProductNumber RevisionNumber OrderCode NrOfRxPDO "
                    "NrOfTxPDO Granularity")
                  + rates + flags);
    checkKeys(u"DummyUsage"_s, dummies);
    checkFlags(u"DeviceInfo"_s, rates + flags);
    checkFlags(u"DummyUsage"_s, dummies);
    const QStringList identity = names("VendorNumber ProductNumber RevisionNumber");
    for (const QString &key : identity)
        checkNumber(u"DeviceInfo"_s, key, 0, 0xFFFFFFFF);
    const QStringList pdos = names("NrOfRxPDO NrOfTxPDO");
    for (const QString &key : pdos)
        checkNumber(u"DeviceInfo"_s, key, 0, 512);
    checkNumber(u"DeviceInfo"_s, u"Granularity"_s, 0, 64);
    checkNumber(u"FileInfo"_s, u"FileVersion"_s, 0, 255);
    checkNumber(u"FileInfo"_s, u"FileRevision"_s, 0, 255);
    static const QRegularExpression time(u"^(0[1-9]|1[0-2]):[0-5][0-9](AM|PM)$"_s);
    static const QRegularExpression date(u"^(0[1-9]|1[0-2])-(0[1-9]|[12][0-9]|3[01])-[0-9]{2}$"_s);
    const QStringList events = names("Creation Modification");
    for (const QString &event : events) {
        if (!time.match(value(u"FileInfo"_s, QString(event + u"Time"_s))).hasMatch())
            error(event + u"Time is none"_s);
        if (!date.match(value(u"FileInfo"_s, QString(event + u"Date"_s))).hasMatch())
            error(event + u"Date is none"_s);
    }
}

void StrictEds::checkComments()
{
    QStringList keys{u"Lines"_s};
    const int count = value(u"Comments"_s, u"Lines"_s).toInt();
    for (int line = 1; line <= count; ++line)
        keys.append(u"Line%1"_s.arg(line));
    checkKeys(u"Comments"_s, keys);
}

QStringList StrictEds::listed(const QString &section)
{
    static const QRegularExpression form(u"^0x[0-9A-F]{4}$"_s);
    const Section list = m_sections.value(section);
    QStringList keys{u"SupportedObjects"_s};
    QStringList indices;
    for (qsizetype number = 1; number < list.size(); ++number) {
        keys.append(QString::number(number));
        const QString index = list.value(QString::number(number));
        if (!form.match(index).hasMatch() || (!indices.isEmpty() && index.sliced(2) <= indices.constLast()))
            error(u"entry %1 of [%2] is no index or out of order"_s.arg(number).arg(section));
        indices.append(index.sliced(qMin<qsizetype>(2, index.size())));
    }
    checkKeys(section, keys);
    checkCount(section, u"SupportedObjects"_s, indices.size());
    return indices;
}

void StrictEds::checkLists()
{
    const QStringList mandatory = listed(u"MandatoryObjects"_s);
    const QStringList manufacturer = listed(u"ManufacturerObjects"_s);
    const QStringList optional = listed(u"OptionalObjects"_s);
    if (mandatory != names("1000 1001 1018"))
        error(u"the mandatory objects are not those of CiA 301"_s);
    for (const QString &index : manufacturer)
        if (index < u"2000"_s || index > u"5FFF"_s)
            error(u"%1 is no object of the manufacturer"_s.arg(index));
    for (const QString &index : optional)
        if (index < u"1000"_s || (index >= u"2000"_s && index <= u"5FFF"_s) || mandatory.contains(index))
            error(u"%1 is no optional object"_s.arg(index));
    QStringList all = mandatory + manufacturer + optional;
    all.sort();
    const QStringList described = m_order.filter(objectName());
    if (all != described)
        error(u"the lists name %1, the file describes %2"_s.arg(all.join(u' '), described.join(u' ')));
    const QStringList known =
        names("FileInfo DeviceInfo DummyUsage Comments MandatoryObjects ManufacturerObjects OptionalObjects");
    if (m_order.first(qMin(known.size(), m_order.size())) != known)
        error(u"the file begins with %1"_s.arg(m_order.join(u' ').left(200)));
    const QStringList others = m_order.mid(known.size());
    for (const QString &name : others)
        if (!objectName().match(name).hasMatch() && !subIndexName().match(name).hasMatch())
            error(u"the section [%1] is unknown"_s.arg(name));
}

void StrictEds::checkObject(const QString &name)
{
    const QString code = value(name, u"ObjectType"_s);
    if (value(name, u"ParameterName"_s).isEmpty())
        error(u"[%1] has no name"_s.arg(name));
    if (code == u"8"_s || code == u"9"_s)
        checkStructure(name);
    else if (code == u"7"_s || code == u"2"_s)
        checkEntry(name);
    else
        error(u"[%1] has the object type %2"_s.arg(name, code));
}

void StrictEds::checkStructure(const QString &name)
{
    checkKeys(name, names("ParameterName ObjectType SubNumber"));
    const QString begin = name + u"sub"_s;
    const qsizetype own = m_order.indexOf(name);
    const auto isOwn = [&](const QString &section) { return section.startsWith(begin); };
    const auto count = std::count_if(m_order.begin(), m_order.end(), isOwn);
    const auto behind = std::count_if(m_order.begin() + own + 1,
                                      m_order.begin() + qMin(own + 1 + count, m_order.size()), isOwn);
    if (behind != count)
        error(u"the sub-indices of [%1] do not follow it"_s.arg(name));
    checkCount(name, u"SubNumber"_s, count);
}

void StrictEds::checkEntry(const QString &name)
{
    const Section entry = m_sections.value(name);
    QStringList keys = names("ParameterName ObjectType DataType AccessType PDOMapping");
    const QStringList furtherKeys = names("DefaultValue LowLimit HighLimit ObjFlags");
    for (const QString &key : furtherKeys)
        if (entry.contains(key))
            keys.append(key);
    checkKeys(name, keys);
    if (entry.contains(u"LowLimit"_s) != entry.contains(u"HighLimit"_s))
        error(u"[%1] has one limit only"_s.arg(name));
    if (subIndexName().match(name).hasMatch() && entry.value(u"ObjectType"_s) != u"7"_s)
        error(u"[%1] is no VAR"_s.arg(name));
    if (!names("const ro rw wo rww rwr").contains(entry.value(u"AccessType"_s)))
        error(u"[%1] has the access %2"_s.arg(name, entry.value(u"AccessType"_s)));
    checkFlags(name, {u"PDOMapping"_s});
    checkNumber(name, u"DataType"_s, 1, 0xFFFF);
    if (entry.contains(u"ObjFlags"_s))
        checkNumber(name, u"ObjFlags"_s, 1, 3);
    if (!isIntegerType(entry.value(u"DataType"_s).toInt()))
        return;
    const QStringList values = names("DefaultValue LowLimit HighLimit");
    for (const QString &key : values)
        if (!entry.value(key).isEmpty() && !isValue(entry.value(key)))
            error(u"%1 of [%2] is %3"_s.arg(key, name, entry.value(key)));
}

void StrictEds::checkNumber(const QString &section, const QString &key, qlonglong lowest, qlonglong highest)
{
    qlonglong number = lowest - 1;
    if (!isNumber(value(section, key), &number) || number < lowest || number > highest)
        error(u"%1 of [%2] is %3"_s.arg(key, section, value(section, key)));
}

void StrictEds::checkCount(const QString &section, const QString &key, qsizetype count)
{
    if (value(section, key) != QString::number(count))
        error(u"%1 of [%2] is %3, not %4"_s.arg(key, section, value(section, key)).arg(count));
}
