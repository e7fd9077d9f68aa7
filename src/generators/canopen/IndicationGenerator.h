#pragma once

#include "generators/FileGenerator.h"
#include "generators/GeneratorFactories.h"
#include "generators/canopen/IndicationPrototypes.h"

#include <memory>
#include <span>

class Dialect;

/**
 * Writes gen_indication.h: the prototypes of the functions of the application that the stack calls without
 * having been told of them at run time.
 */
class StaticIndicationGenerator : public FileGenerator
{
    Q_OBJECT

public:
    /** The rows of UDS stand behind those of CANopen, where the project wants static UDS functions. */
    StaticIndicationGenerator(const Dialect &dialect, std::span<const IndicationPrototype> udsRows);

protected:
    QString fileName() const override;
    bool prepare() override;
    void write(CodeWriter &out) override;

private:
    QString head() const;
    void writePrototypes(CodeWriter &out) const;

    const Dialect &m_dialect;
    std::span<const IndicationPrototype> m_udsRows;
    IndicationPrototypes m_canopen;
    IndicationPrototypes m_uds;
};

/** For the V4 stack, and for static UDS functions whatever the stack. */
class indicationgeneratorv4 : public StaticIndicationGenerator
{
    Q_OBJECT

public:
    explicit indicationgeneratorv4(std::span<const IndicationPrototype> udsRows = {});
};

/** For the older stack. */
class indicationgenerator : public StaticIndicationGenerator
{
    Q_OBJECT

public:
    explicit indicationgenerator(std::span<const IndicationPrototype> udsRows = {});
};

/** The generator that a request asks for. */
std::unique_ptr<AbstractGenerator> makeIndicationGenerator(const GeneratorRequest &request);
