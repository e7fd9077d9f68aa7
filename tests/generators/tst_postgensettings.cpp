#include "generators/PostGenCommand.h"
#include "generators/PostGenDesk.h"

using namespace StoreTest;
using namespace Qt::StringLiterals;

/** What project and user ask of the steps behind a generation: the command and the line endings. */
class TestPostGenSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }

    void theCommandIsReadFromProjectAndUser_data();
    void theCommandIsReadFromProjectAndUser();
    void signsInTheArgumentsAreFilled_data();
    void signsInTheArgumentsAreFilled();
    void aBlankInTheFolderSplitsLikeAnyOther();
    void lineEndingsFollowTheUsersSetting_data();
    void lineEndingsFollowTheUsersSetting();
    void onlyTheFilesOfTheListAreConverted();
};

void TestPostGenSettings::theCommandIsReadFromProjectAndUser_data()
{
    QTest::addColumn<QString>("projectEnabled");
    QTest::addColumn<bool>("userEnabled");
    QTest::addColumn<QString>("program");
    QTest::addColumn<bool>("wait");
    QTest::newRow("the project first") << u"1"_s << true << u"own"_s << false;
    QTest::newRow("the project alone") << u"true"_s << false << u"own"_s << false;
    QTest::newRow("the user's") << u"0"_s << true << u"global"_s << true;
    QTest::newRow("the user's, the project never asked") << QString() << true << u"global"_s << true;
    QTest::newRow("none") << u"false"_s << false << QString() << false;
}

void TestPostGenSettings::theCommandIsReadFromProjectAndUser()
{
    QFETCH(QString, projectEnabled);
    QFETCH(bool, userEnabled);
    PostGenDesk desk;
    desk.command(u"own"_s, u"a"_s, false);
    desk.setMisc(u"postGenEnabled"_s, projectEnabled);
    RunDesk::setUser(u"General/postGenEnabled"_s, userEnabled);
    RunDesk::setUser(u"General/postgenerationcommand"_s, u"global"_s);
    RunDesk::setUser(u"General/postgenerationcommandarguments"_s, u"b"_s);
    RunDesk::setUser(u"General/waitPostGen"_s, true);
    const PostGenCommand command = PostGenCommand::read(*desk.store, u"/out"_s, u"project"_s);
    QTEST(command.program, "program");
    QTEST(command.wait, "wait");
    QCOMPARE(command.arguments.join(u' '),
             command.program == u"own"          ? u"a"_s
                 : command.program == u"global" ? u"b"_s
                                                : QString());
}

void TestPostGenSettings::signsInTheArgumentsAreFilled_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("project file") << u"%P"_s << QStringList{u"/out/project.vexp"_s};
    QTest::newRow("folder") << u"%D"_s << QStringList{u"/out"_s};
    QTest::newRow("name") << u"%N"_s << QStringList{u"project.vexp"_s};
    QTest::newRow("several") << u"-p %P -d=%D/x %N%N"_s
                             << QStringList{u"-p"_s, u"/out/project.vexp"_s, u"-d=/out/x"_s,
                                            u"project.vexpproject.vexp"_s};
    QTest::newRow("the letter case counts") << u"%p %d %n"_s << QStringList{u"%p"_s, u"%d"_s, u"%n"_s};
    QTest::newRow("other signs stay")
        << u"100% %% %x %"_s << QStringList{u"100%"_s, u"%%"_s, u"%x"_s, u"%"_s};
    QTest::newRow("two blanks hold an empty argument")
        << u"a  b "_s << QStringList{u"a"_s, u""_s, u"b"_s, u""_s};
    QTest::newRow("none") << QString() << QStringList();
}

void TestPostGenSettings::signsInTheArgumentsAreFilled()
{
    QFETCH(QString, arguments);
    PostGenDesk desk;
    desk.command(u"own"_s, arguments, false);
    QTEST(PostGenCommand::read(*desk.store, u"/out"_s, u"project"_s).arguments, "expected");
}

void TestPostGenSettings::aBlankInTheFolderSplitsLikeAnyOther()
{
    PostGenDesk desk;
    desk.command(u"own"_s, u"-d %D -e"_s, false);
    QCOMPARE(PostGenCommand::read(*desk.store, u"/my out"_s, u"project"_s).arguments,
             QStringList({u"-d"_s, u"/my"_s, u"out"_s, u"-e"_s}));
}

void TestPostGenSettings::lineEndingsFollowTheUsersSetting_data()
{
    QTest::addColumn<QVariant>("index");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray mixed("a\r\nb\nc\r");
    QTest::newRow("never set") << QVariant() << mixed;
    QTest::newRow("native") << QVariant(0) << mixed;
    QTest::newRow("Windows") << QVariant(1) << QByteArray("a\r\nb\r\nc\r\n");
    QTest::newRow("Linux") << QVariant(2) << QByteArray("a\nb\nc\n");
    QTest::newRow("other") << QVariant(3) << QByteArray("a\rb\rc\r");
    QTest::newRow("above the known ones") << QVariant(4) << mixed;
    QTest::newRow("negative") << QVariant(-1) << mixed;
    QTest::newRow("no number") << QVariant(u"x"_s) << mixed;
}

void TestPostGenSettings::lineEndingsFollowTheUsersSetting()
{
    QFETCH(QVariant, index);
    PostGenDesk desk;
    if (index.isValid())
        RunDesk::setUser(u"General/line_ending_index"_s, index);
    desk.write(u"gen_define.h"_s, "a\r\nb\nc\r");
    desk.processor.start();
    QTEST(desk.read(u"gen_define.h"_s), "expected");
}

void TestPostGenSettings::onlyTheFilesOfTheListAreConverted()
{
    PostGenDesk desk;
    RunDesk::setUser(u"General/line_ending_index"_s, 1);
    const QStringList converted{u"gen_define.h"_s,      u"gen_indication.h"_s,     u"gen_indices.h"_s,
                                u"gen_extern_decl.h"_s, u"gen_var_decl.h"_s,       u"gen_srdo.c"_s,
                                u"gen_sdg.c"_s,         u"gen_objdict.c"_s,        u"gen_pgn.c"_s,
                                u"gen_define.props"_s,  u"Directory.Build.props"_s};
    const QStringList kept{u"gen_mp.c"_s,        u"gen_vobjdict.c"_s, u"gen_var_decl.c"_s, u"gen_user.h"_s,
                           u"project_doc.txt"_s, u"project.eds"_s,    u"project.html"_s};
    for (const QString &file : converted + kept)
        desk.write(file, "a\n");
    desk.processor.start();
    for (const QString &file : converted)
        QCOMPARE(desk.read(file), QByteArray("a\r\n"));
    for (const QString &file : kept)
        QCOMPARE(desk.read(file), QByteArray("a\n"));
    QCOMPARE(QDir(desk.folder.path()).entryList(QDir::Files | QDir::Hidden).size(),
             converted.size() + kept.size());
}

QTEST_GUILESS_MAIN(TestPostGenSettings)
#include "tst_postgensettings.moc"
