#include "generators/descriptions/DeviceDescription.h"

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "canopen/COHelper.h"
#include "canopen/EdsNumber.h"
#include "generators/GenerationClock.h"
#include "store/ObjectDataBase.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// CiA 301: below are the data types
constexpr quint16 firstObject = 0x1000;
constexpr quint16 identityObject = 0x1018;

/** Types from here on are the project's own and unknown to a reader of device descriptions. */
constexpr int firstOwnType = 100;
constexpr quint64 highestType = 0xFFFF;

// ObjFlags of CiA 306
constexpr quint32 refuseRead = 1;
constexpr quint32 refuseWrite = 2;

/** Values of writedefaulttoeds. */
enum DefaultInDescription : quint8 { Never, WhereDefaultIsSet, Always };

struct IndexRange
{
    quint16 first;
    quint16 last;
};

constexpr IndexRange receiveParameters{0x1400, 0x15FF};
constexpr IndexRange transmitParameters{0x1800, 0x19FF};
constexpr std::array mappings{IndexRange{0x1600, 0x17FF}, IndexRange{0x1A00, 0x1BFF}};

/** Sub-index 0 of a mapping with this number of entries or more marks a multiplexed PDO (CiA 301). */
constexpr quint64 firstMultiplexedMark = 253;

/** Makes a line the one whose description settings are read, for as long as it lives. */
class DescriptionLine
{
public:
    DescriptionLine(ObjectDataBase &store, quint8 line) : m_store(store), m_former(store.descriptionLine())
    {
        store.setDescriptionLine(line);
    }
    ~DescriptionLine() { m_store.setDescriptionLine(m_former); }
    Q_DISABLE_COPY_MOVE(DescriptionLine)

private:
    ObjectDataBase &m_store;
    quint8 m_former;
};

/** Reads the description of one line, part by part. */
class Reader
{
public:
    Reader(ObjectDataBase &store, quint8 line, const QString &variant)
        : m_store(store), m_line(line), m_variant(variant), m_selected(store, line)
    {
    }

    DeviceDescription read()
    {
        readFileInfo();
        readDeviceInfo();
        readOtherSections();
        readObjects();
        return m_result;
    }

private:
    QString text(const QString &key) const { return m_store.getDescriptionSetting(key); }
    QString number(const QString &key) const
    {
        const QString value = text(key).trimmed();
        return value.isEmpty() ? u"0"_s : value;
    }
    /** The project's own setting, or else that of the line. */
    QString projectText(const QString &key) const
    {
        return m_store.miscSettingExists(key) ? m_store.getMiscSetting(key) : text(key);
    }

    /**
     * When the project was begun: its file keeps that moment. A fixed clock holds for this date too, and
     * such a moment comes in UTC; a project without a file is begun now.
     */
    QDateTime created() const
    {
        QDateTime now = GenerationClock::now();
        if (now.timeSpec() == Qt::UTC)
            return now;
        const QDateTime birth = QFileInfo(m_store.projectPath()).birthTime();
        return birth.isValid() ? birth : now;
    }

    void readFileInfo()
    {
        m_result.fileVersion = number(u"FileVersion"_s);
        m_result.fileRevision = number(u"FileRevision"_s);
        m_result.createdBy = text(u"CreatedBy"_s);
        m_result.modifiedBy = text(u"ModifiedBy"_s);
        m_result.created = created();
    }

    QString identity(quint8 subIndex) const
    {
        const QString value = m_store.getSubIndexDefault(m_line, identityObject, subIndex).trimmed();
        return value.isEmpty() ? u"0"_s : value;
    }
    int count(IndexRange range) const
    {
        return int(m_store.getIndexList(m_line, range.first, range.last).size());
    }
    bool isMultiplexed(quint16 mapping) const
    {
        return edsNumber(m_store.getSubIndexDefault(m_line, mapping, 0)).value_or(0) >= firstMultiplexedMark;
    }
    bool hasMultiplexedPdo(IndexRange range) const
    {
        const QList<quint16> found = m_store.getIndexList(m_line, range.first, range.last);
        return std::ranges::any_of(found, [this](quint16 mapping) { return isMultiplexed(mapping); });
    }

