#include "importers/ImporterTest.h"
#include "store/commands/ImportCommands.h"

using namespace Qt::StringLiterals;
using Action = ImportHandler::actionSetting;

/** The text of import command files. */
class TestImportCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commandsAreUnderstood_data();
    void commandsAreUnderstood();
    void whatIsNoCommandIsDropped_data();
    void whatIsNoCommandIsDropped();
    void theProjectIsFoundByItsNumber();
    void actionsComeInTheOrderOfTheirSortedKeys();
    void pathsMayHoldBlanksCommasAndBackslashes_data();
    void pathsMayHoldBlanksCommasAndBackslashes();
    void optionsAreReadIfPresent_data();
    void optionsAreReadIfPresent();

private:
    ImportCommands::CommandFile read(const QByteArray &content) const;

    QTemporaryDir m_folder;
};

ImportCommands::CommandFile TestImportCommands::read(const QByteArray &content) const
{
    static int number = 0;
    const QString path = m_folder.filePath(u"commands%1.ini"_s.arg(++number));
    return ImporterTest::write(path, content) ? ImportCommands::read(path) : ImportCommands::CommandFile();
}

void TestImportCommands::commandsAreUnderstood_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("fields"); // type, source line, from, to, target line, offset
    using Fields = QList<int>;
    QTest::newRow("delete one") << u"delete 0:0x2000"_s << Fields{0, 0, 0x2000, 0x2000, 0, 0};
    QTest::newRow("delete range") << u"delete 3:0x2000-0x20ff"_s << Fields{0, 3, 0x2000, 0x20FF, 0, 0};
    QTest::newRow("delete with more words") << u"delete 3:1-2 and so on"_s << Fields{0, 3, 1, 2, 0, 0};
    QTest::newRow("reversed range") << u"delete 3:2-1"_s << Fields{0, 3, 2, 1, 0, 0};
    QTest::newRow("all indices") << u"delete 0:0-65535"_s << Fields{0, 0, 0, 65535, 0, 0};
    QTest::newRow("import") << u"import 1:2 to 3"_s << Fields{1, 2, 0, 0, 3, 0};
    QTest::newRow("import with offset") << u"import 1:2 to 3 offset 0x100"_s << Fields{1, 2, 0, 0, 3, 0x100};
    QTest::newRow("copy") << u"copy 0:0x6000-0x67FF to 1"_s << Fields{2, 0, 0x6000, 0x67FF, 1, 0};
    QTest::newRow("copy with offset")
        << u"copy 0:0x6000-0x67FF to 1 offset 2048"_s << Fields{2, 0, 0x6000, 0x67FF, 1, 2048};
    QTest::newRow("copy one") << u"copy 0:0x6000 to 1"_s << Fields{2, 0, 0x6000, 0x6000, 1, 0};
    QTest::newRow("the word does not matter") << u"copy 0:1-2 into 1"_s << Fields{2, 0, 1, 2, 1, 0};
    QTest::newRow("another fifth word") << u"copy 0:1-2 to 1 with 7"_s << Fields{2, 0, 1, 2, 1, 0};
    QTest::newRow("offset without number") << u"copy 0:1-2 to 1 offset"_s << Fields{2, 0, 1, 2, 1, 0};
    QTest::newRow("words behind the offset")
        << u"copy 0:1-2 to 1 offset 3 or 4"_s << Fields{2, 0, 1, 2, 1, 3};
    QTest::newRow("letter case") << u"COPY 0X1:0XA-0xB TO 1 OFFSET 0XC"_s << Fields{2, 1, 10, 11, 1, 12};
    QTest::newRow("octal") << u"delete 0:010-011"_s << Fields{0, 0, 8, 9, 0, 0};
    QTest::newRow("blanks and tabs") << u"  delete \t 1:7  "_s << Fields{0, 1, 7, 7, 0, 0};
}

void TestImportCommands::commandsAreUnderstood()
{
    QFETCH(QString, text);
    const auto action = ImportCommands::parseAction(text, {});
    QVERIFY(action);
    const QList<int> fields{action->type, action->sourceLine, action->from,
                            action->to,   action->targetLine, action->offset};
    QTEST(fields, "fields");
    QCOMPARE(action->text, text);
}

void TestImportCommands::whatIsNoCommandIsDropped_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"",
                             "   ",
                             "delete",
                             "remove 0:1",
                             "deleted 0:1",
                             "delete 0",
                             "delete 0:",
                             "delete :1",
                             "delete 0:1:2",
                             "delete x:1",
                             "delete 0:1-",
                             "delete 0:-1",
                             "delete 0:1-2-3",
                             "delete 0:0x",
                             "delete 0:08",
                             "delete 0:0x10000",
                             "delete 0:1-65536",
                             "delete 256:1",
                             "delete 0:1,2",
                             "delete 0:99999999999999999999",
                             "delete 0: 1",
                             "import 1:0",
                             "import 1:0 to",
                             "import 1:0 to x",
                             "import 1 to 0",
                             "import 1:-1 to 0",
                             "import x:0 to 0",
                             "import 1:0 to 256",
                             "import 1:0 to 0 offset x",
                             "import 1:0 to 0 offset 65536",
                             "copy 0:1-2",
                             "copy 0:1-2 to",
                             "copy 0:1-2 1",
                             "copy 0:1-2 to 1 offset -1"})
        QTest::newRow(*text ? text : "empty") << QString::fromLatin1(text);
}

