#include "check/CheckTest.h"

using namespace CheckTest;
using namespace CheckTest::Texts;

/** What the check reads of a line, and what it leaves behind in the caches of the store. */
class TestCheckReading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void init() { disableCorrections(false); }
    void subIndicesWithoutTheirObjectAreNotJudged_data();
    void subIndicesWithoutTheirObjectAreNotJudged();
    void theLineIsReadFromTheTableAndNotFromAFormerCache();
    void theCheckFillsTheRecordCacheOfItsLine();
    void aCorrectedSubIndexIsJudgedAsItIsNow();
    void messagesShowTheAccessTypeOfTheProject();
    void signalsAreReadFromTheTableAndNotFromAFormerCache();
    void theCheckLeavesNoCacheOfRawCanSignals();
};

namespace {

constexpr quint8 Transmit = ObjectDataBase::Transmit;

QString defaultOf(const Project &project, quint16 index, quint8 subIndex)
{
    Sub data;
    return project.store->getSubIndex(project.line, index, subIndex, data) ? data.defaultvalue
                                                                           : QStringLiteral("<missing>");
}

} // namespace

void TestCheckReading::subIndicesWithoutTheirObjectAreNotJudged_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("in front of all objects") << 0x0001;
    QTest::newRow("between objects") << 0x1FFF;
    QTest::newRow("behind all objects") << 0xFFFF;
}

void TestCheckReading::subIndicesWithoutTheirObjectAreNotJudged()
{
    QFETCH(int, index);
    const Project project;
    Sub spoilt = sub(QString(), CAN::Unsigned8, QStringLiteral("none"), QStringLiteral("no number"));
    spoilt.implementation = CANopen::ApplicationVariable;
    spoilt.varname = QStringLiteral("speed");
    project.put(quint16(index), 0, spoilt);
    project.put(quint16(index), 1, spoilt);
    compare(Checker().checkCANopen(project), {});
}

void TestCheckReading::theLineIsReadFromTheTableAndNotFromAFormerCache()
{
    const Project project;
    project.store->cacheAllSubs(0);
    QVERIFY(project.store->executeSql(
        QStringLiteral("update SubObjects0 set accesstype = 'none' where objectindex = 8194")));
    compare(Checker().checkCANopen(project),
            {"Object 0x2002-0x00: The access type 'none' is invalid. Use ro, rw, const, wo, rww or rwr "
             "instead."_error});
}

void TestCheckReading::theCheckFillsTheRecordCacheOfItsLine()
{
    const Project project;
    const QString value = defaultOf(project, 0x2001, 0);
    compare(Checker().checkCANopen(project), {});
    QVERIFY(project.store->executeSql(QStringLiteral("update SubObjects0 set defaultvalue = 'outside'")));
    QCOMPARE(defaultOf(project, 0x2001, 0), value);
}

// The variable of 0x2001 would be met a second time if sub-index 0 had stayed a variable.
void TestCheckReading::aCorrectedSubIndexIsJudgedAsItIsNow()
{
    const Project project;
    project.array(0x2100, {QStringLiteral("1")});
    project.edit(0x2100, 0, [](Sub &data) {
        data.implementation = CANopen::ApplicationVariable;
        data.varname = QStringLiteral("speed");
    });
    compare(
        Checker().checkCANopen(project),
        {"Object 0x2100-0</i>:'Managed Const' is used as implementation type for this subindex."_corrected});
    QCOMPARE(project.get(0x2100, 0).implementation, int(CANopen::ManagedConst));
}

void TestCheckReading::messagesShowTheAccessTypeOfTheProject()
{
    const Project project;
    project.access(0x2001, 0, QStringLiteral("<RW>"));
    project.access(0x2002, 0, QString());
    const QString rest = QStringLiteral(" is invalid. Use ro, rw, const, wo, rww or rwr instead.");
    compare(Checker().checkCANopen(project),
            {"Object 0x2001-0x00: The access type '&lt;RW&gt;'"_error + rest,
             "Object 0x2002-0x00: The access type ''"_error + rest});
}

void TestCheckReading::signalsAreReadFromTheTableAndNotFromAFormerCache()
{
    const Project project(RawCanLine);
    project.store->cacheAllDataElements(0);
    QVERIFY(project.store->executeSql(
        QStringLiteral("update DataElements0 set varname = '' where canid = %1").arg(0x124)));
    compare(Checker().checkRawCan(project), {" Variable name missing for signal # 1 in CAN-ID 0x124"_red});
}

// What a command file writes behind the check must be seen by the forms.
void TestCheckReading::theCheckLeavesNoCacheOfRawCanSignals()
{
    const Project project(RawCanLine);
    compare(Checker().checkRawCan(project), {});
    QVERIFY(project.store->executeSql(QStringLiteral("update DataElements0 set varname = 'outside'")));
    Element element;
    QVERIFY(project.store->getDataElement(0, 0x124, Transmit, 1, element));
    QCOMPARE(element.varname, QStringLiteral("outside"));
}

QTEST_GUILESS_MAIN(TestCheckReading)
#include "tst_checkreading.moc"
