#include "SrdoDesk.h"
#include "support/GoldenFile.h"

#include <functional>

using namespace Qt::StringLiterals;

using Build = std::function<void(SrdoDesk &)>;
Q_DECLARE_METATYPE(Build)

namespace {

SrdoDesk::Communication byNodeId(const QString &direction)
{
    return {.direction = direction, .cobId1 = u"0xff + 2 * $NODEID"_s, .cobId2 = u"0x100 + 2 * $NODEID"_s};
}

/** An axis that tells its position and its inverted copy, and receives the state of a brake. */
void addAxis(SrdoDesk &desk, quint8 line = 0)
{
    desk.mapped(0x2000, CAN::Integer32, u"position"_s, line);
    desk.mapped(0x2001, CAN::Integer32, u"positionInverted"_s, line);
    desk.mapped(0x2002, CAN::Unsigned8, u"brake"_s, line);
    desk.mapped(0x2003, CAN::Real32, u"force"_s, line);
    desk.srdo(1, {u"0x20000020"_s, u"0x20010020"_s}, line, byNodeId(u"1"_s));
    desk.srdo(2, {u"0x20020008"_s, u"0x20020008"_s, u"0x20030020"_s, u"0x20030020"_s}, line,
              {.direction = u"2"_s, .cobId1 = u"0x105"_s, .cobId2 = u"0x106"_s});
    desk.array(
        0x13FF,
        {{.type = CAN::Unsigned16, .value = u"0x1234"_s}, {.type = CAN::Unsigned16, .value = u"0xabcd"_s}},
        line);
}

} // namespace

/** Whole files of small devices, one for each form of the output. */
class TestSrdoGolden : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        StoreTest::prepareApplication();
        qputenv("SOURCE_DATE_EPOCH", "1700000000");
    }
    void devicesGiveTheirFiles_data();
    void devicesGiveTheirFiles();
};

void TestSrdoGolden::devicesGiveTheirFiles_data()
{
    QTest::addColumn<Build>("build");
    QTest::addColumn<bool>("v4");
    QTest::newRow("single-line") << Build([](SrdoDesk &desk) { addAxis(desk); }) << true;
    QTest::newRow("older-static") << Build([](SrdoDesk &desk) {
        addAxis(desk);
        desk.makeStatic();
    }) << false;
    QTest::newRow("static-multi-line") << Build([](SrdoDesk &desk) {
        addAxis(desk);
        addAxis(desk, 1);
        desk.makeStatic();
    }) << true;
}

void TestSrdoGolden::devicesGiveTheirFiles()
{
    QFETCH(Build, build);
    QFETCH(bool, v4);
    SrdoDesk desk;
    desk.set(u"applicationheader"_s, u"axis.h"_s);
    build(desk);
    const QString text = desk.srdoFile(v4);
    const QString golden = u"srdo-%1/gen_srdo.c"_s.arg(QString::fromLatin1(QTest::currentDataTag()));
    const QString difference = GoldenFile::difference(golden, text.toUtf8());
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_GUILESS_MAIN(TestSrdoGolden)
#include "tst_srdogolden.moc"
