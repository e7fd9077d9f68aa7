#pragma once

#include <QDir>
#include <QList>
#include <QString>

/** A page of help: one HTML file. */
struct HelpPage
{
    QString file; ///< name within the folder
    QString title;
    QString text; ///< without mark-up, for the search
};

/** The HTML files of one folder, in the order in which the start page ("index.html") links them. */
class HelpFolder
{
public:
    static constexpr QLatin1StringView startPage{"index.html"};

    explicit HelpFolder(const QString &path);

    QString path() const { return m_folder.path(); }
    const QList<HelpPage> &pages() const { return m_pages; }
    bool hasStartPage() const;
    /**
     * The pages that hold all words of a text, in small or capital letters; those that have them in their
     * titles come first. No words give all pages.
     */
    QList<HelpPage> search(const QString &words) const;

private:
    QStringList fileNames() const;

    QDir m_folder;
    QList<HelpPage> m_pages;
};
