#include "forms/FormTest.h"
#include "forms/output/OutputFilter.h"
#include "forms/output/OutputModel.h"
#include "forms/output/TextSearch.h"
#include "generators/ConsoleOutput.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

OutputModel::Message message(const QString &richText, const ProjectLocation &place = {}, QTime time = {})
{
    return {.richText = richText, .place = place, .time = time};
}

} // namespace

/** The messages of a run as rows, as plain text, and chosen by their level. */
class tst_OutputModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMessageIsOneRowPerLine();
    void timeStandsBeforeTheFirstLineWithText();
    void messagesAreCountedByLevelAndBlankOnesNotAtAll();
    void aBatchIsOneInsertion();
    void plainTextHasOneMessagePerLine();
    void plainTextOfAMessageReadsAsInTheBuildLog_data();
    void plainTextOfAMessageReadsAsInTheBuildLog();
    void everyKindOfPlaceCanBeNamed();
    void toolTipsShowTextAsTextAndTheWayToThePlace();
    void clearedMeansAsNew();
    void hiddenLevelsAreLeftOutAndComeBack();
    void findGoesOnAtTheOtherEnd();
    void findLooksOnlyAtShownMessages();
};

void tst_OutputModel::aMessageIsOneRowPerLine()
{
    OutputModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const ProjectLocation place = ProjectLocation::ofObject(0, 0x1000);
    model.append({message(u"<strong>Error: </strong>one\ntwo"_s, place), message(u"three"_s)});
    QCOMPARE(FormTest::columnTexts(model, 0), (QStringList{u"Error: one"_s, u"two"_s, u"three"_s}));
    for (const int row : {0, 1}) {
        const QModelIndex index = model.index(row, 0);
        QCOMPARE(index.data(OutputModel::LevelRole).toInt(), int(MessageLevel::Error));
        QCOMPARE(index.data(OutputModel::PlaceRole).value<ProjectLocation>(), place);
    }
    QCOMPARE(model.index(2, 0).data(OutputModel::LevelRole).toInt(), int(MessageLevel::Info));
    QVERIFY(!model.data(QModelIndex()).isValid());
}

void tst_OutputModel::timeStandsBeforeTheFirstLineWithText()
{
    OutputModel model;
    const QTime time(15, 28, 1);
    model.append({message(u"\nCheck started\nmore"_s, {}, time), message(u"raw"_s)});
    QVERIFY(!model.index(0, 0).data(OutputModel::TimeRole).isValid());
    QCOMPARE(model.index(1, 0).data(OutputModel::TimeRole).toTime(), time);
    QVERIFY(!model.index(2, 0).data(OutputModel::TimeRole).isValid());
    QVERIFY(!model.index(3, 0).data(OutputModel::TimeRole).isValid());
    QCOMPARE(model.plainText(true), u"15:28:01 Check started | more\nraw\n"_s);
}

void tst_OutputModel::messagesAreCountedByLevelAndBlankOnesNotAtAll()
{
    OutputModel model;
    model.append({message(u"<strong>Error: </strong>one\ntwo"_s), message(u"<strong>Error: </strong>x"_s),
                  message(u"Warning: y"_s), message(u"<strong>Hint: </strong>z"_s),
                  message(u"<i>Corrected: z</i>"_s), message(u"Generation finished."_s), message(QString()),
                  message(u" \n"_s)});
    QCOMPARE(model.count(MessageLevel::Error), 2);
    QCOMPARE(model.count(MessageLevel::Warning), 1);
    QCOMPARE(model.count(MessageLevel::Hint), 1);
    QCOMPARE(model.count(MessageLevel::Correction), 1);
    QCOMPARE(model.count(MessageLevel::Info), 1);
}

void tst_OutputModel::aBatchIsOneInsertion()
{
    OutputModel model;
    const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    model.append({message(u"a"_s), message(u"b"_s), message(u"c"_s)});
    model.append({});
    QCOMPARE(inserted.count(), 1);
}

void tst_OutputModel::plainTextHasOneMessagePerLine()
{
    OutputModel model;
    QCOMPARE(model.plainText(false), QString());
    model.append({message(u"\nCheck of model consistency started"_s), message(QString()),
                  message(u"<strong>Error: </strong>Object 0x1000 &lt;name&gt;"_s),
                  message(u"gen_define.h contains user section:\n#define A\n#define B"_s)});
    QCOMPARE(model.plainText(false),
             u"Check of model consistency started\nError: Object 0x1000 <name>\n"
             "gen_define.h contains user section: | #define A | #define B\n"_s);
}

void tst_OutputModel::plainTextOfAMessageReadsAsInTheBuildLog_data()
{
    QTest::addColumn<QString>("richText");
    QTest::newRow("plain") << u"Generation finished."_s;
    QTest::newRow("tags") << u"<b>ERROR - Generation of gen_objdict.c failed. reason</b>"_s;
    QTest::newRow("line breaks around") << u"\nCheck of model consistency finished.\n"_s;
    QTest::newRow("line breaks inside") << u"gen_define.h contains user section:\n\n#define A\n"_s;
    QTest::newRow("tab") << u"\tcompiler output"_s;
    QTest::newRow("carriage returns") << u"a\r\nb\rc"_s;
    QTest::newRow("header") << u"include <stdlib.h>"_s;
}

