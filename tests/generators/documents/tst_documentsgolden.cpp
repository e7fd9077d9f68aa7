#include "generators/documents/SampleDocuments.h"
#include "support/GoldenFile.h"

#include <QSettings>

using namespace Qt::StringLiterals;

/** Whole documents of a small device. */
class TestDocumentsGolden : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aDeviceGivesItsDocuments_data();
    void aDeviceGivesItsDocuments();
};

void TestDocumentsGolden::initTestCase()
{
    StoreTest::prepareApplication();
    qputenv("SOURCE_DATE_EPOCH", "1700000000");
}

void TestDocumentsGolden::aDeviceGivesItsDocuments_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("disableDocu");
    QTest::addColumn<bool>("implementation");
    QTest::addColumn<QString>("file");
    QTest::newRow("text") << int(GeneratorKind::TextDoc) << false << false << u"Pump_doc.txt"_s;
    QTest::newRow("html") << int(GeneratorKind::Html) << false << false << u"Pump.html"_s;
    QTest::newRow("html-implementation") << int(GeneratorKind::Html) << false << true << u"Pump.html"_s;
    QTest::newRow("csv") << int(GeneratorKind::Csv) << false << false << u"Pump.csv"_s;
    QTest::newRow("icsv") << int(GeneratorKind::Icsv) << false << false << u"Pump.icsv"_s;
    QTest::newRow("icsv-without-descriptions") << int(GeneratorKind::Icsv) << true << false << u"Pump.icsv"_s;
}

void TestDocumentsGolden::aDeviceGivesItsDocuments()
{
    QFETCH(int, kind);
    QFETCH(bool, disableDocu);
    QFETCH(bool, implementation);
    QFETCH(QString, file);
    QSettings settings(u"korvel"_s, QCoreApplication::applicationName());
    settings.setValue(u"General/implinfo"_s, implementation ? 1 : 0);
    DocumentDesk desk;
    SampleDocuments::build(desk);
    const QString text = desk.generate({.kind = GeneratorKind(kind), .disableDocu = disableDocu}, file);
    const QString golden = u"documents-%1/%2"_s.arg(QString::fromLatin1(QTest::currentDataTag()), file);
    const QString difference = GoldenFile::difference(golden, text.toUtf8());
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_GUILESS_MAIN(TestDocumentsGolden)
#include "tst_documentsgolden.moc"
