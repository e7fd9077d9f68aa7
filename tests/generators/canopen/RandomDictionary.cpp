#include "generators/canopen/RandomDictionary.h"

#include <bit>

using namespace Qt::StringLiterals;

using CheckTest::Project;
using CheckTest::Sub;

namespace {

constexpr int receiveMapping = 0x1400;
constexpr int transmitMapping = 0x1800;

/** A data type that can be mapped, and its bits in a PDO. */
struct Width
{
    int type;
    int bits;
};

const QList<Width> &widths()
{
    static const QList<Width> all{{CAN::Integer8, 8},    {CAN::Integer16, 16},  {CAN::Integer32, 32},
                                  {CAN::Unsigned8, 8},   {CAN::Unsigned16, 16}, {CAN::Unsigned32, 32},
                                  {CAN::Real32, 32},     {CAN::Unsigned24, 24}, {CAN::Unsigned40, 40},
                                  {CAN::Unsigned48, 48}, {CAN::Unsigned64, 64}, {CAN::TimeOfDay, 48},
                                  {CAN::Integer24, 24}};
    return all;
}

bool isText(int type)
{
    return type == CAN::VisibleString || type == CAN::OctetString || type == CAN::Utf8String;
}

/** Types whose pointers are written from a variable whatever the name looks like. */
bool isWide(int type)
{
    static const QList<int> types{CAN::Unsigned24, CAN::Unsigned40, CAN::Unsigned48, CAN::Unsigned64,
                                  CAN::TimeOfDay};
    return types.contains(type);
}

} // namespace

QString RandomDictionary::text()
{
    static const QStringList pieces{
        u"a"_s, u"F0"_s,     u"\\"_s,      u"\""_s,     u"?\?/"_s,   u"?\?="_s,       u"*/"_s,   u"/*"_s,
        u"'"_s, u"\n"_s,     u"\r\n"_s,    u"\t"_s,     u"%s"_s,     u"\x01"_s,       u"\x7f"_s, u"|x"_s,
        u" "_s, u"\u00e4"_s, u"\u00dfb"_s, u"\u20ac"_s, u"\u202e"_s, u"\U0001F600"_s, u"0"_s};
    QString result(u'z'); // a text in front of "|x" is no list of bytes
    for (int i = below(20); i > 0; --i)
        result += oneOf(pieces);
    return chance(10) ? QString() : result;
}

QString RandomDictionary::bytes()
{
    QString result = u"|x"_s;
    for (int i = below(30); i > 0; --i)
        result += u"%1"_s.arg(below(256), 2, 16, '0'_L1);
    return result;
}

QString RandomDictionary::number(int type)
{
    const int value = below(chance(30) ? 0x7FFFFFFF : 128);
    if (type == CAN::Real32 && chance(60))
        return QString::number(value / 8.0);
    if (type == CAN::Real32) // any that there is, also those that are no numbers
        return QString::number(double(std::bit_cast<float>(m_random.generate())), 'g', 9);
    if (chance(5))
        return u"no number"_s;
    if (chance(10))
        return u"$NodeID+0x%1"_s.arg(value, 0, 16);
    if (type >= CAN::Integer8 && type <= CAN::Integer32 && chance(40))
        return QString::number(-value);
    if (type == CAN::Unsigned64 && chance(50))
        return u"0x%1"_s.arg(m_random.generate64(), 0, 16);
    return chance(30) ? u"0x%1"_s.arg(value, 0, 16) : QString::number(value);
}

Sub RandomDictionary::any()
{
    static const QList<int> types{0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10,  11,  12,  13,  15,  16,  17,
                                  18, 19, 20, 21, 22, 24, 25, 26, 27, 53, 100, 101, 102, 103, 104, 105, 124};
    static const QStringList accesses{u"const"_s, u"ro"_s, u"rw"_s, u"rwr"_s, u"rww"_s, u"wo"_s};
    static const QList<int> implementations{0, 0, 0, 1, 2, 2, 3};
    const int type = oneOf(types);
    Sub data = CheckTest::sub(u"Entry"_s, type, oneOf(accesses), number(type));
    data.implementation = oneOf(implementations);
    data.varname = isWide(type) || isText(type) ? (chance(30) ? u"PLACE(v$l_$I_$s)"_s : u"v$l_$I_$s"_s)
                                                : (chance(30) ? u"ADDRESS(v$l_$I_$s)"_s : u"v$l_$I_$s"_s);
    if (isText(type)) {
        data.defaultvalue = chance(40) ? bytes() : text();
        data.size = 100 + below(20); // room for the longest text
    }
    data.pdomapping = PDOMapping(below(5));
    data.defaultineds = chance(50);
    data.nvstorage = chance(30);
    data.limitineds = chance(30);
    if (data.limitineds) {
        data.lowlimit = number(type);
        data.uplimit = number(type);
    }
    return data;
}

