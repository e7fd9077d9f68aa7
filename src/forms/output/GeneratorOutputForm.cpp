#include "forms/output/GeneratorOutputForm.h"

#include "forms/output/OutputDelegate.h"
#include "forms/output/OutputFilter.h"
#include "forms/output/TextSearch.h"
#include "generators/OutputHandlerBase.h"
#include "store/SafeFile.h"
#include "ui_GeneratorOutputForm.h"
#include "widgets/GuiHelper.h"

#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QScrollBar>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/** Messages of a run come by the thousand; a view that is told of each would do nothing else. */
constexpr auto flushDelay = 40ms;
constexpr int rowSpacing = 6; // pixels between two lines of text
constexpr QLatin1StringView savePurpose{"generator-output"};

} // namespace

/** The button that shows or hides the messages of a level, and what it is called. */
struct GeneratorOutputForm::LevelButton
{
    MessageLevel level;
    const char *action;
    const char *text;
};

const std::array<GeneratorOutputForm::LevelButton, OutputModel::levelCount> &
GeneratorOutputForm::levelButtons()
{
    static constexpr std::array buttons{
        LevelButton{MessageLevel::Error, "actionShowErrors", QT_TR_NOOP("Errors (%1)")},
        LevelButton{MessageLevel::Warning, "actionShowWarnings", QT_TR_NOOP("Warnings (%1)")},
        LevelButton{MessageLevel::Hint, "actionShowHints", QT_TR_NOOP("Hints (%1)")},
        LevelButton{MessageLevel::Correction, "actionShowCorrections", QT_TR_NOOP("Corrections (%1)")},
        LevelButton{MessageLevel::Info, "actionShowInformation", QT_TR_NOOP("Information (%1)")},
    };
    return buttons;
}

GeneratorOutputForm::GeneratorOutputForm(QWidget *parent)
    : BaseMainForm(parent), m_ui(std::make_unique<Ui::GeneratorOutputForm>()), m_model(new OutputModel(this)),
      m_filter(new OutputFilter(this)), m_delegate(new OutputDelegate(this))
{
    m_ui->setupUi(this);
    GuiHelper::setIcons(*this);
    m_ui->findBar->hide();
    setUpMessages();
    setUpActions();
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(flushDelay);
    connect(&m_flushTimer, &QTimer::timeout, this, &GeneratorOutputForm::flush);
    connect(m_ui->findBar, &FindBar::findRequested, this, &GeneratorOutputForm::find);
    connect(m_ui->findBar, &FindBar::closed, this, &GeneratorOutputForm::closeFindBar);
    showState();
}

GeneratorOutputForm::~GeneratorOutputForm() = default;

void GeneratorOutputForm::setUpMessages()
{
    m_filter->setSourceModel(m_model);
    m_ui->tvMessages->setModel(m_filter);
    m_ui->tvMessages->setItemDelegate(m_delegate);
    m_ui->tvMessages->installEventFilter(this);
    m_ui->tvMessages->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    fitRows();
    connect(m_ui->tvMessages, &QTableView::activated, this, &GeneratorOutputForm::open);
    connect(m_ui->tvMessages->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        m_ui->actionCopyMessages->setEnabled(m_ui->tvMessages->selectionModel()->hasSelection());
        Q_EMIT editStateChanged();
    });
}

void GeneratorOutputForm::setUpActions()
{
    for (const LevelButton &button : levelButtons()) {
        connect(action(button.action), &QAction::toggled, this, [this, level = button.level](bool shown) {
            m_filter->setShown(level, shown);
            showState();
        });
    }
    for (QAction *command : {m_ui->actionFindMessage, m_ui->actionCopyMessages, m_ui->actionSaveMessages,
                             m_ui->actionClearMessages})
        if (auto *button = qobject_cast<QToolButton *>(m_ui->outputToolBar->widgetForAction(command)))
            button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    m_ui->outputToolBar->installEventFilter(this);
    m_ui->tvMessages->addActions({m_ui->actionOpenPlace, m_ui->actionCopyMessages, m_ui->actionSaveMessages,
                                  m_ui->actionClearMessages});
}

QAction *GeneratorOutputForm::action(const char *name) const
{
    return findChild<QAction *>(QString::fromLatin1(name));
}

void GeneratorOutputForm::writeMessage(const QVariant &message)
{
    append(OutputMessage::fromVariant(message), QTime::currentTime());
}

void GeneratorOutputForm::writeRaw(const QVariant &message)
{
    append(OutputMessage::fromVariant(message), {});
}

void GeneratorOutputForm::append(const OutputMessage &message, const QTime &time)
{
    m_pending.append({message.text, message.location, time});
    if (!m_flushTimer.isActive())
        m_flushTimer.start();
}

