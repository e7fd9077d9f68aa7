#pragma once

#include <QCoreApplication>
#include <QString>

/**
 * What the user is told about a project that an older version of the tool has saved.
 *
 * Only version 3 counts: since then the stack has got further source files, and its generated code has
 * changed so much that a copy of the old project is kept beside the new one.
 */
class VersionNotices
{
    Q_DECLARE_TR_FUNCTIONS(VersionNotices)

public:
    /** The version is what the project was saved with; anything unreadable gives no notice. */
    explicit VersionNotices(const QString &saveToolVersion);

    /** The source files that the user's build needs now; empty when there is nothing to tell. */
    QString missingSources() const;
    /** True when a copy of the file as it was is to be kept. */
    bool needsCopy() const { return m_major == 3; }
    /** Copies the project beside itself unless that was done before. The notice about a fresh copy, or empty.
     */
    QString keepCopy(const QString &projectPath) const;

    static QString copyPath(const QString &projectPath) { return projectPath + QStringLiteral(".bak_v3"); }

private:
    int m_major = 0;
    int m_minor = 0;
};
