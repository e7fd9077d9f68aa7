#include "generators/descriptions/ProjectRows.h"
#include "generators/descriptions/RandomDevice.h"
#include "generators/descriptions/StrictEds.h"
#include "importers/EDSImporter.h"

#include <QLoggingCategory>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr auto fieldFiles = NODESMITH_TEST_DATA "/../../../shared/corpus";

/** Reads a device description into line 0. */
QList<EdsFinding> import(const QString &file, const QSharedPointer<ObjectDataBase> &store)
{
    EDSImporter importer;
    importer.setDatabase(store);
    importer.setLine(0);
    importer.setRange(0x1000, 0xFFFF);
    importer.setDcfMode(file.endsWith(u".dcf"_s));
    importer.setImportFileInfo(true);
    importer.setFile(file);
    importer.doImport();
    return importer.findings();
}

/** What belongs to the device's software and to the project, not to the device as others see it. */
void reduce(ProjectRows::Sub &sub)
{
    sub.implementation = 0;
    sub.varname.clear();
    sub.allowedaccesstypes.clear();
}

/** A RECORD has no type of its own; files of the field give it that of its compact entries. */
void reduceObject(ProjectRows::Object &object)
{
    if (object.objecttype == CANopen::Record)
        object.datatype = 0;
}

/** Lines without the defaults that are told only because a variable of the application is empty. */
QStringList filledLines(const QByteArray &file)
{
    QStringList lines = QString::fromUtf8(file).split(u'\n');
    lines.removeAll(u"DefaultValue="_s);
    return lines;
}

QStringList descriptionSettings(ObjectDataBase &store)
{
    QStringList rows;
    store.setDescriptionLine(0);
    const QStringList keys = store.getDescriptionSettingKeys();
    for (const QString &key : keys)
        if (!key.startsWith(u"NrOf"_s)) // a file tells the PDOs that there are
            rows.append(key + u'=' + store.getDescriptionSetting(key));
    return rows;
}

} // namespace

/** What an EDS file carries from one project to another. */
class TestEdsRoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        StoreTest::prepareApplication();
        qputenv("SOURCE_DATE_EPOCH", "1700000000");
        QLoggingCategory::setFilterRules(u"*.info=false\n*.warning=false\n*.debug=false"_s);
    }
    void aRandomDeviceComesBack_data();
    void aRandomDeviceComesBack();
    void awkwardTextsComeBack_data();
    void awkwardTextsComeBack();
    void aFieldFileComesBack_data();
    void aFieldFileComesBack();
};

void TestEdsRoundTrip::aRandomDeviceComesBack_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 40; ++seed)
        QTest::addRow("device %u", seed) << seed;
}

void TestEdsRoundTrip::aRandomDeviceComesBack()
{
    QFETCH(quint32, seed);
    DescriptionDesk first;
    RandomDevice(first, seed).make();
    QCOMPARE(first.run(DescriptionDesk::eds()), QString());
    const QByteArray file = first.read(u"pump.eds"_s);
    QCOMPARE(StrictEds(file).errors(), QStringList());

    DescriptionDesk second;
    const QList<EdsFinding> findings = import(first.path(u"pump.eds"_s), second.store);
    for (const EdsFinding &finding : findings)
        QVERIFY2(finding.text.contains(u"UTF-8"_s) || finding.text.contains(u"longer than 255"_s)
                     || finding.text.contains(u"quotation marks"_s)
                     || finding.text.contains(u"static types"_s),
                 qPrintable(finding.text));
    const auto rows = [](DescriptionDesk &desk) { return ProjectRows::all(*desk.store, {nullptr, reduce}); };
    QString difference = ProjectRows::difference(rows(first), rows(second));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QCOMPARE(descriptionSettings(*second.store), descriptionSettings(*first.store));

    QCOMPARE(second.run(DescriptionDesk::eds()), QString());
    difference = ProjectRows::difference(filledLines(file), filledLines(second.read(u"pump.eds"_s)));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void TestEdsRoundTrip::awkwardTextsComeBack_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("description");
    const QString name = u"name"_s;
    QTest::newRow("equals sign and brackets") << u"[1018sub0] = ; # x"_s << u"[2000]\nA=1"_s;
    QTest::newRow("begins with a comment mark") << u";; text"_s << u";; text\n; text\n;"_s;
    QTest::newRow("in quotation marks") << u"\"name\""_s << u"\"text\""_s;
    QTest::newRow("one quotation mark") << u"\""_s << u"\""_s;
    QTest::newRow("two quotation marks") << u"\"\""_s << u"\"\""_s;
    QTest::newRow("blanks at the ends") << u"  name "_s << u"  text "_s;
    QTest::newRow("only a blank") << u" "_s << u" "_s;
    QTest::newRow("tab inside") << u"a\tb"_s << u"a\tb"_s;
    QTest::newRow("not ASCII") << u"Ölstand Größe µ 漢 😀"_s << u"Ölstand 😀"_s;
    QTest::newRow("empty lines") << name << u"\n\ntext\n\n"_s;
    QTest::newRow("blank behind 250 characters") << name << QString(QString(250, u'a') + u" b"_s);
    QTest::newRow("blank behind 251 characters") << name << QString(QString(251, u'a') + u" b"_s);
    QTest::newRow("249 characters and a line break") << name << QString(QString(249, u'a') + u"\nb"_s);
    QTest::newRow("600 characters") << name << u"words "_s.repeated(100);
    QTest::newRow("a word of 600 characters") << name << QString(600, u'a');
    QTest::newRow("looks like the title") << name << u" EDS file for x - generated by y"_s;
}

