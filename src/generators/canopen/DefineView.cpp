#include "generators/canopen/DefineView.h"

#include "check/MappingEntry.h"
#include "generators/RunFacts.h"
#include "generators/canopen/DefineLineReader.h"
#include "generators/canopen/LineObjects.h"
#include "generators/canopen/VirtualDictionaryView.h"
#include "store/ObjectDataBase.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

constexpr quint16 firstCommunicationObject = 0x1000; // CiA 301: communication profile area
constexpr quint16 lastCommunicationObject = 0x1FFF;

/** Adds what the sub-indices of one line tell to the numbers of the project. */
class LineCollector
{
public:
    LineCollector(DefineView &view, ObjectDataBase &store, quint8 line, const LineObjects &objects)
        : m_view(view), m_store(store), m_line(line), m_objects(objects)
    {
    }

    void collect()
    {
        const QList<quint16> indices = m_objects.range(firstCommunicationObject, lastCommunicationObject);
        for (const quint16 index : indices)
            m_view.communicationObjects.insert(index);
        collectMultiplexedPdos();
        collectSrdoVariables();
    }

private:
    CValues::Table table(quint16 index, quint8 subIndex) const
    {
        return CValues::table(m_store.getSubIndexDatatype(m_line, index, subIndex));
    }

    /** CiA 301: special numbers of mapped objects mark a multiplexed PDO. */
    bool collectMultiplexed(quint16 firstMapping, quint16 lastMapping)
    {
        constexpr quint32 compactSource = 253;
        constexpr quint32 source = 254;
        constexpr quint32 destination = 255;
        bool found = false;
        const QList<quint16> mappings = m_objects.range(firstMapping, lastMapping);
        for (const quint16 index : mappings) {
            const quint32 count = MappingEntry::fromText(m_store.getSubIndexDefault(m_line, index, 0)).value;
            const bool isSource = count == source || count == compactSource;
            m_view.multiplexedPdos.bySource |= isSource;
            m_view.multiplexedPdos.byDestination |= count == destination;
            found = found || isSource || count == destination;
        }
        return found;
    }

    void collectMultiplexedPdos()
    {
        m_view.multiplexedPdos.isConsumer |= collectMultiplexed(0x1600, 0x17FF);
        m_view.multiplexedPdos.isProducer |= collectMultiplexed(0x1A00, 0x1BFF);
    }

    /** A variable counts once, whether or not several SRDOs carry it. */
    void collectSrdoVariables()
    {
        QSet<quint32> known;
        const QList<quint16> mappings = m_objects.range(0x1380, 0x13B0); // CiA 304
        for (const quint16 mapping : mappings)
            for (const quint8 number : m_objects.entries(mapping)) {
                const auto entry =
                    MappingEntry::fromText(m_store.getSubIndexDefault(m_line, mapping, number));
                const quint32 variable = entry.value >> 8; // without its length
                if (known.contains(variable) || !m_objects.has(entry.index(), entry.subIndex()))
                    continue;
                known.insert(variable);
                ++m_view.srdoVariables[table(entry.index(), entry.subIndex())];
            }
    }

    DefineView &m_view;
    ObjectDataBase &m_store;
    quint8 m_line;
    const LineObjects &m_objects;
};

void addProfiles(const QString &text, const QRegularExpression &pattern, QList<DeviceProfile> &profiles)
{
    const QStringList lines = text.split(u'\n');
    for (const QString &line : lines) {
        const QRegularExpressionMatch match = pattern.match(line.simplified());
        const DeviceProfile profile{match.captured(u"number"_s), match.captured(u"group"_s)};
        const bool isKnown = std::ranges::any_of(profiles, [&](const DeviceProfile &other) {
            return other.number == profile.number && other.group == profile.group;
        });
        if (match.hasMatch() && !isKnown)
            profiles.append(profile);
    }
}

/**
 * Profiles are named in a setting, one in each line, and in the text of a second entry of the device type,
 * behind "Profile=". The device type itself names none: a device may follow a profile without the stack's
 * code for it.
 */
QList<DeviceProfile> readProfiles(ObjectDataBase &store, const DefineView &view)
{
    static const QRegularExpression named(u"^profile ?= ?(?<number>\\d+)(\\W+(?<group>\\w+))?$"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression plain(u"^(profile ?= ?)?(?<number>\\d+)(\\W+(?<group>\\w+))?$"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    constexpr quint16 deviceType = 0x1000;
    QList<DeviceProfile> profiles;
    addProfiles(view.general.value(u"Profile"_s), plain, profiles);
    for (const DefineLine &line : view.lines)
        addProfiles(store.getSubIndexDefault(line.number, deviceType, 1), named, profiles);
    return profiles;
}

void readLines(ObjectDataBase &store, const RunFacts &facts, DefineView &view)
{
    const SettingValues j1939 = SettingValues::j1939(store);
    QSet<quint16> assignedOfLine0;
    for (const quint8 line : facts.lines) {
        if (line >= ObjectDataBase::MaximumLines)
            continue;
        const LineObjects objects(store, line);
        const QSet<quint16> assigned = assignedObjects(store, line, objects, assignedOfLine0);
        if (line == 0)
            assignedOfLine0 = assigned;
        view.lines.append(
            readDefineLine({store, view.general, j1939, objects, assigned}, line, facts.lineType(line)));
        LineCollector(view, store, line, objects).collect();
    }
}

/** The numbers of rows and variables that gen_vobjdict.c has. */
VirtualDictionary countVirtualObjects(ObjectDataBase &store, bool compactArrays)
{
    const auto view = VirtualDictionaryView::read(store, {.compactArrays = compactArrays});
    VirtualDictionary counts{.objects = view.dictionary.assignmentCount,
                             .subIndices = view.dictionary.descriptionCount,
                             .types = {}};
    for (const CValues::TableForm &form : CValues::tableForms)
        counts.types[form.table] = quint32(view.variables[form.table].size());
    return counts;
}

} // namespace

DefineView DefineView::read(ObjectDataBase &store, const DefineRequest &request)
{
    const RunFacts facts = RunFacts::read(store);
    DefineView view{.request = request,
                    .isEnergyBus = QCoreApplication::applicationName() == "EnergyBus NodeGuide"_L1,
                    .hasCANopen = facts.hasCANopen,
                    .hasRawCan = facts.hasRawCan,
                    .hasJ1939Server =
                        request.hasJ1939 && !facts.hasCANopen && !facts.hasRawCan && facts.j1939SdoServer,
                    .general = SettingValues::general(store),
                    .energyBus = SettingValues::energyBus(store)};
    readLines(store, facts, view);
    view.profiles = readProfiles(store, view);
    if (facts.hasVirtualObjects)
        view.virtualObjects = countVirtualObjects(store, facts.compactArrays);
    return view;
}

bool DefineView::hasUds() const
{
    return general.number(u"udsserver_supported"_s) == 1 || general.number(u"udsclient_supported"_s) == 1;
}

bool DefineView::hasNewInitStructure() const
{
    return general.number(u"new_init_structure"_s) == 1;
}

bool DefineView::isBootloader(const SettingValues &general)
{
    return general.value(u"uds_bl_setting"_s) == "1"_L1;
}

quint32 DefineView::total(quint32 DefineLine::*number) const
{
    return std::accumulate(lines.begin(), lines.end(), quint32(0),
                           [=](quint32 sum, const DefineLine &line) { return sum + line.*number; });
}

quint32 DefineView::largest(quint32 DefineLine::*number) const
{
    quint32 most = 0;
    for (const DefineLine &line : lines)
        most = std::max(most, line.*number);
    return most;
}
