#include "canopen/CANTypes.h"
#include "importers/CODBImporter.h"
#include "importers/ImporterTest.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;
using ImporterTest::staging;

/** Profile databases: a file in, rows of the staging line out. */
class TestCodbImporter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ImporterTest::prepareApplication(); }
    void init() { m_store = ImporterTest::newStore(); }
    void cleanup() { m_store.reset(); }
    void fieldsBecomeColumns_data();
    void fieldsBecomeColumns();
    void limitsAreTakenOrFollowTheType_data();
    void limitsAreTakenOrFollowTheType();
    void objectRowsBecomeObjects_data();
    void objectRowsBecomeObjects();
    void everyObjectGetsSubIndex0_data();
    void everyObjectGetsSubIndex0();
    void applicationVariablesGetNames_data();
    void applicationVariablesGetNames();
    void aSubIndexThatIsThereKeepsItsOwner();
    void theRangeChoosesTheObjects_data();
    void theRangeChoosesTheObjects();
    void damagedLinesAreSkipped();
    void aRowWithoutAccessTypeIsReadOnly();
    void anArrayHasTheTypeOfItsElements();
    void copiesAreIgnoredWithoutTheOption();
    void aCopyHasTheStructureAtItsPlaceInTheFile();
    void aCopyMayStandForAnObjectOutsideOfTheRange();
    void anyFlagButNoMakesMappable_data();
    void anyFlagButNoMakesMappable();
    void namesAreLatin1();
    void lineEndsDoNotMatter_data();
    void lineEndsDoNotMatter();
    void theLogTellsTheEnd();
    void aFileThatVanishedIsAnError();
    void filesThatAreNoProfileGiveNothing_data();
    void filesThatAreNoProfileGiveNothing();
    void randomDamageNeverStopsTheImport();

private:
    bool import(const QString &file, quint32 first = 0, quint32 last = 0xFFFF, bool copies = false);
    bool importBytes(const QByteArray &content, bool copies = false);

    QTemporaryDir m_folder;
    QSharedPointer<ObjectDataBase> m_store;
    QStringList m_errors;
};

static QString data(const char *name)
{
    return QStringLiteral(IMPORTER_DATA "/") + QString::fromLatin1(name);
}

bool TestCodbImporter::import(const QString &file, quint32 first, quint32 last, bool copies)
{
    CODBImporter importer;
    ImporterTest::Recorder recorder(importer);
    importer.setDatabase(m_store);
    importer.setRange(first, last);
    importer.setIncludeCopies(copies);
    if (!importer.setFile(file) || !ImporterTest::run(importer))
        return false;
    const bool ended = QTest::qWaitFor([&] { return recorder.ends == 1; }, ImporterTest::waitMs);
    m_errors = recorder.errors;
    return ended && recorder.percents.last() == 100
        && importer.importedObjects().size() == recorder.objects.size();
}

bool TestCodbImporter::importBytes(const QByteArray &content, bool copies)
{
    const QString file = m_folder.filePath(u"test.codb"_s);
    return ImporterTest::write(file, content) && import(file, 0, 0xFFFF, copies);
}

void TestCodbImporter::fieldsBecomeColumns_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("access");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("mappable");
    QTest::addColumn<int>("category");
    QTest::newRow("plain") << 0x2000 << u"Plain value"_s << 6 << u"rw"_s << u"0x05"_s << true << 1;
    QTest::newRow("default in brackets")
        << 0x2001 << u"Chosen default"_s << 5 << u"ro"_s << u"0x2A"_s << false << 2;
    QTest::newRow("a range is no default")
        << 0x2002 << u"Range as default"_s << 3 << u"wo"_s << u"0x07"_s << true << 3;
    QTest::newRow("not set") << 0x2003 << u"Value that is not set"_s << 7 << u"const"_s << QString() << true
                             << 2;
    QTest::newRow("node-ID stays") << 0x2004 << u"Depends on the node"_s << 7 << u"rw"_s
                                   << u"4000+0x10*$NODEID"_s << false << 2;
    QTest::newRow("number of an expression")
        << 0x2005 << u"Number in an expression"_s << 7 << u"rw"_s << u"0x1fAb"_s << false << 2;
    QTest::newRow("signed number") << 0x200D << u"Signed hexadecimal"_s << 3 << u"rw"_s << u"-0x05"_s << false
                                   << 2;
    QTest::newRow("texts stay") << 0x2006 << u"Text"_s << 9 << u"const"_s << u"version 0x12 beta"_s << false
                                << 2;
    QTest::newRow("read-only otherwise")
        << 0x2007 << u"No access given"_s << 2 << u"ro"_s << u"-3"_s << false << 2;
}

