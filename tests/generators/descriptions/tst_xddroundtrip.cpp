#include "generators/descriptions/ProjectRows.h"
#include "generators/descriptions/RandomDevice.h"
#include "importers/XDDImporter.h"

#include <QLoggingCategory>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

/** Reads a device description into line 0; what the importer complains of. */
QStringList import(const QString &file, const QSharedPointer<ObjectDataBase> &store)
{
    XDDImporter importer;
    importer.setDatabase(store);
    importer.setLine(0);
    importer.setRange(0x1000, 0xFFFF);
    importer.setFile(file);
    const QSignalSpy errors(&importer, &BaseDataImporter::importError);
    importer.doImport();
    QStringList texts;
    for (const QVariantList &error : errors)
        texts.append(error.constFirst().toString());
    const QList<EdsFinding> findings = importer.findings();
    for (const EdsFinding &finding : findings)
        texts.append(finding.text);
    return texts;
}

void reduceObject(ProjectRows::Object &object)
{
    object.description.clear();
}

/** What belongs to the device's software and to the project, and what the format has no attribute for. */
void reduce(ProjectRows::Sub &sub)
{
    sub.implementation = 0;
    sub.varname.clear();
    sub.allowedaccesstypes.clear();
    sub.description.clear();
    sub.refuseread = sub.refusewrite = false;
}

QStringList rows(DescriptionDesk &desk)
{
    return ProjectRows::all(*desk.store, {reduceObject, reduce});
}

} // namespace

/** What an XDD file carries from one project to another. */
class TestXddRoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        StoreTest::prepareApplication();
        QLoggingCategory::setFilterRules(u"*.info=false\n*.warning=false\n*.debug=false"_s);
    }
    void aRandomDeviceComesBack_data();
    void aRandomDeviceComesBack();
    void awkwardTextsComeBack_data();
    void awkwardTextsComeBack();
};

void TestXddRoundTrip::aRandomDeviceComesBack_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 101; seed <= 140; ++seed)
        QTest::addRow("device %u", seed) << seed;
}

void TestXddRoundTrip::aRandomDeviceComesBack()
{
    QFETCH(quint32, seed);
    DescriptionDesk first;
    RandomDevice device(first, seed);
    device.setXmlTexts(true);
    device.make();
    QCOMPARE(first.run(DescriptionDesk::xdd()), QString());

    DescriptionDesk second;
    QCOMPARE(import(first.path(u"pump_0.xdd"_s), second.store), QStringList());
    const QString difference = ProjectRows::difference(rows(first), rows(second));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QCOMPARE(second.store->getDescriptionSetting(u"ProductName"_s),
             first.store->getDescriptionSetting(u"ProductName"_s));
}

void TestXddRoundTrip::awkwardTextsComeBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("markup") << u"</ProfileBody><!-- & \"a\" 'b' ]]> --"_s;
    QTest::newRow("line breaks and tabs") << u"\ta\nb\r\nc\rd\t"_s;
    QTest::newRow("blanks") << u"  a  b  "_s;
    QTest::newRow("quotation marks") << u"\"a\""_s;
    QTest::newRow("not ASCII") << u"Ölstand 漢 😀"_s;
}

void TestXddRoundTrip::awkwardTextsComeBack()
{
    QFETCH(QString, text);
    DescriptionDesk first;
    first.object(0x2000, text, CANopen::Record,
                 {{0, DescriptionDesk::sub(text, CAN::VisibleString, text, u"const"_s)}});
    QCOMPARE(first.run(DescriptionDesk::xdd()), QString());
    DescriptionDesk second;
    QCOMPARE(import(first.path(u"pump_0.xdd"_s), second.store), QStringList());
    const QString difference = ProjectRows::difference(rows(first), rows(second));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_GUILESS_MAIN(TestXddRoundTrip)
#include "tst_xddroundtrip.moc"
