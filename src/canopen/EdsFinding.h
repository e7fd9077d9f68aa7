#pragma once

#include <QList>
#include <QPair>
#include <QSet>
#include <QString>

/** A deviation from CiA 306 in a device description, and what the reader made of it. */
struct EdsFinding
{
    enum class Severity {
        Note, ///< harmless, the meaning is clear
        Warning, ///< the reader had to assume something
        Error, ///< something could not be used
    };

    QString file;
    int line = 0; ///< from 1; 0 for the file as a whole
    Severity severity = Severity::Note;
    QString text;
};

/**
 * Collects the findings of one file. The same finding in the same line counts once, and the list is bounded,
 * so that a broken file cannot flood the memory.
 */
class EdsFindings
{
public:
    static constexpr qsizetype limit = 2000;

    void start(const QString &file);
    void note(int line, const QString &text) { add(line, EdsFinding::Severity::Note, text); }
    void warn(int line, const QString &text) { add(line, EdsFinding::Severity::Warning, text); }
    void error(int line, const QString &text) { add(line, EdsFinding::Severity::Error, text); }
    const QList<EdsFinding> &list() const { return m_list; }

private:
    void add(int line, EdsFinding::Severity severity, const QString &text);

    QString m_file;
    QList<EdsFinding> m_list;
    QSet<QPair<int, QString>> m_known;
};
