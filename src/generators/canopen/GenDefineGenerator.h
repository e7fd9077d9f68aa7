#pragma once

#include "generators/FileGenerator.h"
#include "generators/GeneratorFactories.h"
#include "generators/canopen/DefineView.h"
#include "generators/canopen/UserSection.h"

#include <memory>

class Dialect;
class DefineWriter;

/**
 * Writes gen_define.h: the compile-time configuration of the stack, told by the settings and the object
 * dictionary of a project.
 *
 * The file keeps a section of the user's own from one run to the next. It is therefore replaced in one
 * step: a run that fails in any way leaves the former file as it was.
 */
class StackDefineGenerator : public FileGenerator, public UserSectionKeeper
{
    Q_OBJECT

public:
    StackDefineGenerator(const Dialect &dialect, bool hasJ1939, bool multiProtocol);

    QString userSection() const override { return m_userSection.text(); }

public Q_SLOTS:
    void doJob() override;

protected:
    QString fileName() const override;
    bool prepare() override;
    /** All that stands before the user's section. */
    void write(CodeWriter &out) override;

private:
    QString head() const;
    void writeInitStructVersions(DefineWriter &out) const;
    void replaceFile(const QByteArray &content);

    const Dialect &m_dialect;
    DefineRequest m_request;
    DefineView m_view;
    UserSection m_userSection;
};

/** For the V4 stack. */
class GenDefineGenerator : public StackDefineGenerator
{
    Q_OBJECT

public:
    GenDefineGenerator(bool hasJ1939, bool multiProtocol);
};

/** For the older stack. */
class CoDefineGenerator : public StackDefineGenerator
{
    Q_OBJECT

public:
    CoDefineGenerator(bool hasJ1939, bool multiProtocol);
};

/** The generator that a request asks for. */
std::unique_ptr<AbstractGenerator> makeDefineGenerator(const GeneratorRequest &request);
