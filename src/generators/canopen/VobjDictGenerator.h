#pragma once

#include "generators/FileGenerator.h"
#include "generators/GeneratorFactories.h"
#include "generators/canopen/VirtualDictionaryView.h"

#include <memory>

class Dialect;

/**
 * Writes gen_vobjdict.c: the dictionary of the objects in external memory, which the stack reaches through
 * functions of the application.
 *
 * Whether a project's virtual objects count is the project's own decision, as gen_define.h, which tells how
 * many rows the tables have, knows nothing else.
 */
class VirtualDictionaryGenerator : public FileGenerator
{
    Q_OBJECT

public:
    VirtualDictionaryGenerator(const Dialect &dialect, bool compactArrays);

    /** Whether the project has something to write; without it the file has no place in the output. */
    bool hasVirtualObjects() const;

protected:
    QString fileName() const override;
    bool prepare() override;
    void write(CodeWriter &out) override;

private:
    void writeHead(CodeWriter &out) const;
    void writeVariables(CodeWriter &out) const;

    const Dialect &m_dialect;
    ObjectDictionaryRequest m_request;
    VirtualDictionaryView m_view;
};

/** For the V4 stack. */
class VobjDictGeneratorV4 : public VirtualDictionaryGenerator
{
    Q_OBJECT

public:
    explicit VobjDictGeneratorV4(bool compactArrays);
};

/** For the older stack. */
class VobjDictGenerator : public VirtualDictionaryGenerator
{
    Q_OBJECT

public:
    explicit VobjDictGenerator(bool compactArrays);
};

/** The generator that a request asks for. */
std::unique_ptr<AbstractGenerator> makeVirtualDictionaryGenerator(const GeneratorRequest &request);
