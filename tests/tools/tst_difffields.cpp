#include "tools/DiffFields.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace ProjectRecords;
using DiffFields::Detail;

class TestDiffFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFieldsOfEveryLevelHaveTheirTitles_data();
    void theFieldsOfEveryLevelHaveTheirTitles();
    void everyFieldOfASubIndexThatHasATitleMakesADifference_data();
    void everyFieldOfASubIndexThatHasATitleMakesADifference();
    void internalFieldsMakeNoDifference();
    void aFieldTakenOutMakesNoDifference();
    void numbersAreShownInWords();
    void aMissingSideIsEmptyAndNothingStandsOut();
    void internalFieldsComeOnDemandUnderTheirOwnNames();
};

void TestDiffFields::theFieldsOfEveryLevelHaveTheirTitles_data()
{
    QTest::addColumn<DiffLevel>("level");
    QTest::addColumn<QString>("titles");
    const QString signalTitles = u"Name|Data Type|Implementation Type|Variable Name|Description"_s;
    QTest::newRow("object") << DiffLevel::Object
                            << u"Name|DataType|ObjectType|Category|Device Class|Description"_s;
    QTest::newRow("sub-index")
        << DiffLevel::SubIndex
        << u"Name|DataType|AccessType|DefaultValue|PdoMapping|LowerLimit|UpperLimit|Size|Implementation|"
           "VariableName|Category|WizardSource|ChangedByUser|HasDefault|DefaultInEDS|LimitCheck|Description|"
           "Managed by LVX|In all lines|non-volatile storage"_s;
    QTest::newRow("PGN") << DiffLevel::Pgn << u"Name|Prority|Cycle Time|Inhibit Time|Description"_s;
    QTest::newRow("SPN") << DiffLevel::Spn << signalTitles;
    QTest::newRow("CAN-ID") << DiffLevel::CanId << u"Name|Cycle Time|Inhibit Time|Description"_s;
    QTest::newRow("data element") << DiffLevel::DataElement << signalTitles;
}

void TestDiffFields::theFieldsOfEveryLevelHaveTheirTitles()
{
    QFETCH(const DiffLevel, level);
    QFETCH(const QString, titles);
    QCOMPARE(DiffFields::titles(level).join(u'|'), titles);
}

void TestDiffFields::everyFieldOfASubIndexThatHasATitleMakesADifference_data()
{
    QTest::addColumn<SubIndexData>("changed");
    const auto row = [](const char *title, const SubIndexData &changed) { QTest::newRow(title) << changed; };
    row("Name", {.name = u"x"_s});
    row("DataType", {.datatype = 7});
    row("AccessType", {.accesstype = u"rw"_s});
    row("DefaultValue", {.defaultvalue = u"1"_s});
    row("PdoMapping", {.pdomapping = PDOMapping(PDOMapping::Default)});
    row("LowerLimit", {.lowlimit = u"1"_s});
    row("UpperLimit", {.uplimit = u"1"_s});
    row("Size", {.size = 4});
    row("Implementation", {.implementation = 2});
    row("VariableName", {.varname = u"x"_s});
    row("Category", {.category = 1});
    row("WizardSource", {.wizardsource = 454});
    row("ChangedByUser", {.changedbyuser = true});
    row("HasDefault", {.defaultineds = true});
    row("DefaultInEDS", {.writedefaulttoeds = 2});
    row("LimitCheck", {.limitineds = true});
    row("Description", {.description = u"x"_s});
    row("Managed by LVX", {.managedbylvx = true});
    row("In all lines", {.sharedlines = true});
    row("non-volatile storage", {.nvstorage = true});
}

void TestDiffFields::everyFieldOfASubIndexThatHasATitleMakesADifference()
{
    QFETCH(const SubIndexData, changed);
    const SubIndexData plain;
    QVERIFY(DiffFields::differ(plain, changed, {}));
    QVERIFY(!DiffFields::differ(changed, changed, {}));
    QStringList differing;
    const QList<Detail> details = DiffFields::details(&plain, &changed, false);
    for (const Detail &detail : details)
        if (detail.differs)
            differing.append(detail.title);
    QCOMPARE(differing, QStringList{QString::fromLatin1(QTest::currentDataTag())});
}

