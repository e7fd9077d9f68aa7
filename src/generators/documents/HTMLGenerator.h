#pragma once

#include "generators/documents/ObjectListGenerator.h"

#include <QString>

/**
 * Writes the objects of a line as an HTML document: who made the device and when, a table of contents, and
 * a table for each object and sub-index. How values are implemented is told if the user's settings ask for
 * it ("implinfo").
 */
class HTMLGenerator : public ObjectListGenerator
{
    Q_OBJECT

protected:
    QString fileName() const override;
    bool prepare() override;
    void writeHead(CodeWriter &out) override;
    void writeObject(CodeWriter &out, const ListedObject &object) const override;
    void writeTail(CodeWriter &out) override;

private:
    /** A row of the table about the document. */
    struct Fact
    {
        QString label;
        QString text;
    };

    void readFacts();
    void writeFacts(CodeWriter &out) const;
    void writeContents(CodeWriter &out) const;
    void writeSubIndex(CodeWriter &out, const ListedObject &object, const ListedSubIndex &sub) const;
    void writeImplementation(CodeWriter &out, const ListedObject &object, const ListedSubIndex &sub) const;

    QList<Fact> m_facts;
    QString m_comment;
    bool m_showsImplementation = false;
};
