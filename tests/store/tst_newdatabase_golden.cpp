#include "StoreTest.h"
#include "support/GoldenFile.h"

using namespace StoreTest;

class TestNewDatabaseGolden : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void theSchemaOfANewDatabaseIsTheGoldenOne();
    void aDifferenceNamesItsLine();
};

void TestNewDatabaseGolden::theSchemaOfANewDatabaseIsTheGoldenOne()
{
    NewStore store;
    const Snapshot file(store);
    QByteArray text;
    for (const QString &statement :
         file->column(QStringLiteral("select sql from sqlite_master where type = 'table' order by name")))
        text += statement.toUtf8() + ";\n";
    const QString difference = GoldenFile::difference(QStringLiteral("new-database/schema.sql"), text);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void TestNewDatabaseGolden::aDifferenceNamesItsLine()
{
    const QString text = GoldenFile::firstDifference(QStringLiteral("f"), "one\ntwo\n", "one\n2\n");
    QVERIFY2(text.startsWith(QStringLiteral("f:2\n  golden: two\n  actual: 2\n")), qPrintable(text));
    QVERIFY(GoldenFile::firstDifference(QStringLiteral("f"), "one", "one\n")
                .contains(QStringLiteral("f:2\n  golden: <end of text>")));
}

QTEST_GUILESS_MAIN(TestNewDatabaseGolden)
#include "tst_newdatabase_golden.moc"
