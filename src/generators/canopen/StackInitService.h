#pragma once

#include <QtGlobal>

class CodeWriter;
struct StackInitContext;

/**
 * Writes what starts the CANopen services of a line, in the words of the context's form: the object
 * dictionary first, network management last.
 *
 * Only those services are started that the object dictionary or a setting shows, so that the linker drops
 * the others. The text assumes `retVal`; in the single-line form `pLoadFunction`; in the multi-line form
 * `canLine`, and `pModes` on CAN FD; and `pCoOptions` where the NMT role is chosen at run time.
 */
void writeStackServices(CodeWriter &out, const StackInitContext &context, quint8 line);

/** Hands the load function of the application to the stack, or refuses one that the stack has no use for. */
void writeLoadFunction(CodeWriter &out, const StackInitContext &context);
