#include "canopen/Helper.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestLineEnding : public QObject
{
    Q_OBJECT

private:
    static bool write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
    }

private Q_SLOTS:
    void everyLineGetsTheEnding_data();
    void everyLineGetsTheEnding();
    void anEmptyEndingChangesNothing();
    void aMissingFileIsRefused();
    void aFolderIsRefused();
    void aFileThatIsRightIsNotWritten();
    void aFileThatCannotBeReplacedIsRefused();
    void noOtherFileIsLeftBehind();
};

void TestLineEnding::everyLineGetsTheEnding_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("ending");
    QTest::addColumn<QByteArray>("result");
    const QByteArray mixed("a\r\nb\nc\rd\n\r\n\r\re");
    QTest::newRow("to CR LF") << mixed << "\r\n" << QByteArray("a\r\nb\r\nc\r\nd\r\n\r\n\r\n\r\ne");
    QTest::newRow("to LF") << mixed << "\n" << QByteArray("a\nb\nc\nd\n\n\n\ne");
    QTest::newRow("to CR") << mixed << "\r" << QByteArray("a\rb\rc\rd\r\r\r\re");
    QTest::newRow("CR at the end") << QByteArray("a\r") << "\r\n" << QByteArray("a\r\n");
    QTest::newRow("no line end") << QByteArray("abc") << "\r\n" << QByteArray("abc");
    QTest::newRow("empty") << QByteArray() << "\r\n" << QByteArray();
    QTest::newRow("bytes of any kind") << QByteArray("\x00\xff\n\x80", 4) << "\r\n"
                                       << QByteArray("\x00\xff\r\n\x80", 5);
}

void TestLineEnding::everyLineGetsTheEnding()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, ending);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("gen_define.h"));
    QVERIFY(write(path, content));
    QVERIFY(Helper::modifyLineEnding(path, ending));
    QTEST(read(path), "result");
}

void TestLineEnding::anEmptyEndingChangesNothing()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("file.c"));
    QVERIFY(write(path, "a\r\nb\n"));
    QVERIFY(Helper::modifyLineEnding(path, QString()));
    QCOMPARE(read(path), QByteArray("a\r\nb\n"));
}

void TestLineEnding::aMissingFileIsRefused()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("missing.c"));
    QVERIFY(!Helper::modifyLineEnding(path, QStringLiteral("\n")));
    QVERIFY(!QFile::exists(path));
    QVERIFY(!Helper::modifyLineEnding(QString(), QStringLiteral("\n")));
}

void TestLineEnding::aFolderIsRefused()
{
    const QTemporaryDir folder;
    QVERIFY(!Helper::modifyLineEnding(folder.path(), QStringLiteral("\n")));
}

void TestLineEnding::aFileThatIsRightIsNotWritten()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("file.c"));
    QVERIFY(write(path, "a\nb\n"));
    const QDateTime old(QDate(2020, 1, 2), QTime(3, 4, 5));
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(old, QFileDevice::FileModificationTime));
    }
    QVERIFY(Helper::modifyLineEnding(path, QStringLiteral("\n")));
    QCOMPARE(QFileInfo(path).lastModified(), old);
    QVERIFY(Helper::modifyLineEnding(path, QStringLiteral("\r\n")));
    QVERIFY(QFileInfo(path).lastModified() != old);
}

void TestLineEnding::aFileThatCannotBeReplacedIsRefused()
{
    // Nobody, not even the administrator, can create a file in this folder of the kernel.
    const QString path = QStringLiteral("/proc/version");
    const QByteArray before = read(path);
    QVERIFY(before.endsWith('\n'));
    QVERIFY(!Helper::modifyLineEnding(path, QStringLiteral("\r\n")));
    QCOMPARE(read(path), before);
}

void TestLineEnding::noOtherFileIsLeftBehind()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("file.c"));
    QVERIFY(write(path, "a\n"));
    QVERIFY(Helper::modifyLineEnding(path, QStringLiteral("\r")));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{QStringLiteral("file.c")});
}

QTEST_GUILESS_MAIN(TestLineEnding)
#include "tst_lineending.moc"
