#pragma once

class CodeWriter;
class Dialect;
struct ObjectDictionaryView;

/**
 * The default values of the application's string variables: their bytes, and the function that copies them
 * into the variables. Nothing where the project does not ask for them.
 */
class StringDefaultsWriter
{
public:
    StringDefaultsWriter(const ObjectDictionaryView &view, const Dialect &dialect)
        : m_view(view), m_dialect(dialect)
    {
    }

    void writeValues(CodeWriter &out) const;
    void writeFunction(CodeWriter &out) const;

private:
    const ObjectDictionaryView &m_view;
    const Dialect &m_dialect;
};