void GeneratorOutputForm::flush()
{
    m_flushTimer.stop();
    if (m_pending.isEmpty())
        return;
    const QScrollBar &bar = *m_ui->tvMessages->verticalScrollBar();
    const bool followsEnd = bar.value() == bar.maximum();
    const QList<OutputModel::Message> messages = std::exchange(m_pending, {});
    m_model->append(messages);
    widenFor(messages);
    showState();
    if (followsEnd)
        m_ui->tvMessages->scrollToBottom();
}

/** The column grows with the longest message; shorter ones need not be measured. */
void GeneratorOutputForm::widenFor(const QList<OutputModel::Message> &messages)
{
    const auto length = [](const OutputModel::Message &message) { return message.richText.size(); };
    const OutputModel::Message &longest = *std::ranges::max_element(messages, {}, length);
    int width = m_ui->tvMessages->horizontalHeader()->minimumSectionSize();
    const QList<MessageText> lines = MessageText::fromRichText(longest.richText).lines();
    for (const MessageText &line : lines)
        width = qMax(width, OutputDelegate::widthOf(line.text, m_ui->tvMessages->font()));
    m_ui->tvMessages->horizontalHeader()->setMinimumSectionSize(width);
}

void GeneratorOutputForm::clear()
{
    m_pending.clear();
    m_model->clear();
    m_ui->tvMessages->horizontalHeader()->setMinimumSectionSize(-1);
    showState();
}

void GeneratorOutputForm::showState()
{
    for (const LevelButton &button : levelButtons())
        action(button.action)->setText(tr(button.text).arg(m_model->count(button.level)));
    fitLevelButtons();
    const bool isEmpty = m_model->rowCount() == 0;
    m_ui->tvMessages->setHidden(isEmpty);
    m_ui->lblNoMessages->setVisible(isEmpty);
    m_ui->actionSaveMessages->setDisabled(isEmpty);
    m_ui->actionClearMessages->setDisabled(isEmpty);
    m_ui->actionFindMessage->setDisabled(isEmpty);
    m_ui->actionOpenPlace->setEnabled(m_model->hasPlaces());
    const bool isAllHidden = !isEmpty && m_filter->rowCount() == 0;
    m_ui->lblState->setText(isAllHidden ? tr("All messages are hidden: no level is shown that has any.")
                                : m_model->hasPlaces()
                                ? tr("A double click or Enter on a message opens what it is about.")
                                : QString());
    m_ui->lblState->setHidden(m_ui->lblState->text().isEmpty());
}

/** On a narrow page the buttons show their icon and count only; what they mean is in their tool tips. */
void GeneratorOutputForm::fitLevelButtons()
{
    for (const LevelButton &button : levelButtons())
        action(button.action)->setIconText(action(button.action)->text());
    if (m_ui->outputToolBar->sizeHint().width() <= m_ui->outputToolBar->width())
        return;
    for (const LevelButton &button : levelButtons())
        action(button.action)->setIconText(QString::number(m_model->count(button.level)));
}

QString GeneratorOutputForm::getLogging()
{
    flush();
    return m_model->plainText(false);
}

bool GeneratorOutputForm::saveTo(const QString &path, QString *error)
{
    flush();
    const QByteArray content = m_model->plainText(true).toUtf8();
    return SafeFile::replace(
        path, QString(), [&content](QFile &file) { return file.write(content) == content.size(); }, error);
}

void GeneratorOutputForm::on_actionSaveMessages_triggered()
{
    const QString folder = GuiHelper::dialogFolder(savePurpose);
    const QString path = QFileDialog::getSaveFileName(this, tr("Save messages"), folder + "/messages.txt"_L1,
                                                      tr("Text files (*.txt);;All files (*)"));
    if (path.isEmpty())
        return;
    GuiHelper::rememberDialogFolder(savePurpose, path);
    QString reason;
    if (saveTo(path, &reason))
        return;
    QMessageBox box(QMessageBox::Warning, GuiHelper::productTitle(), tr("Cannot save file %1.").arg(path),
                    QMessageBox::Ok, this);
    box.setInformativeText(reason);
    box.exec();
}

void GeneratorOutputForm::on_actionClearMessages_triggered()
{
    clear();
}

bool GeneratorOutputForm::canEdit(EditCommand command) const
{
    return command == EditCommand::Copy && m_ui->tvMessages->selectionModel()->hasSelection();
}

void GeneratorOutputForm::edit(EditCommand command)
{
    if (canEdit(command))
        on_actionCopyMessages_triggered();
}

