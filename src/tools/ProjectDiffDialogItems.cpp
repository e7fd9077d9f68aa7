// The part of the comparison dialog that shows what differs and carries items across.

#include "store/ObjectDataBase.h"
#include "tools/DiffDetails.h"
#include "tools/DiffTables.h"
#include "tools/DiffTransfer.h"
#include "tools/DiffTree.h"
#include "tools/ProjectDiffDialog.h"
#include "ui_ProjectDiffDialog.h"
#include "widgets/GuiHelper.h"
#include "widgets/WaitCursor.h"

#include <QEvent>
#include <QMenu>
#include <QMessageBox>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;
using DiffItemText::Action;
using DiffItemText::Actions;
using DiffItemText::Part;
using ProjectDiff::Address;

// --- Lines and lists -------------------------------------------------------------------------------

void ProjectDiffDialog::fillLines()
{
    const quint8 shown = line();
    QList<quint8> lines = m_lines.keys();
    if (!m_other && m_current)
        lines = ProjectDiff::lines(*m_current, *m_current);
    {
        const QSignalBlocker blocker(m_ui->cbLines);
        m_ui->cbLines->clear();
        for (const quint8 number : std::as_const(lines))
            m_ui->cbLines->addItem(QString(), number);
        m_ui->cbLines->setCurrentIndex(lines.isEmpty() ? -1 : 0);
        setLine(shown);
    }
    m_ui->cbLines->setEnabled(lines.size() > 1);
}

const ProjectDiff::LineDifferences &ProjectDiffDialog::shownLine() const
{
    static const ProjectDiff::LineDifferences none;
    const auto shown = m_lines.constFind(line());
    return shown == m_lines.constEnd() ? none : *shown;
}

void ProjectDiffDialog::showAll()
{
    showLine();
    showSettings();
    showCounts();
}

void ProjectDiffDialog::showLine()
{
    const ProjectDiff::LineDifferences &differences = shownLine();
    DiffTree::showObjects(*m_ui->treeWidget, differences.objects, m_options.isAfterApply);
    DiffTree::showMessages(*m_ui->treePGN, differences.pgns,
                           {.message = Part::Pgn,
                            .signal = Part::Spn,
                            .transmitted = tr("Transmit PGNs"),
                            .received = tr("Receive PGNs")});
    DiffTree::showMessages(*m_ui->treeCANID, differences.canIds,
                           {.message = Part::CanId,
                            .signal = Part::DataElement,
                            .transmitted = tr("Transmit CAN-IDs"),
                            .received = tr("Receive CAN-IDs")});
    showAllDetails();
    for (const auto &[label, tree] :
         {std::pair(m_ui->lblObjects, m_ui->treeWidget), std::pair(m_ui->lblPGN, m_ui->treePGN),
          std::pair(m_ui->lblCANID, m_ui->treeCANID)})
        label->setVisible(m_other && tree->topLevelItemCount() == 0);
}

void ProjectDiffDialog::showSettings()
{
    DiffTables::showSettings(*m_ui->tblGeneralSettings, m_generalSettings);
    DiffTables::showSettings(*m_ui->tblJ1939Settings, m_j1939Settings);
    m_ui->lblGeneralSettings->setVisible(m_other && m_generalSettings.isEmpty());
    m_ui->lblJ1939Settings->setVisible(m_other && m_j1939Settings.isEmpty());
}

void ProjectDiffDialog::showCounts()
{
    for (int place = 0; place < m_ui->cbLines->count(); ++place) {
        const auto number = quint8(m_ui->cbLines->itemData(place).toUInt());
        m_ui->cbLines->setItemText(
            place,
            m_other
                ? tr("Line %1 (differences: %2)").arg(number).arg(ProjectDiff::count(m_lines.value(number)))
                : tr("Line %1").arg(number));
    }
    m_ui->lblSummary->setText(m_other ? tr("Differences in total: %1").arg(m_differenceCount) : QString());
}

void ProjectDiffDialog::showLineWithDifferences()
{
    if (shownLine() != ProjectDiff::LineDifferences())
        return;
    for (auto entry = m_lines.cbegin(); entry != m_lines.cend(); ++entry)
        if (*entry != ProjectDiff::LineDifferences()) {
            setLine(entry.key());
            return;
        }
}

