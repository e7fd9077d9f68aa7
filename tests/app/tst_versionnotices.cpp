#include "app/BoxAnswerer.h"
#include "app/TestHome.h"
#include "app/VersionNotices.h"
#include "app/WindowTest.h"
#include "widgets/KorvelBaseApplication.h"

#include <QSqlDatabase>
#include <QSqlQuery>

using namespace Qt::StringLiterals;

/** What the user is told about a project of an older version, and the copy that is kept of it. */
class TestVersionNotices : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void theNoticeFollowsVersionAndEdition_data();
    void theNoticeFollowsVersionAndEdition();
    void onlyMajorVersionThreeIsCopied_data();
    void onlyMajorVersionThreeIsCopied();
    void anExistingCopyIsKept();
    void aCopyThatCannotBeMadeIsTold();

    void anOldProjectIsToldOfAndCopied();
    void minorNineGetsACopyButNoNotice();
    void aSecondOpenKeepsTheCopyAndTellsNothingOfIt();
    void theOptionLeavesOutTheNoticeButNotTheCopy();
    void theNetworkToolGetsNeither();
    void theEnergyBusEditionAsksForANewApply_data();
    void theEnergyBusEditionAsksForANewApply();

private:
    QString saveOldProject(const QString &version, const QString &edition = u"CANopen NodeSmith"_s);
    QString copyNotice() const;
};

/** A project as the given version has saved it; those versions stored no hash. */
QString TestVersionNotices::saveOldProject(const QString &version, const QString &edition)
{
    const QString file = path(u"old.vexp"_s);
    if (!TestProject::save(file, edition, u"1"_s))
        return QString();
    bool changed = false;
    {
        QSqlDatabase editor = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"old"_s);
        editor.setDatabaseName(file);
        QSqlQuery query(editor.open() ? editor : QSqlDatabase());
        changed = query.exec(u"delete from MiscSettings where item = 'FileHash'"_s)
            && query.exec(
                u"update MiscSettings set value = '%1' where item = 'SaveToolVersion'"_s.arg(version))
            && query.numRowsAffected() == 1;
    }
    QSqlDatabase::removeDatabase(u"old"_s);
    return changed ? file : QString();
}

QString TestVersionNotices::copyNotice() const
{
    const QString file = path(u"old.vexp"_s);
    return u"The project had been created using V3.x of the tool. A copy has been saved as %1.bak_v3.\n\n In "
           u"order to use "
           "the current project %1 with this version of NodeSmith, make sure to use the corresponding stack version."_s
               .arg(file);
}

void TestVersionNotices::theNoticeFollowsVersionAndEdition_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("edition");
    QTest::addColumn<QString>("files");
    const QString canopen = u"CANopen NodeSmith"_s;
    const QString j1939 = u"J1939 NodeSmith"_s;
    QTest::newRow("3.9") << u"3.9.0"_s << canopen << QString();
    QTest::newRow("3.10") << u"3.10.1"_s << canopen << QString();
    QTest::newRow("3.8") << u"3.8.2"_s << canopen << u"co_memcpy.c"_s;
    QTest::newRow("3.7") << u"3.7"_s << canopen << u"co_memcpy.c"_s;
    QTest::newRow("3.7, other edition") << u"3.7.0"_s << j1939 << u"co_memcpy.c and co_mapping.c"_s;
    QTest::newRow("3.6") << u"3.6.0"_s << canopen << u"co_common.c and co_memcpy.c"_s;
    QTest::newRow("3.0, other edition")
        << u"3.0.0"_s << j1939 << u"co_common.c, co_memcpy.c and co_mapping.c"_s;
    QTest::newRow("4.0") << u"4.0.0"_s << canopen << QString();
    QTest::newRow("2.9") << u"2.9.0"_s << canopen << QString();
    QTest::newRow("none") << QString() << canopen << QString();
    QTest::newRow("no version") << u"three"_s << canopen << QString();
}

void TestVersionNotices::theNoticeFollowsVersionAndEdition()
{
    QFETCH(const QString, version);
    QFETCH(const QString, edition);
    QFETCH(const QString, files);
    QCoreApplication::setApplicationName(edition);
    const QString expected = files.isEmpty()
        ? QString()
        : u"This project has been created by an older version. Please add the file %1 to your project or makefile."_s
              .arg(files);
    QCOMPARE(VersionNotices(version).missingSources(), expected);
}

void TestVersionNotices::onlyMajorVersionThreeIsCopied_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("copied");
    QTest::newRow("3.0") << u"3.0.0"_s << true;
    QTest::newRow("3.12") << u"3.12.0"_s << true;
    QTest::newRow("4.3") << u"4.3.2"_s << false;
    QTest::newRow("30.1") << u"30.1"_s << false;
    QTest::newRow("none") << QString() << false;
}

void TestVersionNotices::onlyMajorVersionThreeIsCopied()
{
    QFETCH(const QString, version);
    QFETCH(const bool, copied);
    const QString file = path(u"old.vexp"_s);
    QVERIFY(TestProject::write(file, "project"));
    QCOMPARE(VersionNotices(version).keepCopy(file), copied ? copyNotice() : QString());
    QCOMPARE(QFile::exists(file + u".bak_v3"_s), copied);
}

