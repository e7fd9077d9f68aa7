#include "importers/PdoTemplates.h"

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "importers/ImportedRows.h"

using namespace Qt::StringLiterals;
using ProjectRecords::SubIndexData;

namespace {

constexpr int mappingEntries = 8;

struct Parameter
{
    quint8 subIndex;
    CAN::CANopenDataType type;
    const char *name;
    const char *value;
};

// Bit 31 of the COB-ID: the PDO does not exist. Transmission type 255: event-driven by the profile.
constexpr Parameter parameters[] = {
    {1, CAN::Unsigned32, "COB-ID", "0x80000000"},
    {2, CAN::Unsigned8, "Transmission Type", "0xFF"},
    {3, CAN::Unsigned16, "Inhibit Time", ""},
    {5, CAN::Unsigned16, "Event Timer", ""},
};

SubIndexData variable(const QString &name, CAN::CANopenDataType type, const QString &value)
{
    SubIndexData sub = ImportedRows::blank();
    sub.name = name;
    sub.datatype = type;
    sub.accesstype = u"rw"_s;
    ImportedRows::setLimits(sub, {}, {});
    ImportedRows::setDefaultValue(sub, value);
    return sub;
}

PdoTemplates::Object communication(const QString &name, quint8 highest)
{
    PdoTemplates::Object object;
    object.data.name = name;
    object.data.objecttype = CANopen::Record;
    SubIndexData count = ImportedRows::count(highest);
    count.name = u"Number of Entries"_s;
    object.subs.insert(0, count);
    for (const Parameter &parameter : parameters) {
        if (parameter.subIndex <= highest)
            object.subs.insert(parameter.subIndex,
                               variable(QString::fromLatin1(parameter.name), parameter.type,
                                        QString::fromLatin1(parameter.value)));
    }
    return object;
}

} // namespace

namespace PdoTemplates {

Object receiveParameter(int number)
{
    return communication(u"Receive PDO parameter %1"_s.arg(number), 2);
}

Object transmitParameter(int number)
{
    return communication(u"Transmit PDO parameter %1"_s.arg(number), 5);
}

// All entries have the access of sub-index 0: a mapping that a master may change.
Object mapping()
{
    Object object;
    object.data.name = u"Mapping Parameter"_s;
    object.data.objecttype = CANopen::Record;
    object.subs.insert(0, variable(u"Number of Entries"_s, CAN::Unsigned8, u"0"_s));
    for (int entry = 1; entry <= mappingEntries; ++entry)
        object.subs.insert(quint8(entry),
                           variable(u"Mappping Entry %1"_s.arg(entry), CAN::Unsigned32, u"0x00000000"_s));
    return object;
}

} // namespace PdoTemplates
