#include "DefineDesk.h"
#include "generators/canopen/UserSection.h"

#include <QStringEncoder>

#include <csignal>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *notice = "/* do not modify comments starting with 'user-specific section:' */\n";
constexpr const char *start = "/* user-specific section: start */\n";
constexpr const char *end = "/* user-specific section: end */\n";
constexpr const char *fileEnd = "\n#endif /* GEN_DEFINE_H */\n";

/** What a file with this section ends with. */
QByteArray tail(const QByteArray &section)
{
    return notice + QByteArray(start) + section + end + fileEnd;
}

/** The section of a file, between its first start mark and its last end mark. */
QByteArray sectionOf(const QByteArray &file)
{
    const qsizetype from = file.indexOf(start) + qsizetype(qstrlen(start));
    const qsizetype to = file.lastIndexOf(end);
    return from <= to ? file.sliced(from, to - from) : QByteArray("<no section>");
}

/** Keeps this process from writing files beyond a size, as a full disk would. */
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_formerHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_former);
        rlimit limit = m_former;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_formerHandler);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit m_former{};
    void (*m_formerHandler)(int) = nullptr;
};

} // namespace

/** The part of gen_define.h that belongs to the user. */
class TestGenDefineUserSection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void withoutAFormerFileTheSectionIsEmpty();
    void aSectionSurvivesByteForByte_data();
    void aSectionSurvivesByteForByte();
    void aSectionIsTheSameAfterManyRuns();
    void anOpenLastLineGetsItsEnd();
    void damagedMarksLoseNothing_data();
    void damagedMarksLoseNothing();
    void anUnknownBeginningStopsTheRun();
    void otherLineEndsOfTheMarksAreUnderstood_data();
    void otherLineEndsOfTheMarksAreUnderstood();
    void wideEncodingsBecomeUtf8_data();
    void wideEncodingsBecomeUtf8();
    void aFormerFileThatCannotBeReadStays_data();
    void aFormerFileThatCannotBeReadStays();
    void aFullDiskLeavesTheFormerFile();
    void aWriteProtectedFileStays();
    void marksInTheProjectsTextsAreNone();
    void theSectionIsToldToTheRun_data();
    void theSectionIsToldToTheRun();
    void theSectionOfAnotherEncodingIsReadable();
};

void TestGenDefineUserSection::withoutAFormerFileTheSectionIsEmpty()
{
    DefineDesk desk;
    const QByteArray file = desk.generate();
    QVERIFY2(file.endsWith(tail({})), file.constData());
    desk.write("#define BY_HAND 1\n");
    QCOMPARE(desk.generate(), file);
}

void TestGenDefineUserSection::aSectionSurvivesByteForByte_data()
{
    QTest::addColumn<QByteArray>("section");
    QTest::newRow("one line") << QByteArray("#define MY_VALUE 1\n");
    QTest::newRow("blanks and empty lines") << QByteArray("\n\n  #define A\t1  \n\n\n#define B 2\n\n");
    QTest::newRow("an empty line") << QByteArray("\n");
    QTest::newRow("CR LF") << QByteArray("#define A 1\r\n#define B 2\r\n");
    QTest::newRow("CR") << QByteArray("#define A 1\r#define B 2\r");
    QTest::newRow("all line ends mixed") << QByteArray("a\r\nb\nc\rd\r\r\n\n\re\n");
    QTest::newRow("UTF-8") << QByteArray("/* Gr\xc3\xb6\xc3\x9f"
                                         "e \xf0\x9f\x9a\x80 */\n");
    QTest::newRow("Windows-1252") << QByteArray("/* Gr\xf6\xdf"
                                                "e \x80 */\n");
    QTest::newRow("code page 850") << QByteArray("/* Sch\x94naich */\n");
    QTest::newRow("Shift JIS") << QByteArray("/* \x83\x82\x81\x5b\x83\x5e\n */\n");
    QTest::newRow("no text at all") << QByteArray("\x00\x01\xff\xfe\x00\n", 6);
    QTest::newRow("a tail like the file's") << QByteArray("#endif\n\n#endif /* GEN_DEFINE_H */\n");
    QTest::newRow("long") << QByteArray("#define X 1\n").repeated(100000);
}

void TestGenDefineUserSection::aSectionSurvivesByteForByte()
{
    QFETCH(QByteArray, section);
    DefineDesk desk;
    desk.write("old text\n" + tail(section));
    const QByteArray file = desk.generate();
    QVERIFY(file.endsWith(tail(section)));
    QCOMPARE(sectionOf(file), section);
    QVERIFY(!file.contains("old text"));
    QCOMPARE(desk.generate(), file);
    QVERIFY(desk.generate(false).endsWith(tail(section)));
}

void TestGenDefineUserSection::aSectionIsTheSameAfterManyRuns()
{
    DefineDesk desk;
    desk.write(tail("\n#define A 1\n\n"));
    const QByteArray first = desk.generate();
    for (int run = 0; run < 5; ++run)
        QCOMPARE(desk.generate(), first);
}