void TestVersionNotices::anExistingCopyIsKept()
{
    const QString file = path(u"old.vexp"_s);
    QVERIFY(TestProject::write(file, "new"));
    QVERIFY(TestProject::write(file + u".bak_v3"_s, "old"));
    QCOMPARE(VersionNotices(u"3.8.0"_s).keepCopy(file), QString());
    QFile copy(file + u".bak_v3"_s);
    QVERIFY(copy.open(QIODevice::ReadOnly));
    QCOMPARE(copy.readAll(), QByteArray("old"));
}

void TestVersionNotices::aCopyThatCannotBeMadeIsTold()
{
    const QString missing = path(u"nowhere/old.vexp"_s);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot be copied"_s));
    QVERIFY(VersionNotices(u"3.8.0"_s).keepCopy(missing).contains(u"no copy could be saved"_s));
}

void TestVersionNotices::anOldProjectIsToldOfAndCopied()
{
    const QString file = saveOldProject(u"3.8.1"_s);
    const auto window = makeWindow();
    const BoxAnswerer answerer(QMessageBox::Ok);
    window->openProject(file);
    QCOMPARE(
        answerer.texts,
        QStringList({u"This project has been created by an older version. Please add the file co_memcpy.c to "
                     "your project or makefile."_s,
                     copyNotice()}));
    QCOMPARE(answerer.titles.first(), u"CANopen NodeSmith  4.3.2"_s);
    QCOMPARE(answerer.icons, QList<QMessageBox::Icon>(2, QMessageBox::Information));
    QCOMPARE(m_store->getMiscSetting(u"PreviousToolVersion"_s), u"3.8.1"_s);
    QVERIFY(QFile::exists(file + u".bak_v3"_s));
    QVERIFY(!window->isModified());
}

void TestVersionNotices::minorNineGetsACopyButNoNotice()
{
    const QString file = saveOldProject(u"3.9.0"_s);
    const auto window = makeWindow();
    const BoxAnswerer answerer(QMessageBox::Ok);
    window->openProject(file);
    QCOMPARE(answerer.texts, QStringList{copyNotice()});
    QCOMPARE(m_store->getMiscSetting(u"PreviousToolVersion"_s), QString());
    QVERIFY(QFile::exists(file + u".bak_v3"_s));
}

void TestVersionNotices::aSecondOpenKeepsTheCopyAndTellsNothingOfIt()
{
    const QString file = saveOldProject(u"3.9.0"_s);
    const auto window = makeWindow();
    const BoxAnswerer answerer(QMessageBox::Ok);
    window->openProject(file);
    QVERIFY(TestProject::write(file + u".bak_v3"_s, "kept"));
    window->openProject(file);
    QCOMPARE(answerer.texts.size(), 1);
    QCOMPARE(QFileInfo(file + u".bak_v3"_s).size(), 4);
}

void TestVersionNotices::theOptionLeavesOutTheNoticeButNotTheCopy()
{
    const QString file = saveOldProject(u"3.6.0"_s);
    const auto window = makeWindow({file, u"-now"_s});
    const BoxAnswerer answerer(QMessageBox::Ok);
    window->openProject(file);
    QCOMPARE(answerer.texts, QStringList{copyNotice()});
    QVERIFY(QFile::exists(file + u".bak_v3"_s));
}

void TestVersionNotices::theNetworkToolGetsNeither()
{
    const QString file = saveOldProject(u"3.6.0"_s);
    const auto window = makeWindow({file, u"-lvx"_s});
    const BoxAnswerer answerer(QMessageBox::Ok);
    window->openProject(file);
    QCOMPARE(answerer.texts, QStringList{});
    QVERIFY(!QFile::exists(file + u".bak_v3"_s));
}

void TestVersionNotices::theEnergyBusEditionAsksForANewApply_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("asked");
    QTest::newRow("older") << u"4.3.1"_s << true;
    QTest::newRow("major version three") << u"3.8.0"_s << true;
    QTest::newRow("the same") << u"4.3.2"_s << false;
}

void TestVersionNotices::theEnergyBusEditionAsksForANewApply()
{
    QFETCH(const QString, version);
    QFETCH(const bool, asked);
    QCoreApplication::setApplicationName(u"EnergyBus NodeGuide"_s);
    const QString file = saveOldProject(version, u"EnergyBus NodeGuide"_s);
    const auto window = makeWindow();
    const BoxAnswerer answerer(QMessageBox::Ok);
    window->openProject(file);
    const QString text =
        u"This project has been created by an older version of the EnergyBus NodeGuide. It is "
        "<strong>required to re-apply EnergyBus settings</strong> to update the project."_s;
    QCOMPARE(answerer.texts, asked ? QStringList{text} : QStringList{});
    QVERIFY(!QFile::exists(file + u".bak_v3"_s));
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestVersionNotices test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_versionnotices.moc"
