#pragma once

#include "generators/documents/ObjectListGenerator.h"

/**
 * Writes the objects of a line as a table for spreadsheets, one row for each sub-index. It carries neither
 * descriptions nor the objects' own names; ICSVGenerator does.
 */
class CSVGenerator : public ObjectListGenerator
{
    Q_OBJECT

protected:
    QString fileName() const override;
    void writeHead(CodeWriter &out) override;
    void writeObject(CodeWriter &out, const ListedObject &object) const override;
};
