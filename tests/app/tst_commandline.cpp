#include "app/CommandLine.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/** The rules by which arguments become options, values and the project. */
class TestCommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstArgumentIsTheProjectUnlessItLooksLikeALongOption_data();
    void theFirstArgumentIsTheProjectUnlessItLooksLikeALongOption();
    void optionsAreWholeArgumentsAndCaseSensitive();
    void aValueIsTheArgumentBehindTheFirstOccurrence_data();
    void aValueIsTheArgumentBehindTheFirstOccurrence();
    void aRelativeFileMeansTheLaunchFolderWhenItIsThere();
    void aRelativeFileThatIsNotThereStaysAsItWasGiven();
    void thePlatformDependsOnDisplayAndHiddenRun_data();
    void thePlatformDependsOnDisplayAndHiddenRun();
};

void TestCommandLine::theFirstArgumentIsTheProjectUnlessItLooksLikeALongOption_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("hasProject");
    QTest::newRow("no argument") << QStringList{} << false;
    QTest::newRow("a path") << QStringList{u"a.vexp"_s, u"-hidden"_s} << true;
    QTest::newRow("an unknown switch") << QStringList{u"-g"_s} << true;
    QTest::newRow("-j1939") << QStringList{u"-j1939"_s, u"a.vexp"_s} << false;
    QTest::newRow("-J1939 in capitals") << QStringList{u"-J1939"_s} << true;
    QTest::newRow("-j1939 with more text") << QStringList{u"-j1939x"_s} << true;
    QTest::newRow("a long option") << QStringList{u"--importfile"_s, u"x"_s} << false;
    QTest::newRow("two hyphens inside a path") << QStringList{u"/tmp/a--b/c.vexp"_s} << false;
    QTest::newRow("two hyphens apart") << QStringList{u"a-b-c.vexp"_s} << true;
    QTest::newRow("an empty argument") << QStringList{QString()} << true;
}

void TestCommandLine::theFirstArgumentIsTheProjectUnlessItLooksLikeALongOption()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const bool, hasProject);
    const CommandLine line(QStringList{u"program"_s} + arguments);
    QCOMPARE(line.project().has_value(), hasProject);
    if (hasProject)
        QCOMPARE(*line.project(), arguments.first());
}

void TestCommandLine::optionsAreWholeArgumentsAndCaseSensitive()
{
    const CommandLine line({u"program"_s, u"p.vexp"_s, u"-G"_s, u"-hiddenx"_s, u"-s"_s, u" -now"_s});
    QVERIFY(line.contains("-s"_L1));
    QVERIFY(!line.contains("-g"_L1));
    QVERIFY(!line.contains("-hidden"_L1));
    QVERIFY(!line.contains("-now"_L1));
    QCOMPARE(line.arguments().size(), 6);
}

void TestCommandLine::aValueIsTheArgumentBehindTheFirstOccurrence_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("value");
    QTest::newRow("absent") << QStringList{u"a"_s} << QString();
    QTest::newRow("last argument") << QStringList{u"p"_s, u"-j"_s} << QString();
    QTest::newRow("empty") << QStringList{u"p"_s, u"-j"_s, u""_s, u"x"_s} << QString();
    QTest::newRow("ordinary") << QStringList{u"p"_s, u"-j"_s, u"b c"_s, u"-g"_s} << u"b c"_s;
    QTest::newRow("first of two") << QStringList{u"-j"_s, u"one"_s, u"-j"_s, u"two"_s} << u"one"_s;
    QTest::newRow("an option as value") << QStringList{u"p"_s, u"-j"_s, u"-s"_s} << u"-s"_s;
    QTest::newRow("the option as its own value") << QStringList{u"-j"_s, u"-j"_s, u"z"_s} << u"-j"_s;
}

void TestCommandLine::aValueIsTheArgumentBehindTheFirstOccurrence()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, value);
    QCOMPARE(CommandLine(QStringList{u"program"_s} + arguments).value("-j"_L1), value);
}

void TestCommandLine::aRelativeFileMeansTheLaunchFolderWhenItIsThere()
{
    const QString former = QDir::currentPath();
    const QTemporaryDir launch;
    const QTemporaryDir project;
    for (const QTemporaryDir *folder : {&launch, &project}) {
        QFile file(folder->filePath(u"data.csv"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QVERIFY(QDir::setCurrent(launch.path()));
    const CommandLine line({u"program"_s, u"p"_s, u"-i"_s, u"data.csv"_s});
    QVERIFY(QDir::setCurrent(project.path()));
    QCOMPARE(QFileInfo(line.file("-i"_L1)).canonicalFilePath(),
             QFileInfo(launch.filePath(u"data.csv"_s)).canonicalFilePath());
    QVERIFY(QDir::setCurrent(former));
}

void TestCommandLine::aRelativeFileThatIsNotThereStaysAsItWasGiven()
{
    const CommandLine line({u"program"_s, u"p"_s, u"-i"_s, u"no/such.csv"_s, u"-j"_s, u"/no/such.vexp"_s});
    QCOMPARE(line.file("-i"_L1), u"no/such.csv"_s);
    QCOMPARE(line.file("-j"_L1), u"/no/such.vexp"_s);
    QCOMPARE(line.file("-dbmod"_L1), QString());
}

void TestCommandLine::thePlatformDependsOnDisplayAndHiddenRun_data()
{
    QTest::addColumn<QByteArray>("argument");
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<bool>("offscreen");
    QTest::addColumn<bool>("lacksDisplay");
    const auto row = [](const char *name, const char *argument, const char *variable, bool offscreen,
                        bool lacks) {
        QTest::newRow(name) << QByteArray(argument) << QByteArray(variable) << offscreen << lacks;
    };
    row("hidden, nothing set", "-hidden", "", true, false);
    row("shown, nothing set", "-now", "", false, true);
    row("option in capitals", "-HIDDEN", "", false, true);
    row("hidden, X display", "-hidden", "DISPLAY", false, false);
    row("hidden, Wayland display", "-hidden", "WAYLAND_DISPLAY", false, false);
    row("hidden, platform chosen", "-hidden", "QT_QPA_PLATFORM", false, false);
    row("shown, X display", "-now", "DISPLAY", false, false);
    row("shown, Wayland display", "-now", "WAYLAND_DISPLAY", false, false);
    row("shown, platform chosen", "-now", "QT_QPA_PLATFORM", false, false);
    row("platform option", "-platform", "", false, false);
    row("platform option, two dashes", "--platform", "", false, false);
    row("display option", "-display", "", false, false);
}

void TestCommandLine::thePlatformDependsOnDisplayAndHiddenRun()
{
    QFETCH(const QByteArray, argument);
    QFETCH(const QByteArray, variable);
    QFETCH(const bool, offscreen);
    QFETCH(const bool, lacksDisplay);
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        qunsetenv(name);
    if (!variable.isEmpty())
        qputenv(variable.constData(), "some");
    const char *const argv[]{"program", "p.vexp", argument.constData()};
    QCOMPARE(CommandLine::needsOffscreenPlatform(3, argv), offscreen);
    QCOMPARE(CommandLine::lacksDisplay(3, argv), lacksDisplay);
}

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_commandline.moc"
