#include "widgets/ManualHandler.h"

#include "widgets/GuiHelper.h"

#include <QCollator>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QMenu>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/** "NodeSmith_User_Manual.pdf" as a menu shows it. */
QString titleOf(const QString &path)
{
    return QFileInfo(path).completeBaseName().replace(u'_', u' ').replace(u'&', "&&"_L1);
}

} // namespace

ManualHandler::ManualHandler(QMenu *menu, QObject *parent)
    : ManualHandler(menu, QCoreApplication::applicationDirPath() + "/doc"_L1, parent)
{
}

ManualHandler::ManualHandler(QMenu *menu, const QString &folder, QObject *parent)
    : QObject(parent), m_menu(menu), m_folder(folder)
{
    connect(menu, &QMenu::aboutToShow, this, &ManualHandler::fillMenu);
    fillMenu(); // so that a disabled entry, and not an empty menu, is what the menu bar has at first
}

QStringList ManualHandler::manuals() const
{
    const QFileInfoList files = QDir(m_folder).entryInfoList({u"*.pdf"_s}, QDir::Files | QDir::Readable);
    QStringList paths;
    for (const QFileInfo &file : files)
        paths.append(file.absoluteFilePath());
    QCollator byName{QLocale(QLocale::English)}; // the locale "C" knows no numbers in names
    byName.setNumericMode(true);
    byName.setCaseSensitivity(Qt::CaseInsensitive);
    std::ranges::sort(paths, byName);
    return paths;
}

void ManualHandler::fillMenu()
{
    m_menu->clear();
    const QStringList paths = manuals();
    for (const QString &path : paths) {
        QAction *action = m_menu->addAction(GuiHelper::icon(u"manual"_s), titleOf(path));
        action->setObjectName(QFileInfo(path).fileName());
        action->setStatusTip(tr("Open the manual %1").arg(QDir::toNativeSeparators(path)));
        connect(action, &QAction::triggered, this, [this, path] { openManual(path); });
    }
    if (!paths.isEmpty())
        return;
    QAction *none = m_menu->addAction(tr("No manuals installed"));
    none->setObjectName(u"noManuals"_s);
    none->setEnabled(false);
}

void ManualHandler::openManual(const QString &path)
{
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        Q_EMIT openFailed(path);
}
