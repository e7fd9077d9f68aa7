#pragma once

#include "tools/DiffItemText.h"
#include "tools/ProjectDiff.h"

#include <QDialog>
#include <QMap>
#include <QSharedPointer>

#include <memory>

class DiffTransfer;
class ObjectDataBase;
class QTableWidget;
class QTreeWidget;
class QTreeWidgetItem;
namespace Ui {
class ProjectDiffDialog;
}

/**
 * Compares the open project with another one and carries differences across.
 *
 * All lines of both projects are compared at once; the trees show one of them. A dialog that is never
 * shown counts differences just as well. After an Apply of the EnergyBus configuration the other project is
 * what the configuration makes of the current one, and the result of exec() says what is to become of it.
 */
class ProjectDiffDialog : public QDialog
{
    Q_OBJECT

public:
    /** Results of exec() after an Apply; otherwise the result means nothing. */
    enum Result {
        ChangesRejected = Rejected, ///< the state before the Apply is wanted back
        ChangesAccepted = Accepted, ///< the state after the Apply is to stay
        ChangesSelected, ///< the current project holds just what was taken over item by item
    };

    explicit ProjectDiffDialog(QWidget *parent = nullptr);
    ~ProjectDiffDialog() override;

    /** The open project; a former comparison goes. */
    void setDataBase(const QSharedPointer<ObjectDataBase> &current);
    /** The line to be shown; one that neither project has changes nothing. */
    void setLine(quint8 line);
    quint8 line() const;

    /**
     * Compares with the project's own file and shows the line and the page where there are differences. In
     * a text file only what a text can hold counts. False when the file cannot be opened or is that of a
     * project never saved; then nothing has changed here.
     */
    bool compareWithFile(const QString &path);
    /** Compares with an open project: what the EnergyBus configuration makes of the current one. */
    void compareAfterApply(const QSharedPointer<ObjectDataBase> &applied);

    /**
     * The number of all items and settings that stand in the lists, in all lines; 0 before the first
     * comparison.
     */
    int differenceCount() const { return m_differenceCount; }

public Q_SLOTS:
    void importItem();
    /** Takes the values of sub-indices over, too. */
    void importItemDefault();
    void deleteItem();
    void takeOverSetting();
    void done(int result) override;

    void on_pushButton_clicked();
    void on_btnFileSelection_clicked();
    void on_btnCompare_clicked();
    void on_leProject_textChanged(const QString &text);
    void on_cbLines_currentIndexChanged(int index);
    void on_btnSettings_clicked();
    void on_cbInternal_clicked(bool checked);
    void on_btnExpert_clicked();
    void on_btnAccept_clicked();
    void on_btnReject_clicked();
    void on_treeWidget_itemActivated(QTreeWidgetItem *item, int column);
    void on_treeWidget_itemClicked(QTreeWidgetItem *item, int column);
    void on_treeWidget_customContextMenuRequested(const QPoint &pos);
    void on_tblGeneralSettings_customContextMenuRequested(const QPoint &pos);
    void on_treePGN_itemActivated(QTreeWidgetItem *item, int column);
    void on_treePGN_itemClicked(QTreeWidgetItem *item, int column);
    void on_treeCANID_itemActivated(QTreeWidgetItem *item, int column);
    void on_treeCANID_itemClicked(QTreeWidgetItem *item, int column);

protected:
    void changeEvent(QEvent *event) override;

private:
    using Change = bool (*)(DiffTransfer &transfer, const ProjectDiff::Address &address);

    void setUpWidgets();
    void setApplyMode(bool isAfterApply);
    bool openOther(const QString &path, QString &error);

    void compare();
    void compareSettings();
    void countDifferences();
    const ProjectDiff::LineDifferences &shownLine() const;

    void fillLines();
    void showAll();
    void showLine();
    void showSettings();
    void showCounts();
    void showLineWithDifferences();
    void showPageWithDifferences();

    void showObjectDetails(const QTreeWidgetItem *item);
    void showPgnDetails(const QTreeWidgetItem *item);
    void showCanIdDetails(const QTreeWidgetItem *item);
    void showAllDetails();
    template <class Records>
    void showDetails(QTableWidget &table, const QTreeWidgetItem *item);

    /** After an Apply only the expert mode changes single items. */
    bool mayChange() const;
    /** Nothing can be carried into a line that the current project lacks. */
    bool mayChangeItems() const;
    DiffItemText::Actions selectedActions() const;
    /** Changes the current project for all selected items that allow the action. */
    void changeSelectedItems(DiffItemText::Action action, Change change);
    void tellFailedChange();

    std::unique_ptr<Ui::ProjectDiffDialog> m_ui;
    QSharedPointer<ObjectDataBase> m_current;
    QSharedPointer<ObjectDataBase> m_other; ///< null before the first comparison
    ProjectDiff::Options m_options;
    QMap<quint8, ProjectDiff::LineDifferences> m_lines;
    QList<ProjectDiff::Setting> m_generalSettings;
    QList<ProjectDiff::Setting> m_j1939Settings;
    int m_differenceCount = 0;
    bool m_expertMode = false;
};
