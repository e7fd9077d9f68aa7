#pragma once

#include <memory>

class CodeWriter;
class Dialect;
class ObjectDataBase;
struct ObjectDictionaryView;

/**
 * The code of gen_objdict.c around its tables: static indication pointers, the functions that start the
 * stack, the function that overwrites the predefined connection set.
 *
 * The constructor reads the project, the write functions ask the store for nothing. The view has to
 * outlive the writer.
 */
class StackInitWriter
{
public:
    StackInitWriter(ObjectDataBase &store, const ObjectDictionaryView &view, const Dialect &dialect);
    ~StackInitWriter();
    StackInitWriter(const StackInitWriter &) = delete;
    StackInitWriter &operator=(const StackInitWriter &) = delete;

    /** The pointers to indication functions that are fixed at compile time. */
    void writeStaticIndications(CodeWriter &out) const;
    /**
     * The functions that start the stack, in the form of the view's settings: j1939OdInit, one function
     * for one line, or the functions of the multi-line form.
     */
    void writeInit(CodeWriter &out) const;
    /** genLoadIndication; nothing where the project does not ask for it. */
    void writeOverwriteFunction(CodeWriter &out) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