    void readDeviceInfo()
    {
        m_result.vendorName = text(u"VendorName"_s);
        m_result.productName = text(u"ProductName"_s);
        m_result.orderCode = text(u"OrderCode"_s);
        m_result.identity = {identity(1), identity(2), identity(3)};
        for (std::size_t i = 0; i < DeviceDescription::baudRates.size(); ++i)
            m_result.supportedBaudRates.at(i) =
                number(u"BaudRate_%1"_s.arg(DeviceDescription::baudRates.at(i)));
        m_result.receivePdos = count(receiveParameters);
        m_result.transmitPdos = count(transmitParameters);
        m_result.lssSupported = number(u"LSS_Supported"_s);
        m_result.granularity = number(u"Granularity"_s);
        m_result.hasGroupMessaging =
            std::ranges::any_of(mappings, [this](IndexRange range) { return hasMultiplexedPdo(range); });
    }

    void readOtherSections()
    {
        for (int type = 1; type <= DeviceDescription::dummyTypes; ++type) {
            const QString usage = projectText(u"Dummy000%1"_s.arg(type)).trimmed();
            m_result.dummyUsage.at(std::size_t(type - 1)) = usage.isEmpty() ? u"0"_s : usage;
        }
        m_result.comment = text(u"Comment"_s);
        m_result.additionalSections = projectText(u"AdditionalSections"_s);
    }

    bool isOfVariant(const MetadataMap &metadata) const
    {
        const QString variant = metadata.value(u"eds_define"_s);
        return variant.isEmpty() || variant == m_variant;
    }

    void readObjects()
    {
        m_store.visitIndices(m_line, [this](quint16 index, const ObjectDataBase::INDEX_DATA_T &data) {
            if (index >= firstObject && isOfVariant(data.metadata))
                m_result.objects.append({.index = index,
                                         .name = data.name,
                                         .code = data.objecttype,
                                         .dataType = data.datatype < firstOwnType ? data.datatype : 0,
                                         .description = data.description,
                                         .subIndices = {}});
        });
        for (DescribedObject &object : m_result.objects)
            readSubIndices(object);
    }

    void readSubIndices(DescribedObject &object)
    {
        const QList<quint8> numbers = m_store.getSubIndexList(m_line, object.index);
        for (const quint8 subIndex : numbers) {
            ObjectDataBase::SUBINDEX_DATA_T sub;
            if (m_store.getSubIndex(m_line, object.index, subIndex, sub) && isOfVariant(sub.metadata))
                object.subIndices.append(described(subIndex, sub));
        }
    }

    /** The type that the metadata name by number or name; 0 where they name none. */
    static int chosenType(const MetadataMap &metadata)
    {
        const QString type = metadata.value(u"eds_datatype"_s).trimmed();
        if (type.isEmpty())
            return CAN::NoDataType;
        const auto number = edsNumber(type);
        return number && *number <= highestType ? int(*number) : int(COHelper::mapDataTypeString(type));
    }

    static int describedType(const ObjectDataBase::SUBINDEX_DATA_T &data)
    {
        const int chosen = chosenType(data.metadata);
        if (chosen != CAN::NoDataType)
            return chosen;
        return data.datatype >= firstOwnType ? int(CAN::Unsigned8) : data.datatype;
    }

    static bool isDefaultTold(const ObjectDataBase::SUBINDEX_DATA_T &data)
    {
        return data.implementation == CANopen::ApplicationVariable || data.writedefaulttoeds == Always
            || (data.defaultineds
                && (data.implementation == CANopen::ManagedConst
                    || data.writedefaulttoeds == WhereDefaultIsSet));
    }

    static DescribedSubIndex described(quint8 number, const ObjectDataBase::SUBINDEX_DATA_T &data)
    {
        return {.number = number,
                .name = data.name,
                .dataType = describedType(data),
                .accessType = data.accesstype,
                .pdoMapping = data.pdomapping,
                .hasDefault = isDefaultTold(data),
                .defaultValue = data.defaultvalue,
                .hasLimits = data.limitineds,
                .lowLimit = data.lowlimit,
                .highLimit = data.uplimit,
                .flags = (data.refuseread ? refuseRead : 0) | (data.refusewrite ? refuseWrite : 0),
                .description = data.description};
    }

    ObjectDataBase &m_store;
    quint8 m_line;
    QString m_variant;
    DescriptionLine m_selected;
    DeviceDescription m_result;
};

} // namespace

const DescribedSubIndex *DescribedObject::find(quint8 number) const
{
    const auto found = std::ranges::find(subIndices, number, &DescribedSubIndex::number);
    return found == subIndices.end() ? nullptr : &*found;
}

bool DescribedObject::isStructured() const
{
    return code == CANopen::Array || code == CANopen::Record
        || std::ranges::any_of(subIndices, [](const DescribedSubIndex &sub) { return sub.number != 0; });
}

DeviceDescription DeviceDescription::read(ObjectDataBase &store, quint8 line, const QString &variant)
{
    return Reader(store, line, variant).read();
}
