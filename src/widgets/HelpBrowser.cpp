#include "widgets/HelpBrowser.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal pageMargin = 16; // pixels

/** The file that an address means: help lies in folders and in the program's resources. */
QString fileOf(const QUrl &url)
{
    return url.scheme() == "qrc"_L1 ? u':' + url.path() : url.toLocalFile();
}

} // namespace

HelpBrowser::HelpBrowser(QWidget *parent) : QTextBrowser(parent)
{
    setOpenExternalLinks(true);
    document()->setDocumentMargin(pageMargin);
}

QVariant HelpBrowser::loadResource(int type, const QUrl &name)
{
    const QUrl url = source().resolved(name);
    if (type != QTextDocument::HtmlResource || QFileInfo(fileOf(url)).isFile())
        return QTextBrowser::loadResource(type, name);
    const QString title = tr("This help page is missing");
    return QString("<html><head><title>"_L1 + title + "</title></head><body><h2>"_L1 + title + "</h2><p>"_L1
                   + tr("The file %1 has not been found.").arg(fileOf(url).toHtmlEscaped())
                   + "</p></body></html>"_L1);
}
