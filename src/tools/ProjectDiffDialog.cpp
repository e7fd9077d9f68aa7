#include "tools/ProjectDiffDialog.h"

#include "store/ObjectDataBase.h"
#include "tools/DiffConfigurationDialog.h"
#include "tools/DiffTables.h"
#include "tools/DiffTree.h"
#include "ui_ProjectDiffDialog.h"
#include "widgets/GuiHelper.h"
#include "widgets/WaitCursor.h"

#include <QDir>
#include <QFileDialog>
#include <QMessageBox>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView geometryName{"ProjectDiffDialog"};
constexpr QLatin1StringView folderPurpose{"diff"};
/** What folder and name of a project give that was never saved. */
constexpr QLatin1StringView newProjectFile{"/newproject.vexp"};
constexpr QLatin1StringView textSuffix{"vext"};
constexpr int treeShare = 2; ///< of the width of a page, beside the share of the details
constexpr int detailShare = 3;

/** Opening a project makes its folder the current one, where the open project's files are looked for. */
class CurrentFolderKeeper
{
public:
    CurrentFolderKeeper() = default;
    ~CurrentFolderKeeper() { QDir::setCurrent(m_folder); }
    Q_DISABLE_COPY_MOVE(CurrentFolderKeeper)

private:
    QString m_folder = QDir::currentPath();
};

} // namespace

ProjectDiffDialog::ProjectDiffDialog(QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::ProjectDiffDialog>())
{
    m_ui->setupUi(this);
    setUpWidgets();
    setApplyMode(false);
    showAll();
    GuiHelper::restoreGeometry(*this, geometryName);
}

ProjectDiffDialog::~ProjectDiffDialog() = default;

void ProjectDiffDialog::setUpWidgets()
{
    const QStringList values{tr("Current Value"), tr("Other Value")};
    for (QTableWidget *table : {m_ui->tblObjects, m_ui->tblPGN, m_ui->tblCANID})
        DiffTables::setUp(*table, values);
    for (QTableWidget *table : {m_ui->tblGeneralSettings, m_ui->tblJ1939Settings})
        DiffTables::setUp(*table, QStringList{tr("Setting")} + values);
    for (KorvelTreeWidget *tree : {m_ui->treeWidget, m_ui->treePGN, m_ui->treeCANID})
        tree->setHeaderLabel(tree->accessibleName());
    for (QSplitter *splitter : {m_ui->objectsSplitter, m_ui->pgnsSplitter, m_ui->canIdsSplitter}) {
        splitter->setStretchFactor(0, treeShare);
        splitter->setStretchFactor(1, detailShare);
    }
    // The arrow keys show details as clicks do.
    connect(m_ui->treeWidget, &QTreeWidget::currentItemChanged, this, &ProjectDiffDialog::showObjectDetails);
    connect(m_ui->treePGN, &QTreeWidget::currentItemChanged, this, &ProjectDiffDialog::showPgnDetails);
    connect(m_ui->treeCANID, &QTreeWidget::currentItemChanged, this, &ProjectDiffDialog::showCanIdDetails);
    on_leProject_textChanged(m_ui->leProject->text());
}

void ProjectDiffDialog::setApplyMode(bool isAfterApply)
{
    m_options.isAfterApply = isAfterApply;
    m_expertMode = false;
    m_ui->gbProject->setHidden(isAfterApply);
    m_ui->pushButton->setHidden(isAfterApply);
    for (QWidget *widget :
         std::initializer_list<QWidget *>{m_ui->lblHead, m_ui->btnAccept, m_ui->btnReject, m_ui->btnExpert})
        widget->setVisible(isAfterApply);
    const QString title = isAfterApply ? tr("New Value") : tr("Other Value");
    for (const QTableWidget *table :
         {m_ui->tblObjects, m_ui->tblPGN, m_ui->tblCANID, m_ui->tblGeneralSettings, m_ui->tblJ1939Settings})
        table->horizontalHeaderItem(table->columnCount() - 1)->setText(title);
}

void ProjectDiffDialog::setDataBase(const QSharedPointer<ObjectDataBase> &current)
{
    m_current = current;
    m_other.reset();
    m_lines.clear();
    m_generalSettings.clear();
    m_j1939Settings.clear();
    countDifferences();
    fillLines();
    showAll();
}

void ProjectDiffDialog::setLine(quint8 line)
{
    const int place = m_ui->cbLines->findData(line);
    if (place >= 0)
        m_ui->cbLines->setCurrentIndex(place);
}

quint8 ProjectDiffDialog::line() const
{
    return quint8(m_ui->cbLines->currentData().toUInt());
}

