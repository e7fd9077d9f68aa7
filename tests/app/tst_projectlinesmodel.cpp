#include "app/ProjectLinesModel.h"
#include "app/TestHome.h"
#include "app/TestProject.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/** The table of a project's lines. */
class TestProjectLinesModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutStoreItIsEmpty();
    void aRowTellsProtocolsAndCounts();
    void linesThatAreNeverSavedAreNotShown();
    void anUnchangedProjectResetsNothing();

private:
    static QStringList rowTexts(const ProjectLinesModel &model, int row);
};

QStringList TestProjectLinesModel::rowTexts(const ProjectLinesModel &model, int row)
{
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column)
        texts.append(model.index(row, column).data().toString());
    return texts;
}

void TestProjectLinesModel::withoutStoreItIsEmpty()
{
    ProjectLinesModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.readFrom(nullptr);
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.headerData(ProjectLinesModel::PgnsColumn, Qt::Horizontal).toString(), u"PGNs"_s);
}

void TestProjectLinesModel::aRowTellsProtocolsAndCounts()
{
    ObjectDataBase store;
    QVERIFY(TestProject::fill(store, {0, 2}, u"1"_s));
    QVERIFY(store.setGeneralSetting(u"line2type"_s, u"7"_s));
    QVERIFY(store.addIndex(0, 0x1000, ObjectDataBase::INDEX_DATA_T()));
    QVERIFY(store.addPGN(2, 0xFECA, TestProject::pgn(u"DM1"_s, ObjectDataBase::Receive)));
    QVERIFY(store.addPGN(2, 0xFECA, TestProject::pgn(u"DM1"_s, ObjectDataBase::Transmit)));
    ObjectDataBase::CANID canid;
    canid.direction = ObjectDataBase::Transmit;
    QVERIFY(store.addCANID(2, 0x123, canid));

    ProjectLinesModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.readFrom(&store);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(rowTexts(model, 0), (QStringList{u"0"_s, u"CANopen"_s, u"1"_s, u"0"_s, u"0"_s}));
    QCOMPARE(rowTexts(model, 1), (QStringList{u"2"_s, u"J1939 and raw CAN"_s, u"0"_s, u"2"_s, u"1"_s}));
}

void TestProjectLinesModel::linesThatAreNeverSavedAreNotShown()
{
    ObjectDataBase store;
    QVERIFY(TestProject::fill(store, {0}, u"1"_s));
    QVERIFY(store.addNode(ObjectDataBase::ClipboardLine, ObjectDataBase::NODE_DATA_T()));
    QVERIFY(store.addNode(ObjectDataBase::ReferenceLine, ObjectDataBase::NODE_DATA_T()));
    ProjectLinesModel model;
    model.readFrom(&store);
    QCOMPARE(model.rowCount(), 1);
}

void TestProjectLinesModel::anUnchangedProjectResetsNothing()
{
    ObjectDataBase store;
    QVERIFY(TestProject::fill(store, {0}, u"1"_s));
    ProjectLinesModel model;
    model.readFrom(&store);
    const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    model.readFrom(&store);
    QCOMPARE(resets.count(), 0);
    QVERIFY(store.setGeneralSetting(u"line0type"_s, u"4"_s));
    model.readFrom(&store);
    QCOMPARE(resets.count(), 1);
}

int main(int argc, char **argv)
{
    const TestHome home;
    const QCoreApplication application(argc, argv);
    TestProjectLinesModel test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_projectlinesmodel.moc"