void TestGenDefineUserSection::anOpenLastLineGetsItsEnd()
{
    DefineDesk desk;
    desk.write(start + QByteArray("#define A 1 /* user-specific section: end */"));
    QVERIFY(desk.generate().endsWith(tail("#define A 1 \n")));
    desk.write(start + QByteArray("#define A 1"));
    QVERIFY(desk.generate().endsWith(tail("#define A 1\n")));
}

void TestGenDefineUserSection::damagedMarksLoseNothing_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("section");
    const QByteArray a = "#define A 1\n";
    const QByteArray b = "#define B 2\n";
    QTest::newRow("two ends") << start + a + end + b + end + fileEnd << a + end + b;
    QTest::newRow("two starts") << start + a + start + b + end + fileEnd << a + start + b;
    QTest::newRow("two sections") << start + a + end + start + b + end + fileEnd << a + end + start + b;
    QTest::newRow("no end") << notice + (start + a) + fileEnd << a;
    QTest::newRow("no end, CR LF") << QByteArray(start + a + fileEnd).replace("\n", "\r\n")
                                   << QByteArray("#define A 1\r\n");
    QTest::newRow("no end, nothing in it") << QByteArray(start) + fileEnd << QByteArray();
    QTest::newRow("no end, an empty line in it") << QByteArray(start) + "\n" + fileEnd << QByteArray("\n");
    QTest::newRow("no end and no end of the file") << start + a + b << a + b;
    QTest::newRow("no end and another end of the file") << start + a + "#endif\n"
                                                        << QByteArray(a + "#endif\n");
    QTest::newRow("no end but an earlier one") << end + (start + a) + fileEnd << a;
    QTest::newRow("no start behind the notice") << notice + a + end + fileEnd << a;
    QTest::newRow("indented marks") << "  " + (start + a) + "\t" + end + fileEnd << a;
    QTest::newRow("blanks behind the marks")
        << QByteArray("/* user-specific section: start */ \t\n") + a + "/* user-specific section: end */  \n"
        << a;
    QTest::newRow("text behind the start mark")
        << QByteArray("/* user-specific section: start */#define Z 0\n") + a + end
        << QByteArray("#define Z 0\n" + a);
    QTest::newRow("indented text behind the start mark")
        << QByteArray("/* user-specific section: start */ #define Z 0\n") + a + end
        << QByteArray(" #define Z 0\n" + a);
    QTest::newRow("no end, and an end of the file inside") << start + a + "#endif /* GEN_DEFINE_H */\n" + b
            + fileEnd << QByteArray(a + "#endif /* GEN_DEFINE_H */\n" + b);
    QTest::newRow("text before the end mark") << start + a + "#define Z 0/* user-specific section: end */\n"
                                              << QByteArray(a + "#define Z 0\n");
    QTest::newRow("both marks on one line")
        << QByteArray("/* user-specific section: start *//* user-specific section: end */\n") << QByteArray();
    QTest::newRow("only the start mark") << QByteArray("/* user-specific section: start */") << QByteArray();
}

void TestGenDefineUserSection::damagedMarksLoseNothing()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, section);
    DefineDesk desk;
    desk.write(file);
    const QByteArray generated = desk.generate();
    QVERIFY2(generated.endsWith(tail(section)), generated.constData());
    QCOMPARE(desk.generate(), generated);
}

void TestGenDefineUserSection::anUnknownBeginningStopsTheRun()
{
    DefineDesk desk;
    const QByteArray file = "#ifndef GEN_DEFINE_H\n#define A 1\n" + QByteArray(end) + fileEnd;
    desk.write(file);
    QCOMPARE(
        desk.generate(),
        QByteArray("failed: The line \"/* user-specific section: start */\" is missing, so it is unknown "
                   "where the user-specific section begins"));
    QCOMPARE(desk.read(), file);
}

void TestGenDefineUserSection::otherLineEndsOfTheMarksAreUnderstood_data()
{
    QTest::addColumn<QByteArray>("lineEnd");
    QTest::newRow("CR LF") << QByteArray("\r\n");
    QTest::newRow("CR") << QByteArray("\r");
}

// The end of a run gives the file the line ends that the user has chosen.
void TestGenDefineUserSection::otherLineEndsOfTheMarksAreUnderstood()
{
    QFETCH(QByteArray, lineEnd);
    DefineDesk desk;
    desk.write(tail("#define A 1\n\n#define B 2\n"));
    const QByteArray first = desk.generate();
    desk.write(QByteArray(first).replace("\n", lineEnd));
    const QByteArray second = desk.generate();
    QCOMPARE(sectionOf(second), "#define A 1" + lineEnd + lineEnd + "#define B 2" + lineEnd);
    QCOMPARE(second.size() - sectionOf(second).size(), first.size() - sectionOf(first).size());
}

void TestGenDefineUserSection::wideEncodingsBecomeUtf8_data()
{
    QTest::addColumn<int>("encoding");
    QTest::addColumn<bool>("hasMark");
    const auto rows = [](const char *name, QStringConverter::Encoding encoding) {
        QTest::addRow("%s", name) << int(encoding) << false;
        QTest::addRow("%s with byte order mark", name) << int(encoding) << true;
    };
    rows("UTF-16 LE", QStringConverter::Utf16LE);
    rows("UTF-16 BE", QStringConverter::Utf16BE);
    rows("UTF-32 LE", QStringConverter::Utf32LE);
}

