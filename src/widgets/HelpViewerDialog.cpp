#include "widgets/HelpViewerDialog.h"

#include "ui_HelpViewerDialog.h"
#include "widgets/GuiHelper.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView geometryName{"HelpViewer"};
constexpr int fileRole = Qt::UserRole;
constexpr int contentsWidth = 220; // pixels
constexpr int pageWidth = 620;

QUrl addressOf(const QString &folder, const QString &page)
{
    const QUrl base =
        folder.startsWith(u':') ? QUrl("qrc"_L1 + folder + u'/') : QUrl::fromLocalFile(folder + u'/');
    return base.resolved(QUrl(page));
}

} // namespace

HelpViewerDialog::HelpViewerDialog(QWidget *parent) : HelpViewerDialog(builtInFolder, parent) { }

HelpViewerDialog::HelpViewerDialog(const QString &folder, QWidget *parent)
    : QDialog(parent, Qt::Window), m_folder(folder), m_ui(std::make_unique<Ui::HelpViewerDialog>())
{
    m_ui->setupUi(this);
    GuiHelper::setIcons(*this);
    setWindowTitle(tr("%1 - Help").arg(QCoreApplication::applicationName()));
    setupActions();
    setupContents();
    setupFindBar();
    connect(this, &QDialog::finished, this, &HelpViewerDialog::handleDone);
    GuiHelper::restoreGeometry(*this, geometryName);
    goHome();
}

HelpViewerDialog::~HelpViewerDialog() = default;

void HelpViewerDialog::setupActions()
{
    const QList<QAction *> actions{m_ui->actionBack,  m_ui->actionForward,  m_ui->actionHome,
                                   m_ui->actionFind,  m_ui->actionFindNext, m_ui->actionFindPrevious,
                                   m_ui->actionSearch};
    addActions(actions); // for their shortcuts
    connect(m_ui->actionBack, &QAction::triggered, m_ui->browser, &QTextBrowser::backward);
    connect(m_ui->actionForward, &QAction::triggered, m_ui->browser, &QTextBrowser::forward);
    connect(m_ui->browser, &QTextBrowser::backwardAvailable, m_ui->actionBack, &QAction::setEnabled);
    connect(m_ui->browser, &QTextBrowser::forwardAvailable, m_ui->actionForward, &QAction::setEnabled);
    connect(m_ui->actionHome, &QAction::triggered, this, &HelpViewerDialog::goHome);
    connect(m_ui->actionFind, &QAction::triggered, this, &HelpViewerDialog::openFindBar);
    connect(m_ui->actionFindNext, &QAction::triggered, this, [this] { find(false, false); });
    connect(m_ui->actionFindPrevious, &QAction::triggered, this, [this] { find(true, false); });
    connect(m_ui->actionSearch, &QAction::triggered, m_ui->leSearch, qOverload<>(&QWidget::setFocus));
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_ui->buttonBox->button(QDialogButtonBox::Close)->setAutoDefault(false); // Enter opens a page
}

void HelpViewerDialog::setupContents()
{
    m_ui->splitter->setSizes({contentsWidth, pageWidth});
    m_ui->splitter->setStretchFactor(1, 1);
    connect(m_ui->leSearch, &QLineEdit::textChanged, this, &HelpViewerDialog::showFoundPages);
    connect(m_ui->lwPages, &QListWidget::currentItemChanged, this, &HelpViewerDialog::openItem);
    connect(m_ui->lwPages, &QListWidget::itemClicked, this, &HelpViewerDialog::openItem);
    connect(m_ui->browser, &QTextBrowser::sourceChanged, this, &HelpViewerDialog::handlePageShown);
    showFoundPages(QString());
}

void HelpViewerDialog::setupFindBar()
{
    m_ui->findBar->hide();
    connect(m_ui->findBar, &FindBar::findRequested, this, &HelpViewerDialog::find);
    connect(m_ui->findBar, &FindBar::closed, this, &HelpViewerDialog::closeFindBar);
}

void HelpViewerDialog::goHome()
{
    showPage(HelpFolder::startPage);
}

void HelpViewerDialog::showPage(const QString &page)
{
    m_ui->browser->setSource(addressOf(m_folder.path(), page));
}

void HelpViewerDialog::showFoundPages(const QString &words)
{
    const QSignalBlocker blocker(m_ui->lwPages); // the page on view stays until another is chosen
    m_ui->lwPages->clear();
    const QList<HelpPage> pages = m_folder.search(words);
    for (const HelpPage &page : pages) {
        auto *item = new QListWidgetItem(page.title, m_ui->lwPages);
        item->setData(fileRole, page.file);
        item->setToolTip(page.title);
    }
    m_ui->lblFound->setText(pages.isEmpty() ? tr("No page holds these words.") : QString());
    m_ui->lblFound->setVisible(pages.isEmpty() && !m_folder.pages().isEmpty());
}

void HelpViewerDialog::openItem(const QListWidgetItem *item)
{
    if (!item)
        return;
    const QString file = item->data(fileRole).toString();
    if (m_ui->browser->source() != addressOf(m_folder.path(), file))
        showPage(file);
}

/** The contents follow the page that links or history have led to. */
void HelpViewerDialog::handlePageShown(const QUrl &address)
{
    const QString file = address.fileName();
    const QSignalBlocker blocker(m_ui->lwPages);
    m_ui->lwPages->setCurrentItem(nullptr);
    for (int row = 0; row < m_ui->lwPages->count(); ++row) {
        if (m_ui->lwPages->item(row)->data(fileRole) == file)
            m_ui->lwPages->setCurrentRow(row);
    }
}

void HelpViewerDialog::openFindBar()
{
    m_ui->findBar->activate(m_ui->browser->textCursor().selectedText());
}

void HelpViewerDialog::closeFindBar()
{
    m_ui->findBar->hide();
    m_ui->browser->setFocus();
}

void HelpViewerDialog::find(bool backward, bool fromHere)
{
    if (m_ui->findBar->text().isEmpty() && !fromHere)
        openFindBar();
    else
        m_ui->findBar->findIn(*m_ui->browser, backward, fromHere);
}

void HelpViewerDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && m_ui->findBar->isVisible())
        closeFindBar();
    else
        QDialog::keyPressEvent(event);
}

void HelpViewerDialog::handleDone(int)
{
    GuiHelper::storeGeometry(*this, geometryName);
}