void RandomDictionary::rememberMappable(quint8 line, quint16 index, quint8 number, const Sub &data)
{
    const auto width = std::find_if(widths().begin(), widths().end(),
                                    [&](const Width &row) { return row.type == data.datatype; });
    const bool hasVariable = data.implementation == CANopen::ManagedVariable
        || data.implementation == CANopen::ApplicationVariable;
    if (width == widths().end() || !hasVariable || data.pdomapping.isEqualToType(PDOMapping::Forbidden)
        || data.datatype == CAN::Integer24)
        return;
    const quint32 entry = quint32(index) << 16 | quint32(number) << 8 | quint32(width->bits);
    if (data.accesstype != "wo"_L1 && data.accesstype != "rww"_L1)
        m_sent[line].append(entry);
    if (data.accesstype == "rw"_L1 || data.accesstype == "rww"_L1 || data.accesstype == "wo"_L1)
        m_received[line].append(entry);
}

Project RandomDictionary::make()
{
    const bool isCANopen = chance(90);
    const auto lineType = isCANopen ? CheckTest::CANopenLine : CheckTest::J1939Line;
    Project project(lineType);
    project.setJ1939(u"cia510serversupport"_s, u"1"_s);
    addSettings(project);
    const int lines = chance(60) ? 1 : 2 + below(3);
    for (int line = 0; line < lines; ++line) {
        if (line > 0)
            project.addLine(quint8(line), lineType);
        if (isCANopen)
            addServices(project);
        addObjects(project);
    }
    for (int line = 1; line < lines; ++line)
        shareObjects(project, quint8(line));
    if (!isCANopen)
        return project;
    for (int line = 0; line < lines; ++line) {
        project.line = quint8(line);
        addPdos(project);
    }
    return project;
}

void RandomDictionary::addSettings(const Project &project)
{
    const bool isV4 = chance(70);
    project.set(u"use_core_headers"_s, isV4 ? u"V4"_s : u"V3"_s);
    project.set(u"new_init_structure"_s, isV4 && chance(80) ? u"1"_s : u"0"_s);
    for (const QString &key : {u"limit_check"_s, u"compact_array_description"_s, u"init_static_variables"_s,
                               u"generate_string_defaults"_s, u"canfd_supported"_s, u"bitwise_mapping"_s})
        project.set(key, chance(40) ? u"1"_s : u"0"_s);
    for (const QString &key : {u"lss_supported"_s, u"idnego_supported"_s, u"bootup_manager"_s, u"event_led"_s,
                               u"isotp_connection_cnt"_s})
        if (chance(30))
            project.set(key, u"1"_s);
    for (const QString &key :
         {u"nmtmaster"_s, u"usdo_client_enabled"_s, u"usdo_client_cnt"_s, u"overwrite_predef"_s})
        if (chance(50))
            project.set(key, oneOf(QStringList{u"1"_s, u"1,0"_s, u"0,1"_s}));
    if (chance(20))
        project.set(u"nmtmaster"_s, oneOf(QStringList{u"2"_s, u"2,1"_s, u"0,2"_s, u"1,0,2"_s}));
    if (chance(20))
        project.setMisc(u"generateML"_s, u"true"_s);
}

