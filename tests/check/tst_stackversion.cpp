#include "check/CheckTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace CheckTest;
using namespace CheckTest::Texts;

/** Whether the generated code fits to the installed protocol stack. */
class TestStackVersion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void init();
    void cleanup() { QCoreApplication::setApplicationVersion("4.3.2"); }
    void withoutAPathOrFileThereIsNoErrorButAnInformation_data();
    void withoutAPathOrFileThereIsNoErrorButAnInformation();
    void theStackWantsThisVersion_data();
    void theStackWantsThisVersion();
    void theFirstFileThatDiffersIsTold_data();
    void theFirstFileThatDiffersIsTold();
    void theVersionOfTheToolIsCutToTwoNumbers_data();
    void theVersionOfTheToolIsCutToTwoNumbers();
    void relativePathsStartAtTheProject_data();
    void relativePathsStartAtTheProject();

private:
    void write(const QString &name, const QString &content) const;
    static QString element(const QString &version)
    {
        return "<?xml version=\"1.0\"?>\n<featureinfo>\n<stack>CANopen</stack>\n<required_tool_version>"
            + version + "</required_tool_version>\n</featureinfo>\n";
    }
    static QString wrongVersion(const QString &required, const QString &present = "4.3")
    {
        return QStringLiteral("<strong><font color='red'>Error: </font></strong>Version of installed stack "
                              "does not fit. It requires tool version %1. Cannot generate files. This is "
                              "version %2.")
            .arg(required, present);
    }
    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

const QString olderTool =
    "Version of installed stack does not fit. It requires an older version of the tool. "
    "Cannot generate files."_red;
QStringList noPath()
{
    return {"Info: Path to protocol stack not specified. Cannot check if generated code fits to installed "
            "stack/framework.",
            "Specify path to protocol stack at Options -> Settings."};
}

QString noFile(const QString &folder)
{
    return QStringLiteral("Info: No *_featureinfo_*.xml file found in protocol stack folder %1. Cannot check "
                          "if generated code fits to installed stack/framework.")
        .arg(folder);
}

} // namespace

void TestStackVersion::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void TestStackVersion::write(const QString &name, const QString &content) const
{
    QFile file(m_folder->filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(content.toUtf8()) >= 0);
}

void TestStackVersion::withoutAPathOrFileThereIsNoErrorButAnInformation_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("other name") << "featureinfo.xml" << false;
    QTest::newRow("other suffix") << "co_featureinfo_1.txt" << false;
    QTest::newRow("nothing before") << "_featureinfo_.xml" << true;
    QTest::newRow("long name") << "canopen_ml_featureinfo_4_3.xml" << true;
}

void TestStackVersion::withoutAPathOrFileThereIsNoErrorButAnInformation()
{
    QFETCH(QString, file);
    QFETCH(bool, isFound);
    Project project;
    project.setMisc("costackpath", "");
    compare(Checker().checkCANopen(project), noPath());
    project.setMisc("costackpath", m_folder->path());
    compare(Checker().checkCANopen(project), {noFile(m_folder->path())});
    write(file, element("4.3"));
    compare(Checker().checkCANopen(project), isFound ? QStringList() : QStringList{noFile(m_folder->path())});
    project.setMisc("costackpath", "/nowhere/at/all");
    compare(Checker().checkCANopen(project), {noFile("/nowhere/at/all")});
}

void TestStackVersion::theStackWantsThisVersion_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("same") << element("4.3") << QStringList();
    QTest::newRow("blanks around") << element(" \n 4.3\t") << QStringList();
    QTest::newRow("attribute") << QString("<featureinfo required_tool_version=\"4.3\"/>") << QStringList();
    QTest::newRow("attribute with blanks")
        << QString("<featureinfo required_tool_version=\" 4.3 \"/>") << QStringList();
    QTest::newRow("other attribute") << QString("<featureinfo required_tool_version=\"4.4\"/>")
                                     << QStringList{wrongVersion("4.4")};
    QTest::newRow("older") << element("4.2") << QStringList{wrongVersion("4.2")};
    QTest::newRow("newer") << element("5.0") << QStringList{wrongVersion("5.0")};
    QTest::newRow("equal as number, not as text") << element("4.30") << QStringList{wrongVersion("4.30")};
    QTest::newRow("three numbers") << element("4.3.2") << QStringList{wrongVersion("4.3.2")};
    QTest::newRow("0.0") << element("0.0") << QStringList{olderTool};
    QTest::newRow("0.0 with blanks") << element(" 0.0 ") << QStringList{olderTool};
    QTest::newRow("0.0.0") << element("0.0.0") << QStringList{wrongVersion("0.0.0")};
}

