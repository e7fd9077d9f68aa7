#pragma once

#include "forms/BaseMainForm.h"
#include "forms/output/OutputModel.h"

#include <memory>

class OutputDelegate;
class OutputFilter;
class QAction;
struct OutputMessage;
struct TextSearch;
namespace Ui {
class GeneratorOutputForm;
}

/**
 * The console of the program: the messages of model checks and generation runs, in colours by their level.
 *
 * Messages are rich text. They are taken over in batches, so that a run of tens of thousands of messages
 * costs little more than the messages themselves. A double click or Enter asks to open what a message is
 * about. The project plays no part here: messages stay until they are cleared.
 */
class GeneratorOutputForm : public BaseMainForm
{
    Q_OBJECT

public:
    explicit GeneratorOutputForm(QWidget *parent = nullptr);
    ~GeneratorOutputForm() override;

    /** All messages so far as plain text, one a line, without times and tags. */
    QString getLogging();
    /** Writes the messages with their times as UTF-8; false with the reason in `error`. */
    bool saveTo(const QString &path, QString *error);

    bool canEdit(EditCommand command) const override;
    void edit(EditCommand command) override;

public Q_SLOTS:
    /** A message, or an OutputMessage, with the time of the moment. */
    void writeMessage(const QVariant &message);
    /** As writeMessage, without a time. */
    void writeRaw(const QVariant &message);
    /** Forgets all messages. */
    void clear();

    void updateData(const ObjectDataBase::ChangeSet &change) override;

    void on_actionFindMessage_triggered();
    void on_actionCopyMessages_triggered();
    void on_actionSaveMessages_triggered();
    void on_actionClearMessages_triggered();
    void on_actionOpenPlace_triggered();

Q_SIGNALS:
    /** The user wishes to see what a message is about; only for messages that know it. */
    void locationActivated(const ProjectLocation &location);

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct LevelButton;
    static const std::array<LevelButton, OutputModel::levelCount> &levelButtons();

    void setUpMessages();
    void setUpActions();
    void append(const OutputMessage &message, const QTime &time);
    void flush();
    void showState();
    void fitRows();
    void fitLevelButtons();
    void widenFor(const QList<OutputModel::Message> &messages);
    bool handleKey(const QKeyEvent &event);

    TextSearch wantedText() const;
    void find(bool backward, bool fromHere);
    void closeFindBar();
    void showFound(int row, const TextSearch &search);

    QAction *action(const char *name) const;
    QString selectedText() const;
    void open(const QModelIndex &index);

    std::unique_ptr<Ui::GeneratorOutputForm> m_ui;
    OutputModel *m_model;
    OutputFilter *m_filter;
    OutputDelegate *m_delegate;
    QList<OutputModel::Message> m_pending;
    QTimer m_flushTimer;
};
