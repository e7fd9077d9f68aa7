#include "app/ExampleProjects.h"
#include "app/RecentProjects.h"
#include "app/UserSettings.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/** The lists of projects that the file menu offers. */
class TestRecentProjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void theNewestProjectStandsFirst();
    void aProjectOpenedAgainMovesToTheHead();
    void elevenProjectsLeaveTheTenNewest();
    void aFileThatIsGoneIsRememberedButNotListed();
    void theStoredTimesDecideNotTheStoredOrder();
    void theKeysOfAFormerLongerListAreGone();

    void examplesComeFromTheStacksFolders_data();
    void examplesComeFromTheStacksFolders();
    void withoutAStackThereAreNoExamples();

private:
    QString makeFile(const QString &name);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestRecentProjects::init()
{
    UserSettings().clear();
    m_folder = std::make_unique<QTemporaryDir>();
}

QString TestRecentProjects::makeFile(const QString &name)
{
    const QString path = m_folder->filePath(name);
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) ? path : QString();
}

void TestRecentProjects::theNewestProjectStandsFirst()
{
    const QString a = makeFile(u"a.vexp"_s);
    const QString b = makeFile(u"b.vexp"_s);
    RecentProjects::add(a);
    RecentProjects::add(b);
    QCOMPARE(RecentProjects::existing(), QStringList({b, a}));
    const UserSettings settings;
    QCOMPARE(settings.value("RecentProjects/project0path").toString(), b);
    QVERIFY(settings.value("RecentProjects/project0time").toDateTime()
            >= settings.value("RecentProjects/project1time").toDateTime());
}

void TestRecentProjects::aProjectOpenedAgainMovesToTheHead()
{
    const QString a = makeFile(u"a.vexp"_s);
    const QString b = makeFile(u"b.vexp"_s);
    RecentProjects::add(a);
    RecentProjects::add(b);
    RecentProjects::add(a);
    QCOMPARE(RecentProjects::existing(), QStringList({a, b}));
}

void TestRecentProjects::elevenProjectsLeaveTheTenNewest()
{
    QStringList expected;
    for (int number = 0; number < 11; ++number) {
        const QString file = makeFile(u"p%1.vexp"_s.arg(number));
        RecentProjects::add(file);
        expected.prepend(file);
    }
    expected.removeLast();
    QCOMPARE(RecentProjects::existing(), expected);
}

void TestRecentProjects::aFileThatIsGoneIsRememberedButNotListed()
{
    const QString a = makeFile(u"a.vexp"_s);
    RecentProjects::add(a);
    QVERIFY(QFile::remove(a));
    QVERIFY(RecentProjects::existing().isEmpty());
    makeFile(u"a.vexp"_s);
    QCOMPARE(RecentProjects::existing(), QStringList{a});
}

void TestRecentProjects::theStoredTimesDecideNotTheStoredOrder()
{
    const QString a = makeFile(u"a.vexp"_s);
    const QString b = makeFile(u"b.vexp"_s);
    UserSettings settings;
    settings.setValue("RecentProjects/project0path", a);
    settings.setValue("RecentProjects/project0time", QDateTime(QDate(2020, 1, 1), QTime(8, 0)));
    settings.setValue("RecentProjects/project1path", b);
    settings.setValue("RecentProjects/project1time", QDateTime(QDate(2021, 1, 1), QTime(8, 0)));
    settings.sync();
    QCOMPARE(RecentProjects::existing(), QStringList({b, a}));
}

void TestRecentProjects::theKeysOfAFormerLongerListAreGone()
{
    {
        UserSettings settings;
        settings.setValue("RecentProjects/project9path", u"/nowhere"_s);
        settings.setValue("RecentProjects/project9time", QDateTime::currentDateTime());
    }
    RecentProjects::add(makeFile(u"a.vexp"_s));
    UserSettings settings;
    settings.beginGroup("RecentProjects");
    QStringList keys = settings.childKeys();
    keys.sort();
    QCOMPARE(keys, QStringList({u"project0path"_s, u"project0time"_s, u"project1path"_s, u"project1time"_s}));
}

void TestRecentProjects::examplesComeFromTheStacksFolders_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("listed");
    QTest::newRow("single line") << u"co_example_sl/s1/slave1.vexp"_s << true;
    QTest::newRow("any name in a single-line example") << u"co_example_sl/s1/master.vexp"_s << true;
    QTest::newRow("below a folder of examples") << u"example/co_example_sl/a.vexp"_s << true;
    QTest::newRow("first slave of a multi-line example") << u"co_example_ml/slave1_ml.vexp"_s << true;
    QTest::newRow("other slave of a multi-line example") << u"co_example_ml/slave2.vexp"_s << false;
    QTest::newRow("customer") << u"example_customer/x.vexp"_s << true;
    QTest::newRow("other kind of file") << u"co_example_sl/readme.txt"_s << false;
    QTest::newRow("other folder") << u"tests/x.vexp"_s << false;
}

void TestRecentProjects::examplesComeFromTheStacksFolders()
{
    QFETCH(const QString, file);
    QFETCH(const bool, listed);
    const QString path = makeFile(file);
    const QList<ExampleProjects::Example> examples = ExampleProjects::find(m_folder->path());
    QCOMPARE(examples.size(), listed ? 1 : 0);
    if (listed) {
        QCOMPARE(examples.first().path, path);
        QCOMPARE(examples.first().title, QString(file).remove(u"example/"_s));
    }
}

void TestRecentProjects::withoutAStackThereAreNoExamples()
{
    QVERIFY(ExampleProjects::find(QString()).isEmpty());
    QVERIFY(ExampleProjects::find(m_folder->filePath(u"nowhere"_s)).isEmpty());
}

QTEST_GUILESS_MAIN(TestRecentProjects)
#include "tst_recentprojects.moc"
