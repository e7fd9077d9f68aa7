#pragma once

#include <QObject>
#include <QSharedPointer>
#include <QString>

class ObjectDataBase;

/**
 * Applies a modifier file to a project: lines "<table>:<key>:<value>" that set settings.
 *
 * Tables are "GeneralSettings" and "J1939Settings"; comment lines begin with "#". A line that is none of
 * these is skipped. The text is UTF-8, or Windows-1252 where it is no valid UTF-8.
 */
class DatabaseModifier : public QObject
{
    Q_OBJECT

public:
    explicit DatabaseModifier(const QSharedPointer<ObjectDataBase> &store, QObject *parent = nullptr);

    void setFile(const QString &path) { m_path = path; }
    /**
     * Releases the store's write lock and applies the lines in order, up to the first that the store
     * refuses; those before it stay applied.
     */
    bool applyModifierFile();
    /** The line that failed, or why the file could not be read; empty after a success. */
    QString errorString() const { return m_error; }

private:
    bool applyLine(const QString &line);

    QSharedPointer<ObjectDataBase> m_store;
    QString m_path;
    QString m_error;
};
