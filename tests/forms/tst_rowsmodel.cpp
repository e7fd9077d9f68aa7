#include "forms/FormTest.h"
#include "forms/RowsModel.h"

#include <QAbstractItemModelTester>
#include <QFont>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

QList<RowsModel::Row> rowsOf(const QString &letters)
{
    QList<RowsModel::Row> rows;
    for (const QChar letter : letters)
        rows.append({.cells = {QString(letter), QString(letter).toLower()},
                     .place = ProjectLocation::ofObject(0, letter.unicode())});
    return rows;
}

} // namespace

/** Rows that are handed over whole, and of which a view is told only what differs. */
class tst_RowsModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void columnsAndCellsAreAsGiven();
    void onlyWhatDiffersIsTold_data();
    void onlyWhatDiffersIsTold();
    void aSelectedRowStaysSelectedWhenOthersComeAndGo();
    void aHeadingCannotBeSelected();
    void aRowIsFoundByItsPlace();

private:
    static RowsModel::Row heading() { return {.cells = {u"Group"_s}, .isHeading = true}; }
};

void tst_RowsModel::columnsAndCellsAreAsGiven()
{
    RowsModel model({{.title = u"Index"_s, .sample = u"0"_s, .alignment = Qt::AlignRight},
                     {.title = u"Name"_s},
                     {.title = u"None"_s}});
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QList<RowsModel::Row> rows = rowsOf(u"A"_s);
    rows.first().toolTip = u"tip"_s;
    model.setRows(rows);
    QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), u"Name"_s);
    QVERIFY(!model.headerData(3, Qt::Horizontal).isValid());
    QVERIFY(!model.headerData(0, Qt::Vertical).isValid());
    QCOMPARE(FormTest::rowTexts(model, 0), (QStringList{u"A"_s, u"a"_s, QString()}));
    QCOMPARE(model.index(0, 0).data(Qt::ToolTipRole).toString(), u"tip"_s);
    QCOMPARE(model.index(0, 0).data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight | Qt::AlignVCenter));
    QVERIFY(!model.data(QModelIndex()).isValid());
}

void tst_RowsModel::onlyWhatDiffersIsTold_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("signals_"); // in order: r first-last removed, i inserted, c changed
    QTest::newRow("nothing") << u"ABC"_s << u"ABC"_s << QString();
    QTest::newRow("both empty") << QString() << QString() << QString();
    QTest::newRow("first rows") << QString() << u"AB"_s << u"i0-1 "_s;
    QTest::newRow("all gone") << u"AB"_s << QString() << u"r0-1 "_s;
    QTest::newRow("one in the middle changed") << u"ABC"_s << u"AXC"_s << u"c1-1 "_s;
    QTest::newRow("inserted in the middle") << u"AD"_s << u"ABCD"_s << u"i1-2 "_s;
    QTest::newRow("removed at the end") << u"ABCD"_s << u"AB"_s << u"r2-3 "_s;
    QTest::newRow("appended") << u"AB"_s << u"ABC"_s << u"i2-2 "_s;
    QTest::newRow("two by one") << u"ABCD"_s << u"AXD"_s << u"r1-2 i1-1 "_s;
    QTest::newRow("repeated rows") << u"AAA"_s << u"AA"_s << u"r2-2 "_s;
}

void tst_RowsModel::onlyWhatDiffersIsTold()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    RowsModel model({{.title = u"Upper"_s}, {.title = u"Lower"_s}});
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setRows(rowsOf(before));
    QString told;
    const auto tell = [&told](char kind, int first, int last) {
        told += QLatin1Char(kind) + QString::number(first) + u'-' + QString::number(last) + u' ';
    };
    connect(&model, &QAbstractItemModel::rowsRemoved, this,
            [&](const QModelIndex &, int first, int last) { tell('r', first, last); });
    connect(&model, &QAbstractItemModel::rowsInserted, this,
            [&](const QModelIndex &, int first, int last) { tell('i', first, last); });
    connect(&model, &QAbstractItemModel::dataChanged, this,
            [&](const QModelIndex &first, const QModelIndex &last) { tell('c', first.row(), last.row()); });
    connect(&model, &QAbstractItemModel::modelReset, this, [&] { told += u"reset "_s; });
    model.setRows(rowsOf(after));
    QTEST(told, "signals_");
    QCOMPARE(FormTest::columnTexts(model, 0).join(QString()), after);
}

void tst_RowsModel::aSelectedRowStaysSelectedWhenOthersComeAndGo()
{
    RowsModel model({{.title = u"Upper"_s}});
    model.setRows(rowsOf(u"ABC"_s));
    const QPersistentModelIndex selected = model.index(2, 0);
    model.setRows(rowsOf(u"AXYBC"_s));
    QCOMPARE(selected.row(), 4);
    QCOMPARE(selected.data().toString(), u"C"_s);
}

void tst_RowsModel::aHeadingCannotBeSelected()
{
    RowsModel model({{.title = u"Setting"_s}});
    model.setRows({heading(), rowsOf(u"A"_s).at(0)});
    QVERIFY(!model.flags(model.index(0, 0)).testFlag(Qt::ItemIsSelectable));
    QVERIFY(model.index(0, 0).data(Qt::FontRole).value<QFont>().bold());
    QVERIFY(model.flags(model.index(1, 0)).testFlag(Qt::ItemIsSelectable));
    QVERIFY(!model.index(1, 0).data(Qt::FontRole).isValid());
}

void tst_RowsModel::aRowIsFoundByItsPlace()
{
    RowsModel model({{.title = u"Upper"_s}});
    model.setRows(rowsOf(u"ABC"_s));
    QCOMPARE(model.rowOf(ProjectLocation::ofObject(0, 'B')), 1);
    QCOMPARE(model.rowOf(ProjectLocation::ofObject(1, 'B')), -1);
}

QTEST_MAIN(tst_RowsModel)

#include "tst_rowsmodel.moc"
