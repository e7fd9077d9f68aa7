#pragma once

#include "generators/documents/DocumentDesk.h"

/** A small device with something of everything that documents tell. */
namespace SampleDocuments {

inline DocumentDesk::Sub count(const QString &value)
{
    return {.name = QStringLiteral("Highest sub-index supported"),
            .datatype = CAN::Unsigned8,
            .accesstype = QStringLiteral("const"),
            .defaultvalue = value,
            .size = 1,
            .defaultineds = true,
            .implementation = CANopen::ManagedConst,
            .writedefaulttoeds = 1};
}

inline DocumentDesk::Sub outputs(const QString &name)
{
    return {.name = name,
            .datatype = CAN::Unsigned8,
            .accesstype = QStringLiteral("rww"),
            .defaultvalue = QStringLiteral("0"),
            .pdomapping = PDOMapping::Default,
            .lowlimit = QStringLiteral("0"),
            .uplimit = QStringLiteral("0xFF"),
            .size = 1,
            .limitineds = true,
            .implementation = CANopen::ApplicationVariable,
            .description = QStringLiteral("One bit for each output,\nthe lowest for the first"),
            .varname = QStringLiteral("outputs[$z]")};
}

inline void describe(DocumentDesk &desk)
{
    const QList<std::pair<QString, QString>> settings{
        {QStringLiteral("VendorName"), QStringLiteral("Pumps & Motors")},
        {QStringLiteral("ProductName"), QStringLiteral("Pump <large>")},
        {QStringLiteral("FileVersion"), QStringLiteral("1")},
        {QStringLiteral("FileRevision"), QStringLiteral("7")},
        {QStringLiteral("OrderCode"), QStringLiteral("PM-4711")},
        {QStringLiteral("CreatedBy"), QStringLiteral("A. Müller")},
        {QStringLiteral("ModifiedBy"), QStringLiteral("B. Weiß")},
        {QStringLiteral("Comment"), QStringLiteral("For the field test.\nNot for sale.")}};
    for (const auto &[key, value] : settings)
        desk.describe(key, value);
}

inline void build(DocumentDesk &desk)
{
    describe(desk);
    desk.variable(0x1000,
                  {.name = QStringLiteral("Device type"),
                   .datatype = CAN::Unsigned32,
                   .accesstype = QStringLiteral("const"),
                   .defaultvalue = QStringLiteral("0x00030191"),
                   .size = 4,
                   .defaultineds = true,
                   .implementation = CANopen::ManagedConst,
                   .description = QStringLiteral("CiA 401: generic I/O module"),
                   .writedefaulttoeds = 2},
                  QStringLiteral("Device type"));
    desk.variable(0x1008,
                  {.datatype = CAN::VisibleString,
                   .accesstype = QStringLiteral("ro"),
                   .defaultvalue = QStringLiteral("Pump, \"large\""),
                   .size = 16,
                   .implementation = CANopen::ApplicationVariable,
                   .varname = QStringLiteral("deviceName"),
                   .nvstorage = true},
                  QStringLiteral("Manufacturer device name"));
    desk.object(0x6200,
                {.name = QStringLiteral("Write outputs 8-bit"),
                 .datatype = CAN::Unsigned8,
                 .objecttype = CANopen::Array,
                 .description = QStringLiteral("State of the outputs")},
                {count(QStringLiteral("2")), outputs(QStringLiteral("Outputs 1 to 8")),
                 outputs(QStringLiteral("Outputs {8 * $z + 1} and up"))});
    desk.object(0x2F00, {.objecttype = CANopen::Record},
                {count(QStringLiteral("1")),
                 {.name = QStringLiteral("Größe in °"),
                  .datatype = CAN::Real32,
                  .accesstype = QStringLiteral("rw"),
                  .pdomapping = PDOMapping::TPDO,
                  .refuseread = true,
                  .refusewrite = true,
                  .implementation = CANopen::VirtualObject}});
}

} // namespace SampleDocuments
