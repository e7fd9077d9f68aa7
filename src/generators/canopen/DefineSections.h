#pragma once

class DefineWriter;
struct DefineView;

/** The sections of gen_define.h between its head and the user's own section, in the order of the file. */
namespace DefineSections {

/** Lines, buffers, objects: what the initialisation structures of CANopen are made of. */
void lineSettings(DefineWriter &out, const DefineView &view);
/** CANopen services. */
void services(DefineWriter &out, const DefineView &view);
/** The virtual devices of an EnergyBus device. */
void energyBus(DefineWriter &out, const DefineView &view);
/** Indication functions of CANopen. */
void indications(DefineWriter &out, const DefineView &view);
/** Buffers that all protocols use. */
void buffers(DefineWriter &out, const DefineView &view);
void j1939(DefineWriter &out, const DefineView &view);
/** That there are several lines, and how many; nothing for one. */
void multiLine(DefineWriter &out, const DefineView &view);
/** Buffers of a UDS boot loader, which no protocol brings along. */
void bootloader(DefineWriter &out, const DefineView &view);
void rawCan(DefineWriter &out, const DefineView &view);
/** ISO-TP and UDS. */
void isoTp(DefineWriter &out, const DefineView &view);
void virtualObjects(DefineWriter &out, const DefineView &view);
void hardware(DefineWriter &out, const DefineView &view);
/** What the user has typed into the project, and what the generation itself adds. */
void userDefines(DefineWriter &out, const DefineView &view);
/** Numbers of CAN identifiers. */
void cobs(DefineWriter &out, const DefineView &view);

} // namespace DefineSections
