#include "widgets/FileViewerDialog.h"

#include "ui_FileViewerDialog.h"
#include "widgets/GuiHelper.h"
#include "widgets/TextFileLoader.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLocale>
#include <QPushButton>
#include <QSettings>
#include <QUrl>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr QLatin1StringView geometryName{"FileViewer"};
constexpr QLatin1StringView fontKey{"FileViewer/fontsize"};
constexpr auto changeDelay = 150ms; // a file is often written in several steps
constexpr int messageIconPixels = 32;

QString lineEndName(TextFile::LineEnd lineEnd)
{
    switch (lineEnd) {
    case TextFile::LineEnd::None:
        return {};
    case TextFile::LineEnd::Lf:
        return u"LF"_s;
    case TextFile::LineEnd::CrLf:
        return u"CR LF"_s;
    case TextFile::LineEnd::Cr:
        return u"CR"_s;
    case TextFile::LineEnd::Mixed:
        return FileViewerDialog::tr("mixed line ends");
    }
    return {};
}

QString sizeText(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes);
}

} // namespace

FileViewerDialog::FileViewerDialog(const QString &path, QWidget *parent)
    : QDialog(parent, Qt::Window), m_path(QFileInfo(path).absoluteFilePath()),
      m_ui(std::make_unique<Ui::FileViewerDialog>())
{
    m_ui->setupUi(this);
    GuiHelper::setIcons(*this);
    setWindowTitle(tr("%1 - File viewer").arg(QFileInfo(m_path).fileName()));
    const QString shownPath = QDir::toNativeSeparators(m_path);
    m_ui->lblPath->setText(shownPath);
    m_ui->lblPath->setToolTip(shownPath);
    m_ui->lblPath->setAccessibleDescription(shownPath);
    setupActions();
    setupText();
    setupFindBar();
    connect(this, &QDialog::finished, this, &FileViewerDialog::handleDone);
    GuiHelper::restoreGeometry(*this, geometryName);
    watchFile();
    reload();
}

FileViewerDialog::~FileViewerDialog() = default;

FileViewerDialog *FileViewerDialog::showFile(const QString &path, QWidget *parent)
{
    const QString wanted = QFileInfo(path).absoluteFilePath();
    const auto viewers = parent ? parent->findChildren<FileViewerDialog *>(Qt::FindDirectChildrenOnly)
                                : QList<FileViewerDialog *>();
    for (FileViewerDialog *viewer : viewers) {
        if (viewer->path() != wanted || !viewer->isVisible())
            continue;
        viewer->raise();
        viewer->activateWindow();
        return viewer;
    }
    auto *viewer = new FileViewerDialog(path, parent);
    viewer->setAttribute(Qt::WA_DeleteOnClose);
    viewer->show();
    return viewer;
}

void FileViewerDialog::setupActions()
{
    const auto run = [this](QAction *action, auto slot) {
        connect(action, &QAction::triggered, this, slot);
        addAction(action); // for its shortcut
    };
    run(m_ui->actionCopy, [this] { m_ui->textView->copy(); });
    run(m_ui->actionFind, &FileViewerDialog::openFindBar);
    run(m_ui->actionFindNext, [this] { find(false, false); });
    run(m_ui->actionFindPrevious, [this] { find(true, false); });
    run(m_ui->actionGoToLine, &FileViewerDialog::askForLine);
    run(m_ui->actionReload, &FileViewerDialog::reload);
    run(m_ui->actionOpenExternal, &FileViewerDialog::openExternally);
    run(m_ui->actionZoomIn, [this] { m_ui->textView->zoom(1); });
    run(m_ui->actionZoomOut, [this] { m_ui->textView->zoom(-1); });
    run(m_ui->actionZoomReset,
        [this] { m_ui->textView->setFontPoints(GuiHelper::monospacedFont().pointSizeF()); });
    // On many keyboards the plus sign shares its key with the equals sign.
    m_ui->actionZoomIn->setShortcuts({QKeySequence(u"Ctrl++"_s), QKeySequence(u"Ctrl+="_s)});
    connect(m_ui->btnRetry, &QPushButton::clicked, this, &FileViewerDialog::reload);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_ui->buttonBox->button(QDialogButtonBox::Close)->setAutoDefault(false); // Enter is for the text
}

