#include "FieldCases.h"

namespace FieldCases {
namespace {

constexpr quint8 line = 0;
constexpr quint16 objectIndex = 0x2000;
constexpr quint8 subIndex = 3;
constexpr quint32 number = 61444;
constexpr quint32 signal = 190;
constexpr int sampleNumber = 41;

template <typename Row>
struct Access
{
    const char *table;
    const char *where;
    bool (*write)(ObjectDataBase &, const Row &);
    bool (*read)(ObjectDataBase &, Row &);
};

template <typename Field>
QVariant toVariant(const Field &field)
{
    if constexpr (std::is_same_v<Field, PDOMapping>)
        return int(field.toUInt());
    else if constexpr (std::is_same_v<Field, QString>)
        return field;
    else
        return int(field);
}

template <typename Field>
void fromVariant(Field &field, const QVariant &value)
{
    if constexpr (std::is_same_v<Field, PDOMapping>)
        field = PDOMapping(value.toInt());
    else if constexpr (std::is_same_v<Field, QString>)
        field = value.toString();
    else
        field = Field(value.toInt());
}

template <typename Field>
QVariant sampleFor(const char *column, const Field &standard)
{
    if constexpr (std::is_same_v<Field, QString>)
        return QVariant(QStringLiteral("text of %1").arg(QLatin1StringView(column)));
    else if constexpr (sizeof(Field) == 1 && std::is_integral_v<Field>)
        return standard ? 0 : 1; // flags
    else if constexpr (std::is_same_v<Field, PDOMapping>)
        return int(PDOMapping::RPDO);
    else
        return sampleNumber;
}

class Builder
{
public:
    template <typename Row, typename Field>
    void add(const Access<Row> &access, const char *column, Field Row::*member, bool pooled = false)
    {
        FieldCase field;
        field.name = QByteArray(access.table) + '.' + column;
        field.isText = std::is_same_v<Field, QString>;
        field.isPooled = pooled;
        field.sample = sampleFor<Field>(column, Row().*member);
        field.write = [access, member](ObjectDataBase &store, const QVariant &value) {
            Row row = base<Row>();
            fromVariant(row.*member, value);
            return access.write(store, row);
        };
        field.read = [access, member](ObjectDataBase &store) {
            Row row = base<Row>();
            return access.read(store, row) ? toVariant(row.*member) : QVariant();
        };
        const QString select = QStringLiteral("select %1 from %2 where %3")
                                   .arg(QLatin1StringView(column), QLatin1StringView(access.table),
                                        QLatin1StringView(access.where));
        field.select =
            pooled ? QStringLiteral("select string from Strings where id = (%1)").arg(select) : select;
        cases.append(field);
    }

