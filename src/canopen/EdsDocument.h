#pragma once

#include "canopen/EdsFinding.h"

#include <QHash>
#include <QList>
#include <QString>

/**
 * The sections and entries of an EDS or DCF file (CiA 306), in file order and with their lines.
 *
 * Names of sections and keys are found without regard to case. Reads what vendors write: any line ending
 * and encoding, blanks around "=", "#" comments, remarks behind a section's name. A section that comes twice
 * is one section; of a key that comes twice the first value counts. Nothing in a file is an error of the
 * reader: each deviation is a finding.
 */
class EdsDocument
{
public:
    struct Entry
    {
        QString key;
        QString value;
        int line = 0;
    };

    class Section
    {
    public:
        QString name;
        int line = 0;
        QList<Entry> entries;

        /** The entry of a key, or nullptr. */
        const Entry *find(const QString &key) const;
        /** The value of a key; empty where it is missing. */
        QString value(const QString &key) const;
        int lineOf(const QString &key) const;

    private:
        friend class EdsDocument;
        QHash<QString, qsizetype> m_positions; ///< by lower-case key
    };

    void read(const QByteArray &bytes, EdsFindings &findings);

    const QList<Section> &sections() const { return m_sections; }
    /** The section of a name, or nullptr. */
    const Section *section(const QString &name) const;

private:
    QString text(const QByteArray &bytes, EdsFindings &findings) const;
    void readLine(QStringView line, int number, EdsFindings &findings);
    void readHeader(QStringView line, int number, EdsFindings &findings);
    void readEntry(QStringView line, int number, EdsFindings &findings);

    QList<Section> m_sections;
    QHash<QString, qsizetype> m_positions; ///< by lower-case name
    qsizetype m_current = -1;
};
