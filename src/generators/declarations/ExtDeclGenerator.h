#pragma once

#include "generators/FileGenerator.h"
#include "generators/declarations/ExternalVariables.h"

class Dialect;
class FileHeader;

/**
 * Writes gen_extern_decl.h, which declares the application's variables for the generated tables, and
 * gen_var_decl.c, which defines them for applications that do not do so themselves.
 */
class ExternalDeclarationGenerator : public FileGenerator
{
    Q_OBJECT

public:
    explicit ExternalDeclarationGenerator(const Dialect &dialect) : m_dialect(dialect) { }

    bool isOutputWritable() override;

protected:
    QString fileName() const override;
    bool prepare() override;
    void write(CodeWriter &out) override;

private:
    void writeDefinitions();
    void writeDefinitions(CodeWriter &out) const;
    void writeLines(CodeWriter &out, QStringView storageClass) const;

    const Dialect &m_dialect;
    ExternalVariables m_variables;
};

/** For the V4 stack. */
class ExtDeclGeneratorV4 : public ExternalDeclarationGenerator
{
    Q_OBJECT

public:
    ExtDeclGeneratorV4();
};

/** For the older stack. */
class ExtDeclGenerator : public ExternalDeclarationGenerator
{
    Q_OBJECT

public:
    ExtDeclGenerator();
};
