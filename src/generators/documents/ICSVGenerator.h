#pragma once

#include "generators/documents/ObjectListGenerator.h"

/**
 * Writes the objects of a line as a table that the program itself can import: a head row for each object of
 * several values, and a row for each sub-index.
 */
class ICSVGenerator : public ObjectListGenerator
{
    Q_OBJECT

public:
    /** Without documentation the table has no column of descriptions. */
    explicit ICSVGenerator(bool disableDocu) : m_disableDocu(disableDocu) { }

protected:
    QString fileName() const override;
    void writeHead(CodeWriter &out) override;
    void writeObject(CodeWriter &out, const ListedObject &object) const override;

private:
    void writeObjectRow(CodeWriter &out, const ListedObject &object) const;
    void writeSubIndexRow(CodeWriter &out, const ListedObject &object, const ListedSubIndex &sub) const;

    bool m_disableDocu;
};