void TestStackVersion::theStackWantsThisVersion()
{
    QFETCH(QString, content);
    QFETCH(QStringList, messages);
    Project project;
    write("co_featureinfo_1.xml", content);
    project.setMisc("costackpath", m_folder->path());
    compare(Checker().checkCANopen(project), messages);
}

void TestStackVersion::theFirstFileThatDiffersIsTold_data()
{
    QTest::addColumn<QStringList>("versions");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("both fit") << QStringList{"4.3", "4.3"} << QStringList();
    QTest::newRow("second differs") << QStringList{"4.3", "4.2"} << QStringList{wrongVersion("4.2")};
    QTest::newRow("both differ") << QStringList{"4.1", "4.2"} << QStringList{wrongVersion("4.1")};
    QTest::newRow("first is older") << QStringList{"0.0", "4.2"} << QStringList{olderTool};
}

void TestStackVersion::theFirstFileThatDiffersIsTold()
{
    QFETCH(QStringList, versions);
    QFETCH(QStringList, messages);
    Project project;
    for (int i = 0; i < versions.size(); ++i)
        write(QStringLiteral("co_featureinfo_%1.xml").arg(i), element(versions.at(i)));
    project.setMisc("costackpath", m_folder->path());
    compare(Checker().checkCANopen(project), messages);
}

void TestStackVersion::theVersionOfTheToolIsCutToTwoNumbers_data()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QString>("cut");
    QTest::newRow("three numbers") << "4.3.2"
                                   << "4.3";
    QTest::newRow("three long numbers") << "14.13.12"
                                        << "14.13";
    QTest::newRow("two numbers") << "4.3"
                                 << "4.3";
    QTest::newRow("four numbers") << "4.3.2.1"
                                  << "4.3";
    QTest::newRow("four numbers, long build") << "4.3.2.1234"
                                              << "4.3";
    QTest::newRow("four numbers, long third: two characters are cut") << "4.3.12.1"
                                                                      << "4.3.";
    QTest::newRow("five numbers") << "4.3.2.1.0"
                                  << "4.3.2.1.0";
}

void TestStackVersion::theVersionOfTheToolIsCutToTwoNumbers()
{
    QFETCH(QString, tool);
    QFETCH(QString, cut);
    QCoreApplication::setApplicationVersion(tool);
    Project project;
    project.setMisc("costackpath", m_folder->path());
    write("co_featureinfo_1.xml", element("9.9"));
    compare(Checker().checkCANopen(project), {wrongVersion("9.9", cut)});
    write("co_featureinfo_1.xml", element(cut));
    compare(Checker().checkCANopen(project), {});
}

void TestStackVersion::relativePathsStartAtTheProject_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("folder") << "stack" << QStringList();
    QTest::newRow("way round") << "./other/../stack/" << QStringList();
    QTest::newRow("folder without file") << "other" << QStringList{noFile("<project>/other")};
    QTest::newRow("way round without file") << "stack/../other" << QStringList{noFile("<project>/other")};
    QTest::newRow("no such folder has no path") << "nowhere" << noPath();
}

void TestStackVersion::relativePathsStartAtTheProject()
{
    QFETCH(QString, path);
    QFETCH(QStringList, messages);
    for (const char *name : {"stack", "other"})
        QVERIFY(QDir(m_folder->path()).mkdir(name));
    write("stack/co_featureinfo_1.xml", element("4.3"));
    messages.replaceInStrings("<project>", QDir(m_folder->path()).canonicalPath());
    Project project;
    project.setMisc("costackpath", path);
    Checker checker;
    compare(checker.checkProject(project, m_folder->path()), {});
    compare(checker.checkCANopen(project), messages);
}

QTEST_GUILESS_MAIN(TestStackVersion)
#include "tst_stackversion.moc"
