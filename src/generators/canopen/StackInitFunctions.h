#pragma once

class CodeWriter;
struct StackInitContext;

/** coCanOpenStackInit for one line, or coCanOpenStackInitPara where its NMT role is chosen at run time. */
void writeSingleLineInit(CodeWriter &out, const StackInitContext &context);

/** The same for several lines, with a function for each of them that the application may call by itself. */
void writeMultiLineInit(CodeWriter &out, const StackInitContext &context);
