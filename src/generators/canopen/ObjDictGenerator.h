#pragma once

#include "generators/FileGenerator.h"
#include "generators/canopen/ObjectDictionaryView.h"

#include <memory>

class Dialect;
class FileHeader;
class StackInitWriter;

/**
 * Writes gen_objdict.c: the object dictionary of all CANopen lines as C tables, and the functions that start
 * the stack with it. Beside it stands gen_user.h, if string variables get default values, and is removed if
 * they do not.
 *
 * What derives from it may have a file of its own with the same tables in it.
 */
class ObjectDictionaryGenerator : public FileGenerator
{
    Q_OBJECT

public:
    ObjectDictionaryGenerator(const Dialect &dialect, bool compactArrays);
    ~ObjectDictionaryGenerator() override;

    /** Output for the SDO server of a project without a CANopen line: no PDOs, no start of a CANopen stack.
     */
    void setForJ1939Server(bool forJ1939Server) { m_request.forJ1939Server = forJ1939Server; }

protected:
    QString fileName() const override;
    bool prepare() override;
    void write(CodeWriter &out) override;

    const Dialect &dialect() const { return m_dialect; }
    const ObjectDictionaryView &view() const { return m_view; }
    const StackInitWriter &stackInit() const { return *m_stackInit; }

    /** Writes or removes gen_user.h. */
    void writeUserHeader();
    /** Managed variables, constants, default values of strings, application variables. */
    void writeValueTables(CodeWriter &out) const;
    /** od_description and od_assign. */
    void writeObjects(CodeWriter &out);
    /** Static mapping tables; nothing for a J1939 server. */
    void writeMappingTables(CodeWriter &out) const;
    /** od_data_variables. */
    void writeDataVariables(CodeWriter &out) const;
    /** What follows the initialisation: overwritten connection set, default values of strings. */
    void writeTail(CodeWriter &out) const;

private:
    FileHeader fileHeader() const;

    const Dialect &m_dialect;
    ObjectDictionaryRequest m_request;
    ObjectDictionaryView m_view;
    std::unique_ptr<StackInitWriter> m_stackInit;
};

/** For the V4 stack. */
class ObjDictGeneratorV4 : public ObjectDictionaryGenerator
{
    Q_OBJECT

public:
    explicit ObjDictGeneratorV4(bool compactArrays);
};

/** For the older stack. */
class ObjDictGenerator : public ObjectDictionaryGenerator
{
    Q_OBJECT

public:
    explicit ObjDictGenerator(bool compactArrays);
};