void ProjectDiffDialog::showPageWithDifferences()
{
    const ProjectDiff::LineDifferences &differences = shownLine();
    const std::array hasDifferences{!differences.objects.isEmpty(), !differences.pgns.isEmpty(),
                                    !differences.canIds.isEmpty(), !m_generalSettings.isEmpty(),
                                    !m_j1939Settings.isEmpty()};
    if (hasDifferences.at(size_t(m_ui->tabWidget->currentIndex())))
        return;
    const auto *first = std::ranges::find(hasDifferences, true);
    if (first != hasDifferences.end())
        m_ui->tabWidget->setCurrentIndex(int(first - hasDifferences.begin()));
}

void ProjectDiffDialog::on_cbLines_currentIndexChanged(int)
{
    showLine();
}

// --- Details ---------------------------------------------------------------------------------------

template <class Records>
void ProjectDiffDialog::showDetails(QTableWidget &table, const QTreeWidgetItem *item)
{
    const std::optional<Address> address = DiffTree::address(item);
    if (!address || !m_current || !m_other)
        DiffTables::showDetails(table, {}, palette());
    else
        DiffTables::showDetails(
            table,
            DiffDetails::read<Records>(*m_current, *m_other, line(), *address, m_ui->cbInternal->isChecked()),
            palette());
}

void ProjectDiffDialog::showObjectDetails(const QTreeWidgetItem *item)
{
    showDetails<ObjectRecords>(*m_ui->tblObjects, item);
}

void ProjectDiffDialog::showPgnDetails(const QTreeWidgetItem *item)
{
    showDetails<PgnRecords>(*m_ui->tblPGN, item);
}

void ProjectDiffDialog::showCanIdDetails(const QTreeWidgetItem *item)
{
    showDetails<CanIdRecords>(*m_ui->tblCANID, item);
}

void ProjectDiffDialog::showAllDetails()
{
    showObjectDetails(m_ui->treeWidget->currentItem());
    showPgnDetails(m_ui->treePGN->currentItem());
    showCanIdDetails(m_ui->treeCANID->currentItem());
}

void ProjectDiffDialog::on_treeWidget_itemActivated(QTreeWidgetItem *item, int)
{
    showObjectDetails(item);
}

void ProjectDiffDialog::on_treeWidget_itemClicked(QTreeWidgetItem *item, int)
{
    showObjectDetails(item);
}

void ProjectDiffDialog::on_treePGN_itemActivated(QTreeWidgetItem *item, int)
{
    showPgnDetails(item);
}

void ProjectDiffDialog::on_treePGN_itemClicked(QTreeWidgetItem *item, int)
{
    showPgnDetails(item);
}

void ProjectDiffDialog::on_treeCANID_itemActivated(QTreeWidgetItem *item, int)
{
    showCanIdDetails(item);
}

void ProjectDiffDialog::on_treeCANID_itemClicked(QTreeWidgetItem *item, int)
{
    showCanIdDetails(item);
}

void ProjectDiffDialog::on_cbInternal_clicked(bool)
{
    showAllDetails();
}

void ProjectDiffDialog::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    for (QTreeWidget *tree :
         std::initializer_list<QTreeWidget *>{m_ui->treeWidget, m_ui->treePGN, m_ui->treeCANID})
        DiffTree::colour(*tree, palette()); // the children have not got it yet
    showAllDetails();
}

// --- Carrying across -------------------------------------------------------------------------------

bool ProjectDiffDialog::mayChange() const
{
    return m_current && m_other && (!m_options.isAfterApply || m_expertMode);
}

bool ProjectDiffDialog::mayChangeItems() const
{
    return mayChange() && m_current->nodeExists(line());
}

Actions ProjectDiffDialog::selectedActions() const
{
    Actions actions;
    const QList<QTreeWidgetItem *> items = m_ui->treeWidget->selectedItems();
    for (const QTreeWidgetItem *item : items)
        actions |= DiffItemText::actions(item->text(0));
    return actions;
}

