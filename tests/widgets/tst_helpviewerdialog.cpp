#include "widgets/GuiHelper.h"
#include "widgets/HelpViewerDialog.h"
#include "widgets/WidgetTest.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextBrowser>

#include <memory>

using namespace Qt::StringLiterals;

class TestHelpViewerDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_help.reset(); }
    void theContentsFollowTheStartPage();
    void theStartPageIsShownFirst();
    void aPageIsOpenedFromTheContents();
    void backForwardAndHomeGoThroughThePages();
    void theSearchFindsThePagesThatHoldAllWords_data();
    void theSearchFindsThePagesThatHoldAllWords();
    void titlesComeFirstInTheSearch();
    void aSearchWithoutResultSaysSo();
    void ctrlFFindsInThePage();
    void escapeClosesTheFindBarBeforeTheWindow();
    void aMissingFolderIsTold();
    void aMissingPageIsToldInItsPlace();
    void markUpOfTheSystemIsNoMarkUpOfThePage();
    void theBuiltInPagesAreWholeAndLinked();

private:
    bool write(const QString &name, const QString &title, const QString &body) const;
    void open(const QString &folder);
    template <class Widget>
    Widget *child(const char *name) const
    {
        return m_help->findChild<Widget *>(QString::fromLatin1(name));
    }
    QTextBrowser *browser() const { return child<QTextBrowser>("browser"); }
    QString shownFile() const { return browser()->source().fileName(); }
    QStringList contents() const;
    QString currentEntry() const
    {
        const auto *item = child<QListWidget>("lwPages")->currentItem();
        return item ? item->text() : QString();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<HelpViewerDialog> m_help;
};

void TestHelpViewerDialog::init()
{
    GuiHelper::userSettings()->clear();
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(write(u"index.html"_s, u"Start"_s,
                  u"<p>Welcome</p><a href=\"zebra.html\">z</a> <a href=\"http://x.invalid/\">x</a> "
                  "<a href=\"gone.html\">gone</a> <a href=\"apple.html#part\">a</a>"_s));
    QVERIFY(write(u"apple.html"_s, u"Apple"_s, u"<p>Fruit of a zebra, <b>red</b> or green</p>"_s));
    QVERIFY(write(u"zebra.html"_s, u"Zebra"_s, u"<p>Animal with red stripes</p>"_s));
    QVERIFY(write(u"more.html"_s, u"More"_s, u"<p>Nothing</p>"_s));
    open(m_folder->path());
}

bool TestHelpViewerDialog::write(const QString &name, const QString &title, const QString &body) const
{
    const QString page =
        "<html><head><title>"_L1 + title + "</title></head><body>"_L1 + body + "</body></html>"_L1;
    QFile file(m_folder->filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(page.toUtf8()) > 0;
}

void TestHelpViewerDialog::open(const QString &folder)
{
    m_help = std::make_unique<HelpViewerDialog>(folder);
    m_help->show();
    QVERIFY(QTest::qWaitForWindowActive(m_help.get()));
}

QStringList TestHelpViewerDialog::contents() const
{
    QStringList titles;
    const auto *list = child<QListWidget>("lwPages");
    for (int row = 0; row < list->count(); ++row)
        titles.append(list->item(row)->text());
    return titles;
}

void TestHelpViewerDialog::theContentsFollowTheStartPage()
{
    QCOMPARE(contents(), QStringList({u"Start"_s, u"Zebra"_s, u"Apple"_s, u"More"_s}));
}

void TestHelpViewerDialog::theStartPageIsShownFirst()
{
    QCOMPARE(shownFile(), u"index.html"_s);
    QVERIFY(browser()->toPlainText().startsWith("Welcome"_L1));
    QCOMPARE(currentEntry(), u"Start"_s);
    QVERIFY(!child<QAction>("actionBack")->isEnabled());
}

void TestHelpViewerDialog::aPageIsOpenedFromTheContents()
{
    auto *list = child<QListWidget>("lwPages");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(2)).center());
    QCOMPARE(shownFile(), u"apple.html"_s);
    QTest::keyClick(list, Qt::Key_Down);
    QCOMPARE(shownFile(), u"more.html"_s);
}

