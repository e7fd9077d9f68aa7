#pragma once

#include "templates/TemplateMessage.h"
#include "templates/TemplateProject.h"

#include <QMap>
#include <QSet>

#include <optional>

class TemplateColumns;

/**
 * Reads the text sources of a template database; resources/templates/README.md tells their grammar.
 *
 * Several sources add to one project in the order they are read. Reading goes on behind an error, so that
 * one run shows them all; a project with errors is not meant to be written.
 */
class TemplateParser
{
public:
    /** Reads one source; true when it added no message. `fileName` only names it in the messages. */
    bool parse(const QByteArray &source, const QString &fileName);
    /** What only the whole tells, such as objects without sub-indices. Call it behind the last source. */
    bool finish();

    const TemplateProject &project() const { return m_project; }
    const QList<TemplateMessage> &messages() const { return m_messages; }

private:
    struct Section
    {
        QLatin1StringView name;
        bool perLine; ///< the name is followed by the number of a CAN line
        void (TemplateParser::*read)(const QString &row);
    };
    struct Property
    {
        QString key;
        QString value;
        int column;
    };
    static const Section sections[];

    void readLine(const QByteArray &bytes);
    void readHeader(const QString &row, int column);
    void openSection(const QString &name, const QString &number, int column);

    std::optional<Property> splitProperty(const QString &row);
    void readProperty(const QString &row);
    void readSetting(const QString &row);

    std::optional<TemplateColumns> splitColumns(const QString &row);
    void readObjectRow(const QString &row);
    void readGroupRow(const QString &row);
    bool hasOwner(TemplateColumns &columns, const QString &what);
    bool readObject(TemplateColumns &columns);
    void readSubIndex(TemplateColumns &columns);
    bool readGroup(TemplateColumns &columns);
    void readSignal(TemplateColumns &columns);

    void fail(int column, const QString &text);
    /** Enters a key, object or row; one that is there already gives the message and false. */
    bool isNew(const QString &identity, int column, const QString &message);

    TemplateProject m_project;
    QList<TemplateMessage> m_messages;
    QSet<QString> m_seen;
    /** The message that an object (by its position, from 1) has no sub-index, until it gets one. */
    QMap<qsizetype, TemplateMessage> m_subIndexMissing;

    QString m_file;
    int m_line = 0;
    const Section *m_section = nullptr;
    bool m_sectionExpected = true;
    quint8 m_canLine = 0;
    bool m_ownerSeen = false; ///< an object or PGN row stands before this one in the section
    bool m_ownerKnown = false; ///< that row was read without error
};
