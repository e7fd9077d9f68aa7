#pragma once

class CodeWriter;
struct StackInitLine;

/** Every PDO that a line sends, with its communication parameters and its mapping table. */
void writeTransmitPdoInit(CodeWriter &out, const StackInitLine &line);
/** Every PDO that a line receives. */
void writeReceivePdoInit(CodeWriter &out, const StackInitLine &line);
