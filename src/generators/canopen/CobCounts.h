#pragma once

#include <QtGlobal>

class LineObjects;
class ObjectDataBase;
class SettingValues;
struct DefineLine;

/** What the number of CAN identifiers (COBs) of a line depends on. */
struct CobSources
{
    ObjectDataBase &store;
    const SettingValues &general;
    const SettingValues &j1939;
    const LineObjects &objects;
    const DefineLine &line; ///< but for its `cobs`
};

/** The CAN identifiers that the stack has to handle on a line, for all of its protocols. */
quint32 cobCount(const CobSources &sources);

/** Those of the CANopen services. */
quint32 canopenCobCount(const CobSources &sources);
/** Those of the parameter groups and of the J1939 network management and transport. */
quint32 j1939CobCount(const CobSources &sources);
/** Those of the raw CAN messages. */
quint32 rawCanCobCount(const CobSources &sources);
