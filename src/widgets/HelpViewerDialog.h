#pragma once

#include "widgets/HelpFolder.h"

#include <QDialog>

#include <memory>

class QListWidgetItem;
namespace Ui {
class HelpViewerDialog;
}

/** The help window: the pages of one folder with contents, search, back, forward and home. */
class HelpViewerDialog : public QDialog
{
    Q_OBJECT

public:
    /** What the program brings along. */
    static constexpr QLatin1StringView builtInFolder{":/help"};

    explicit HelpViewerDialog(QWidget *parent = nullptr);
    /** A folder without a start page is told in the window. */
    explicit HelpViewerDialog(const QString &folder, QWidget *parent = nullptr);
    ~HelpViewerDialog() override;

    /** Shows a page by its file name, "lines.html" or "lines.html#add" for example. */
    void showPage(const QString &page);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void setupActions();
    void setupContents();
    void setupFindBar();
    void goHome();
    void showFoundPages(const QString &words);
    void openItem(const QListWidgetItem *item);
    void handlePageShown(const QUrl &address);
    void find(bool backward, bool fromHere);
    void openFindBar();
    void closeFindBar();
    void handleDone(int result);

    HelpFolder m_folder;
    std::unique_ptr<Ui::HelpViewerDialog> m_ui;
};