void TestImportCommands::whatIsNoCommandIsDropped()
{
    QFETCH(QString, text);
    QVERIFY(!ImportCommands::parseAction(text, {{1, u"project"_s}}));
}

void TestImportCommands::theProjectIsFoundByItsNumber()
{
    const ImportCommands::ProjectMap projects{{1, u"/a/One.vexp"_s}, {16, u"/a/Sixteen.vexp"_s}};
    const auto path = [&](const QString &text) {
        return ImportCommands::parseAction(text, projects)->projectPath;
    };
    QCOMPARE(path(u"import 1:0 to 0"_s), u"/a/One.vexp"_s);
    QCOMPARE(path(u"import 0x10:0 to 0"_s), u"/a/Sixteen.vexp"_s);
    QCOMPARE(path(u"import 2:0 to 0"_s), QString());
}

void TestImportCommands::actionsComeInTheOrderOfTheirSortedKeys()
{
    const auto file = read("[Projects]\n1=a.vexp\n[Actions]\nz=delete 0:1\n10=delete 0:2\n2=delete 0:3\n"
                           "x=nonsense\na=delete 0:4\n");
    QList<int> order;
    for (const Action &action : file.actions)
        order.append(action.from);
    QCOMPARE(order, (QList<int>{2, 3, 4, 1}));
}

void TestImportCommands::pathsMayHoldBlanksCommasAndBackslashes_data()
{
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<QString>("file"); // relative to the command file
    QTest::newRow("plain") << QByteArray("base.vexp") << u"base.vexp"_s;
    QTest::newRow("upper case") << QByteArray("Sub/Base.VEXP") << u"Sub/Base.VEXP"_s;
    QTest::newRow("blanks") << QByteArray("my sub folder/my base.vexp") << u"my sub folder/my base.vexp"_s;
    QTest::newRow("blanks in quotes")
        << QByteArray("\"my sub folder/my base.vexp\"") << u"my sub folder/my base.vexp"_s;
    QTest::newRow("comma") << QByteArray("a,b.vexp") << u"a,b.vexp"_s;
    QTest::newRow("comma in quotes") << QByteArray("\"a, b.vexp\"") << u"a, b.vexp"_s;
    QTest::newRow("single backslashes") << QByteArray("sub\\new\\base.vexp") << u"sub/new/base.vexp"_s;
    QTest::newRow("single backslashes in quotes")
        << QByteArray("\"sub\\test x\\base.vexp\"") << u"sub/test x/base.vexp"_s;
    QTest::newRow("double backslashes") << QByteArray("sub\\\\new\\\\base.vexp") << u"sub/new/base.vexp"_s;
    QTest::newRow("backslash in a name") << QByteArray("back\\\\slash.vexp") << u"back\\slash.vexp"_s;
    QTest::newRow("way up") << QByteArray("sub/../base.vexp") << u"base.vexp"_s;
    QTest::newRow("letters") << QByteArray("Gr\xC3\xB6\xC3\x9F"
                                           "e 100%.vexp")
                             << u"Größe 100%.vexp"_s;
}

void TestImportCommands::pathsMayHoldBlanksCommasAndBackslashes()
{
    QFETCH(QByteArray, written);
    QFETCH(QString, file);
    const QString path = m_folder.filePath(file);
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QVERIFY(QDir().mkpath(m_folder.filePath(u"sub"_s)));
    QVERIFY(ImporterTest::write(path, "project"));
    QCOMPARE(read("[Projects]\n7=" + written + "\n").projects, (ImportCommands::ProjectMap{{7, path}}));
    QCOMPARE(read("[Projects]\r\n7=" + m_folder.path().toUtf8() + "/" + QByteArray(written).replace("\"", "")
                  + "\r\n")
                 .projects.keys(),
             QList<uint>{7});
    QVERIFY(QFile::remove(path));
    // A project that is not there keeps a path, so that the action can fail by name.
    QVERIFY(!read("[Projects]\n7=" + written + "\n").projects.value(7).isEmpty());
}

void TestImportCommands::optionsAreReadIfPresent_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<bool>("deleteObjects");
    QTest::newRow("no section") << QByteArray() << false;
    QTest::newRow("empty section") << QByteArray("[Options]\n") << false;
    QTest::newRow("true") << QByteArray("[Options]\ndelete_objects=true\n") << true;
    QTest::newRow("1") << QByteArray("[Options]\ndelete_objects=1\n") << true;
    QTest::newRow("false") << QByteArray("[Options]\ndelete_objects=false\n") << false;
    QTest::newRow("0") << QByteArray("[Options]\ndelete_objects=0\n") << false;
}

void TestImportCommands::optionsAreReadIfPresent()
{
    QFETCH(QByteArray, options);
    const auto file = read("[Projects]\n1=a.vexp\nx=b.vexp\n-1=c.vexp\n" + options);
    QTEST(file.deleteObjects, "deleteObjects");
    QVERIFY(file.hasKeys);
    QCOMPARE(file.projects.keys(), QList<uint>{1});
}

QTEST_GUILESS_MAIN(TestImportCommands)
#include "tst_importcommands.moc"
