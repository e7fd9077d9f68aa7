#include "generators/declarations/DeclarationDesk.h"
#include "support/GoldenFile.h"

using namespace Qt::StringLiterals;

namespace {

DeclarationDesk::Sub entry(const QString &name)
{
    return {.name = name, .datatype = CAN::Unsigned16};
}

DeclarationDesk::Sub variable(const QString &name, int dataType, int size = 0)
{
    return {.name = name,
            .datatype = dataType,
            .size = size,
            .implementation = CANopen::ApplicationVariable,
            .varname = name + u"_$I"_s};
}

void addObjects(DeclarationDesk &desk, quint8 line)
{
    desk.object(0x1000, u"Device type"_s, {entry(u"Device type"_s)}, line);
    desk.object(0x1018, u"Identity object"_s,
                {entry(u"Number of entries"_s), entry(u"Vendor-ID"_s), entry(u"Product code"_s)}, line);
    desk.object(0x1400, u"RPDO_COMM_PAR_1_FOR_NODE_5_Drive left"_s, {entry(u"Number of entries"_s)}, line);
    desk.object(0x2000, u"Motor - speed"_s,
                {entry(u"Number of entries"_s), variable(u"speed"_s, CAN::Integer16),
                 variable(u"name"_s, CAN::VisibleString, 12)},
                line);
    desk.object(0x2001, u"Motor (speed)"_s, {entry(u"Number of entries"_s), entry(u"name"_s)}, line);
}

void addGroups(DeclarationDesk &desk, quint8 line)
{
    desk.group(61444, u"Electronic Engine Controller 1"_s, ObjectDataBase::Transmit, line);
    desk.spn(61444, 190, applicationSpn(u"engineSpeed"_s, CAN::Unsigned16), ObjectDataBase::Transmit, line);
    desk.group(65259, u"Component Identification"_s, ObjectDataBase::Receive, line, 3);
    desk.spn(65259, 586, applicationSpn(u"make"_s, CAN::VisStringAsteriks, 40), ObjectDataBase::Receive,
             line);
}

void addMessages(DeclarationDesk &desk, quint8 line)
{
    desk.message(0x181, ObjectDataBase::Receive, line);
    desk.element(0x181, 1, applicationElement(u"level"_s, CAN::Unsigned12), ObjectDataBase::Receive, line);
    desk.message(0x18FEF100, ObjectDataBase::Transmit, line);
}

/** The files of a project with something of everything; "several" lines or a "single" one. */
void build(DeclarationDesk &desk, bool several)
{
    const quint8 second = several ? 1 : 0;
    desk.addLine(0, several ? 1 : 5);
    if (several)
        desk.addLine(1, 7);
    addObjects(desk, 0);
    addGroups(desk, second);
    addMessages(desk, second);
}

} // namespace

/** Whole files of a small project. */
class TestDeclarationsGolden : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theNamesAreTheGoldenOnes_data();
    void theNamesAreTheGoldenOnes();
    void theVariablesAreTheGoldenOnes_data();
    void theVariablesAreTheGoldenOnes();

private:
    static void compare(const QString &name, const QString &text)
    {
        const QString difference = GoldenFile::difference(name, text.toUtf8());
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }
};

void TestDeclarationsGolden::initTestCase()
{
    StoreTest::prepareApplication();
    qputenv("SOURCE_DATE_EPOCH", "1700000000");
}

void TestDeclarationsGolden::theNamesAreTheGoldenOnes_data()
{
    QTest::addColumn<bool>("several");
    QTest::newRow("single-line") << false;
    QTest::newRow("multi-line") << true;
}

void TestDeclarationsGolden::theNamesAreTheGoldenOnes()
{
    QFETCH(bool, several);
    DeclarationDesk desk;
    build(desk, several);
    compare(u"indices-%1/gen_indices.h"_s.arg(QString::fromLatin1(QTest::currentDataTag())), desk.indices());
}

void TestDeclarationsGolden::theVariablesAreTheGoldenOnes_data()
{
    QTest::addColumn<bool>("several");
    QTest::addColumn<bool>("v4");
    QTest::newRow("single-line") << false << true;
    QTest::newRow("multi-line") << true << true;
    QTest::newRow("older-stack") << true << false;
}

void TestDeclarationsGolden::theVariablesAreTheGoldenOnes()
{
    QFETCH(bool, several);
    QFETCH(bool, v4);
    DeclarationDesk desk;
    build(desk, several);
    const QString folder = u"externdecl-%1/"_s.arg(QString::fromLatin1(QTest::currentDataTag()));
    compare(folder + u"gen_extern_decl.h"_s, desk.declarations(v4));
    compare(folder + u"gen_var_decl.c"_s, desk.read(u"gen_var_decl.c"_s));
}

QTEST_GUILESS_MAIN(TestDeclarationsGolden)
#include "tst_declarationsgolden.moc"
