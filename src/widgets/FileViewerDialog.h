#pragma once

#include "widgets/TextFile.h"

#include <QDialog>
#include <QFileSystemWatcher>
#include <QTimer>

#include <memory>

class TextFileLoader;
namespace Ui {
class FileViewerDialog;
}

/**
 * Shows a text file for reading: line numbers, colours for C, find, go to line, zoom.
 *
 * The file is read beside the window and read again whenever it changes on disk. A file that cannot be
 * shown is told in the dialog, which goes on waiting for it. The dialog may stay open beside the window.
 */
class FileViewerDialog : public QDialog
{
    Q_OBJECT

public:
    explicit FileViewerDialog(const QString &path, QWidget *parent = nullptr);
    ~FileViewerDialog() override;

    /** Opens a viewer that deletes itself when it is closed, or brings up the one that shows the file. */
    static FileViewerDialog *showFile(const QString &path, QWidget *parent);

    QString path() const { return m_path; }
    /** Puts the cursor into a line (from 1 on), also while the file is still being read. */
    void goToLine(int line);

public Q_SLOTS:
    void reload();

Q_SIGNALS:
    /** The text, or the message why there is none, is complete. */
    void shown();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void setupActions();
    void setupText();
    void setupFindBar();
    void watchFile();
    void handleFileEvent();
    void takeFile(const TextFile &file);
    void handleTextShown();
    void showText(const TextFile &file);
    void setTextActionsEnabled(bool enabled);
    void showFailure(const TextFile &file);
    QString failureText(const TextFile &file) const;
    QString noticeText(const TextFile &file) const;
    void showNotice(const QString &text);
    void showFacts(const TextFile &file);
    void showPosition();
    void openFindBar();
    void closeFindBar();
    void find(bool backward, bool fromHere);
    void askForLine();
    void openExternally();
    void storeFont(qreal points);
    void handleDone(int result);

    QString m_path;
    std::unique_ptr<Ui::FileViewerDialog> m_ui;
    std::unique_ptr<TextFileLoader> m_loader;
    QFileSystemWatcher m_watcher;
    QTimer m_changeTimer;
    bool m_reloadWanted = false;
    bool m_everShown = false;
    int m_wantedLine = 0;
    /** What the text on the screen was read from, to tell real changes from others in the folder. */
    qint64 m_size = -1;
    QDateTime m_modified;
};
