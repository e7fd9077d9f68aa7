#include "widgets/GuiHelper.h"
#include "widgets/WidgetTest.h"

#include <QAction>
#include <QDir>
#include <QFontInfo>
#include <QScreen>
#include <QSettings>
#include <QTemporaryDir>
#include <QToolButton>

using namespace Qt::StringLiterals;

class TestGuiHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { GuiHelper::userSettings()->clear(); }
    void theTitleIsNameTwoBlanksAndVersion();
    void theSettingsAreThoseOfTheEditionAndMajorVersion();
    void theMonospacedFontHasOneWidthAndTheWishedSize();
    void anElidedPathKeepsBothEndsAndFits();
    void aPaletteIsDarkWhenItsTextIsTheLighterPart();
    void contrastIsThatOfTheGuidelines_data();
    void contrastIsThatOfTheGuidelines();
    void aWindowIsPutOntoTheScreens_data();
    void aWindowIsPutOntoTheScreens();
    void aWindowOffTheScreenComesBack();
    void geometryIsRestoredUnderItsName();
    void aFileDialogBeginsWhereItsPurposeEndedLast();
    void aFolderThatHasGoneIsNotOffered();
    void theWaitCursorLastsForItsScope();
    void actionsAndButtonsGetTheIconThatTheyName();
};

void TestGuiHelper::theTitleIsNameTwoBlanksAndVersion()
{
    QCOMPARE(GuiHelper::productTitle(), u"CANopen NodeSmith  4.3.2"_s);
}

void TestGuiHelper::theSettingsAreThoseOfTheEditionAndMajorVersion()
{
    QVERIFY(GuiHelper::userSettings()->fileName().endsWith("korvel/CANopen NodeSmith 4.conf"_L1));
}

void TestGuiHelper::theMonospacedFontHasOneWidthAndTheWishedSize()
{
    const QFont font = GuiHelper::monospacedFont(13.5);
    QCOMPARE(font.pointSizeF(), 13.5);
    const QFontMetrics metrics(font);
    QCOMPARE(metrics.horizontalAdvance(u"iiii"_s), metrics.horizontalAdvance(u"WWWW"_s));
    QVERIFY(GuiHelper::monospacedFont().pointSizeF() > 0);
}

void TestGuiHelper::anElidedPathKeepsBothEndsAndFits()
{
    const QWidget widget;
    const QString path = "/home/somebody/"_L1 + QString(200, u'x') + "/device.vexp"_L1;
    const QString shown = GuiHelper::elided(path, widget, 200);
    QVERIFY(shown.startsWith("/home"_L1));
    QVERIFY(shown.endsWith(".vexp"_L1));
    QVERIFY(widget.fontMetrics().horizontalAdvance(shown) <= 200);
    QCOMPARE(GuiHelper::elided(u"/a"_s, widget, 200), u"/a"_s);
}

void TestGuiHelper::aPaletteIsDarkWhenItsTextIsTheLighterPart()
{
    QVERIFY(GuiHelper::isDark(darkPalette()));
    QVERIFY(!GuiHelper::isDark(QPalette(Qt::lightGray, Qt::lightGray)));
}

void TestGuiHelper::contrastIsThatOfTheGuidelines_data()
{
    QTest::addColumn<QColor>("first");
    QTest::addColumn<QColor>("second");
    QTest::addColumn<double>("expected");
    QTest::newRow("black on white") << QColor(Qt::black) << QColor(Qt::white) << 21.0;
    QTest::newRow("white on black") << QColor(Qt::white) << QColor(Qt::black) << 21.0;
    QTest::newRow("the same") << QColor(0x12, 0x34, 0x56) << QColor(0x12, 0x34, 0x56) << 1.0;
    QTest::newRow("grey on white") << QColor(0x77, 0x77, 0x77) << QColor(Qt::white) << 4.48;
    QTest::newRow("blue on white") << QColor(Qt::blue) << QColor(Qt::white) << 8.59;
}

void TestGuiHelper::contrastIsThatOfTheGuidelines()
{
    QFETCH(const QColor, first);
    QFETCH(const QColor, second);
    QFETCH(const double, expected);
    QVERIFY(qAbs(GuiHelper::contrast(first, second) - expected) < 0.01);
}

