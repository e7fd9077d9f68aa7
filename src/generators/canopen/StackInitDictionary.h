#pragma once

class CodeWriter;
struct StackInitContext;
struct StackInitLine;

/** Hands the tables of a line to the stack. */
void writeObjectDictionaryInit(CodeWriter &out, const StackInitLine &line);

/** j1939OdInit: the object dictionary of a J1939 server, which has no other CANopen service. */
void writeJ1939ObjectDictionaryInit(CodeWriter &out, const StackInitContext &context);

/** Names the tables that the stack's structure has no member for, so that no compiler warns of them. */
void writeUnplacedTables(CodeWriter &out, const StackInitContext &context);
