#include "generators/canopen/ObjectDictionaryReader.h"

#include "canopen/CANopenTypes.h"
#include "check/MappingEntry.h"
#include "generators/CText.h"
#include "generators/ObjectKey.h"
#include "generators/canopen/CompactArrays.h"
#include "generators/canopen/ObjectDictionaryView.h"
#include "store/ObjectDataBase.h"

#include <QCoreApplication>
#include <QSet>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

// CiA 301: below are the data types
constexpr quint16 firstObject = 0x1000;
constexpr quint16 lastObject = 0xFFFF;

// CiA 304: mapping parameters of the SRDOs
constexpr quint16 firstSrdoMapping = 0x1380;
constexpr quint16 lastSrdoMapping = 0x13B0;

/** What an access type lets the network do, by SDO and by PDO. */
struct Access
{
    QLatin1StringView word;
    bool read;
    bool write;
    bool mapRead;
    bool mapWrite;
};

constexpr std::array<Access, 6> accesses{{
    {"const"_L1, true, false, true, false},
    {"ro"_L1, true, false, true, false},
    {"wo"_L1, false, true, false, true},
    {"rw"_L1, true, true, true, true},
    {"rwr"_L1, true, true, true, false},
    {"rww"_L1, true, true, false, true},
}};

Access access(const QString &word)
{
    const auto found = std::ranges::find(accesses, word, &Access::word);
    return found == accesses.end() ? Access{} : *found;
}

/** A number that is none of the known ones has no row in any table, as it has no word in the stack. */
StorageClass storageClass(int implementation)
{
    const bool known =
        implementation >= int(StorageClass::Managed) && implementation <= int(StorageClass::None);
    return known ? StorageClass(implementation) : StorageClass::None;
}

int number(ObjectDataBase &store, const QString &setting)
{
    return store.getGeneralSetting(setting).toInt();
}

ObjectDictionarySettings readSettings(ObjectDataBase &store, const ObjectDictionaryRequest &request)
{
    return {
        .compactArrays = request.compactArrays,
        .forJ1939Server = request.forJ1939Server,
        .forceMultiLine = request.forceMultiLine,
        .isEnergyBus = QCoreApplication::applicationName() == "EnergyBus NodeGuide"_L1,
        .canFd = number(store, u"canfd_supported"_s) > 0,
        .newInitStructure = number(store, u"new_init_structure"_s) == 1,
        .limitCheck = number(store, u"limit_check"_s) >= 1,
        .initVariables = number(store, u"init_static_variables"_s) == 1,
        .stringDefaults = number(store, u"generate_string_defaults"_s) > 0,
        .uds = number(store, u"udsserver_supported"_s) == 1 || number(store, u"udsclient_supported"_s) == 1,
        .bitwiseMapping = number(store, u"bitwise_mapping"_s) != 0,
        .dynamicDictionary = number(store, u"dynod"_s) > 0,
        .memorySpecifier = store.getGeneralSetting(u"static_memory_specifier"_s),
        .applicationHeaders = store.getGeneralSetting(u"applicationheader"_s)
                                  .remove(u'"')
                                  .simplified()
                                  .split(u' ', Qt::SkipEmptyParts),
    };
}

DictionarySubIndex toSubIndex(quint32 key, const ObjectDataBase::SUBINDEX_DATA_T &data)
{
    const Access allowed = access(data.accesstype);
    const bool isMappable = !data.pdomapping.isEqualToType(PDOMapping::Forbidden);
    const StorageClass storage = storageClass(data.implementation);
    return {
        .key = key,
        .number = ObjectKey::subIndex(key),
        .dataType = data.datatype,
        .table = CValues::table(data.datatype),
        .storage = storage,
        .isVirtual = data.implementation == CANopen::VirtualObject,
        .isShared = data.sharedlines,
        .isReadable = allowed.read,
        .isWritable = allowed.write,
        .isPdoReadable = isMappable && allowed.mapRead,
        .isPdoWritable = isMappable && allowed.mapWrite,
        .hasDefault = data.defaultineds,
        .hasLimits = data.limitineds,
        .isStored = data.nvstorage,
        .accessType = data.accesstype,
        .defaultValue = data.defaultvalue,
        .lowLimit = data.lowlimit,
        .upLimit = data.uplimit,
        .variable = storage == StorageClass::Application ? CText::variableName(data.varname, key) : QString(),
        .size = quint32(std::max(data.size, 0)),
    };
}