void ProjectDiffDialog::on_treeWidget_customContextMenuRequested(const QPoint &pos)
{
    struct Entry
    {
        Action action;
        QString text;
        void (ProjectDiffDialog::*slot)();
    };
    const std::array entries{
        Entry{Action::Import, tr("Import from other project"), &ProjectDiffDialog::importItem},
        Entry{Action::ImportComplete, tr("Import from other project (complete)"),
              &ProjectDiffDialog::importItemDefault},
        Entry{Action::Delete, tr("Delete from local project"), &ProjectDiffDialog::deleteItem},
    };
    const bool isOnItem = m_ui->treeWidget->itemAt(pos);
    const Actions actions = isOnItem && mayChangeItems() ? selectedActions() : Actions();
    QMenu menu(this);
    menu.setObjectName(u"itemMenu"_s);
    for (const Entry &entry : entries)
        if (actions.testFlag(entry.action))
            menu.addAction(entry.text, this, entry.slot);
    if (!menu.isEmpty())
        menu.addSeparator();
    m_ui->treeWidget->addMenuPart(menu);
    menu.exec(m_ui->treeWidget->viewport()->mapToGlobal(pos));
}

void ProjectDiffDialog::changeSelectedItems(Action action, Change change)
{
    if (!mayChangeItems())
        return;
    QList<Address> addresses;
    const QList<QTreeWidgetItem *> items = m_ui->treeWidget->selectedItems();
    for (const QTreeWidgetItem *item : items)
        if (const auto address = DiffTree::address(item);
            address && DiffItemText::actions(item->text(0)).testFlag(action))
            addresses.append(*address);
    bool success = true;
    {
        const WaitCursor cursor;
        DiffTransfer transfer(*m_current, *m_other, line(), m_options.isAfterApply);
        for (const Address &address : std::as_const(addresses))
            success = change(transfer, address) && success;
        m_lines.insert(line(), ProjectDiff::compareLine(*m_current, *m_other, line(), m_options));
        countDifferences();
        showLine();
        showCounts();
    }
    if (!success)
        tellFailedChange();
}

void ProjectDiffDialog::importItem()
{
    changeSelectedItems(Action::Import, [](DiffTransfer &transfer, const Address &address) {
        const auto index = quint16(address.number);
        return address.child ? transfer.importSubIndex(index, quint8(*address.child))
                             : transfer.importObject(index);
    });
}

void ProjectDiffDialog::importItemDefault()
{
    changeSelectedItems(Action::Import, [](DiffTransfer &transfer, const Address &address) {
        const auto index = quint16(address.number);
        return address.child ? transfer.importSubIndexComplete(index, quint8(*address.child))
                             : transfer.importObject(index);
    });
}

void ProjectDiffDialog::deleteItem()
{
    changeSelectedItems(Action::Delete, [](DiffTransfer &transfer, const Address &address) {
        const auto index = quint16(address.number);
        return address.child ? transfer.removeSubIndex(index, quint8(*address.child))
                             : transfer.removeObject(index);
    });
}

void ProjectDiffDialog::on_tblGeneralSettings_customContextMenuRequested(const QPoint &pos)
{
    if (!mayChange() || !m_ui->tblGeneralSettings->itemAt(pos))
        return;
    QMenu menu(this);
    menu.setObjectName(u"settingMenu"_s);
    menu.addAction(tr("Take setting from other project"), this, &ProjectDiffDialog::takeOverSetting);
    menu.exec(m_ui->tblGeneralSettings->viewport()->mapToGlobal(pos));
}

void ProjectDiffDialog::takeOverSetting()
{
    const QTableWidgetItem *name = m_ui->tblGeneralSettings->item(m_ui->tblGeneralSettings->currentRow(), 0);
    if (!name || !mayChange())
        return;
    DiffTransfer transfer(*m_current, *m_other, line(), m_options.isAfterApply);
    const bool success = transfer.takeOverGeneralSetting(name->data(DiffTables::keyRole).toString());
    compareSettings();
    countDifferences();
    showSettings();
    showCounts();
    if (!success)
        tellFailedChange();
}

void ProjectDiffDialog::tellFailedChange()
{
    QMessageBox::warning(this, GuiHelper::productTitle(), tr("The project could not be changed."));
}