void FileViewerDialog::setupText()
{
    m_ui->textView->setFontPoints(
        GuiHelper::userSettings()->value(fontKey, m_ui->textView->fontPoints()).toReal());
    connect(m_ui->textView, &FileTextView::fontPointsChanged, this, &FileViewerDialog::storeFont);
    connect(m_ui->textView, &FileTextView::loadProgress, m_ui->progressBar, &QProgressBar::setValue);
    connect(m_ui->textView, &FileTextView::textShown, this, &FileViewerDialog::handleTextShown);
    connect(m_ui->textView, &FileTextView::cursorPositionChanged, this, &FileViewerDialog::showPosition);
    connect(m_ui->textView, &FileTextView::copyAvailable, m_ui->actionCopy, &QAction::setEnabled);
    m_ui->lblNotice->hide();
    m_ui->textView->setFocus();
}

void FileViewerDialog::setupFindBar()
{
    m_ui->findBar->hide();
    connect(m_ui->findBar, &FindBar::findRequested, this, &FileViewerDialog::find);
    connect(m_ui->findBar, &FindBar::closed, this, &FileViewerDialog::closeFindBar);
}

/** The folder is watched as well: a file that is written anew has gone for a moment, and with it its watch.
 */
void FileViewerDialog::watchFile()
{
    m_changeTimer.setSingleShot(true);
    m_changeTimer.setInterval(changeDelay);
    connect(&m_changeTimer, &QTimer::timeout, this, &FileViewerDialog::handleFileEvent);
    const auto start = [this] { m_changeTimer.start(); };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, start);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, start);
    const QFileInfo info(m_path);
    if (!info.isNativePath())
        return; // a resource of the program, which never changes
    if (info.dir().exists())
        m_watcher.addPath(info.absolutePath());
    if (info.isFile())
        m_watcher.addPath(m_path);
}

void FileViewerDialog::handleFileEvent()
{
    const QFileInfo info(m_path);
    if (info.isFile() && !m_watcher.files().contains(m_path))
        m_watcher.addPath(m_path);
    if (!info.isFile() && m_size >= 0)
        showNotice(tr("The file no longer exists. This is its last content."));
    else if (info.isFile() && (info.size() != m_size || info.lastModified() != m_modified))
        reload();
}

void FileViewerDialog::reload()
{
    if (m_loader) { // what is being read may be old already
        m_reloadWanted = true;
        return;
    }
    m_reloadWanted = false;
    m_ui->progressBar->setRange(0, 0);
    m_ui->progressBar->show();
    m_loader = std::make_unique<TextFileLoader>(m_path);
    connect(m_loader.get(), &TextFileLoader::loaded, this, &FileViewerDialog::takeFile);
    m_loader->start();
}

void FileViewerDialog::takeFile(const TextFile &file)
{
    m_loader.reset();
    if (file.failure == TextFile::Failure::None)
        showText(file);
    else
        showFailure(file);
    if (m_reloadWanted)
        reload();
}

void FileViewerDialog::showText(const TextFile &file)
{
    m_size = file.size;
    m_modified = file.modified;
    m_ui->progressBar->setRange(0, 100);
    m_ui->stackedWidget->setCurrentWidget(m_ui->pageText);
    showNotice(noticeText(file));
    m_ui->textView->showFile(file, m_everShown);
    m_everShown = true;
    showFacts(file);
}

void FileViewerDialog::handleTextShown()
{
    m_ui->progressBar->hide();
    setTextActionsEnabled(true);
    if (m_wantedLine > 0)
        m_ui->textView->goToLine(std::exchange(m_wantedLine, 0));
    showPosition();
    Q_EMIT shown();
}

void FileViewerDialog::setTextActionsEnabled(bool enabled)
{
    for (QAction *action :
         {m_ui->actionFind, m_ui->actionFindNext, m_ui->actionFindPrevious, m_ui->actionGoToLine})
        action->setEnabled(enabled);
    m_ui->actionCopy->setEnabled(enabled && m_ui->textView->textCursor().hasSelection());
    m_ui->actionOpenExternal->setEnabled(enabled && QFileInfo(m_path).isNativePath());
}

void FileViewerDialog::showFailure(const TextFile &file)
{
    m_size = -1;
    m_ui->progressBar->hide();
    m_ui->lblMessageIcon->setPixmap(
        GuiHelper::icon(u"message-warning"_s)
            .pixmap(QSize(messageIconPixels, messageIconPixels), devicePixelRatio()));
    m_ui->lblMessage->setText(failureText(file));
    m_ui->stackedWidget->setCurrentWidget(m_ui->pageMessage);
    setTextActionsEnabled(false);
    closeFindBar();
    showNotice(QString());
    m_ui->lblFacts->clear();
    m_ui->lblPosition->clear();
    Q_EMIT shown();
}