void TestGenDefineUserSection::wideEncodingsBecomeUtf8()
{
    QFETCH(int, encoding);
    QFETCH(bool, hasMark);
    const QString section = u"/* Größe 🚀 */\n#define A 1\n"_s;
    QStringEncoder encoder(QStringConverter::Encoding(encoding),
                           hasMark ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default);
    const QByteArray file = encoder(u"/*\n * old\n */\n"_s + QString::fromUtf8(tail(section.toUtf8())));
    DefineDesk desk;
    desk.write(file);
    QCOMPARE(sectionOf(desk.generate()), section.toUtf8());
}

void TestGenDefineUserSection::aFormerFileThatCannotBeReadStays_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("a folder") << u"/tmp"_s;
    QTest::newRow("a file whose content cannot be read") << u"/proc/self/mem"_s;
}

void TestGenDefineUserSection::aFormerFileThatCannotBeReadStays()
{
    QFETCH(QString, target);
    DefineDesk desk;
    QVERIFY(QFile::link(target, desk.path()));
    const auto generator = desk.generator();
    const QString error = DefineDesk::run(*generator);
    QVERIFY2(error.startsWith(u"The file gen_define.h in "_s + desk.folder.path()
                              + u" cannot be read, so its user-specific section would be lost ("_s),
             qPrintable(error));
    QVERIFY(generator->isFailed());
    QCOMPARE(QFile::symLinkTarget(desk.path()), target);
    QCOMPARE(QDir(desk.folder.path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot),
             QStringList{u"gen_define.h"_s});
}

void TestGenDefineUserSection::aFullDiskLeavesTheFormerFile()
{
    DefineDesk desk;
    const QByteArray file = tail("#define A 1\n");
    desk.write(file);
    const auto generator = desk.generator();
    QString error;
    {
        const FileSizeLimit limit(100);
        error = DefineDesk::run(*generator);
    }
    QVERIFY2(error.contains(u"gen_define.h cannot be written"_s), qPrintable(error));
    QCOMPARE(desk.read(), file);
    QCOMPARE(QDir(desk.folder.path()).entryList(QDir::Files), QStringList{u"gen_define.h"_s});
    QVERIFY(desk.generate().endsWith(file));
}

void TestGenDefineUserSection::aWriteProtectedFileStays()
{
    DefineDesk desk;
    const QByteArray file = tail("#define A 1\n");
    desk.write(file);
    QVERIFY(QFile::setPermissions(desk.path(), QFileDevice::ReadOwner));
    const auto generator = desk.generator();
    if (generator->isOutputWritable())
        QSKIP("this user may write any file");
    QCOMPARE(DefineDesk::run(*generator),
             u"The file gen_define.h in %1 is not writable"_s.arg(desk.folder.path()));
    QCOMPARE(desk.read(), file);
}

void TestGenDefineUserSection::marksInTheProjectsTextsAreNone()
{
    DefineDesk desk;
    desk.set(u"user_defines"_s, QString::fromLatin1(tail("#define FROM_PROJECT 1\n")));
    desk.set(u"hw_defines"_s, QString::fromLatin1(start + QByteArray("#define FROM_TARGET 1\n") + end));
    desk.write(tail("#define A 1\n"));
    const QByteArray file = desk.generate();
    QVERIFY(file.endsWith(tail("#define A 1\n")));
    QCOMPARE(file.count(start), 1);
    QCOMPARE(file.count(end), 1);
    QVERIFY(file.contains("#define FROM_PROJECT 1\n") && file.contains("#define FROM_TARGET 1\n"));
    QCOMPARE(desk.generate(), file);
}

void TestGenDefineUserSection::theSectionIsToldToTheRun_data()
{
    QTest::addColumn<bool>("v4");
    QTest::newRow("V4") << true;
    QTest::newRow("older") << false;
}

void TestGenDefineUserSection::theSectionIsToldToTheRun()
{
    QFETCH(bool, v4);
    DefineDesk desk;
    desk.write(tail("\n#define A 1\n"));
    const auto generator = desk.generator(v4);
    QCOMPARE(DefineDesk::run(*generator), QString());
    const auto *const keeper = dynamic_cast<const UserSectionKeeper *>(generator.get());
    QVERIFY(keeper);
    QCOMPARE(keeper->userSection(), u"\n#define A 1\n"_s);
}

void TestGenDefineUserSection::theSectionOfAnotherEncodingIsReadable()
{
    QString reason;
    const auto section = UserSection::parse(tail("/* Gr\xf6\xdf"
                                                 "e */\n"),
                                            &reason);
    QVERIFY(section);
    QCOMPARE(section->text(), u"/* Größe */\n"_s);
}

QTEST_GUILESS_MAIN(TestGenDefineUserSection)
#include "tst_gendefineusersection.moc"
