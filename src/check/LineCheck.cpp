#include "check/LineCheck.h"

#include "canopen/CANopenTypes.h"
#include "check/ModelChecker.h"
#include "check/SubIndexRules.h"
#include "store/ApplicationSettings.h"

#include <QCoreApplication>
#include <QHash>

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
            .isInLimits = !data.limitineds || isInLimits(data),
            .isValueValid = ModelChecker::isValidValue(data.datatype, data.defaultvalue),
            .isAccessTypeKnown = isAccessType(data.accesstype),
            .allowsWriting = data.accesstype.contains(u'w'),
            .hasVariableName = !data.varname.isEmpty(),
            .isVariableNameValid = isVariableName(data.varname),
            .dataType = data.datatype,
            .implementation = data.implementation};
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

// Both walks ascend; a sub-index without its object is none of the dictionary.
void LineCheck::readLine()
{
    store.visitIndices(line, [this](quint16 index, const ObjectDataBase::INDEX_DATA_T &data) {
        m_objects.push_back({.index = index, .isNamed = !data.name.isEmpty(), .objectCode = data.objecttype});
    });
    auto object = m_objects.begin();
    store.cacheAllSubs(line,
                       [&](quint16 index, quint8 subIndex, const ObjectDataBase::SUBINDEX_DATA_T &data) {
                           while (object != m_objects.end() && object->index < index)
                               ++object;
                           if (object == m_objects.end() || object->index != index)
                               return;
                           if (object->count++ == 0)
                               object->first = m_entries.size();
                           addEntry(index, subIndex, data);
                       });
}

void LineCheck::addEntry(quint16 index, quint8 subIndex, const ObjectDataBase::SUBINDEX_DATA_T &data)
{
    m_entries.push_back(toEntry(index, subIndex, data));
    if (data.implementation != CANopen::ApplicationVariable)
        return;
    const QString name = data.varname.trimmed();
    if (!name.isEmpty())
        m_variables.push_back({.entry = m_entries.size() - 1,
                               .name = name,
                               .hash = qHash(name, size_t(QHashSeed::globalSeed()))});
}

std::span<const ObjectEntry> LineCheck::objects(quint16 from, quint16 to) const
{
    const auto first = std::ranges::lower_bound(m_objects, from, {}, &ObjectEntry::index);
    return {first, std::ranges::upper_bound(first, m_objects.end(), to, {}, &ObjectEntry::index)};
}

QList<quint16> LineCheck::indices(quint16 from, quint16 to) const
{
    QList<quint16> found;
    for (const ObjectEntry &object : objects(from, to))
        found.append(object.index);
    return found;
}

std::span<const SubIndexEntry> LineCheck::entries(quint16 index) const
{
    const auto object = objects(index, index);
    return object.empty() ? std::span<const SubIndexEntry>() : entries(object.front());
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
