#include "files/ProjectFiles.h"
#include "store/WorkingFiles.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace ProjectFiles;

namespace {

/** Keeps a project open until its standard input closes: an idle program. */
int idle()
{
    ObjectDataBase store;
    if (!fill(store, 3))
        return 1;
    printf("open\n");
    fflush(stdout);
    getchar();
    return 0;
}

/** Opens, saves and idles: reading the working file for the save must not give its lock away. */
int saveAndIdle(const QString &path)
{
    ObjectDataBase store;
    if (!fill(store, 3) || !store.saveProject(path))
        return 1;
    printf("saved\n");
    fflush(stdout);
    getchar();
    return 0;
}

} // namespace

class WorkingFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path()));
        QDir(folder()).removeRecursively();
    }

    void storeDeletesItsWorkingFilesAtItsEnd()
    {
        {
            ObjectDataBase store;
            QVERIFY(fill(store, 3));
            QVERIFY(store.createNewDataBase());
            QVERIFY(!files().isEmpty());
        }
        QCOMPARE(files(), QStringList());
    }

    void workingFilesAreForTheirOwnerAlone()
    {
        const QString path = m_home.filePath(QStringLiteral("device.vexp"));
        QVERIFY(make(path, 3));
        ObjectDataBase made;
        QVERIFY(made.createNewDataBase());
        ObjectDataBase opened;
        QVERIFY(opened.openDataBase(path));
        QCOMPARE(files().size(), 2);
        const QStringList names = files();
        for (const QString &name : names)
            QCOMPARE(QFile::permissions(folder() + u'/' + name),
                     QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadUser
                         | QFileDevice::WriteUser);
    }

    void refusedFileLeavesNoWorkingFile()
    {
        const QString path = m_home.filePath(QStringLiteral("foreign.vexp"));
        QVERIFY(write(path, QByteArray(5000, 'x')));
        ObjectDataBase store;
        for (int attempt = 0; attempt < 3; ++attempt)
            QVERIFY(!store.openDataBase(path));
        QCOMPARE(files(), QStringList());
    }

    void lockedStoreRefusesAnotherProjectWithTheReason()
    {
        const QString path = m_home.filePath(QStringLiteral("device.vexp"));
        QVERIFY(make(path, 3));
        ObjectDataBase store;
        QVERIFY(fill(store, 2));
        store.setWriteLock(true);
        QVERIFY(!store.openDataBase(path));
        QVERIFY(store.lastError().contains(QStringLiteral("in use")));
        QVERIFY(!store.createNewDataBase());
        store.setWriteLock(false);
        QCOMPARE(store.getIndexList(0).size(), 2);
    }

    void everyStoreHasAFileOfItsOwn()
    {
        ObjectDataBase first;
        ObjectDataBase second;
        QVERIFY(first.createNewDataBase());
        QVERIFY(second.createNewDataBase());
        QCOMPARE(files().size(), 2);
    }

    void leftOverOlderThanSevenDaysIsDeletedAndAYoungerOneStays()
    {
        makeLeftOver(QStringLiteral("wvxdatatemp_1_1"), WorkingFiles::staleAfterDays + 1);
        makeLeftOver(QStringLiteral("wvxdatatemp_2_2"), WorkingFiles::staleAfterDays - 1);
        makeLeftOver(QStringLiteral("notes.txt"), 100);
        WorkingFiles::removeStale();
        QCOMPARE(files(), (QStringList{QStringLiteral("notes.txt"), QStringLiteral("wvxdatatemp_2_2")}));
    }

    void oldFileOfARunningProcessStays_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("idle") << QStringList{QStringLiteral("--idle")};
        QTest::newRow("idle after a save")
            << QStringList{QStringLiteral("--save-and-idle"), m_home.filePath(QStringLiteral("device.vexp"))};
    }

    void oldFileOfARunningProcessStays()
    {
        QFETCH(QStringList, arguments);
        QProcess other;
        other.start(QCoreApplication::applicationFilePath(), arguments);
        QVERIFY(other.waitForReadyRead(10000));
        const QStringList open = files();
        QCOMPARE(open.size(), 1);
        const QString path = folder() + u'/' + open.first();
        age(path, 30);
        WorkingFiles::removeStale();
        QCOMPARE(files(), open);
        other.kill();
        QVERIFY(other.waitForFinished());
        WorkingFiles::removeStale();
        QCOMPARE(files(), QStringList());
    }

    void folderThatCannotBeMadeGivesFalseWithTheReason()
    {
        const QString blocked = m_home.filePath(QStringLiteral("blocked"));
        QVERIFY(write(blocked, "a file where a folder should be"));
        qputenv("XDG_DATA_HOME", QFile::encodeName(blocked));
        ObjectDataBase store;
        QVERIFY(!store.createNewDataBase());
        QVERIFY(!store.lastError().isEmpty());
    }

private:
    static QString folder() { return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation); }
    static QStringList files() { return QDir(folder()).entryList(QDir::Files, QDir::Name); }
    static void age(const QString &path, int days)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(
            file.setFileTime(QDateTime::currentDateTime().addDays(-days), QFileDevice::FileModificationTime));
    }
    static void makeLeftOver(const QString &name, int days)
    {
        QVERIFY(QDir().mkpath(folder()));
        const QString path = folder() + u'/' + name;
        QVERIFY(write(path, "left over"));
        age(path, days);
    }

    QTemporaryDir m_home;
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    nameApplication();
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QStringLiteral("--idle"))
        return idle();
    if (arguments.value(1) == QStringLiteral("--save-and-idle"))
        return saveAndIdle(arguments.value(2));
    WorkingFilesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_workingfiles.moc"
