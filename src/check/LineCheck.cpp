#include "check/LineCheck.h"

#include "store/ApplicationSettings.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// CiA 1301: a CAN FD frame carries up to 64 bytes, a classical one 8.
constexpr quint16 canFdPdoBits = 512;
/** Values of writedefaulttoeds. */
enum DefaultInEds : quint8 {
    Never = 0,
    WhereDefaultIsSet = 1,
    Always = 2,
};

QString hexadecimal(int number, int digits)
{
    return u"%1"_s.arg(number, digits, 16, QLatin1Char('0'));
}

SubIndexEntry toEntry(quint16 index, quint8 subIndex, const ObjectDataBase::SUBINDEX_DATA_T &data)
{
    return {.index = index,
            .subIndex = subIndex,
            .isNamed = !data.name.isEmpty(),
            .hasLimits = data.limitineds,
            .dataType = data.datatype,
            .implementation = data.implementation,
            .accessType = data.accesstype,
            .defaultValue = data.defaultvalue,
            .lowLimit = data.lowlimit,
            .upLimit = data.uplimit,
            .variableName = data.varname};
}

} // namespace

LineCheck::LineCheck(quint8 lineNumber, ObjectDataBase &project, CheckFindings &told, bool &routingReported)
    : store(project), findings(told), line(lineNumber), emcyRoutingReported(routingReported),
      m_projectGeneration(project.projectGeneration())
{
    readSettings();
    readLine();
}

void LineCheck::readSettings()
{
    limitCheckEnabled = store.getGeneralSetting(u"limit_check"_s).toInt() == 1;
    bitwiseMapping = store.getGeneralSetting(u"bitwise_mapping"_s).toInt() != 0;
    canFd = store.getGeneralSetting(u"canfd_supported"_s).toInt() == 1;
    if (canFd)
        pdoSizeLimit = canFdPdoBits;
    disableAutoCorrection = ApplicationSettings::value(u"General/disableautocorrection"_s, false).toBool();

    const quint8 descriptionLine = store.descriptionLine();
    store.setDescriptionLine(line);
    if (store.descriptionSettingExists(u"Granularity"_s)) {
        const quint64 bits = unsignedValue(store.getDescriptionSetting(u"Granularity"_s));
        granularity = quint8(std::min<quint64>(bits, std::numeric_limits<quint8>::max()));
    }
    store.setDescriptionLine(descriptionLine);
}

void LineCheck::readLine()
{
    store.cacheAllSubs(line);
    m_indices = store.getIndexList(line);
    m_objects.reserve(m_indices.size());
    for (const quint16 index : std::as_const(m_indices))
        readObject(index);
}

void LineCheck::readObject(quint16 index)
{
    const size_t first = m_entries.size();
    ObjectDataBase::SUBINDEX_DATA_T data;
    const QList<quint8> subIndices = store.getSubIndexList(line, index);
    for (const quint8 subIndex : subIndices)
        if (store.getSubIndex(line, index, subIndex, data))
            m_entries.push_back(toEntry(index, subIndex, data));
    m_objects.insert(index, {.first = first, .count = m_entries.size() - first});
}

QList<quint16> LineCheck::indices(quint16 from, quint16 to) const
{
    const auto first = std::lower_bound(m_indices.cbegin(), m_indices.cend(), from);
    return {first, std::upper_bound(first, m_indices.cend(), to)};
}

std::span<const SubIndexEntry> LineCheck::entries(quint16 index) const
{
    const Range range = m_objects.value(index);
    return entries().subspan(range.first, range.count);
}

const SubIndexEntry *LineCheck::find(quint16 index, quint8 subIndex) const
{
    const auto object = entries(index);
    const auto found = std::ranges::lower_bound(object, subIndex, {}, &SubIndexEntry::subIndex);
    return found != object.end() && found->subIndex == subIndex ? &*found : nullptr;
}

QList<quint8> LineCheck::subIndices(quint16 index) const
{
    QList<quint8> found;
    for (const SubIndexEntry &entry : entries(index))
        found.append(entry.subIndex);
    return found;
}

bool LineCheck::read(quint16 index, quint8 subIndex, ObjectDataBase::SUBINDEX_DATA_T &data) const
{
    return exists(index, subIndex) && store.getSubIndex(line, index, subIndex, data);
}

QString LineCheck::value(quint16 index, quint8 subIndex) const
{
    ObjectDataBase::SUBINDEX_DATA_T data;
    return read(index, subIndex, data) ? data.defaultvalue : QString();
}

bool LineCheck::isDefaultInEds(quint16 index, quint8 subIndex) const
{
    ObjectDataBase::SUBINDEX_DATA_T data;
    if (!read(index, subIndex, data))
        return false;
    return data.writedefaulttoeds == Always
        || (data.writedefaulttoeds == WhereDefaultIsSet && data.defaultineds);
}

void LineCheck::refresh(quint16 index, quint8 subIndex)
{
    ObjectDataBase::SUBINDEX_DATA_T data;
    const SubIndexEntry *entry = find(index, subIndex);
    if (entry && store.getSubIndex(line, index, subIndex, data))
        m_entries[size_t(entry - m_entries.data())] = toEntry(index, subIndex, data);
}

// What the user types or clicks meanwhile waits: the rules shall find the project as they began it.
bool LineCheck::serveEvents() const
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    return isCurrent();
}

bool isDynamicMapping(const LineCheck &check, quint16 index)
{
    ObjectDataBase::SUBINDEX_DATA_T data;
    return check.read(index, 0, data) && data.accesstype == "rw"_L1;
}

QString indexText(quint16 index)
{
    return hexadecimal(index, 4);
}

QString subIndexText(quint8 subIndex)
{
    return hexadecimal(subIndex, 2);
}

quint64 unsignedValue(const QString &text)
{
    return text.toULongLong(nullptr, 0);
}
