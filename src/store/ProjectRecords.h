#pragma once

#include "canopen/PDOMapping.h"

#include <QMap>
#include <QString>

/** Free key/value texts attached to an object or sub-index; stored as a blob, in key order. */
using MetadataMap = QMap<QString, QString>;

/**
 * The plain records that mirror one row of a project table each.
 *
 * Columns that hold an id of the string pool appear here as their text. ObjectDataBase names these
 * records as its own; this header exists so that the column tables can be read beside them.
 */
namespace ProjectRecords {

/** An object of the object dictionary (CiA 301), without its sub-indices. */
struct IndexData
{
    QString name;
    int datatype = 0;
    int objecttype = 0; ///< object code: 7 variable, 8 array, 9 record
    QString description;
    int category = 0;
    QString device_class;
    int fwsupported = 0;
    MetadataMap metadata;

    bool operator==(const IndexData &) const = default;
};

/** A sub-index. Values and limits stay in the form the user typed, "$NODEID" expressions included. */
struct SubIndexData
{
    QString name;
    int datatype = 0;
    QString accesstype;
    QString defaultvalue;
    QString currentvalue;
    PDOMapping pdomapping;
    QString lowlimit;
    QString uplimit;
    int size = 0;
    bool defaultineds = false;
    bool limitineds = false;
    bool refuseread = false;
    bool refusewrite = false;
    bool dcfcomponent = false;
    bool cyclicread = false;
    QString allowedaccesstypes;
    int implementation = 0;
    QString description;
    QString varname;
    int category = 0;
    quint8 writedefaulttoeds = 0; ///< 0 never, 1 where defaultineds is set, 2 always
    bool changedbyuser = false;
    quint16 wizardsource = 0;
    bool sharedlines = false;
    QString denotation;
    bool managedbylvx = false;
    int signalid = 0;
    bool nvstorage = false;
    MetadataMap metadata;

    bool operator==(const SubIndexData &) const = default;
};

/** A sub-index with its place in the project. */
struct SubEntry
{
    quint8 line = 0;
    quint16 index = 0;
    quint8 subindex = 0;
    SubIndexData data;

    bool operator==(const SubEntry &) const = default;
};

/** A CAN line's node record. A default record is what a new line gets. */
struct NodeData
{
    QString name;
    QString edspath;
    QString xddpath;
    QString dcfpath;
    QString iconpath;
    quint16 tpdocnt = 0;
    quint16 rpdocnt = 0;
    QString prefix = QStringLiteral("_");
    QString outputpath = QStringLiteral("C:/");
    quint8 ismaster = 0;
    quint8 issyncproducer = 0;
    quint8 issyncconsumer = 0;
    quint8 ishbconsumer = 0;
    quint8 isemergencyproducer = 0;
    quint8 isemergencyconsumer = 0;
    quint8 ismpdosupported = 0;
    quint8 iscanopengateway = 0;
    quint8 allpdosstatic = 0;
    quint8 excludegeneration = 0;
    quint8 generatedcf = 1;
    quint8 isbootupmanager = 0;
    quint8 isconfigmanager = 0;
    quint8 excludepdolinking = 0;
    int multilinedata = 0;
    int lssslave = 0;

    bool operator==(const NodeData &) const = default;
};

/** A J1939 parameter group (SAE J1939-21). `direction` is 85 transmit or 119 receive. */
struct Pgn
{
    QString name;
    QString desc;
    int edp_dp_key = 0;
    int priority = 0;
    int cycletime_ms = 0;
    int inhibittime_ms = 0;
    int mappingcount = 0;
    int direction = 0;
    bool issafe = false;
    int srvt_ms = 0;
    int FD_TrailerFormat = 0;
    int FD_AssuranceType = 0;
    int FD_AssuranceDataSize = 0;
    int multisourceaddress = 0;
    int safetytype = 0;
    int FD_DataID = 0;

    bool operator==(const Pgn &) const = default;
};

/** A J1939 signal (suspect parameter): `pos` orders the signals of a group, sizes and `bitposition` in bits.
 */
struct Spn
{
    int datatype = 0;
    int implementation = 0;
    QString varname;
    QString defaultvalue;
    QString name;
    QString desc;
    int pos = 0;
    int bitsize = 0;
    int slot_df = 0;
    int bitposition = 0;

    bool operator==(const Spn &) const = default;
};

/** A raw CAN message; `direction` is 85 transmit or 119 receive. */
struct CanId
{
    QString name;
    QString desc;
    int cycletime_ms = 0;
    int inhibittime_ms = 0;
    int mappingcount = 0;
    int direction = 0;

    bool operator==(const CanId &) const = default;
};

/** A signal of a raw CAN message: `pos` orders the signals of a message, sizes and `bitpos` in bits. */
struct DataElement
{
    int datatype = 0;
    int implementation = 0;
    QString varname;
    QString defaultvalue;
    QString name;
    QString desc;
    int pos = 0;
    int bitsize = 0;
    int bitpos = 0;

    bool operator==(const DataElement &) const = default;
};

/** What one notification of the store is about; fields that a type does not name are 0. */
struct ChangeSet
{
    int type = 0;
    quint16 index = 0;
    quint8 subindex = 0;
    quint8 line = 0;
    quint32 pgn = 0;
    quint32 spn = 0;
    quint32 canid = 0;
    quint32 element = 0;
    quint8 direction = 0;

    bool operator==(const ChangeSet &) const = default;
};

} // namespace ProjectRecords
