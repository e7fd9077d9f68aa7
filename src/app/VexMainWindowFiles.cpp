// The part of the main window that asks which file a project is opened from and saved to.

#include "app/UserSettings.h"
#include "app/VexMainWindow.h"

#include <QDir>
#include <QFileDialog>

using namespace Qt::StringLiterals;

namespace {

QString startFolder()
{
    const QString path = UserSettings().read(SettingsKeys::projectPath).toString();
    return QFileInfo(path).isDir() ? path : QDir::homePath(); // "~" and folders that have gone
}

/** Where the text form stands among the filters of a dialog: behind all others. */
QString filterFor(const QFileDialog &dialog, const QString &projectFile)
{
    const QStringList filters = dialog.nameFilters();
    return projectFile.endsWith("vext"_L1) ? filters.last() : filters.first();
}

} // namespace

/** Empty when the user chooses no file. */
QString VexMainWindow::askForOpenPath()
{
    QFileDialog dialog(this, tr("Open Project"), startFolder(),
                       tr("VEX Projects (*.vexp);;old project files (*.db)")
                           + tr(";;VEXT Projects (*.vext)"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.selectNameFilter(filterFor(dialog, m_project.projectFile()));
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().constFirst() : QString();
}

/** Empty when the user gives no name. The form of the present file is offered first. */
QString VexMainWindow::askForSavePath()
{
    QFileDialog dialog(this, tr("Save Project"), startFolder());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({tr("VEX Projects (*.vexp)"), tr("VEXT Projects (*.vext)")});
    const auto followFilter = [&dialog](const QString &filter) {
        dialog.setDefaultSuffix(filter.contains("vext"_L1) ? u"vext"_s : u"vexp"_s);
    };
    connect(&dialog, &QFileDialog::filterSelected, &dialog, followFilter);
    dialog.selectNameFilter(filterFor(dialog, m_project.projectFile()));
    followFilter(dialog.selectedNameFilter());
    dialog.selectFile(m_project.projectBaseName());
    m_messages.logWaiting(u"Save Project: a file name is asked for"_s);
    if (dialog.exec() != QDialog::Accepted)
        return QString();
    return withProjectEnding(dialog.selectedFiles().constFirst(), dialog.defaultSuffix());
}

/**
 * The dialog adds no ending to a name that has one, such as "pump.new"; under that name the project could not
 * be opened again. Empty when the file of the new name is not to be replaced.
 */
QString VexMainWindow::withProjectEnding(const QString &path, const QString &ending)
{
    if (path.endsWith(".vexp"_L1) || path.endsWith(".vext"_L1))
        return path;
    const QString named = path + u'.' + ending;
    const bool mayWrite = !QFileInfo::exists(named)
        || m_messages.question(tr("The file %1 exists already.").arg(QDir::toNativeSeparators(named)),
                               tr("Do you want to replace it?"), QMessageBox::Yes | QMessageBox::No,
                               QMessageBox::No)
            == QMessageBox::Yes;
    return mayWrite ? named : QString();
}
