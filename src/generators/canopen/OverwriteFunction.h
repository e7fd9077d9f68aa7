#pragma once

class CodeWriter;
struct StackInitContext;

/**
 * genLoadIndication: gives SDOs and PDOs the COB-IDs of the project in place of those of the predefined
 * connection set (CiA 301). Nothing where no line asks for it.
 */
void writeOverwriteFunction(CodeWriter &out, const StackInitContext &context);
