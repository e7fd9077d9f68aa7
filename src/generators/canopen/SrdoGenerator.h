#pragma once

#include "generators/FileGenerator.h"
#include "generators/GeneratorFactories.h"
#include "generators/canopen/SrdoView.h"

#include <functional>
#include <memory>
#include <optional>

class Dialect;

/**
 * Writes gen_srdo.c: the safety relevant data objects of a device (EN 50325-5, CiA 304), their mapping tables
 * and the functions that move mapped variables into the normal and the inverted message and out of them.
 *
 * The file is a template, of the stack or of the program, whose markers are filled here.
 */
class SafetyDataGenerator : public FileGenerator
{
    Q_OBJECT

public:
    /** Nothing where there is no template; see SrdoTemplate::read. */
    using TemplateSource =
        std::function<std::optional<QString>(bool multiLine, const QString &projectFolder)>;

    /** `staticSrdoData`: the mapped variables stand in this file. */
    SafetyDataGenerator(const Dialect &dialect, bool staticSrdoData);

    void setTemplateSource(const TemplateSource &source) { m_source = source; }

protected:
    QString fileName() const override;
    bool prepare() override;
    void write(CodeWriter &out) override;

private:
    const Dialect &m_dialect;
    const bool m_staticSrdoData;
    TemplateSource m_source;
    SrdoView m_view;
    QString m_template;
};

/** In the words of the V4 stack; the one that a generation run has, whatever the stack. */
class SrdoGeneratorStatic : public SafetyDataGenerator
{
    Q_OBJECT

public:
    explicit SrdoGeneratorStatic(bool staticSrdoData);
};

/** In the words of the older stack. */
class SrdoGenerator : public SafetyDataGenerator
{
    Q_OBJECT

public:
    explicit SrdoGenerator(bool staticSrdoData);
};

/** The generator that a request asks for: the same for both stacks, whose safety part has one form. */
std::unique_ptr<AbstractGenerator> makeSrdoGenerator(const GeneratorRequest &request);
