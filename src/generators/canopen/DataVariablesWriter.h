#pragma once

class CodeWriter;
class Dialect;
struct ObjectDictionaryView;

/** Writes od_data_variables, through which the stack finds the value tables; tables not written are NULL. */
void writeDataVariables(CodeWriter &out, const ObjectDictionaryView &view, const Dialect &dialect);