QString FileViewerDialog::failureText(const TextFile &file) const
{
    const QString name = QDir::toNativeSeparators(file.path);
    switch (file.failure) {
    case TextFile::Failure::Missing:
        return tr("The file\n%1\ndoes not exist. It is shown here as soon as it has been written.").arg(name);
    case TextFile::Failure::NotAFile:
        return tr("%1\nis not a file.").arg(name);
    default:
        return tr("The file\n%1\ncannot be read: %2").arg(name, file.reason);
    }
}

QString FileViewerDialog::noticeText(const TextFile &file) const
{
    QStringList notices;
    if (file.binary)
        notices.append(tr("This is not a text file. Its bytes are shown."));
    if (!file.isComplete())
        notices.append(
            tr("Only the first %1 of %2 are shown.").arg(sizeText(file.shownSize), sizeText(file.size)));
    if (!file.continuations.isEmpty())
        notices.append(tr("Lines of more than %L1 characters are shown in several rows.")
                           .arg(TextFile::maximumLineLength));
    return notices.join(u' ');
}

void FileViewerDialog::showNotice(const QString &text)
{
    m_ui->lblNotice->setText(text);
    m_ui->lblNotice->setVisible(!text.isEmpty());
}

void FileViewerDialog::showFacts(const TextFile &file)
{
    QStringList facts{sizeText(file.size)};
    for (const QString &fact : {file.encoding, lineEndName(file.lineEnd),
                                tr("read at %1").arg(QTime::currentTime().toString(u"HH:mm:ss"_s))}) {
        if (!fact.isEmpty())
            facts.append(fact);
    }
    m_ui->lblFacts->setText(facts.join("  |  "_L1));
}

void FileViewerDialog::showPosition()
{
    const FileTextView &view = *m_ui->textView;
    if (view.isLoading())
        m_ui->lblPosition->clear();
    else
        m_ui->lblPosition->setText(tr("Line %L1 of %L2, column %L3")
                                       .arg(view.currentLine())
                                       .arg(view.lineCount())
                                       .arg(view.currentColumn()));
}

void FileViewerDialog::goToLine(int line)
{
    if (m_loader || m_ui->textView->isLoading())
        m_wantedLine = line;
    else
        m_ui->textView->goToLine(line);
}

void FileViewerDialog::askForLine()
{
    QInputDialog dialog(this);
    dialog.setObjectName(u"goToLineDialog"_s);
    dialog.setWindowTitle(tr("Go to line"));
    dialog.setLabelText(tr("&Line (1 to %L1):").arg(m_ui->textView->lineCount()));
    dialog.setInputMode(QInputDialog::IntInput);
    dialog.setIntRange(1, m_ui->textView->lineCount());
    dialog.setIntValue(m_ui->textView->currentLine());
    if (dialog.exec() == QDialog::Accepted)
        m_ui->textView->goToLine(dialog.intValue());
    m_ui->textView->setFocus();
}

void FileViewerDialog::openFindBar()
{
    m_ui->findBar->activate(m_ui->textView->textCursor().selectedText());
}

void FileViewerDialog::closeFindBar()
{
    m_ui->findBar->hide();
    m_ui->textView->setMarkedText(QString(), {});
    m_ui->textView->setFocus();
}

void FileViewerDialog::find(bool backward, bool fromHere)
{
    if (m_ui->findBar->text().isEmpty() && !fromHere) {
        openFindBar();
        return;
    }
    m_ui->findBar->findIn(*m_ui->textView, backward, fromHere);
    m_ui->textView->setMarkedText(m_ui->findBar->isVisible() ? m_ui->findBar->text() : QString(),
                                  m_ui->findBar->flags());
}

void FileViewerDialog::openExternally()
{
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(m_path)))
        showNotice(tr("No program has been found that opens this file."));
}

void FileViewerDialog::storeFont(qreal points)
{
    GuiHelper::userSettings()->setValue(fontKey, points);
}

void FileViewerDialog::handleDone(int)
{
    GuiHelper::storeGeometry(*this, geometryName);
}

void FileViewerDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && m_ui->findBar->isVisible())
        closeFindBar();
    else
        QDialog::keyPressEvent(event);
}
