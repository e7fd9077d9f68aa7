#pragma once

#include "generators/documents/ObjectListGenerator.h"

/** Writes the objects of a line as plain text for a reader. */
class TextDocGenerator : public ObjectListGenerator
{
    Q_OBJECT

protected:
    QString fileName() const override;
    void writeHead(CodeWriter &out) override;
    void writeObject(CodeWriter &out, const ListedObject &object) const override;
};