void TestGuiHelper::aWindowIsPutOntoTheScreens_data()
{
    QTest::addColumn<QRect>("window");
    QTest::addColumn<QList<QRect>>("screens");
    QTest::addColumn<QRect>("expected");
    const QRect first(0, 30, 1000, 700);
    const QRect second(1000, 0, 800, 600);
    QTest::newRow("already visible") << QRect(10, 40, 300, 200) << QList{first} << QRect(10, 40, 300, 200);
    QTest::newRow("on the second screen")
        << QRect(1100, 10, 300, 200) << QList{first, second} << QRect(1100, 10, 300, 200);
    QTest::newRow("screen has gone") << QRect(1100, 10, 300, 200) << QList{first} << QRect(700, 30, 300, 200);
    QTest::newRow("left of all") << QRect(-500, 50, 300, 200) << QList{first} << QRect(0, 50, 300, 200);
    QTest::newRow("below") << QRect(10, 700, 300, 200) << QList{first} << QRect(10, 530, 300, 200);
    QTest::newRow("too big") << QRect(10, 40, 3000, 2000) << QList{first} << first;
    QTest::newRow("mostly on the second")
        << QRect(950, 100, 300, 200) << QList{first, second} << QRect(1000, 100, 300, 200);
    QTest::newRow("no screen") << QRect(-9, -9, 3, 3) << QList<QRect>{} << QRect(-9, -9, 3, 3);
}

void TestGuiHelper::aWindowIsPutOntoTheScreens()
{
    QFETCH(const QRect, window);
    QFETCH(const QList<QRect>, screens);
    QTEST(GuiHelper::fitted(window, screens), "expected");
}

void TestGuiHelper::aWindowOffTheScreenComesBack()
{
    QWidget window;
    window.setGeometry(5000, 4000, 300, 200);
    GuiHelper::ensureVisible(window);
    QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(window.frameGeometry()));
    QCOMPARE(window.size(), QSize(300, 200));
}

void TestGuiHelper::geometryIsRestoredUnderItsName()
{
    QWidget former;
    former.setGeometry(60, 70, 320, 240);
    GuiHelper::storeGeometry(former, u"Former"_s);
    QWidget later;
    QVERIFY(!GuiHelper::restoreGeometry(later, u"Other"_s));
    QVERIFY(GuiHelper::restoreGeometry(later, u"Former"_s));
    QCOMPARE(later.size(), QSize(320, 240));
}

void TestGuiHelper::aFileDialogBeginsWhereItsPurposeEndedLast()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkpath(u"imports"_s));
    QCOMPARE(GuiHelper::dialogFolder(u"import"_s), QDir::homePath());
    GuiHelper::userSettings()->setValue("General/projectpath", folder.path());
    QCOMPARE(GuiHelper::dialogFolder(u"import"_s), folder.path());
    GuiHelper::rememberDialogFolder(u"import"_s, folder.filePath(u"imports/a.eds"_s));
    QCOMPARE(GuiHelper::dialogFolder(u"import"_s), folder.filePath(u"imports"_s));
    QCOMPARE(GuiHelper::dialogFolder(u"dbc"_s), folder.path());
}

void TestGuiHelper::aFolderThatHasGoneIsNotOffered()
{
    GuiHelper::userSettings()->setValue("General/projectpath", u"~"_s);
    GuiHelper::rememberDialogFolder(u"import"_s, u"/nowhere/at/all/a.eds"_s);
    QCOMPARE(GuiHelper::dialogFolder(u"import"_s), QDir::homePath());
}

void TestGuiHelper::theWaitCursorLastsForItsScope()
{
    QVERIFY(!QGuiApplication::overrideCursor());
    {
        const WaitCursor outer;
        const WaitCursor inner;
        QVERIFY(QGuiApplication::overrideCursor());
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    }
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestGuiHelper::actionsAndButtonsGetTheIconThatTheyName()
{
    QWidget root;
    QAction named(&root);
    named.setProperty("iconName", u"file-open"_s);
    QAction unnamed(&root);
    QToolButton button(&root);
    button.setProperty("iconName", u"close"_s);
    GuiHelper::setIcons(root);
    QVERIFY(!named.icon().isNull());
    QVERIFY(unnamed.icon().isNull());
    QVERIFY(!button.icon().isNull());
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestGuiHelper>(argc, argv);
}

#include "tst_guihelper.moc"