void TestEdsRoundTrip::awkwardTextsComeBack()
{
    QFETCH(QString, name);
    QFETCH(QString, description);
    DescriptionDesk first;
    DescriptionDesk::Sub sub = DescriptionDesk::sub(name, CAN::VisibleString, name, u"const"_s);
    sub.description = description;
    first.object(0x2000, name, CANopen::Record, {{0, sub}, {1, sub}}, description);
    QCOMPARE(first.run(DescriptionDesk::eds()), QString());
    DescriptionDesk second;
    import(first.path(u"pump.eds"_s), second.store);
    const auto rows = [](DescriptionDesk &desk) { return ProjectRows::all(*desk.store, {nullptr, reduce}); };
    const QString difference = ProjectRows::difference(rows(first), rows(second));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void TestEdsRoundTrip::aFieldFileComesBack_data()
{
    QTest::addColumn<QString>("file");
    const QDir corpus(QDir::cleanPath(QString::fromLatin1(fieldFiles)));
    for (const char *const kind : {"eds", "dcf"}) {
        const QDir folder(corpus.filePath(QString::fromLatin1(kind)));
        const QStringList files = folder.entryList(QDir::Files, QDir::Name);
        for (const QString &file : files)
            QTest::newRow(qPrintable(file)) << folder.filePath(file);
    }
    if (!corpus.exists())
        QTest::newRow("none") << QString();
}

void TestEdsRoundTrip::aFieldFileComesBack()
{
    QFETCH(QString, file);
    if (file.isEmpty())
        QSKIP("there are no files of the field beside the source tree");
    DescriptionDesk first;
    import(file, first.store);
    QCOMPARE(first.run(DescriptionDesk::eds()), QString());
    // What the vendor got wrong stays so; what this system writes around it is right.
    static const QRegularExpression vendors(
        u"control character|the lists name|Value of|Limit of|FileVersion of|DataType of|is unknown"_s);
    const StrictEds strict(first.read(u"pump.eds"_s));
    const QStringList errors = strict.errors();
    for (const QString &error : errors)
        QVERIFY2(vendors.match(error).hasMatch(), qPrintable(error));

    DescriptionDesk second;
    import(first.path(u"pump.eds"_s), second.store);
    const auto rows = [](DescriptionDesk &desk) {
        return ProjectRows::all(*desk.store, {reduceObject, nullptr});
    };
    const QString difference = ProjectRows::difference(rows(first), rows(second));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QCOMPARE(descriptionSettings(*second.store), descriptionSettings(*first.store));

    QCOMPARE(second.run(DescriptionDesk::eds()), QString());
    QCOMPARE(second.read(u"pump.eds"_s), first.read(u"pump.eds"_s));
}

QTEST_GUILESS_MAIN(TestEdsRoundTrip)
#include "tst_edsroundtrip.moc"
