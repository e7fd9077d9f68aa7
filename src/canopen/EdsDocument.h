#pragma once

#include "canopen/EdsFinding.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

/**
 * The sections and entries of an EDS or DCF file (CiA 306), in file order and with their lines.
 *
 * Names of sections and keys are found without regard to case. Reads what vendors write: any line ending
 * and encoding, blanks around "=", "#" comments, remarks behind a section's name. A section that comes twice
 * is one section; of a key that comes twice the first value counts. Nothing in a file is an error of the
 * reader: each deviation is a finding.
 *
 * Lines that begin with ";;" directly before a section are its description. Files that this system has
 * written, which their first line tells, carry it as ";" lines directly behind the section's entries.
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
        QString description; ///< lines are separated by line feeds

        /** The entry of a key, or nullptr. */
        const Entry *find(const QString &key) const;
        /** The value of a key; empty where it is missing. */
        QString value(const QString &key) const;
        int lineOf(const QString &key) const;

    private:
        friend class EdsDocument;
        /** Position of a key in the entries, or -1. */
        qsizetype position(QStringView key) const;
        void append(const Entry &entry);

        QHash<QString, qsizetype> m_positions; ///< by lower-case key; empty as long as there are few entries
    };

    /** Far more sections and entries than the largest device description; bounds memory and time. */
    static constexpr qsizetype mostItems = 1'000'000;

    /** False, with a finding and without the rest, where the file has more than mostItems. */
    bool read(const QByteArray &bytes, EdsFindings &findings);

    /** True for a file that this system has generated. */
    bool isGenerated() const { return m_generated; }
    const QList<Section> &sections() const { return m_sections; }
    /** The section of a name, or nullptr. */
    const Section *section(const QString &name) const;

private:
    QString text(const QByteArray &bytes, EdsFindings &findings) const;
    void readLine(QStringView line, int number, EdsFindings &findings);
    void readHeader(QStringView line, int number, EdsFindings &findings);
    void readEntry(QStringView line, int number, EdsFindings &findings);
    QString sharedKey(QStringView key) const;
    void readComment(QStringView text, int number);
    void takeDescription(Section &section);

    QList<Section> m_sections;
    QHash<QString, qsizetype> m_positions; ///< by lower-case name
    qsizetype m_current = -1;
    qsizetype m_items = 0;
    bool m_generated = false;
    bool m_toldBlanks = false;
    bool m_behindEntry = false; ///< no blank line since the last entry
    qsizetype m_stretch = -1; ///< length of the description's last line; -1 before the first
    QStringList m_comments; ///< ";;" lines that wait for their section
    bool m_commentsOpen = false; ///< the next ";;" line goes on with them
};