void TestCodbImporter::fieldsBecomeColumns()
{
    QFETCH(int, index);
    QFETCH(QString, value);
    QFETCH(bool, mappable);
    QVERIFY(import(data("fields.codb")));
    const auto sub = ImporterTest::sub(*m_store, staging, quint16(index), 0);
    QTEST(sub.name, "name");
    QTEST(sub.datatype, "type");
    QTEST(sub.accesstype, "access");
    QCOMPARE(sub.defaultvalue, value);
    QCOMPARE(sub.defaultineds, !value.isEmpty());
    QCOMPARE(int(sub.writedefaulttoeds), value.isEmpty() ? 0 : 1);
    QCOMPARE(int(sub.pdomapping.toUInt()), mappable ? int(PDOMapping::Allowed) : int(PDOMapping::Forbidden));
    QTEST(sub.category, "category");
    QCOMPARE(sub.allowedaccesstypes, u"const,ro,rw,wo,rww,rwr"_s);
}

void TestCodbImporter::limitsAreTakenOrFollowTheType_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("low");
    QTest::addColumn<QString>("high");
    QTest::addColumn<bool>("checked");
    QTest::newRow("given") << 0x2000 << u"0x01"_s << u"0x64"_s << true;
    QTest::newRow("of UNSIGNED8") << 0x2001 << u"0"_s << u"255"_s << false;
    QTest::newRow("of INTEGER16") << 0x2002 << u"-32768"_s << u"32767"_s << false;
    QTest::newRow("with sign") << 0x200D << u"-0x64"_s << u"0x64"_s << true;
    QTest::newRow("one given") << 0x2003 << u"0"_s << u"0x10"_s << true;
    QTest::newRow("none of a text") << 0x2006 << QString() << QString() << false;
}

void TestCodbImporter::limitsAreTakenOrFollowTheType()
{
    QFETCH(int, index);
    QVERIFY(import(data("fields.codb")));
    const auto sub = ImporterTest::sub(*m_store, staging, quint16(index), 0);
    QTEST(sub.lowlimit, "low");
    QTEST(sub.uplimit, "high");
    QTEST(sub.limitineds, "checked");
}

void TestCodbImporter::objectRowsBecomeObjects_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("category");
    QTest::addColumn<int>("subs");
    QTest::newRow("variable") << 0x2000 << u"Plain value"_s << 7 << 1 << 1;
    QTest::newRow("array") << 0x2008 << u"Array without sub-index 0"_s << 8 << 2 << 3;
    QTest::newRow("record") << 0x200A << u"Data of the application"_s << 9 << 2 << 5;
    QTest::newRow("conditional") << 0x2002 << u"Range as default"_s << 7 << 3 << 1;
    QTest::newRow("made from sub-index 0") << 0x200B << u"Object of a sub-index row"_s << 7 << 1 << 1;
    QTest::newRow("made from sub-index 1") << 0x200C << u"Member of a row without object"_s << 9 << 2 << 3;
}

void TestCodbImporter::objectRowsBecomeObjects()
{
    QFETCH(int, index);
    QVERIFY(import(data("fields.codb")));
    const auto object = ImporterTest::object(*m_store, staging, quint16(index));
    QTEST(object.name, "name");
    QTEST(object.objecttype, "code");
    QTEST(object.category, "category");
    QTEST(int(m_store->getSubIndexList(staging, quint16(index)).size()), "subs");
}