void TestHelpViewerDialog::backForwardAndHomeGoThroughThePages()
{
    m_help->showPage(u"zebra.html"_s);
    m_help->showPage(u"apple.html"_s);
    QCOMPARE(currentEntry(), u"Apple"_s);
    child<QAction>("actionBack")->trigger();
    QCOMPARE(shownFile(), u"zebra.html"_s);
    QCOMPARE(currentEntry(), u"Zebra"_s);
    QTest::keyClick(m_help.get(), Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(shownFile(), u"apple.html"_s);
    QTest::keyClick(m_help.get(), Qt::Key_Home, Qt::AltModifier);
    QCOMPARE(shownFile(), u"index.html"_s);
    QTest::keyClick(m_help.get(), Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(shownFile(), u"apple.html"_s);
}

void TestHelpViewerDialog::theSearchFindsThePagesThatHoldAllWords_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("one word") << u"red"_s << QStringList{u"Zebra"_s, u"Apple"_s};
    QTest::newRow("in any order") << u"red fruit"_s << QStringList{u"Apple"_s};
    QTest::newRow("capitals") << u"STRIPES"_s << QStringList{u"Zebra"_s};
    QTest::newRow("blanks alone") << u"  "_s << QStringList{u"Start"_s, u"Zebra"_s, u"Apple"_s, u"More"_s};
    QTest::newRow("mark-up is no text") << u"body"_s << QStringList{};
}

void TestHelpViewerDialog::theSearchFindsThePagesThatHoldAllWords()
{
    QFETCH(const QString, words);
    QTest::keyClick(m_help.get(), Qt::Key_K, Qt::ControlModifier);
    QTRY_VERIFY(child<QLineEdit>("leSearch")->hasFocus());
    QTest::keyClicks(child<QLineEdit>("leSearch"), words);
    QTEST(contents(), "expected");
    QCOMPARE(shownFile(), u"index.html"_s);
}

void TestHelpViewerDialog::titlesComeFirstInTheSearch()
{
    QVERIFY(write(u"aardvark.html"_s, u"Aardvark"_s, u"apple"_s));
    QVERIFY(write(u"index.html"_s, u"Start"_s, u"<a href=\"aardvark.html\">apple</a>"_s));
    open(m_folder->path());
    QTest::keyClicks(child<QLineEdit>("leSearch"), u"apple"_s);
    QCOMPARE(contents(), QStringList({u"Apple"_s, u"Start"_s, u"Aardvark"_s}));
}

void TestHelpViewerDialog::aSearchWithoutResultSaysSo()
{
    auto *found = child<QLabel>("lblFound");
    QVERIFY(!found->isVisible());
    QTest::keyClicks(child<QLineEdit>("leSearch"), u"unicorn"_s);
    QVERIFY(found->isVisible());
    QCOMPARE(found->text(), u"No page holds these words."_s);
    child<QLineEdit>("leSearch")->clear();
    QVERIFY(!found->isVisible());
    QCOMPARE(contents().size(), 4);
}

void TestHelpViewerDialog::ctrlFFindsInThePage()
{
    m_help->showPage(u"apple.html"_s);
    QTest::keyClick(m_help.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(child<QLineEdit>("leFind"), u"RED"_s);
    QCOMPARE(browser()->textCursor().selectedText(), u"red"_s);
    QTest::keyClick(m_help.get(), Qt::Key_F3);
    QCOMPARE(child<QLabel>("lblResult")->text(), u"Continued at the other end"_s);
}

void TestHelpViewerDialog::escapeClosesTheFindBarBeforeTheWindow()
{
    QTest::keyClick(m_help.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(child<QLineEdit>("leFind"), Qt::Key_Escape);
    QVERIFY(!child<QWidget>("findBar")->isVisible());
    QVERIFY(m_help->isVisible());
    QTest::keyClick(m_help.get(), Qt::Key_Escape);
    QVERIFY(!m_help->isVisible());
}

void TestHelpViewerDialog::aMissingFolderIsTold()
{
    open(m_folder->filePath(u"nowhere"_s));
    QVERIFY(browser()->toPlainText().contains("This help page is missing"_L1));
    QVERIFY(browser()->toPlainText().contains(m_folder->filePath(u"nowhere/index.html"_s)));
    QCOMPARE(contents(), QStringList());
    QVERIFY(!child<QLabel>("lblFound")->isVisible());
}

void TestHelpViewerDialog::aMissingPageIsToldInItsPlace()
{
    m_help->showPage(u"gone.html"_s);
    QVERIFY(browser()->toPlainText().contains("This help page is missing"_L1));
    QVERIFY(browser()->toPlainText().contains("gone.html"_L1));
    child<QAction>("actionBack")->trigger();
    QCOMPARE(shownFile(), u"index.html"_s);
}

void TestHelpViewerDialog::markUpOfTheSystemIsNoMarkUpOfThePage()
{
    m_help->showPage(u"a%3Cb%3Ec.html"_s);
    QVERIFY(browser()->toPlainText().contains("a<b>c.html"_L1));
}

void TestHelpViewerDialog::theBuiltInPagesAreWholeAndLinked()
{
    static const QRegularExpression link(u"href=\"([^\"#:]+)"_s);
    const HelpFolder folder(HelpViewerDialog::builtInFolder);
    QVERIFY(folder.hasStartPage());
    QStringList names;
    for (const HelpPage &page : folder.pages()) {
        QVERIFY2(page.title != page.file, qPrintable(page.file));
        QVERIFY2(page.text.size() > 200, qPrintable(page.file));
        names.append(page.file);
    }
    for (const char *wanted :
         {"index.html", "projects.html", "lines.html", "generating.html", "command-line.html"})
        QVERIFY2(names.contains(QLatin1StringView(wanted)), wanted);
    for (const HelpPage &page : folder.pages()) {
        QFile file(folder.path() + u'/' + page.file);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QRegularExpressionMatchIterator links = link.globalMatch(QString::fromUtf8(file.readAll()));
        while (links.hasNext())
            QVERIFY(names.contains(links.next().captured(1)));
    }
    m_help = std::make_unique<HelpViewerDialog>();
    QVERIFY(!browser()->toPlainText().contains("missing"_L1));
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestHelpViewerDialog>(argc, argv);
}

#include "tst_helpviewerdialog.moc"