void tst_OutputModel::plainTextOfAMessageReadsAsInTheBuildLog()
{
    QFETCH(QString, richText);
    OutputModel model;
    model.append({message(richText)});
    QCOMPARE(model.plainText(false), ConsoleOutput::plainText(richText) + u'\n');
}

void tst_OutputModel::everyKindOfPlaceCanBeNamed()
{
    QCOMPARE(OutputModel::placeText({}), QString());
    QCOMPARE(OutputModel::placeText(ProjectLocation::ofLine(3)), u"line 3"_s);
    QCOMPARE(OutputModel::placeText(ProjectLocation::ofSetting(u"co_node_id"_s)), u"setting co_node_id"_s);
    QCOMPARE(OutputModel::placeText(ProjectLocation::ofObject(0, 0x1A)), u"object 0x001a of line 0"_s);
    QCOMPARE(OutputModel::placeText(ProjectLocation::ofSubIndex(1, 0x1018, 4)),
             u"object 0x1018 sub-index 4 of line 1"_s);
    QCOMPARE(OutputModel::placeText(ProjectLocation::ofPgn(0, 65226, 85)), u"PGN 65226 of line 0"_s);
    QCOMPARE(OutputModel::placeText(ProjectLocation::ofSpn(0, 65226, 85, 1213)), u"PGN 65226 of line 0"_s);
    QCOMPARE(OutputModel::placeText(ProjectLocation::ofCanId(0, 0x123, 85)), u"CAN-ID 0x123 of line 0"_s);
    QCOMPARE(OutputModel::placeText(ProjectLocation::ofDataElement(0, 0x123, 85, 1)),
             u"CAN-ID 0x123 of line 0"_s);
}

void tst_OutputModel::toolTipsShowTextAsTextAndTheWayToThePlace()
{
    OutputModel model;
    model.append(
        {message(u"include &lt;stdlib.h&gt;"_s, ProjectLocation::ofObject(0, 0x1018)), message(QString())});
    const QString tip = model.index(0, 0).data(Qt::ToolTipRole).toString();
    QVERIFY2(tip.contains(u"include &lt;stdlib.h&gt;"_s), qPrintable(tip));
    QVERIFY2(tip.contains(u"object 0x1018 of line 0"_s), qPrintable(tip));
    QVERIFY(model.index(1, 0).data(Qt::ToolTipRole).toString().isEmpty());
}

void tst_OutputModel::clearedMeansAsNew()
{
    OutputModel model;
    model.append({message(u"<strong>Error: </strong>x"_s, ProjectLocation::ofObject(0, 0x1000))});
    QVERIFY(model.hasPlaces());
    model.clear();
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.count(MessageLevel::Error), 0);
    QVERIFY(!model.hasPlaces());
    QCOMPARE(model.plainText(true), QString());
}

void tst_OutputModel::hiddenLevelsAreLeftOutAndComeBack()
{
    OutputModel model;
    OutputFilter filter;
    filter.setSourceModel(&model);
    const QAbstractItemModelTester tester(&filter, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.append({message(u"<strong>Error: </strong>x"_s), message(u"Warning: y\nmore"_s), message(u"z"_s)});
    filter.setShown(MessageLevel::Warning, false);
    QCOMPARE(FormTest::columnTexts(filter, 0), (QStringList{u"Error: x"_s, u"z"_s}));
    model.append({message(u"Warning: new"_s), message(u"new"_s)});
    QCOMPARE(filter.rowCount(), 3);
    filter.setShown(MessageLevel::Warning, true);
    QCOMPARE(filter.rowCount(), 6);
}

void tst_OutputModel::findGoesOnAtTheOtherEnd()
{
    OutputModel model;
    OutputFilter filter;
    filter.setSourceModel(&model);
    model.append({message(u"one"_s), message(u"two"_s), message(u"one two"_s)});
    const TextSearch one{.text = u"ONE"_s};
    QCOMPARE(filter.find(one, 0, false), 0);
    QCOMPARE(filter.find(one, 1, false), 2);
    QCOMPARE(filter.find(one, 1, true), 0);
    QCOMPARE(filter.find({.text = u"two"_s}, 0, true), 2);
    QCOMPARE(filter.find({.text = u"three"_s}, 0, false), -1);
    QCOMPARE(filter.find({}, 0, false), -1);
    const OutputFilter::Matches matches = filter.countMatches(one, 2);
    QCOMPARE(matches.all, 2);
    QCOMPARE(matches.before, 1);
}

void tst_OutputModel::findLooksOnlyAtShownMessages()
{
    OutputModel model;
    OutputFilter filter;
    filter.setSourceModel(&model);
    QCOMPARE(filter.find({.text = u"x"_s}, 0, false), -1);
    model.append({message(u"Warning: x"_s), message(u"y"_s)});
    filter.setShown(MessageLevel::Warning, false);
    QCOMPARE(filter.find({.text = u"x"_s}, 0, false), -1);
}

QTEST_MAIN(tst_OutputModel)

#include "tst_outputmodel.moc"