void TestCodbImporter::everyObjectGetsSubIndex0_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("access");
    QTest::addColumn<QString>("value");
    QTest::newRow("array") << 0x2008 << u"Highest subindex supported"_s << 5 << u"ro"_s << u"10"_s;
    QTest::newRow("variable") << 0x2009 << u"Variable without sub-index 0"_s << 8 << u"rw"_s << u"1.5"_s;
    QTest::newRow("the file's own") << 0x200A << u"Highest sub-index supported"_s << 5 << u"const"_s
                                    << u"0x04"_s;
    QTest::newRow("object that has no row")
        << 0x200C << u"Highest subindex supported"_s << 5 << u"ro"_s << u"3"_s;
}

void TestCodbImporter::everyObjectGetsSubIndex0()
{
    QFETCH(int, index);
    QVERIFY(import(data("fields.codb")));
    const auto sub = ImporterTest::sub(*m_store, staging, quint16(index), 0);
    QTEST(sub.name, "name");
    QTEST(sub.datatype, "type");
    QTEST(sub.accesstype, "access");
    QTEST(sub.defaultvalue, "value");
}

void TestCodbImporter::applicationVariablesGetNames_data()
{
    QTest::addColumn<int>("sub");
    QTest::addColumn<int>("implementation");
    QTest::addColumn<QString>("variable");
    QTest::newRow("constant count") << 0x00 << 1 << u" "_s;
    QTest::newRow("DOMAIN") << 0x01 << 2 << u"v_200a01"_s;
    QTest::newRow("OCTET_STRING") << 0x02 << 2 << u"v_200a02"_s;
    QTest::newRow("text that is written") << 0x03 << 2 << u"v_200a03"_s;
    QTest::newRow("text that is read") << 0x1F << 1 << u" "_s;
}

void TestCodbImporter::applicationVariablesGetNames()
{
    QFETCH(int, sub);
    QVERIFY(import(data("fields.codb")));
    const auto row = ImporterTest::sub(*m_store, staging, 0x200A, quint8(sub));
    QTEST(row.implementation, "implementation");
    QTEST(row.varname, "variable");
}

void TestCodbImporter::aSubIndexThatIsThereKeepsItsOwner()
{
    ObjectDataBase::SUBINDEX_DATA_T own;
    own.name = u"old name"_s;
    own.accesstype = u"rw"_s;
    own.implementation = CANopen::ApplicationVariable;
    own.varname = u"speed"_s;
    QVERIFY(m_store->addIndex(staging, 0x2000, {}));
    QVERIFY(m_store->addSubIndex(staging, 0x2000, 0, own));
    QVERIFY(import(data("fields.codb")));
    const auto sub = ImporterTest::sub(*m_store, staging, 0x2000, 0);
    QCOMPARE(sub.name, u"Plain value"_s);
    QCOMPARE(sub.implementation, int(CANopen::ApplicationVariable));
    QCOMPARE(sub.varname, u"speed"_s);
}

void TestCodbImporter::theRangeChoosesTheObjects_data()
{
    QTest::addColumn<quint32>("first");
    QTest::addColumn<quint32>("last");
    QTest::addColumn<QList<quint16>>("indices");
    using Indices = QList<quint16>;
    QTest::newRow("both ends belong to it") << 0x2003U << 0x2005U << Indices{0x2003, 0x2004, 0x2005};
    QTest::newRow("one") << 0x2000U << 0x2000U << Indices{0x2000};
    QTest::newRow("none") << 0x6000U << 0x9FFFU << Indices{};
    QTest::newRow("reversed") << 0x2005U << 0x2003U << Indices{};
    QTest::newRow("beyond all indices") << 0x200BU << 0xFFFFFFFFU << Indices{0x200B, 0x200C, 0x200D};
}

void TestCodbImporter::theRangeChoosesTheObjects()
{
    QFETCH(quint32, first);
    QFETCH(quint32, last);
    QVERIFY(import(data("fields.codb"), first, last));
    QTEST(m_store->getIndexList(staging), "indices");
}

void TestCodbImporter::damagedLinesAreSkipped()
{
    QVERIFY(import(data("damaged.codb"), 0, 0xFFFF, true));
    QCOMPARE(m_errors, QStringList());
    QCOMPARE(ImporterTest::rows(*m_store, staging), (QStringList{u"2000:00"_s, u"2001:00"_s}));
    QCOMPARE(ImporterTest::sub(*m_store, staging, 0x2001, 0).datatype, 0);
}