void TestDiffFields::internalFieldsMakeNoDifference()
{
    const SubIndexData plain;
    SubIndexData changed;
    changed.currentvalue = u"1"_s;
    changed.refuseread = true;
    changed.signalid = 5;
    changed.metadata = {{u"key"_s, u"value"_s}};
    QVERIFY(!DiffFields::differ(plain, changed, {}));
}

void TestDiffFields::aFieldTakenOutMakesNoDifference()
{
    const Pgn plain;
    const Pgn changed{.priority = 3};
    DiffSelection selection;
    selection.setCounting(DiffLevel::Pgn, 1, false);
    QVERIFY(!DiffFields::differ(plain, changed, selection));
    QVERIFY(DiffFields::differ(plain, Pgn{.priority = 3, .cycletime_ms = 10}, selection));
    QVERIFY(selection.counts(DiffLevel::Spn, 1)); // the other levels count on
    selection.setCounting(DiffLevel::Pgn, 1, true);
    QVERIFY(DiffFields::differ(plain, changed, selection));
    QCOMPARE(selection, DiffSelection());
}

void TestDiffFields::numbersAreShownInWords()
{
    const SubIndexData first{.datatype = 7,
                             .pdomapping = PDOMapping(PDOMapping::Default),
                             .implementation = 1,
                             .category = 2,
                             .writedefaulttoeds = 1,
                             .changedbyuser = true};
    const SubIndexData second{.datatype = 999, .category = 9, .writedefaulttoeds = 8};
    const QList<Detail> details = DiffFields::details(&first, &second, false);
    const auto texts = [&](const QString &title) -> QString {
        for (const Detail &detail : details)
            if (detail.title == title)
                return detail.current + u'|' + detail.other;
        return {};
    };
    QCOMPARE(texts(u"DataType"_s), u"UNSIGNED32|999"_s);
    QCOMPARE(texts(u"PdoMapping"_s), u"Default|Forbidden"_s);
    QCOMPARE(texts(u"Implementation"_s), u"Managed Const|Managed Variable"_s);
    QCOMPARE(texts(u"Category"_s), u"Optional|9"_s);
    QCOMPARE(texts(u"DefaultInEDS"_s), u"as defaultvalue|8"_s);
    QCOMPARE(texts(u"ChangedByUser"_s), u"yes|no"_s);
    const IndexData object{.objecttype = 9};
    QCOMPARE(DiffFields::details<IndexData>(&object, nullptr, false).at(2),
             (Detail{.title = u"ObjectType"_s, .current = u"RECORD"_s, .other = {}, .differs = false}));
}

void TestDiffFields::aMissingSideIsEmptyAndNothingStandsOut()
{
    const CanId message{.name = u"Message"_s, .cycletime_ms = 10};
    const QList<Detail> onlyCurrent = DiffFields::details<CanId>(&message, nullptr, false);
    QCOMPARE(onlyCurrent.first(), (Detail{.title = u"Name"_s, .current = u"Message"_s, .other = {}}));
    const QList<Detail> onlyOther = DiffFields::details<CanId>(nullptr, &message, false);
    QCOMPARE(onlyOther.first(), (Detail{.title = u"Name"_s, .current = {}, .other = u"Message"_s}));
}

void TestDiffFields::internalFieldsComeOnDemandUnderTheirOwnNames()
{
    SubIndexData data;
    data.currentvalue = u"7"_s;
    data.metadata = {{u"a"_s, u"1"_s}, {u"b"_s, u"2"_s}};
    const QList<Detail> details = DiffFields::details<SubIndexData>(&data, &data, true);
    QStringList internal;
    for (const Detail &detail : details.mid(DiffFields::titles(DiffLevel::SubIndex).size()))
        internal.append(detail.title + u'=' + detail.current);
    QCOMPARE(internal,
             QStringList({u"currentvalue=7"_s, u"refuseread=no"_s, u"refusewrite=no"_s,
                          u"allowedaccesstypes="_s, u"cyclicread=no"_s, u"dcfcomponent=no"_s,
                          u"denotation="_s, u"signalid=0"_s, u"metadata=a: 1\nb: 2"_s}));
    QCOMPARE(DiffFields::details<SubIndexData>(&data, &data, false).size(),
             DiffFields::titles(DiffLevel::SubIndex).size());
}

QTEST_GUILESS_MAIN(TestDiffFields)
#include "tst_difffields.moc"
