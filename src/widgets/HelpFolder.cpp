#include "widgets/HelpFolder.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString readText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

HelpPage readPage(const QDir &folder, const QString &name)
{
    QTextDocument document;
    document.setHtml(readText(folder.filePath(name)));
    const QString title = document.metaInformation(QTextDocument::DocumentTitle);
    return {.file = name, .title = title.isEmpty() ? name : title, .text = document.toPlainText()};
}

bool holdsAll(const QString &text, const QStringList &words)
{
    return std::ranges::all_of(
        words, [&text](const QString &word) { return text.contains(word, Qt::CaseInsensitive); });
}

} // namespace

HelpFolder::HelpFolder(const QString &path) : m_folder(path)
{
    const QStringList names = fileNames();
    for (const QString &name : names)
        m_pages.append(readPage(m_folder, name));
}

/** The start page, the pages that it links, then all others by name. */
QStringList HelpFolder::fileNames() const
{
    static const QRegularExpression link(u"href=\"([^\"#]+)"_s);
    const QStringList present = m_folder.entryList({u"*.html"_s, u"*.htm"_s}, QDir::Files, QDir::Name);
    QStringList wanted{startPage};
    const QString start = readText(m_folder.filePath(startPage));
    QRegularExpressionMatchIterator links = link.globalMatch(start);
    while (links.hasNext())
        wanted.append(links.next().captured(1));
    wanted += present;
    wanted.removeDuplicates();
    wanted.removeIf([&present](const QString &name) { return !present.contains(name); });
    return wanted;
}

bool HelpFolder::hasStartPage() const
{
    return !m_pages.isEmpty() && m_pages.constFirst().file == startPage;
}

QList<HelpPage> HelpFolder::search(const QString &words) const
{
    const QStringList wanted = words.simplified().split(u' ', Qt::SkipEmptyParts);
    QList<HelpPage> found;
    std::ranges::copy_if(m_pages, std::back_inserter(found), [&wanted](const HelpPage &page) {
        return holdsAll(page.title + u'\n' + page.text, wanted);
    });
    if (!wanted.isEmpty())
        std::stable_partition(found.begin(), found.end(),
                              [&wanted](const HelpPage &page) { return holdsAll(page.title, wanted); });
    return found;
}
