#include "check/RandomProject.h"

#include "canopen/COHelper.h"

using namespace Qt::StringLiterals;

namespace CheckTest {

namespace {

const QList<int> &numericTypes()
{
    static const QList<int> types = {CAN::Boolean,    CAN::Integer8,   CAN::Integer16,  CAN::Integer32,
                                     CAN::Unsigned8,  CAN::Unsigned16, CAN::Unsigned32, CAN::Real32,
                                     CAN::Integer24,  CAN::Unsigned24, CAN::Unsigned40, CAN::Unsigned48,
                                     CAN::Unsigned56, CAN::Unsigned64, CAN::Integer64};
    return types;
}

bool isSigned(int type)
{
    return type == CAN::Integer8 || type == CAN::Integer16 || type == CAN::Integer24
        || type == CAN::Integer32;
}

int bitsOf(int type)
{
    return COHelper::getDataLengthBits(CAN::CANopenDataType(type));
}

bool isCorrectedPdo(quint16 mapping)
{
    return mapping >= 0x1A00 && mapping <= 0x1A03;
}

} // namespace

Project RandomProject::make()
{
    const QList<int> types = {CANopenLine,     CANopenLine,      J1939Line,     RawCanLine,
                              CANopenAndJ1939, CANopenAndRawCan, J1939AndRawCan};
    const int lines = 1 + below(3);
    int type = oneOf(types);
    Project project(type);
    const bool isFd = chance(30);
    if (isFd)
        project.set(u"canfd_supported"_s, u"1"_s);
    project.set(u"limit_check"_s, u"1"_s);
    project.setJ1939(u"bamsupport"_s, u"1"_s);
    for (int line = 0; line < lines; ++line) {
        if (line > 0) {
            type = oneOf(types);
            project.addLine(quint8(line), type);
            project.setJ1939(u"bamsupport"_s, u"1"_s);
        }
        m_mappable.clear();
        if (type == CANopenLine || type == CANopenAndJ1939 || type == CANopenAndRawCan) {
            if (isFd)
                project.makeFd();
            addObjects(project);
            addPdos(project);
            addSrdos(project);
        }
        if (type == J1939Line || type == CANopenAndJ1939 || type == J1939AndRawCan)
            addGroups(project);
        if (type == RawCanLine || type == CANopenAndRawCan || type == J1939AndRawCan)
            addMessages(project);
    }
    // New lines leave gaps in the list of a per-line setting, so this comes last.
    project.set(u"overwrite_predef"_s, u"1"_s);
    return project;
}

QString RandomProject::value(int type)
{
    const int number = below(1 << qMin(bitsOf(type) - (isSigned(type) ? 1 : 0), 30));
    if (type == CAN::Real32)
        return QString::number(number / 8.0);
    if (isSigned(type) || type == CAN::Integer64)
        return QString::number(chance(50) ? -number : number);
    if (type != CAN::Unsigned56 && chance(10))
        return u"$NODEID+0x%1"_s.arg(number, 0, 16);
    return chance(50) ? u"0x%1"_s.arg(number, 0, 16) : QString::number(number);
}

Sub RandomProject::subIndex(quint16 index, quint8 number)
{
    const QStringList accessTypes = {u"ro"_s, u"const"_s, u"rw"_s, u"rwr"_s, u"rww"_s, u"wo"_s};
    const QString access = oneOf(accessTypes);
    const bool isText = chance(10);
    const int type = isText ? int(CAN::VisibleString) : oneOf(numericTypes());
    Sub data = sub(u"Name %1"_s.arg(++m_names), type, access, isText ? u"some text"_s : value(type));
    data.implementation = chance(30) ? int(CANopen::ApplicationVariable) : int(CANopen::VirtualObject);
    data.varname = u"variable[%1].of_%2"_s.arg(m_names).arg(index);
    if (chance(20) && !isText && type != CAN::Real32 && !data.defaultvalue.startsWith(u'$')) {
        data.limitineds = true;
        data.lowlimit = u"-9223372036854775808"_s;
        data.uplimit = u"0x7FFFFFFFFFFFFFFF"_s;
    }
    data.pdomapping = PDOMapping(chance(60) ? PDOMapping::Allowed : PDOMapping::Forbidden);
    if (data.pdomapping != PDOMapping() && !isText && bitsOf(type) >= 8)
        m_mappable.append({.entry = quint32(index) << 16 | quint32(number) << 8 | quint32(bitsOf(type)),
                           .isReceived = access == u"rw" || access == u"rww" || access == u"wo",
                           .isSent = access != u"wo" && access != u"rww",
                           .isSafe = data.implementation == CANopen::ApplicationVariable});
    return data;
}

void RandomProject::addObjects(const Project &project)
{
    quint16 index = 0x2010;
    const int count = 5 + below(25);
    for (int i = 0; i < count; ++i) {
        index = quint16(index + 1 + below(200));
        const int code = oneOf(QList<int>{CANopen::Var, CANopen::Array, CANopen::Record});
        project.object(index, code, u"Object %1"_s.arg(i));
        if (code == CANopen::Var) {
            project.put(index, 0, subIndex(index, 0));
            continue;
        }
        int highest = 0;
        const int members = 1 + below(8);
        for (int member = 0; member < members; ++member) {
            highest += 1 + (chance(20) ? below(20) : 0);
            project.put(index, quint8(highest), subIndex(index, quint8(highest)));
        }
        project.put(index, 0, countSub(highest));
    }
}

void RandomProject::addPdos(const Project &project)
{
    const int maximumBits = project.store->getGeneralSetting(u"canfd_supported"_s) == u"1" ? 512 : 64;
    for (const quint16 first : {0x1401, 0x1801})
        for (int i = below(8); i > 0; --i)
            addPdo(project, quint16(first + (chance(20) ? 100 + i : i)), first == 0x1801, maximumBits);
}

void RandomProject::addPdo(const Project &project, quint16 index, bool isSent, int maximumBits)
{
    QStringList entries;
    int bits = 0;
    for (const Mappable &mappable : std::as_const(m_mappable)) {
        const int length = int(mappable.entry & 0xFF);
        if ((isSent ? mappable.isSent : mappable.isReceived) && bits + length <= maximumBits && chance(50)) {
            entries.append(u"0x%1"_s.arg(mappable.entry, 8, 16, QLatin1Char('0')));
            bits += length;
        }
    }
    if (entries.isEmpty())
        entries.append(u"0x00050008"_s);
    const QString cobId = (chance(50) ? u"$NODEID+0x%1"_s : u"0x%1"_s).arg(0x10000 + ++m_cobIds, 0, 16);
    const bool isDynamic = chance(40);
    project.pdo(index, chance(20) ? u"0x80000180"_s : cobId, entries, isDynamic ? u"rw"_s : u"const"_s);
    if (isDynamic && chance(50))
        project.value(quint16(index + 0x200), 0, QString::number(1 + below(int(entries.size()))));
}

void RandomProject::addSrdos(const Project &project)
{
    QStringList entries;
    for (const Mappable &mappable : std::as_const(m_mappable))
        if (mappable.isSafe && entries.size() < 16)
            entries.append(QString::number(mappable.entry));
    for (int i = below(4); i > 0; --i) {
        project.array(quint16(0x1300 + i), {u"1"_s, u"20"_s});
        project.array(quint16(0x1380 + i), entries);
    }
}

void RandomProject::addGroups(const Project &project)
{
    quint32 number = 61445;
    for (int i = below(6); i > 0; --i) {
        number += quint32(1 + below(100));
        if (number >= 65226)
            break;
        const quint8 direction = chance(50) ? ObjectDataBase::Receive : ObjectDataBase::Transmit;
        project.pgn(number, direction);
        int position = 0;
        const int signalCount = 1 + below(12);
        for (int spn = 0; spn < signalCount; ++spn) {
            const int type = oneOf(QList<int>{CAN::Unsigned8, CAN::Unsigned16, CAN::Unsigned4, CAN::Unsigned2,
                                              CAN::Unsigned32, CAN::VisStringNull});
            const int bits = type == CAN::VisStringNull ? 8 * (1 + below(8)) : bitsOf(type);
            position += chance(30) ? below(9) : 0;
            project.spn(number, direction, quint32(1000 + spn), type, bits, position);
            position += bits;
        }
    }
}

void RandomProject::addMessages(const Project &project)
{
    for (int i = below(6); i > 0; --i) {
        const quint32 id =
            chance(50) ? quint32(0x200 + i) : 0x80000000U + quint32(below(0x1000)) * 8 + quint32(i);
        const quint8 direction = chance(50) ? ObjectDataBase::Receive : ObjectDataBase::Transmit;
        project.canId(id, direction);
        int position = 0;
        for (quint32 number = 1; position <= 32; ++number) {
            const int type =
                oneOf(QList<int>{CAN::Unsigned8, CAN::Integer16, CAN::Unsigned24, CAN::Unsigned3});
            project.element(id, direction, number, type, bitsOf(type), position);
            position += bitsOf(type) + (chance(30) ? below(4) : 0);
        }
    }
}

int RandomProject::spoilCorrectably(const Project &project)
{
    int corrections = 0;
    const QList<quint16> indices = project.store->getIndexList(project.line, 0x1000);
    for (const quint16 index : indices) {
        Index data;
        if (!project.store->getIndex(project.line, index, data) || data.objecttype == CANopen::Var
            || !chance(30))
            continue;
        if (project.get(index, 0).accesstype == u"rw") {
            if (!isCorrectedPdo(index)
                || project.get(quint16(index - 0x200), 1).defaultvalue == u"0x80000180")
                continue;
            project.value(index, 0, u"0"_s);
            ++corrections;
            continue;
        }
        // A mapping table with 253 and more is no table, so that its count is left alone.
        project.value(index, 0, QString::number(100 + below(153)));
        ++corrections;
        if (chance(50)) {
            project.edit(index, 0, [this](Sub &s) {
                s.implementation = chance(50) ? CANopen::ManagedVariable : CANopen::ApplicationVariable;
            });
            ++corrections;
        }
    }
    return corrections;
}

void RandomProject::spoil(const Project &project)
{
    const QList<quint16> indices = project.store->getIndexList(project.line, 0x1000);
    for (const quint16 index : indices) {
        if (chance(10))
            project.rename(index, QString());
        const QList<quint8> subIndices = project.store->getSubIndexList(project.line, index);
        for (const quint8 subIndex : subIndices) {
            if (!chance(10))
                continue;
            project.edit(index, subIndex, [this](Sub &s) {
                s.name = chance(50) ? QString() : s.name;
                s.varname = chance(50) ? u"a b"_s : u"same"_s;
                s.pdomapping = PDOMapping();
                s.limitineds = true;
                s.lowlimit = u"1000"_s;
                s.uplimit = u"999"_s;
            });
        }
    }
}

} // namespace CheckTest
