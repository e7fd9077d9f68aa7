#pragma once

#include "generators/CValues.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <span>

class ObjectDataBase;

/** How a run was asked for, beside what the project itself says. */
struct ObjectDictionaryRequest
{
    bool compactArrays = false; ///< large arrays of equal entries get few description rows
    bool forJ1939Server = false; ///< for the SDO server of a project without a CANopen line
    bool forceMultiLine = false; ///< the multi-line form whatever the lines are
};

/** The settings of a project that several places of the output depend on. */
struct ObjectDictionarySettings
{
    bool compactArrays = false;
    bool forJ1939Server = false;
    bool multiLine = false; ///< the project has several lines, or its objects stand on line 1
    bool forceMultiLine = false;
    bool isEnergyBus = false; ///< edition
    bool canFd = false;
    bool newInitStructure = false;
    bool limitCheck = false; ///< descriptions tell where their limits stand
    bool initVariables = false; ///< managed variables have initialisers
    bool stringDefaults = false; ///< gen_user.h and the default values of string variables
    bool uds = false; ///< UDS server or client
    bool bitwiseMapping = false; ///< lengths in mapping tables are bits, otherwise bytes
    bool dynamicDictionary = false; ///< objects may come and go while the device runs
    QString memorySpecifier; ///< behind the array size of managed variables
    QStringList applicationHeaders;

    bool isMultiLineForm() const { return multiLine || forceMultiLine; }
};

/** Where the value of a sub-index lives; the stored number of the implementation. */
enum class StorageClass : quint8 {
    Managed = 0, ///< variable of the generated code
    Constant = 1,
    Application = 2, ///< variable of the application
    None = 3, ///< no description row
};

/** A place in one of the typed value tables. */
struct TablePosition
{
    CValues::Table table = CValues::Table::None;
    quint32 position = 0;

    bool operator==(const TablePosition &) const = default;
};

/** A sub-index with all that the tables tell of it. */
struct DictionarySubIndex
{
    quint32 key = 0; ///< see ObjectKey
    quint8 number = 0;
    int dataType = 0;
    CValues::Table table = CValues::Table::None; ///< that values of the type stand in
    StorageClass storage = StorageClass::Managed;
    bool isVirtual = false; ///< served by functions of the application, from the virtual dictionary
    bool isShared = false; ///< one variable for all lines, which is that of line 0
    bool isMappedInSrdo = false; ///< its variable belongs to the static SRDO data
    bool isReadable = false;
    bool isWritable = false;
    bool isPdoReadable = false; ///< may be mapped into a transmit PDO
    bool isPdoWritable = false; ///< may be mapped into a receive PDO
    bool hasDefault = false;
    bool hasLimits = false;
    bool isStored = false; ///< in non-volatile memory
    QString accessType;
    QString defaultValue; ///< as the project has it, "$NODEID+" included
    QString lowLimit;
    QString upLimit;
    QString variable; ///< name of the application variable, its own variables expanded
    quint32 size = 0; ///< bytes of a text or block of data

    /** The variable: in od_... if managed, in od_ptr_... (od_vis_string...) if the application's. */
    std::optional<TablePosition> variablePosition;
    /** The default value in an od_const_... table; every number has one. */
    std::optional<TablePosition> constantPosition;
    quint32 lowLimitPosition = 0; ///< in the same table as the default
    quint32 upLimitPosition = 0;

    QStringView specifier; ///< suffix of the storage class macro: "_VAR", "_RPDO"
    quint32 valueField = 0; ///< third column of the description row: a position, an index or a service number
    bool isCompact = false; ///< the row stands for all sub-indices behind it, too
    bool isDescribed = false; ///< has a row in od_description
    bool isDynamic = false; ///< of a dictionary that the application may change while it runs

    /** The default as a number, without "$NODEID+"; 0 where it is none. */
    CValues::Bits defaultNumber() const { return CValues::defaultValue(dataType, defaultValue); }
};

/** An object of a line. */
struct DictionaryObject
{
    quint16 index = 0;
    int objectCode = 0;
    QList<DictionarySubIndex> subIndices; ///< ascending, all of them
    int lastDescribed = 255; ///< sub-indices behind it are covered by the row of this one
    quint32 firstDescription = 0; ///< row of sub-index 0 in od_description; of line 0 for a shared object
    quint32 descriptionCount = 0; ///< rows from there on that tell of this object
    bool isAssigned = false; ///< has a row in od_assign

    /** Null where the object does not have it. */
    const DictionarySubIndex *subIndex(quint8 number) const;
    quint8 highestSubIndex() const { return subIndices.isEmpty() ? 0 : subIndices.last().number; }
};

/** One mapped object of a mapping table. */
struct MappingRow
{
    QString address; ///< C expression of the variable's address; "NULL" without a variable
    quint32 length = 0; ///< bits or bytes, see ObjectDictionarySettings::bitwiseMapping
    int dataType = 0;
    quint32 entry = 0; ///< the mapping entry of CiA 301: index, sub-index, length in bits
    QList<int> routing; ///< by line of the project: TPDO number that sends the value on, or 0
};

