#pragma once

#include "generators/FileGenerator.h"
#include "generators/declarations/IndicesView.h"

/**
 * Writes gen_indices.h: symbolic names of objects, sub-indices, parameter groups, signals and CAN
 * identifiers for the application's own code.
 */
class IndicesGenerator : public FileGenerator
{
    Q_OBJECT

public:
    /** The lines of the run. */
    void setLines(const QList<quint8> &lines) { m_lines = lines; }

protected:
    QString fileName() const override;
    bool prepare() override;
    void write(CodeWriter &out) override;

private:
    QList<quint8> m_lines;
    IndicesView m_view;
};
