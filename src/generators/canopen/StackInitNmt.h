#pragma once

class CodeWriter;
struct StackInitLine;

/** Network management of a line, with the layer setting services before it: as master, slave, or either. */
void writeNetworkManagementInit(CodeWriter &out, const StackInitLine &line);
