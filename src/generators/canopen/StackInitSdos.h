#pragma once

class CodeWriter;
struct StackInitLine;

/** SDO servers of a line on classical CAN; there is always a first one. */
void writeSdoServerInit(CodeWriter &out, const StackInitLine &line);
/** The server of a line that may run CAN FD: USDO, or an SDO server while it runs classical CAN. */
void writeFdServerInit(CodeWriter &out, const StackInitLine &line);
/** USDO clients of a line while it runs CAN FD. */
void writeUsdoClientInit(CodeWriter &out, const StackInitLine &line);
/** SDO clients of a line. */
void writeSdoClientInit(CodeWriter &out, const StackInitLine &line);
