#include "files/ProjectFiles.h"
#include "store/SafeFile.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <csignal>
#include <sys/resource.h>

using namespace ProjectFiles;

namespace {

constexpr int kills = 200;
constexpr int objectsOfKilledProject = 150;

/** Saves without end, telling of each save: the process that the test kills. */
int saveForEver(const QString &path)
{
    ObjectDataBase store;
    if (!store.openDataBase(path))
        return 1;
    for (int round = 0;; ++round) {
        store.setGeneralSetting(QStringLiteral("user_defines"), QString::number(round));
        if (!store.saveProject(QString()))
            return 2;
        printf("saved\n");
        fflush(stdout);
    }
}

/** Saves on a file system that has room for only a part of the file, then where there is room again. */
int saveWithLimit(const QString &path, const QString &limit)
{
    ObjectDataBase store;
    if (!store.openDataBase(path))
        return 1;
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit former = {};
    getrlimit(RLIMIT_FSIZE, &former);
    const rlimit narrow = {rlim_t(limit.toULongLong()), former.rlim_max};
    setrlimit(RLIMIT_FSIZE, &narrow);
    store.setGeneralSetting(QStringLiteral("user_defines"), QStringLiteral("changed"));
    const bool first = store.saveProject(QString());
    const QString firstError = store.lastError();
    const bool second = store.saveProject(QString());
    setrlimit(RLIMIT_FSIZE, &former);
    printf("%d %d %s\n", first, second, qPrintable(firstError));
    return 0;
}

/** What a whole project file must be: opens, is consistent and carries the hash of its content. */
bool isWhole(const QString &path)
{
    ObjectDataBase store;
    if (!store.openDataBase(path) || store.isExternallyModified())
        return false;
    return store.getIndexList(0).size() == objectsOfKilledProject;
}

} // namespace

