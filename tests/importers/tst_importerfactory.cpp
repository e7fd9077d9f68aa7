#include "importers/EDSImporter.h"
#include "importers/ImporterFactory.h"

#include <QTest>

using namespace Qt::StringLiterals;
using ImporterFactory::Use;

/** Which importer reads which file, in a dialog and in a batch. */
class TestImporterFactory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void suffixesChooseTheImporter_data();
    void suffixesChooseTheImporter();
    void aBatchTakesTheWholeDevice_data();
    void aBatchTakesTheWholeDevice();
};

void TestImporterFactory::suffixesChooseTheImporter_data()
{
    QTest::addColumn<QByteArray>("importer");
    QTest::addColumn<bool>("batch");
    QTest::newRow("eds") << QByteArray("EDSImporter") << true;
    QTest::newRow("EDS") << QByteArray("EDSImporter") << true;
    QTest::newRow("dcf") << QByteArray("EDSImporter") << true;
    QTest::newRow("csv") << QByteArray("CsvImporter") << true;
    QTest::newRow("iCSV") << QByteArray("CsvImporter") << true;
    QTest::newRow("xdd") << QByteArray("XDDImporter") << false;
    QTest::newRow("codb") << QByteArray("CODBImporter") << false;
    QTest::newRow("vexp") << QByteArray("VEXPImporter") << false;
    QTest::newRow("vext") << QByteArray("VEXPImporter") << false;
    QTest::newRow("bak") << QByteArray("VEXPImporter") << false;
    QTest::newRow("txt") << QByteArray() << false;
    QTest::newRow("") << QByteArray() << false;
    QTest::newRow("eds ") << QByteArray() << false;
}

void TestImporterFactory::suffixesChooseTheImporter()
{
    QFETCH(const QByteArray, importer);
    QFETCH(const bool, batch);
    const QString suffix = QString::fromLatin1(QTest::currentDataTag());
    const auto selection = ImporterFactory::make(suffix, Use::Selection);
    QCOMPARE(selection ? QByteArray(selection->metaObject()->className()) : QByteArray(), importer);
    QCOMPARE(ImporterFactory::make(suffix, Use::Batch) != nullptr, batch);
}

void TestImporterFactory::aBatchTakesTheWholeDevice_data()
{
    QTest::addColumn<bool>("dcf");
    QTest::newRow("eds") << false;
    QTest::newRow("dcf") << true;
}

void TestImporterFactory::aBatchTakesTheWholeDevice()
{
    QFETCH(const bool, dcf);
    const QString suffix = QString::fromLatin1(QTest::currentDataTag());
    for (const Use use : {Use::Batch, Use::Selection}) {
        const auto made = ImporterFactory::make(suffix, use);
        const auto *importer = qobject_cast<EDSImporter *>(made.get());
        QVERIFY(importer);
        QCOMPARE(importer->dcfMode(), dcf);
        QCOMPARE(importer->importFileInfo(), use == Use::Batch);
    }
}

QTEST_GUILESS_MAIN(TestImporterFactory)
#include "tst_importerfactory.moc"