void TestCodbImporter::aRowWithoutAccessTypeIsReadOnly()
{
    QVERIFY(importBytes("2004::Short:optional::VAR:m:UNSIGNED8\n2004:00:Short:optional::VAR:m:UNSIGNED8\n"));
    QCOMPARE(ImporterTest::sub(*m_store, staging, 0x2004, 0).accesstype, u"ro"_s);
}

void TestCodbImporter::anArrayHasTheTypeOfItsElements()
{
    QVERIFY(importBytes("2010::List:optional::ARRAY:m::n::n:3:m:3:m::n::n::n::n\n"
                        "2010:00:Count:mandatory::VAR:m:UNSIGNED8:m:const:m::n::n::n::n:0x02:m:n:m\n"
                        "2010:01:One:optional::VAR:m:INTEGER16:m:rw:m::n::n::n::n::n:n:m\n"));
    QCOMPARE(ImporterTest::object(*m_store, staging, 0x2010).datatype, int(CAN::Integer16));
    QCOMPARE(ImporterTest::sub(*m_store, staging, 0x2010, 0).implementation, int(CANopen::ManagedConst));
}

void TestCodbImporter::copiesAreIgnoredWithoutTheOption()
{
    QVERIFY(import(data("copies.codb")));
    QCOMPARE(m_store->getIndexList(staging), QList<quint16>{0x2000});
}

void TestCodbImporter::aCopyHasTheStructureAtItsPlaceInTheFile()
{
    QVERIFY(import(data("copies.codb"), 0, 0xFFFF, true));
    // 0x2900 is copied before there is anything to copy.
    QCOMPARE(ImporterTest::rows(*m_store, staging),
             (QStringList{u"2000:00"_s, u"2000:01"_s, u"2000:02"_s, u"2800:00"_s, u"2800:01"_s, u"2801:00"_s,
                          u"2801:01"_s, u"2802:00"_s, u"2802:01"_s, u"2802:02"_s}));
    QCOMPARE(ImporterTest::object(*m_store, staging, 0x2801),
             ImporterTest::object(*m_store, staging, 0x2000));
    QCOMPARE(ImporterTest::sub(*m_store, staging, 0x2802, 2),
             ImporterTest::sub(*m_store, staging, 0x2000, 2));
    QCOMPARE(ImporterTest::sub(*m_store, staging, 0x2801, 1).varname, u"v_280101"_s);
}

void TestCodbImporter::aCopyMayStandForAnObjectOutsideOfTheRange()
{
    QVERIFY(import(data("copies.codb"), 0x2801, 0x2FFF, true));
    QCOMPARE(m_store->getIndexList(staging), (QList<quint16>{0x2801, 0x2802}));
    QCOMPARE(ImporterTest::sub(*m_store, staging, 0x2802, 2).name, u"After the copy"_s);
}

void TestCodbImporter::anyFlagButNoMakesMappable_data()
{
    QTest::addColumn<QByteArray>("flag");
    QTest::addColumn<bool>("mappable");
    for (const char *flag : {"n", "N", " n ", "", " ", "no"})
        QTest::addRow("not mappable: '%s'", flag) << QByteArray(flag) << false;
    for (const char *flag : {"y", "Y", "1", "default", "TPDO", "optional"})
        QTest::addRow("mappable: '%s'", flag) << QByteArray(flag) << true;
}

void TestCodbImporter::anyFlagButNoMakesMappable()
{
    QFETCH(QByteArray, flag);
    QFETCH(bool, mappable);
    QVERIFY(importBytes("2000:00:Value:optional::VAR:m:UNSIGNED8:m:rw:m::n::n::n::n:0:m:" + flag + ":m\n"));
    QCOMPARE(ImporterTest::sub(*m_store, staging, 0x2000, 0).pdomapping, PDOMapping(mappable));
}