DictionaryObject readObject(ObjectDataBase &store, quint8 line, quint16 index, bool compactArrays)
{
    ObjectDataBase::INDEX_DATA_T object;
    store.getIndex(line, index, object);
    DictionaryObject result{.index = index, .objectCode = object.objecttype};
    CompactArray compact(index);
    const QList<quint8> numbers = store.getSubIndexList(line, index);
    result.subIndices.reserve(numbers.size());
    for (const quint8 subIndex : numbers) {
        ObjectDataBase::SUBINDEX_DATA_T data;
        store.getSubIndex(line, index, subIndex, data);
        result.subIndices.append(toSubIndex(ObjectKey::make(line, index, subIndex), data));
        if (compactArrays)
            compact.add(subIndex, data);
    }
    result.lastDescribed = compact.lastDescribed();
    return result;
}

void readLines(ObjectDataBase &store, ObjectDictionaryView &view)
{
    const QList<quint8> lines = store.getLines();
    for (const quint8 line : lines) {
        if (line >= ObjectDataBase::MaximumLines)
            continue;
        view.projectLines.append(line);
        const QList<quint16> indices = store.getIndexList(line, firstObject, lastObject);
        if (indices.isEmpty())
            continue;
        DictionaryLine read{.number = line};
        read.objects.reserve(indices.size());
        for (const quint16 index : indices)
            read.objects.append(readObject(store, line, index, view.settings.compactArrays));
        view.lines.append(std::move(read));
    }
}

// A stack for several lines has no functions without a line, so that a project with an empty line is one of
// several lines, too; a stack for one line has no others, whatever the number of the line.
void chooseForm(ObjectDictionaryView &view)
{
    view.settings.multiLine = view.projectLines.size() > 1;
    if (!view.settings.multiLine && view.settings.forceMultiLine)
        view.generatorLines = {view.onlyLine()};
    if (view.settings.multiLine)
        for (const DictionaryLine &line : std::as_const(view.lines))
            if (line.objects.size() > 1)
                view.generatorLines.append(line.number);
}

void collectSrdoEntries(const DictionaryLine &line, QSet<quint32> &keys)
{
    for (const DictionaryObject &object : line.objectRange(firstSrdoMapping, lastSrdoMapping))
        for (const DictionarySubIndex &sub : object.subIndices) {
            const MappingEntry entry = MappingEntry::fromText(sub.defaultValue);
            keys.insert(ObjectKey::make(line.number, entry.index(), entry.subIndex()));
        }
}

/** Variables of the SRDO source are none of a row of equal ones. */
void describeEachIfMapped(DictionaryObject &object)
{
    const bool isMapped = std::ranges::any_of(object.subIndices, [&](const DictionarySubIndex &sub) {
        return sub.isMappedInSrdo && sub.number >= object.lastDescribed;
    });
    if (isMapped)
        object.lastDescribed = CompactArray::noLimit;
}

/** Variables that a static SRDO carries belong to the SRDO source. */
void markSrdoVariables(ObjectDictionaryView &view)
{
    QSet<quint32> keys;
    for (const quint8 number :
         view.generatorLines.isEmpty() ? QList<quint8>{view.onlyLine()} : view.generatorLines)
        if (const DictionaryLine *line = view.line(number))
            collectSrdoEntries(*line, keys);
    for (DictionaryLine &line : view.lines)
        for (DictionaryObject &object : line.objects) {
            for (DictionarySubIndex &sub : object.subIndices)
                sub.isMappedInSrdo = keys.contains(sub.key);
            describeEachIfMapped(object);
        }
}

} // namespace

void readObjectDictionary(ObjectDataBase &store, const ObjectDictionaryRequest &request,
                          ObjectDictionaryView &view)
{
    view.settings = readSettings(store, request);
    readLines(store, view);
    chooseForm(view);
    if (number(store, u"static_srdo_data"_s) == 1)
        markSrdoVariables(view);
}