class SaveSafety : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fileOrBackupIsWholeWheneverTheSavingProcessIsKilled()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("device.vexp"));
        QVERIFY(make(path, objectsOfKilledProject));
        QRandomGenerator random(20260101);
        int killedWhileTheFileWasPartial = 0;
        for (int round = 0; round < kills; ++round) {
            QProcess saver;
            saver.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--save-for-ever"), path});
            QVERIFY(saver.waitForReadyRead(20000));
            QTest::qSleep(random.bounded(12));
            saver.kill();
            QVERIFY(saver.waitForFinished());
            const bool fileIsWhole = QFile::exists(path) && isWhole(path);
            const QString backup = path + QStringLiteral(".bak");
            QVERIFY2(fileIsWhole || isWhole(backup), qPrintable(QStringLiteral("kill %1").arg(round)));
            if (!fileIsWhole) {
                ++killedWhileTheFileWasPartial;
                QFile::remove(path);
                QVERIFY(QFile::copy(backup, path));
            }
        }
        qInfo("%d of %d kills met a file that was half written", killedWhileTheFileWasPartial, kills);
    }

    void fullDiskGivesFalseAndTheFileSurvivesFurtherSaves()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("device.vexp"));
        QVERIFY(make(path, objectsOfKilledProject));
        const QByteArray before = bytes(path);
        QProcess saver;
        saver.start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("--save-with-limit"), path, QString::number(before.size() * 6 / 10)});
        QVERIFY(saver.waitForFinished());
        QCOMPARE(saver.exitCode(), 0);
        const QString output = QString::fromUtf8(saver.readAllStandardOutput());
        QVERIFY2(output.startsWith(QStringLiteral("0 0 ")), qPrintable(output));
        QVERIFY2(output.contains(path), qPrintable(output));
        QCOMPARE(bytes(path), before);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("device.vexp")});
    }

    void saveOntoAFolderIsRefusedAndTheFolderStays()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("projects"));
        QVERIFY(QDir().mkpath(path));
        ObjectDataBase store;
        QVERIFY(fill(store, 5));
        QVERIFY(!store.saveProject(path));
        QVERIFY(store.lastError().contains(path));
        QVERIFY(QFileInfo(path).isDir());
    }

    void linkStaysALinkAndItsFileIsReplaced()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("device.vexp"));
        const QString link = folder.filePath(QStringLiteral("link.vexp"));
        QVERIFY(make(path, 5));
        QVERIFY(QFile::link(path, link));
        const QByteArray before = bytes(path);
        ObjectDataBase store;
        QVERIFY(fill(store, 7));
        QVERIFY(store.saveProject(link));
        QVERIFY(QFileInfo(link).isSymLink());
        QVERIFY(bytes(path) != before);
        QCOMPARE(bytes(link + QStringLiteral(".bak")), before);
    }

    void linkToAnotherFileSystemIsSavedWithItsBackupBesideTheLink()
    {
        QTemporaryDir folder;
        QTemporaryDir elsewhere(QStringLiteral("/dev/shm/nodesmith-XXXXXX"));
        if (!elsewhere.isValid())
            QSKIP("no second file system to write to");
        const QString path = elsewhere.filePath(QStringLiteral("device.vexp"));
        const QString link = folder.filePath(QStringLiteral("link.vexp"));
        QVERIFY(make(path, 5));
        QVERIFY(QFile::link(path, link));
        const QByteArray before = bytes(path);
        ObjectDataBase store;
        QVERIFY(fill(store, 7));
        QVERIFY2(store.saveProject(link), qPrintable(store.lastError()));
        QVERIFY(bytes(path) != before);
        QCOMPARE(bytes(link + QStringLiteral(".bak")), before);
    }

    void savedFileKeepsThePermissionsOfTheFormerOne()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("device.vexp"));
        QVERIFY(make(path, 5));
        const auto permissions =
            QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadUser | QFileDevice::WriteUser;
        QVERIFY(QFile::setPermissions(path, permissions));
        ObjectDataBase store;
        QVERIFY(store.openDataBase(path));
        QVERIFY(store.saveProject(QString()));
        QCOMPARE(QFile::permissions(path), permissions);
    }

    void contentIsAtNoMomentForMoreEyesThanTheFormerOne()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("device.vexp"));
        QVERIFY(write(path, "former"));
        const auto ownerOnly =
            QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadUser | QFileDevice::WriteUser;
        QVERIFY(QFile::setPermissions(path, ownerOnly));
        QFile::Permissions whileWritten;
        QString error;
        QVERIFY(SafeFile::replace(
            path, QString(),
            [&](QFile &file) {
                whileWritten = QFile::permissions(file.fileName());
                return file.write("fresh") == 5;
            },
            &error));
        QCOMPARE(whileWritten, ownerOnly);
        QCOMPARE(bytes(path), QByteArray("fresh"));
    }

    void partsOfReservedLinesNeverReachTheFile()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("device.vexp"));
        QVERIFY(make(path, 5));
        {
            PlainDatabase other(path);
            QVERIFY(other.exec(QStringLiteral("create table Objects254 (objectindex integer primary key)")));
            QVERIFY(other.exec(QStringLiteral("insert into Nodes (nodeId) values (255)")));
        }
        ObjectDataBase store;
        QVERIFY(store.openDataBase(path));
        QVERIFY2(store.saveProject(QString()), qPrintable(store.lastError()));
        PlainDatabase file(path);
        QCOMPARE(file.column(QStringLiteral("select nodeId from Nodes")), QVariantList{0});
        QCOMPARE(file.column(QStringLiteral("select count(*) from sqlite_master where name like '%25_'")),
                 QVariantList{0});
    }

    void relativePathIsMeantFromWhereItWasGiven()
    {
        QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath(QStringLiteral("sub")));
        QVERIFY(make(folder.filePath(QStringLiteral("sub/device.vexp")), 5));
        const QString former = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder.path()));
        ObjectDataBase store;
        QVERIFY(store.openDataBase(QStringLiteral("sub/device.vexp")));
        QVERIFY(store.saveProject(QString()));
        QVERIFY(QFile::exists(folder.filePath(QStringLiteral("sub/device.vexp.bak"))));
        QDir::setCurrent(former);
    }

    void refusedFileIsNotOverwrittenByALaterSave()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("foreign.vexp"));
        QVERIFY(write(path, QByteArray(5000, 'x')));
        const QByteArray before = bytes(path);
        ObjectDataBase store;
        QVERIFY(!store.openDataBase(path));
        QVERIFY(!store.isOpen());
        QVERIFY(store.projectPath().isEmpty());
        QVERIFY(!store.saveProject(QString()));
        QVERIFY(store.createNewDataBase());
        QVERIFY(!store.saveProject(QString()));
        QCOMPARE(bytes(path), before);
    }

    void saveIntoAFolderWithoutPermissionLosesNothing()
    {
        QTemporaryDir folder;
        QTemporaryDir workingFolder;
        const QString path = folder.filePath(QStringLiteral("device.vexp"));
        QVERIFY(make(path, 5));
        const QByteArray before = bytes(path);
        {
            chmod(QFile::encodeName(folder.path()).constData(), 0555);
            const OrdinaryUser user(workingFolder.path());
            ObjectDataBase store;
            QVERIFY2(store.openDataBase(path), qPrintable(store.lastError()));
            QVERIFY(!store.saveProject(QString()));
            QVERIFY2(store.lastError().contains(path), qPrintable(store.lastError()));
        }
        chmod(QFile::encodeName(folder.path()).constData(), 0700);
        QCOMPARE(bytes(path), before);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("device.vexp")});
    }

    void saveIntoAMissingFolderGivesFalseWithTheReason()
    {
        ObjectDataBase store;
        QVERIFY(fill(store, 5));
        const QString path = QStringLiteral("/nowhere/at all/device.vexp");
        QVERIFY(!store.saveProject(path));
        QVERIFY(store.lastError().contains(path));
        QVERIFY(store.projectPath().isEmpty());
    }

    void newProjectWithoutPathIsNotSaved()
    {
        ObjectDataBase store;
        QVERIFY(fill(store, 5));
        QVERIFY(!store.saveProject(QString()));
        QVERIFY(!store.lastError().isEmpty());
    }

    void secondOfTwoSavesKeepsTheFirstAsBackup()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("device.vexp"));
        ObjectDataBase store;
        QVERIFY(fill(store, 5));
        QVERIFY(store.saveProject(path));
        const QByteArray first = bytes(path);
        store.setGeneralSetting(QStringLiteral("user_defines"), QStringLiteral("two"));
        QVERIFY(store.saveProject(QString()));
        QCOMPARE(bytes(path + QStringLiteral(".bak")), first);
        QVERIFY(bytes(path) != first);
    }

    void templateNameResetsTheMarksOfUserChanges()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("own.data"));
        ObjectDataBase store;
        QVERIFY(fill(store, 2));
        ObjectDataBase::SUBINDEX_DATA_T sub;
        QVERIFY(store.getSubIndex(0, 0x2000, 1, sub));
        sub.changedbyuser = true;
        QVERIFY(store.addSubIndex(0, 0x2000, 1, sub));
        QVERIFY(store.saveProject(path));
        PlainDatabase file(path);
        QCOMPARE(file.column(QStringLiteral("select distinct changedbyuser from SubObjects0")),
                 QVariantList{0});
        QCOMPARE(file.column(QStringLiteral("select distinct wizardsource from SubObjects0")),
                 QVariantList{454});
    }

    void templateWithoutLine0IsSavedToo()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("own.data"));
        ObjectDataBase store;
        QVERIFY(fill(store, 2));
        QVERIFY(store.addNode(1, {}));
        QVERIFY(store.removeLine(0));
        QVERIFY2(store.saveProject(path), qPrintable(store.lastError()));
        PlainDatabase file(path);
        QCOMPARE(file.column(QStringLiteral("select nodeId from Nodes")), QVariantList{1});
    }
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    nameApplication();
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QStringLiteral("--save-for-ever"))
        return saveForEver(arguments.value(2));
    if (arguments.value(1) == QStringLiteral("--save-with-limit"))
        return saveWithLimit(arguments.value(2), arguments.value(3));
    SaveSafety test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_savesafety.moc"