void GeneratorOutputForm::on_actionCopyMessages_triggered()
{
    const QString text = selectedText();
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

QString GeneratorOutputForm::selectedText() const
{
    QModelIndexList rows = m_ui->tvMessages->selectionModel()->selectedRows();
    std::ranges::sort(rows, {}, &QModelIndex::row);
    QStringList texts;
    for (const QModelIndex &row : std::as_const(rows))
        texts.append(row.data().toString());
    return texts.join(u'\n');
}

void GeneratorOutputForm::on_actionOpenPlace_triggered()
{
    open(m_ui->tvMessages->currentIndex());
}

void GeneratorOutputForm::open(const QModelIndex &index)
{
    const auto place = index.data(OutputModel::PlaceRole).value<ProjectLocation>();
    if (place.kind != ProjectLocation::Kind::None)
        Q_EMIT locationActivated(place);
}

void GeneratorOutputForm::updateData(const ObjectDataBase::ChangeSet &change){Q_UNUSED(change)}

TextSearch GeneratorOutputForm::wantedText() const
{
    const QTextDocument::FindFlags flags = m_ui->findBar->flags();
    return {.text = m_ui->findBar->text(),
            .cases = flags & QTextDocument::FindCaseSensitively ? Qt::CaseSensitive : Qt::CaseInsensitive,
            .wholeWords = flags.testFlag(QTextDocument::FindWholeWords)};
}

void GeneratorOutputForm::on_actionFindMessage_triggered()
{
    m_ui->findBar->activate();
    find(false, true);
}

void GeneratorOutputForm::find(bool backward, bool fromHere)
{
    flush();
    const TextSearch search = wantedText();
    const int current = qMax(0, m_ui->tvMessages->currentIndex().row());
    const int count = qMax(1, m_filter->rowCount());
    const int start = fromHere ? current : (current + (backward ? count - 1 : 1)) % count;
    showFound(m_filter->find(search, start, backward), search);
}

void GeneratorOutputForm::showFound(int row, const TextSearch &search)
{
    m_delegate->setMarked(search);
    m_ui->tvMessages->viewport()->update();
    if (row >= 0) {
        m_ui->tvMessages->setCurrentIndex(m_filter->index(row, 0));
        const OutputFilter::Matches matches = m_filter->countMatches(search, row);
        m_ui->lblState->setText(tr("Line %1 of %2 with this text").arg(matches.before + 1).arg(matches.all));
    } else {
        m_ui->lblState->setText(search.text.isEmpty() ? QString() : tr("Not found"));
    }
    m_ui->lblState->show();
}

void GeneratorOutputForm::closeFindBar()
{
    m_ui->findBar->hide();
    m_delegate->setMarked({});
    m_ui->tvMessages->viewport()->update();
    m_ui->tvMessages->setFocus();
    showState();
}

/**
 * The main window has Ctrl+F, Ctrl+C and Ctrl+A as well. Here they mean the messages, so the page takes the
 * keys before they become the window's shortcuts.
 */
bool GeneratorOutputForm::handleKey(const QKeyEvent &event)
{
    const bool isPress = event.type() == QEvent::KeyPress;
    if (event.matches(QKeySequence::Find)) {
        if (isPress && m_ui->actionFindMessage->isEnabled())
            on_actionFindMessage_triggered();
    } else if (event.matches(QKeySequence::FindNext) || event.matches(QKeySequence::FindPrevious)) {
        if (isPress)
            find(event.matches(QKeySequence::FindPrevious), false);
    } else {
        return false;
    }
    return true;
}

bool GeneratorOutputForm::event(QEvent *event)
{
    if ((event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress)
        && handleKey(*static_cast<QKeyEvent *>(event))) {
        event->accept();
        return true;
    }
    return BaseMainForm::event(event);
}

bool GeneratorOutputForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->outputToolBar && event->type() == QEvent::Resize)
        fitLevelButtons();
    const bool isKey = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (watched != m_ui->tvMessages || !isKey)
        return BaseMainForm::eventFilter(watched, event);
    const auto &key = *static_cast<QKeyEvent *>(event);
    const bool isCopy = key.matches(QKeySequence::Copy);
    if (!isCopy && !key.matches(QKeySequence::SelectAll))
        return BaseMainForm::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress && isCopy)
        on_actionCopyMessages_triggered();
    else if (event->type() == QEvent::KeyPress)
        m_ui->tvMessages->selectAll();
    event->accept();
    return true;
}

void GeneratorOutputForm::fitRows()
{
    const int height = m_ui->tvMessages->fontMetrics().height() + rowSpacing;
    m_ui->tvMessages->verticalHeader()->setMinimumSectionSize(height);
    m_ui->tvMessages->verticalHeader()->setDefaultSectionSize(height);
}

void GeneratorOutputForm::changeEvent(QEvent *event)
{
    BaseMainForm::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitRows();
}
