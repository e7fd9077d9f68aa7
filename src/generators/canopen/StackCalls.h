#pragma once

#include <QString>

class CodeWriter;
class Dialect;

/** Calls of the stack in the functions that start it, and the test of their results. */
class StackCalls
{
public:
    static constexpr int functionBody = 4; ///< blanks before a statement

    /** The form decides whether a call has the line as its first argument. */
    StackCalls(const Dialect &dialect, bool isMultiLine) : m_dialect(dialect), m_isMultiLine(isMultiLine) { }

    /** Arguments of a call: the line, if the form has it, and the others. */
    QString arguments(const QString &others = {}) const;
    /** A call that has a result, and the test of it. */
    void writeChecked(CodeWriter &out, QStringView function, const QString &others = {},
                      int indent = functionBody) const;
    /** Leaves the function if retVal tells of an error. */
    void writeCheck(CodeWriter &out, int indent = functionBody) const;

private:
    const Dialect &m_dialect;
    bool m_isMultiLine;
};