bool ProjectDiffDialog::openOther(const QString &path, QString &error)
{
    // Into a store of its own: what is shown now still needs the former one if this fails.
    const auto opened = QSharedPointer<ObjectDataBase>::create();
    const CurrentFolderKeeper folder;
    if (!opened->openDataBase(QFileInfo(path).absoluteFilePath(), true)) {
        error = opened->lastError();
        return false;
    }
    m_other = opened;
    return true;
}

bool ProjectDiffDialog::compareWithFile(const QString &path)
{
    const WaitCursor cursor;
    QString error;
    if (!m_current || path.isEmpty() || path == newProjectFile || !openOther(path, error))
        return false;
    m_ui->leProject->setText(QDir::toNativeSeparators(path));
    if (path.endsWith(textSuffix, Qt::CaseInsensitive))
        m_options.selection = DiffFields::fieldsOfTextForm();
    setApplyMode(false);
    compare();
    showLineWithDifferences();
    showPageWithDifferences();
    return true;
}

void ProjectDiffDialog::compareAfterApply(const QSharedPointer<ObjectDataBase> &applied)
{
    if (!m_current || !applied)
        return;
    const WaitCursor cursor;
    m_other = applied;
    setApplyMode(true);
    compare();
    showLineWithDifferences();
    showPageWithDifferences();
}

void ProjectDiffDialog::on_btnCompare_clicked()
{
    const QString path = QDir::fromNativeSeparators(m_ui->leProject->text().trimmed());
    if (!m_current || path.isEmpty())
        return;
    std::optional<WaitCursor> cursor(std::in_place);
    QString error;
    if (openOther(path, error)) {
        compare();
        showPageWithDifferences();
        return;
    }
    cursor.reset();
    QMessageBox box(QMessageBox::Warning, QCoreApplication::applicationName(),
                    tr("Cannot open project file."), QMessageBox::Ok, this);
    box.setInformativeText(error);
    box.exec();
}

void ProjectDiffDialog::compare()
{
    m_lines.clear();
    const QList<quint8> lines = ProjectDiff::lines(*m_current, *m_other);
    for (const quint8 line : lines)
        m_lines.insert(line, ProjectDiff::compareLine(*m_current, *m_other, line, m_options));
    compareSettings();
    countDifferences();
    fillLines();
    showAll();
}

void ProjectDiffDialog::compareSettings()
{
    m_generalSettings = ProjectDiff::compareGeneralSettings(*m_current, *m_other);
    m_j1939Settings = ProjectDiff::compareJ1939Settings(*m_current, *m_other);
}

void ProjectDiffDialog::countDifferences()
{
    m_differenceCount = int(m_generalSettings.size() + m_j1939Settings.size());
    for (const ProjectDiff::LineDifferences &line : std::as_const(m_lines))
        m_differenceCount += ProjectDiff::count(line);
}

void ProjectDiffDialog::on_pushButton_clicked()
{
    done(m_options.isAfterApply ? ChangesSelected : ChangesRejected);
}

void ProjectDiffDialog::on_btnAccept_clicked()
{
    done(ChangesAccepted);
}

void ProjectDiffDialog::on_btnReject_clicked()
{
    done(ChangesRejected);
}

/** From now on single items are handled, so that closing means neither all nor nothing. */
void ProjectDiffDialog::on_btnExpert_clicked()
{
    m_expertMode = true;
    m_ui->btnExpert->setEnabled(false);
    m_ui->pushButton->show();
}

void ProjectDiffDialog::done(int result)
{
    if (isVisible())
        GuiHelper::storeGeometry(*this, geometryName);
    QDialog::done(result);
}

void ProjectDiffDialog::on_btnFileSelection_clicked()
{
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Select project file"), GuiHelper::dialogFolder(folderPurpose),
        tr("Project Files (*.vexp);; Project Files (*.vext);; Backup Files (*.vexp.bak)"));
    if (path.isEmpty())
        return;
    GuiHelper::rememberDialogFolder(folderPurpose, path);
    m_ui->leProject->setText(QDir::toNativeSeparators(path));
}

void ProjectDiffDialog::on_leProject_textChanged(const QString &text)
{
    m_ui->btnCompare->setEnabled(!text.trimmed().isEmpty());
}

void ProjectDiffDialog::on_btnSettings_clicked()
{
    DiffConfigurationDialog dialog(this);
    dialog.setSelection(m_options.selection);
    if (dialog.exec() != QDialog::Accepted || dialog.selection() == m_options.selection)
        return;
    m_options.selection = dialog.selection();
    if (!m_other)
        return;
    const WaitCursor cursor;
    compare();
}