void RandomDictionary::addServices(const Project &project)
{
    const auto variable = [&](quint16 index, int type, const QString &value) {
        if (chance(50))
            project.variable(index, CheckTest::sub(u"Service"_s, type, u"rw"_s, value));
    };
    variable(0x1006, CAN::Unsigned32, u"1000"_s);
    variable(0x100C, CAN::Unsigned16, u"0"_s);
    variable(0x100D, CAN::Unsigned8, u"0"_s);
    variable(0x1012, CAN::Unsigned32, u"0x80000100"_s);
    variable(0x1014, CAN::Unsigned32, u"$NODEID+0x80"_s);
    variable(0x1015, CAN::Unsigned16, u"100"_s);
    variable(0x1019, CAN::Unsigned8, u"8"_s);
    const QStringList values{u"1"_s, u"2"_s, u"3"_s};
    variable(0x102A, CAN::Unsigned16, u"10"_s);
    variable(0x1300, CAN::Unsigned8, u"0"_s);
    for (const quint16 index : {0x1003, 0x1010, 0x1011, 0x1016, 0x1028, 0x1029, 0x1032, 0x1200, 0x1201,
                                0x1202, 0x1280, 0x1281, 0x1F10, 0x1F2C, 0x1F80, 0x1F81, 0x1F82})
        if (chance(40))
            project.array(index, values.first(1 + below(3)));
}

void RandomDictionary::addObjects(const Project &project)
{
    quint16 index = 0x2010;
    for (int i = 10 + below(50); i > 0; --i) {
        index = quint16(index + 1 + below(100));
        if (chance(60))
            addObject(project, index);
        else
            addArray(project, index);
    }
}

void RandomDictionary::addObject(const Project &project, quint16 index)
{
    const Sub data = any();
    project.object(index, data.datatype == CAN::Domain ? CANopen::Domain : CANopen::Var, text());
    project.put(index, 0, data);
    rememberMappable(project.line, index, 0, data);
}

/** Entries alike, or each of its own; with gaps, and with as many as there may be. */
void RandomDictionary::addArray(const Project &project, quint16 index)
{
    const int entries = chance(10) ? 254 : 1 + below(12);
    const bool areAlike = chance(60);
    const bool hasGaps = chance(30);
    Sub data = any();
    project.object(index, chance(50) ? CANopen::Array : CANopen::Record, text());
    int number = 0;
    for (int i = 0; i < entries && number < 254; ++i) {
        number += hasGaps && number < 240 ? 1 + below(5) : 1;
        if (!areAlike && entries < 254)
            data = any();
        project.put(index, quint8(number), data);
        rememberMappable(project.line, index, quint8(number), data);
    }
    project.put(index, 0, CheckTest::countSub(number));
}

QStringList RandomDictionary::mapped(const QList<quint32> &entries)
{
    QStringList result;
    quint32 bits = 0;
    for (const quint32 entry : entries) {
        const quint32 length = entry & 0xFF;
        if (bits + length <= 64 && chance(30)) {
            result.append(u"0x%1"_s.arg(entry, 8, 16, '0'_L1));
            bits += length;
        }
    }
    return result;
}

void RandomDictionary::addPdos(const Project &project)
{
    for (int i = 1 + below(5); i > 0; --i) {
        const QString access = chance(30) ? u"rw"_s : u"const"_s;
        project.pdo(quint16(receiveMapping + i), u"$NODEID+0x%1"_s.arg(0x200 + i, 0, 16),
                    mapped(m_received.value(project.line)), access);
        project.pdo(quint16(transmitMapping + i), u"0x%1"_s.arg(0x280 + i, 0, 16),
                    mapped(m_sent.value(project.line)), access);
    }
}

/** Takes objects of line 0 over into another one, as the editor does it: both have them, and both say so. */
void RandomDictionary::shareObjects(const Project &project, quint8 line)
{
    Project own = project;
    const QList<quint16> indices = project.store->getIndexList(0, 0x2010);
    for (const quint16 index : indices) {
        if (!chance(30) || project.store->indexExists(line, index))
            continue;
        ObjectDataBase::INDEX_DATA_T object;
        project.store->getIndex(0, index, object);
        own.line = line;
        own.object(index, object.objecttype, object.name);
        const QList<quint8> numbers = project.store->getSubIndexList(0, index);
        for (const quint8 number : numbers) {
            own.line = 0;
            Sub data = own.get(index, number);
            data.sharedlines = true;
            own.put(index, number, data);
            own.line = line;
            own.put(index, number, data);
            rememberMappable(line, index, number, data);
        }
    }
}
