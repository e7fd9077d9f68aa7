// The part of the main window that shows the project's CAN lines and lets the user add and remove them.

#include "app/Edition.h"
#include "app/LinesComboBox.h"
#include "app/MainPages.h"
#include "app/ProjectLines.h"
#include "app/SelectProtocolDialog.h"
#include "app/VexMainWindow.h"
#include "ui_VexMainWindow.h"
#include "widgets/GuiHelper.h"

#include <QToolButton>

using namespace Qt::StringLiterals;

void VexMainWindow::updateLinesComboBox()
{
    const QSignalBlocker blocker(m_linesComboBox);
    m_linesComboBox->clear();
    if (!m_dataBase->isOpen())
        return;
    const ProjectLines lines(*m_dataBase);
    const QList<quint8> numbers = lines.numbers();
    for (const quint8 line : numbers)
        m_linesComboBox->addItem(tr("Line %1").arg(line), line);
    m_linesComboBox->insertSeparator(m_linesComboBox->count());
    m_linesComboBox->addItem(GuiHelper::icon(u"line-add"_s), tr("Add line..."), int(LineCommand::Add));
    m_linesComboBox->addItem(GuiHelper::icon(u"line-duplicate"_s), tr("Duplicate last line..."),
                             int(LineCommand::Duplicate));
    if (numbers.size() > 1)
        m_linesComboBox->addItem(GuiHelper::icon(u"line-delete"_s), tr("Delete this line..."),
                                 int(LineCommand::Delete));
    if (!m_isJ1939Edition && !Edition::isEnergyBus())
        m_linesComboBox->addItem(GuiHelper::icon(u"line-type"_s), tr("Change type of this line..."),
                                 int(LineCommand::ChangeType));
    m_linesComboBox->setCurrentIndex(qMax(0, m_linesComboBox->findData(m_currentLine)));
}

void VexMainWindow::handleLineChanged(int value)
{
    const QVariant entry = m_linesComboBox->itemData(value);
    if (!entry.isValid())
        return;
    if (entry.toInt() < 0) {
        runLineCommand(LineCommand(entry.toInt()));
    } else {
        leaveCurrentTab();
        showLine(quint8(entry.toUInt()));
    }
}

void VexMainWindow::runLineCommand(LineCommand command)
{
    // A command is no line: the box goes on showing the line that is shown.
    m_linesComboBox->setCurrentIndex(qMax(0, m_linesComboBox->findData(m_currentLine)));
    leaveCurrentTab();
    switch (command) {
    case LineCommand::Add:
        addLine();
        break;
    case LineCommand::Duplicate:
        duplicateLine();
        break;
    case LineCommand::Delete:
        deleteLine();
        break;
    case LineCommand::ChangeType:
        changeLineType();
        break;
    }
}

void VexMainWindow::updateFormsForLine(quint8 line, bool force)
{
    const WaitCursor cursor;
    if (force)
        m_ui->projectPage->refresh();
    m_currentLine = existingLine(line);
    m_linesComboBox->setCurrentIndex(qMax(0, m_linesComboBox->findData(m_currentLine)));
    showLineType();
    m_ui->projectPage->selectLine(m_currentLine);
    m_pages->showLine(m_currentLine, force);
}

/** The line itself, or the first one when the project has no such line: line 0 can be deleted, too. */
quint8 VexMainWindow::existingLine(quint8 line) const
{
    const bool open = m_dataBase && m_dataBase->isOpen();
    const QList<quint8> lines = open ? ProjectLines(*m_dataBase).numbers() : QList<quint8>();
    return lines.isEmpty() || lines.contains(line) ? line : lines.first();
}

/** Undo, command files and comparisons bring lines and take them away as well. */
void VexMainWindow::followLines()
{
    updateLinesComboBox();
    if (existingLine(m_currentLine) != m_currentLine)
        updateFormsForLine(m_currentLine, true);
}

void VexMainWindow::showLine(quint8 line)
{
    updateLinesComboBox();
    updateFormsForLine(line, false);
    Q_EMIT lineChanged(line);
}

void VexMainWindow::showLineType()
{
    const bool open = m_dataBase && m_dataBase->isOpen();
    m_protocolButton->setText(open ? LineTypes::title(currentLineType()) : QString());
    m_pages->setLineType(m_currentLine, currentLineType(),
                         open && ProjectLines(*m_dataBase).numbers().size() > 1);
}

LineType VexMainWindow::currentLineType() const
{
    return m_dataBase ? ProjectLines(*m_dataBase).type(m_currentLine) : LineType::CANopen;
}

bool VexMainWindow::tellWhenLinesAreFull()
{
    if (!ProjectLines(*m_dataBase).isFull())
        return false;
    m_messages.warning(
        tr("The maximum number of %1 lines has been reached.").arg(ObjectDataBase::MaximumLines), QString());
    return true;
}

bool VexMainWindow::confirm(const QString &question, QMessageBox::StandardButton defaultButton) const
{
    return m_messages.question(question, QString(), QMessageBox::Yes | QMessageBox::No, defaultButton)
        == QMessageBox::Yes;
}

/** What the edition knows of itself is not asked for: one line says that the project is a CANopen one. */
std::optional<LineType> VexMainWindow::typeOfNewLine(quint8 line)
{
    const bool multiLine = ProjectLines(*m_dataBase).numbers().size() > 1;
    if (m_isCanEdition || (Edition::isCANopen() && multiLine))
        return askForLineType(line);
    return m_isJ1939Edition ? LineType::J1939 : LineType::CANopen;
}

void VexMainWindow::addLine()
{
    if (tellWhenLinesAreFull() || !confirm(tr("Do you want to add a new line?")))
        return;
    ProjectLines lines(*m_dataBase);
    const std::optional<LineType> type = typeOfNewLine(*lines.nextNumber());
    if (!type)
        return;
    const std::optional<quint8> line = [&] {
        const WaitCursor cursor;
        return lines.add(*type, m_referenceDataBase.get());
    }();
    if (line)
        showLine(*line);
    else
        m_messages.warning(tr("The line cannot be added."), m_dataBase->lastError());
}

void VexMainWindow::duplicateLine()
{
    if (tellWhenLinesAreFull() || !confirm(tr("Do you want to duplicate the last line?")))
        return;
    const std::optional<quint8> line = [this] {
        const WaitCursor cursor;
        return ProjectLines(*m_dataBase).duplicateLast();
    }();
    if (line)
        showLine(*line);
    else
        m_messages.warning(tr("The line cannot be duplicated."), m_dataBase->lastError());
}

void VexMainWindow::deleteLine()
{
    if (!confirm(tr("Do you want to delete this line?"), QMessageBox::No))
        return;
    const std::optional<quint8> next = [this] {
        const WaitCursor cursor;
        return ProjectLines(*m_dataBase).remove(m_currentLine);
    }();
    if (next)
        showLine(*next);
    else
        m_messages.warning(tr("The line cannot be deleted."), m_dataBase->lastError());
}

void VexMainWindow::changeLineType()
{
    if (!confirm(tr("Do you want to add change the type of line %1?").arg(m_currentLine)))
        return;
    SelectProtocolDialog dialog(tr("Select CAN protocol for line %1:").arg(m_currentLine), this);
    dialog.setLineType(currentLineType());
    if (dialog.exec() != QDialog::Accepted)
        return;
    ProjectLines(*m_dataBase).setType(m_currentLine, dialog.lineType());
    updateFormsForLine(m_currentLine, true);
}
