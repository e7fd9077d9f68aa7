#pragma once

#include "generators/FileGenerator.h"
#include "generators/documents/ObjectListView.h"

/**
 * Writes the object dictionary of one line as a list: what comes before the objects, one object after the
 * other, what comes behind.
 *
 * A stop is heeded at each object and leaves the list as it stands.
 */
class ObjectListGenerator : public FileGenerator
{
    Q_OBJECT

protected:
    bool prepare() override;
    void write(CodeWriter &out) override;

    virtual void writeHead(CodeWriter &out) = 0;
    virtual void writeObject(CodeWriter &out, const ListedObject &object) const = 0;
    virtual void writeTail(CodeWriter &) { }

    const ObjectListView &view() const { return m_view; }
    /** "Pump.csv" or, in a project of several lines, "Pump_1.csv". */
    QString lineFileName(const QString &suffix) const;

private:
    ObjectListView m_view;
};
