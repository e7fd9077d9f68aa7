#pragma once

class CodeWriter;
struct StackInitContext;

/** The structures that the stack is started with: commonInitVars, where the form has it, and serviceInitVars.
 */
void writeStackInitVariables(CodeWriter &out, const StackInitContext &context);
