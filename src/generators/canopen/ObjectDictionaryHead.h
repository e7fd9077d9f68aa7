#pragma once

#include "generators/FileHeader.h"

class CodeWriter;
class Dialect;
struct ObjectDictionaryView;

/** What stands before the tables of gen_objdict.c, and the header gen_user.h. */
class ObjectDictionaryHead
{
public:
    ObjectDictionaryHead(const ObjectDictionaryView &view, const Dialect &dialect, const FileHeader &header)
        : m_view(view), m_dialect(dialect), m_header(header)
    {
    }

    /** From the title to the definitions of the compiler's storage classes. */
    void write(CodeWriter &out, const QString &outputFolder) const;
    /** The prototypes of functions that the application or the generated code has to offer. */
    void writeUserHeader(CodeWriter &out) const;

    /** Includes of the application's own headers; nothing without any. */
    void writeApplicationHeaders(CodeWriter &out) const;
    /** Empty definitions of words that a target may define otherwise. */
    void writeMemorySpecifiers(CodeWriter &out) const;

private:
    void writeStackHeaders(CodeWriter &out) const;
    void writeLinePrototypes(CodeWriter &out) const;

    const ObjectDictionaryView &m_view;
    const Dialect &m_dialect;
    FileHeader m_header;
};