void TestCodbImporter::namesAreLatin1()
{
    QVERIFY(importBytes("2000::Schl\xFCssel  gr\xF6\xDF"
                        "er\xA0\xB5 it's:optional::VAR:m:UNSIGNED8:m:rw:m::n::n:::::::n:m\n"));
    QCOMPARE(ImporterTest::object(*m_store, staging, 0x2000).name, u"Schlüssel größer µ it's"_s);
}

void TestCodbImporter::lineEndsDoNotMatter_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("LF") << QByteArray("\n");
    QTest::newRow("CR LF") << QByteArray("\r\n");
    QTest::newRow("CR") << QByteArray("\r");
}

void TestCodbImporter::lineEndsDoNotMatter()
{
    QFETCH(QByteArray, end);
    QFile file(data("fields.codb"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(importBytes("\xEF\xBB\xBF" + file.readAll().replace('\n', end).trimmed()));
    QCOMPARE(m_store->getIndexList(staging).size(), 14);
    QCOMPARE(m_store->getSubIndexList(staging, 0x200C), (QList<quint8>{0, 1, 3}));
}

void TestCodbImporter::theLogTellsTheEnd()
{
    const ImporterTest::DebugLines lines;
    QVERIFY(import(data("fields.codb")));
    QCOMPARE(ImporterTest::DebugLines::all().count(u"Import completeted"_s), 1);
}

void TestCodbImporter::aFileThatVanishedIsAnError()
{
    const QString file = m_folder.filePath(u"gone.codb"_s);
    QVERIFY(ImporterTest::write(file, "2000::Value:optional::VAR\n"));
    CODBImporter importer;
    ImporterTest::Recorder recorder(importer);
    importer.setDatabase(m_store);
    QVERIFY(importer.setFile(file));
    QVERIFY(QFile::remove(file));
    QVERIFY(ImporterTest::run(importer));
    QTRY_COMPARE(recorder.ends, 1);
    QCOMPARE(recorder.errors, QStringList{u"File %1 is not readable."_s.arg(file)});
    QCOMPARE(recorder.percents, (QList<int>{0, 100}));
    QVERIFY(m_store->getIndexList(staging).isEmpty());
    QVERIFY(!m_store->signalsBlocked());
}

void TestCodbImporter::filesThatAreNoProfileGiveNothing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one line of 10 MB") << QByteArray(10'000'000, ':');
    QTest::newRow("record of 10 MB") << "2000::" + QByteArray(10'000'000, 'x') + ":optional::VAR";
    QTest::newRow("zeros") << QByteArray(1'000'000, '\0');
    QTest::newRow("colons in short lines") << QByteArray("::::::\n").repeated(100'000);
    QTest::newRow("dollars") << QByteArray("$$$$=$$$$\n").repeated(100'000);
    QByteArray bytes(1'000'000, '\0');
    QRandomGenerator random(20261120);
    for (char &byte : bytes)
        byte = char(random.bounded(256));
    QTest::newRow("random bytes") << bytes;
}

void TestCodbImporter::filesThatAreNoProfileGiveNothing()
{
    QFETCH(QByteArray, content);
    QElapsedTimer time;
    time.start();
    QVERIFY(importBytes(content, true));
    QVERIFY2(time.elapsed() < 10000, qPrintable(QString::number(time.elapsed())));
    QVERIFY(m_store->getIndexList(staging).isEmpty());
    QVERIFY(!m_store->signalsBlocked());
}

void TestCodbImporter::randomDamageNeverStopsTheImport()
{
    QFile file(data("fields.codb"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray good = file.readAll();
    QRandomGenerator random(7);
    for (int round = 0; round < 100; ++round) {
        QByteArray bad = good.first(random.bounded(int(good.size())));
        for (int hit = 0; hit < 20 && !bad.isEmpty(); ++hit)
            bad[random.bounded(int(bad.size()))] = char(random.bounded(256));
        QVERIFY(importBytes(bad + "\n2FFF:00:Last:optional::VAR:m:UNSIGNED8:m:rw\n", true));
        QVERIFY(m_store->subIndexExists(staging, 0x2FFF, 0));
    }
}

QTEST_GUILESS_MAIN(TestCodbImporter)
#include "tst_codbimporter.moc"