/** A static PDO mapping table. */
struct MappingTable
{
    QString name; ///< the C name: "mapTableTPDO1", "mapTableRPDOb2"
    quint16 number = 0; ///< of the PDO; of a shared table its own number within the line
    quint32 count = 0; ///< as sub-index 0 has it; 254 and 255 mark multiplexed PDOs
    QList<MappingRow> rows;
};

/** A PDO of a line, told by its communication object. */
struct DictionaryPdo
{
    quint16 index = 0; ///< of the communication object
    quint16 number = 0; ///< from 1
    bool isStatic = false; ///< the mapping cannot be changed
    /** C name of the mapping table; empty for a dynamic mapping and where nothing is mapped. */
    QString mappingTable;
};

/** A line that has objects. */
struct DictionaryLine
{
    quint8 number = 0;
    QList<DictionaryObject> objects; ///< ascending
    quint32 firstAssignment = 0; ///< row in od_assign
    quint32 assignmentCount = 0;
    quint32 firstDescription = 0; ///< row in od_description
    quint32 descriptionCount = 0;
    QList<DictionaryPdo> transmitPdos;
    QList<DictionaryPdo> receivePdos;
    QList<MappingTable> transmitTables; ///< those of static PDOs; a count of 0 has no rows and is not defined
    QList<MappingTable>
        receiveTables; ///< one per PDO with network routing, otherwise shared by equal mappings

    /** Null where the line does not have it. */
    const DictionaryObject *object(quint16 index) const;
    bool hasObject(quint16 index) const { return object(index) != nullptr; }
    /** Objects from `from` to `to` inclusive, ascending. */
    std::span<const DictionaryObject> objectRange(quint16 from, quint16 to) const;
    /** Null where the line does not have it. */
    const DictionarySubIndex *subIndex(quint16 index, quint8 sub) const;
};

/** A variable that the generated code owns. */
struct ManagedVariable
{
    quint32 key = 0;
    CValues::Bits initialValue = 0;
};

/** A variable that the application owns. */
struct ApplicationVariable
{
    quint32 key = 0;
    QString name; ///< a variable, or an expression that yields a pointer
    quint32 size = 0; ///< bytes of a text or block of data
};

/** The default value of a string variable of the application. */
struct StringDefault
{
    quint32 key = 0;
    QString name; ///< of the variable
    QByteArray bytes;
    quint32 offset = 0; ///< in stringDefaultValues
};

/** One list for each typed table; an empty one is not written. */
template <typename Row>
struct ByTable
{
    std::array<QList<Row>, CValues::tableForms.size()> tables;

    QList<Row> &operator[](CValues::Table table) { return tables[std::size_t(table)]; }
    const QList<Row> &operator[](CValues::Table table) const { return tables[std::size_t(table)]; }
};

/**
 * The object dictionary as gen_objdict.c tells it: computed once, before anything is written.
 *
 * All rows and positions are final; what writes the file puts them into words and asks nobody.
 */
struct ObjectDictionaryView
{
    ObjectDictionarySettings settings;
    QList<quint8> projectLines; ///< all lines of the project that the stack knows, ascending
    QList<quint8> generatorLines; ///< lines with functions of their own in the multi-line form
    QList<DictionaryLine> lines; ///< those with objects, ascending

    ByTable<ManagedVariable> managed;
    ByTable<CValues::Bits> constants;
    ByTable<QString> constantTexts; ///< octet strings stand among the visible strings
    ByTable<ApplicationVariable> application;
    QList<StringDefault> stringDefaults;

    quint32 assignmentCount = 0; ///< rows of od_assign
    quint32 descriptionCount = 0; ///< rows of od_description
    int mappingRows = 0; ///< of every mapping table, those without an entry included
    bool hasNetworkRouting = false; ///< some line has object 0x1F2C
    /** Tables that od_data_variables has no place for; an initialisation function names them as (void). */
    QStringList unplacedTables;

    static ObjectDictionaryView read(ObjectDataBase &store, const ObjectDictionaryRequest &request);

    /** Why the stack could not find its way in the tables, whose positions have 16 bits; mostly nothing. */
    QString flaw() const;
    /** The flaw of a table with more rows than positions; empty for one without. */
    static QString overflow(const CValues::TableForm &form, qsizetype rows);

    /** The line of a project with one, which is not the first after that has been deleted. */
    quint8 onlyLine() const { return projectLines.value(0); }
    /** Null where the line has no objects. */
    const DictionaryLine *line(quint8 number) const;
    /** Null where the project does not have it. */
    const DictionarySubIndex *subIndex(quint8 line, quint16 index, quint8 sub) const;
    /** "od_const_u16[3]": the element that holds the default of a sub-index; empty where there is none. */
    QString constantElement(quint8 line, quint16 index, quint8 sub) const;
};
