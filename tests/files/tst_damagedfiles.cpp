#include "files/ProjectFiles.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>

using namespace ProjectFiles;

namespace {

constexpr int bitFlips = 500;

} // namespace

class DamagedFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { nameApplication(); }

    void fileThatIsNoProjectGivesFalseWithTheReason_data()
    {
        QTest::addColumn<QByteArray>("content");
        QVERIFY(make(m_folder.filePath(QStringLiteral("good.vexp")), 20));
        m_good = bytes(m_folder.filePath(QStringLiteral("good.vexp")));
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("[General]\nname=x\n");
        QTest::newRow("one byte") << QByteArray("S");
        QTest::newRow("header alone") << m_good.left(100);
        QTest::newRow("first page alone") << m_good.left(4096);
        QTest::newRow("random") << QByteArray(5000, char(0xA5));
    }

    void fileThatIsNoProjectGivesFalseWithTheReason()
    {
        QFETCH(QByteArray, content);
        const QString path = m_folder.filePath(QStringLiteral("bad.vexp"));
        QVERIFY(write(path, content));
        ObjectDataBase store;
        QVERIFY(!store.openDataBase(path));
        QVERIFY2(store.lastError().contains(path), qPrintable(store.lastError()));
        QCOMPARE(bytes(path), content);
        expectUsable(store);
    }

    void dataBaseWithoutOurTablesIsRefused()
    {
        const QString path = m_folder.filePath(QStringLiteral("other.vexp"));
        {
            PlainDatabase other(path);
            QVERIFY(other.exec(QStringLiteral("create table music (title text)")));
        }
        ObjectDataBase store;
        QVERIFY(!store.openDataBase(path));
        QVERIFY2(store.lastError().contains(QStringLiteral("is not a project file")),
                 qPrintable(store.lastError()));
        expectUsable(store);
    }

    void folderAndMissingFileAreNamed()
    {
        ObjectDataBase store;
        QVERIFY(!store.openDataBase(m_folder.path()));
        QVERIFY(store.lastError().contains(QStringLiteral("is a folder")));
        QVERIFY(!store.openDataBase(m_folder.filePath(QStringLiteral("missing.vexp"))));
        QVERIFY(store.lastError().contains(QStringLiteral("does not exist")));
        expectUsable(store);
    }

    void emptyPathChangesNothing()
    {
        ObjectDataBase store;
        QVERIFY(fill(store, 3));
        const QString before = store.contentHash();
        QVERIFY(!store.openDataBase(QString()));
        QCOMPARE(store.contentHash(), before);
    }

    void unreadableFileIsNamed()
    {
        QTemporaryDir workingFolder;
        const QString path = m_folder.filePath(QStringLiteral("secret.vexp"));
        QVERIFY(make(path, 3));
        chmod(QFile::encodeName(m_folder.path()).constData(), 0755);
        chmod(QFile::encodeName(path).constData(), 0);
        const OrdinaryUser user(workingFolder.path());
        ObjectDataBase store;
        QVERIFY(!store.openDataBase(path));
        QVERIFY2(store.lastError().contains(path), qPrintable(store.lastError()));
    }

    void readOnlyFileOpensSinceOnlyItsCopyIsWritten()
    {
        const QString path = m_folder.filePath(QStringLiteral("readonly.vexp"));
        QVERIFY(make(path, 3));
        QFile::setPermissions(path, QFileDevice::ReadOwner);
        ObjectDataBase store;
        QVERIFY(store.openDataBase(path));
        QVERIFY(store.setGeneralSetting(QStringLiteral("user_defines"), QStringLiteral("x")));
        QCOMPARE(store.getGeneralSetting(QStringLiteral("user_defines")), QStringLiteral("x"));
    }

    void oddPathsOpenAndSave_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"with blank.vexp", "größe.vexp", "it's.vexp", "\"quoted\".vexp",
                                 "100%1.vexp", "ü/日本語.vexp", "semi;colon.vexp", "back\\slash.vexp"})
            QTest::newRow(name) << QString::fromUtf8(name);
    }

    void oddPathsOpenAndSave()
    {
        QFETCH(QString, name);
        const QString path = m_folder.filePath(name);
        QVERIFY(QDir().mkpath(QFileInfo(path).absolutePath()));
        QVERIFY(make(path, 3));
        ObjectDataBase store;
        QVERIFY2(store.openDataBase(path), qPrintable(store.lastError()));
        QVERIFY(!store.isExternallyModified());
        QVERIFY(store.saveProject(QString()));
        QVERIFY(QFile::exists(path + QStringLiteral(".bak")));
    }

    // A flipped bit may hit a text (the hash tells), a page (the open refuses or reads what is left) or
    // nothing that matters: in no case may the program crash, hang or touch the file.
    void flippedBitsNeverCrash()
    {
        const QString good = m_folder.filePath(QStringLiteral("good.vexp"));
        QVERIFY(make(good, 20));
        const QByteArray original = bytes(good);
        const QString path = m_folder.filePath(QStringLiteral("flipped.vexp"));
        const int rounds = qEnvironmentVariableIntValue("NODESMITH_BIT_FLIPS") > 0
            ? qEnvironmentVariableIntValue("NODESMITH_BIT_FLIPS")
            : bitFlips;
        QRandomGenerator random(4711);
        int refused = 0;
        int noticed = 0;
        for (int round = 0; round < rounds; ++round) {
            QByteArray damaged = original;
            const int position = random.bounded(int(damaged.size()));
            damaged[position] = char(damaged.at(position) ^ (1 << random.bounded(8)));
            QVERIFY(write(path, damaged));
            ObjectDataBase store;
            if (!store.openDataBase(path)) {
                QVERIFY2(!store.lastError().isEmpty(), qPrintable(QString::number(round)));
                ++refused;
                continue;
            }
            noticed += store.isExternallyModified() ? 1 : 0;
            store.cacheAllSubs(0);
            const QList<quint16> indices = store.getIndexList(0);
            for (const quint16 index : indices)
                store.getIndexName(0, index);
            QCOMPARE(bytes(path), damaged);
        }
        qInfo("%d flips: %d refused, %d opened with the warning", rounds, refused, noticed);
        QVERIFY(refused + noticed > 0);
    }

private:
    /** After a refused file the store takes a new project as ever. */
    static void expectUsable(ObjectDataBase &store)
    {
        QVERIFY(store.createNewDataBase());
        QCOMPARE(store.getLines(), QList<quint8>{0});
    }

    QTemporaryDir m_folder;
    QByteArray m_good;
};

QTEST_GUILESS_MAIN(DamagedFiles)
#include "tst_damagedfiles.moc"
