#pragma once

#include <QFile>
#include <QString>
#include <QTextStream>

/**
 * One output file of a generator while it is written.
 *
 * Opening empties the file. What could not be written whole (the disk is full, the folder is gone) is
 * removed: half a table would compile and be wrong.
 */
class GeneratedFile
{
public:
    explicit GeneratedFile(const QString &path) : m_file(path) { }
    ~GeneratedFile() { close(); }
    Q_DISABLE_COPY_MOVE(GeneratedFile)

    /** False, with errorString(), when the file cannot be written. */
    bool open();
    /** Where the text goes, as UTF-8. */
    QTextStream &stream() { return m_stream; }
    /** Writes what is still to be written. False, with errorString(), when any of the text was lost. */
    bool close();
    /** What went wrong, for the user; empty when nothing did. */
    const QString &errorString() const { return m_error; }

private:
    bool fail(const QString &message);

    QFile m_file;
    QTextStream m_stream;
    QString m_error;
};