    QList<FieldCase> cases;

private:
    template <typename Row>
    static Row base()
    {
        Row row;
        if constexpr (std::is_same_v<Row, ObjectDataBase::PGN> || std::is_same_v<Row, ObjectDataBase::CANID>)
            row.direction = ObjectDataBase::Transmit;
        return row;
    }
};

void addObjects(Builder &builder)
{
    using Row = ObjectDataBase::INDEX_DATA_T;
    const Access<Row> access{
        "Objects0", "objectindex = 8192",
        [](ObjectDataBase &store, const Row &row) { return store.addIndex(line, objectIndex, row); },
        [](ObjectDataBase &store, Row &row) { return store.getIndex(line, objectIndex, row); }};
    builder.add(access, "name", &Row::name, true);
    builder.add(access, "datatype", &Row::datatype);
    builder.add(access, "objecttype", &Row::objecttype);
    builder.add(access, "description", &Row::description, true);
    builder.add(access, "category", &Row::category);
    builder.add(access, "device_class", &Row::device_class, true);
    builder.add(access, "fwsupported", &Row::fwsupported);
}

void addSubObjects(Builder &builder)
{
    using Row = ObjectDataBase::SUBINDEX_DATA_T;
    const Access<Row> access{
        "SubObjects0", "objectindex = 8192 and subindex = 3",
        [](ObjectDataBase &store, const Row &row) {
            return store.addSubIndex(line, objectIndex, subIndex, row);
        },
        [](ObjectDataBase &store, Row &row) { return store.getSubIndex(line, objectIndex, subIndex, row); }};
    builder.add(access, "name", &Row::name, true);
    builder.add(access, "datatype", &Row::datatype);
    builder.add(access, "accesstype", &Row::accesstype);
    builder.add(access, "defaultvalue", &Row::defaultvalue);
    builder.add(access, "currentvalue", &Row::currentvalue);
    builder.add(access, "pdomapping", &Row::pdomapping);
    builder.add(access, "lowlimit", &Row::lowlimit);
    builder.add(access, "uplimit", &Row::uplimit);
    builder.add(access, "size", &Row::size);
    builder.add(access, "defaultineds", &Row::defaultineds);
    builder.add(access, "limitineds", &Row::limitineds);
    builder.add(access, "refuseread", &Row::refuseread);
    builder.add(access, "refusewrite", &Row::refusewrite);
    builder.add(access, "allowedaccesstypes", &Row::allowedaccesstypes);
    builder.add(access, "implementation", &Row::implementation);
    builder.add(access, "varname", &Row::varname);
    builder.add(access, "description", &Row::description, true);
    builder.add(access, "category", &Row::category);
    builder.add(access, "writedefaulttoeds", &Row::writedefaulttoeds);
    builder.add(access, "cyclicread", &Row::cyclicread);
    builder.add(access, "dcfcomponent", &Row::dcfcomponent);
    builder.add(access, "changedbyuser", &Row::changedbyuser);
    builder.add(access, "wizardsource", &Row::wizardsource);
    builder.add(access, "denotation", &Row::denotation, true);
    builder.add(access, "sharedlines", &Row::sharedlines);
    builder.add(access, "managedbylvx", &Row::managedbylvx);
    builder.add(access, "signalid", &Row::signalid);
    builder.add(access, "nvstorage", &Row::nvstorage);
}

void addNodes(Builder &builder)
{
    using Row = ObjectDataBase::NODE_DATA_T;
    // Line 3 is made anew each time: an update would leave the columns behind the icon path.
    const Access<Row> access{"Nodes", "nodeId = 3",
                             [](ObjectDataBase &store, const Row &row) {
                                 if (store.nodeExists(3) && !store.removeLine(3))
                                     return false;
                                 return store.addNode(3, row);
                             },
                             [](ObjectDataBase &store, Row &row) { return store.getNode(3, row); }};
    builder.add(access, "name", &Row::name);
    builder.add(access, "edspath", &Row::edspath);
    builder.add(access, "xddpath", &Row::xddpath);
    builder.add(access, "dcfpath", &Row::dcfpath);
    builder.add(access, "tpdocnt", &Row::tpdocnt);
    builder.add(access, "rpdocnt", &Row::rpdocnt);
    builder.add(access, "ismaster", &Row::ismaster);
    builder.add(access, "issyncproducer", &Row::issyncproducer);
    builder.add(access, "issyncconsumer", &Row::issyncconsumer);
    builder.add(access, "ishbconsumer", &Row::ishbconsumer);
    builder.add(access, "isemergencyproducer", &Row::isemergencyproducer);
    builder.add(access, "isemergencyconsumer", &Row::isemergencyconsumer);
    builder.add(access, "ismpdosupported", &Row::ismpdosupported);
    builder.add(access, "iscanopengateway", &Row::iscanopengateway);
    builder.add(access, "allpdosstatic", &Row::allpdosstatic);
    builder.add(access, "excludegeneration", &Row::excludegeneration);
    builder.add(access, "generatedcf", &Row::generatedcf);
    builder.add(access, "prefix", &Row::prefix);
    builder.add(access, "outputpath", &Row::outputpath);
    builder.add(access, "iconpath", &Row::iconpath);
    builder.add(access, "isbootupmanager", &Row::isbootupmanager);
    builder.add(access, "isconfigmanager", &Row::isconfigmanager);
    builder.add(access, "excludepdolinking", &Row::excludepdolinking);
    builder.add(access, "multilinedata", &Row::multilinedata);
    builder.add(access, "lssslave", &Row::lssslave);
}

void addPgns(Builder &builder)
{
    using Row = ObjectDataBase::PGN;
    const Access<Row> access{
        "PGNs0", "number = 61444 and direction = 85",
        [](ObjectDataBase &store, const Row &row) { return store.addPGN(line, number, row); },
        [](ObjectDataBase &store, Row &row) {
            return store.getPGN(line, number, ObjectDataBase::Transmit, row);
        }};
    builder.add(access, "edp_dp_key", &Row::edp_dp_key);
    builder.add(access, "priority", &Row::priority);
    builder.add(access, "cycletime_ms", &Row::cycletime_ms);
    builder.add(access, "inhibittime_ms", &Row::inhibittime_ms);
    builder.add(access, "mappingcount", &Row::mappingcount);
    builder.add(access, "name", &Row::name, true);
    builder.add(access, "desc", &Row::desc, true);
    builder.add(access, "issafe", &Row::issafe);
    builder.add(access, "srvt_ms", &Row::srvt_ms);
    builder.add(access, "FD_TrailerFormat", &Row::FD_TrailerFormat);
    builder.add(access, "FD_AssuranceType", &Row::FD_AssuranceType);
    builder.add(access, "FD_AssuranceDataSize", &Row::FD_AssuranceDataSize);
    builder.add(access, "multisourceaddress", &Row::multisourceaddress);
    builder.add(access, "safetytype", &Row::safetytype);
    builder.add(access, "FD_DataID", &Row::FD_DataID);
}

void addSpns(Builder &builder)
{
    using Row = ObjectDataBase::SPN;
    const Access<Row> access{"SPNs0", "pgnnumber = 61444 and spnnumber = 190 and direction = 85",
                             [](ObjectDataBase &store, const Row &row) {
                                 return store.addSPN(line, number, ObjectDataBase::Transmit, signal, row);
                             },
                             [](ObjectDataBase &store, Row &row) {
                                 return store.getSPN(line, number, ObjectDataBase::Transmit, signal, row);
                             }};
    builder.add(access, "datatype", &Row::datatype);
    builder.add(access, "implementation", &Row::implementation);
    builder.add(access, "varname", &Row::varname);
    builder.add(access, "defaultvalue", &Row::defaultvalue);
    builder.add(access, "name", &Row::name, true);
    builder.add(access, "desc", &Row::desc, true);
    builder.add(access, "pos", &Row::pos);
    builder.add(access, "bitsize", &Row::bitsize);
    builder.add(access, "slot_df", &Row::slot_df);
    builder.add(access, "bitposition", &Row::bitposition);
}

void addCanIds(Builder &builder)
{
    using Row = ObjectDataBase::CANID;
    const Access<Row> access{
        "CANIDs0", "id = 61444 and direction = 85",
        [](ObjectDataBase &store, const Row &row) { return store.addCANID(line, number, row); },
        [](ObjectDataBase &store, Row &row) {
            return store.getCANID(line, number, ObjectDataBase::Transmit, row);
        }};
    builder.add(access, "cycletime_ms", &Row::cycletime_ms);
    builder.add(access, "inhibittime_ms", &Row::inhibittime_ms);
    builder.add(access, "mappingcount", &Row::mappingcount);
    builder.add(access, "name", &Row::name, true);
    builder.add(access, "desc", &Row::desc, true);
}

void addDataElements(Builder &builder)
{
    using Row = ObjectDataBase::DataElement;
    const Access<Row> access{
        "DataElements0", "canid = 61444 and number = 190 and direction = 85",
        [](ObjectDataBase &store, const Row &row) {
            return store.addDataElement(line, number, ObjectDataBase::Transmit, signal, row);
        },
        [](ObjectDataBase &store, Row &row) {
            return store.getDataElement(line, number, ObjectDataBase::Transmit, signal, row);
        }};
    builder.add(access, "datatype", &Row::datatype);
    builder.add(access, "implementation", &Row::implementation);
    builder.add(access, "varname", &Row::varname);
    builder.add(access, "defaultvalue", &Row::defaultvalue);
    builder.add(access, "name", &Row::name, true);
    builder.add(access, "desc", &Row::desc, true);
    builder.add(access, "pos", &Row::pos);
    builder.add(access, "bitsize", &Row::bitsize);
    builder.add(access, "bitpos", &Row::bitpos);
}

} // namespace

const QList<FieldCase> &all()
{
    static const QList<FieldCase> cases = [] {
        Builder builder;
        addObjects(builder);
        addSubObjects(builder);
        addNodes(builder);
        addPgns(builder);
        addSpns(builder);
        addCanIds(builder);
        addDataElements(builder);
        return builder.cases;
    }();
    return cases;
}

} // namespace FieldCases
