#include "check/CheckTest.h"
#include "store/StoreTest.h"

#include <QTemporaryDir>

using namespace CheckTest;
using namespace CheckTest::Texts;

/** What the check writes into the project, read from the project file that is saved behind it. */
class TestCheckCorrections : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void cleanup() { disableCorrections(false); }
    void subIndexZeroIsWrittenInDecimal_data();
    void subIndexZeroIsWrittenInDecimal();
    void staticMappingTablesCountTheirEntries();
    void managedConstChangesNothingElse();
    void bothCorrectionsOfSubIndexZeroStay();
    void emptyTransmitPdosAreDisabled_data();
    void emptyTransmitPdosAreDisabled();
    void onlyTheFirstFourDynamicTransmitPdosAreDisabled_data();
    void onlyTheFirstFourDynamicTransmitPdosAreDisabled();
    void aCorrectionIsSeenByTheRulesBehindIt();
    void correctionsOfTheSecondLineStayThere();
    void correctionsAreWrittenThroughTheStore();
    void cachedRecordsShowTheCorrection();
    void withoutAutomaticCorrectionNothingIsWritten();
    void theUsersChoiceIsReadForEachLine();
    void aValidProjectIsNotTouched_data();
    void aValidProjectIsNotTouched();
    void theHintAtStackFilesIsGivenOnce();

private:
    QString save(const Project &project) const;
    std::unique_ptr<QTemporaryDir> m_folder;
};

QString TestCheckCorrections::save(const Project &project) const
{
    QString path = m_folder->filePath("project.vexp");
    if (!project.store->saveProject(path))
        qFatal("cannot save the project");
    return path;
}

void TestCheckCorrections::subIndexZeroIsWrittenInDecimal_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("highest");
    QTest::addColumn<QString>("saved");
    QTest::newRow("too high") << "7" << 2 << "2";
    QTest::newRow("empty") << "" << 2 << "2";
    QTest::newRow("more than 9") << "0x10" << 31 << "31";
    QTest::newRow("all of them") << "0" << 254 << "254";
    QTest::newRow("right in hexadecimal") << "0x1f" << 31 << "0x1f";
    QTest::newRow("right with zeros") << "0x02" << 2 << "0x02";
}

void TestCheckCorrections::subIndexZeroIsWrittenInDecimal()
{
    QFETCH(QString, value);
    QFETCH(int, highest);
    const Project project;
    project.put(0x2000, quint8(highest), project.get(0x2000, 2));
    project.value(0x2000, 0, value);
    Checker().checkCANopen(project);
    const StoreTest::DatabaseFile file(save(project));
    QTEST(file.value("select defaultvalue from SubObjects0 where objectindex = 8192 and subindex = 0")
              .toString(),
          "saved");
}

void TestCheckCorrections::staticMappingTablesCountTheirEntries()
{
    const QStringList three{"0x20010010", "0x20010010", "0x20010010"};
    const QList<QPair<QString, QString>> cases = {{"const", "3"}, {"rw", "1"}};
    for (const auto &[access, saved] : cases) {
        const Project project;
        project.mapping(0x1A00, three, access, "1");
        Checker().checkCANopen(project);
        QCOMPARE(Project(save(project)).get(0x1A00, 0).defaultvalue, saved);
    }
}

void TestCheckCorrections::managedConstChangesNothingElse()
{
    const Project project;
    Sub head = StoreTest::sampleSub("Highest sub-index");
    head.datatype = CAN::Unsigned8;
    head.accesstype = "const";
    head.defaultvalue = "0x2";
    head.currentvalue = "9";
    head.defaultineds = true;
    head.implementation = CANopen::ApplicationVariable;
    head.varname = "count";
    head.refuseread = head.cyclicread = head.changedbyuser = head.nvstorage = true;
    head.wizardsource = 454;
    head.category = 2;
    head.signalid = 77;
    head.metadata = {{"eds_define", "VARIANT"}, {"note", "it's \"here\""}};
    project.put(0x2000, 0, head);
    project.writeDefault(0x2000, 0, Always);
    const QString select = "select * from SubObjects0 where objectindex = 8192 and subindex = 0";
    const auto rowOf = [&] { return StoreTest::DatabaseFile(save(project)).rows(select).value(0); };
    const QVariantList before = rowOf();
    compare(Checker().checkCANopen(project),
            {"Object 0x2000-0</i>:'Managed Const' is used as implementation type for this "
             "subindex."_corrected});
    const QVariantList after = rowOf();
    QStringList changed;
    for (int column = 0; column < before.size(); ++column)
        if (before.at(column) != after.at(column))
            changed += before.at(column).toString() + "->" + after.at(column).toString();
    QCOMPARE(changed, QStringList{"2->1"});
    head.implementation = CANopen::ManagedConst;
    QCOMPARE(Project(m_folder->filePath("project.vexp")).get(0x2000, 0).metadata, head.metadata);
}

void TestCheckCorrections::bothCorrectionsOfSubIndexZeroStay()
{
    const Project project;
    project.edit(0x2000, 0, [](Sub &s) {
        s.defaultvalue = "9";
        s.implementation = CANopen::ManagedVariable;
    });
    QCOMPARE(Checker().checkCANopen(project).messages.size(), 2);
    const Project saved(save(project));
    QCOMPARE(saved.get(0x2000, 0).defaultvalue, "2");
    QCOMPARE(saved.get(0x2000, 0).implementation, int(CANopen::ManagedConst));
    compare(Checker().checkCANopen(saved), {});
}

void TestCheckCorrections::emptyTransmitPdosAreDisabled_data()
{
    QTest::addColumn<QString>("cobId");
    QTest::addColumn<QString>("saved");
    QTest::newRow("node-ID") << "$NODEID+0x180"
                             << "$NODEID+0x80000180";
    QTest::newRow("bit 30") << "$NODEID+0x40000180"
                            << "$NODEID+0xc0000180";
    QTest::newRow("number") << "0x180"
                            << "0x80000180";
    QTest::newRow("capitals") << "0x1ABCDEF0"
                              << "0x9abcdef0";
    QTest::newRow("zeros in front") << "$NODEID+0x00000180"
                                    << "$NODEID+0x80000180";
    QTest::newRow("node-ID behind is dropped") << "0x180+$NODEID"
                                               << "0x80000180";
    QTest::newRow("node-ID twice is kept once") << "$NODEID+$NODEID+0x180"
                                                << "$NODEID+0x80000180";
    QTest::newRow("disabled") << "$NODEID+0x80000180"
                              << "$NODEID+0x80000180";
    QTest::newRow("disabled in capitals") << "$NODEID+0xC00001A0"
                                          << "$NODEID+0xC00001A0";
    QTest::newRow("disabled, node-ID behind is dropped") << "0x80000180+$NODEID"
                                                         << "0x80000180";
    QTest::newRow("disabled number") << "0x80000180"
                                     << "0x80000180";
    QTest::newRow("decimal") << "384"
                             << "384";
    QTest::newRow("node-ID alone") << "$NODEID"
                                   << "$NODEID";
    QTest::newRow("empty") << ""
                           << "";
}

void TestCheckCorrections::emptyTransmitPdosAreDisabled()
{
    QFETCH(QString, cobId);
    QFETCH(QString, saved);
    const Project project;
    project.set("overwrite_predef", "1");
    project.pdo(0x1800, cobId, {"0x20010010"}, "rw");
    project.value(0x1A00, 0, "0");
    const Outcome outcome = Checker().checkCANopen(project);
    const QString corrected =
        QStringLiteral(
            "<i>Corrected: Object 0x1800</i>: The COB-ID of this PDO has been disabled (%1), because "
            "it does not contain active mapping entries.")
            .arg(saved);
    const QString enabled =
        "Object 0x1800: PDO is enabled but its mapping table (0x1a00) is empty (sub 0 = 0)."_error;
    if (cobId != saved)
        compare(outcome, {corrected});
    else
        compare(outcome, cobId == "384" ? QStringList{enabled} : QStringList());
    const StoreTest::DatabaseFile file(save(project));
    QCOMPARE(file.value("select defaultvalue from SubObjects0 where objectindex = 6144 and subindex = 1")
                 .toString(),
             saved);
}

void TestCheckCorrections::onlyTheFirstFourDynamicTransmitPdosAreDisabled_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("access");
    QTest::addColumn<bool>("isCorrected");
    for (int index = 0x1800; index <= 0x1805; ++index)
        QTest::addRow("0x%x", index) << index << "rw" << (index < 0x1804);
    QTest::newRow("last transmit PDO") << 0x19FF << "rw" << false;
    for (int index = 0x1400; index <= 0x1404; ++index)
        QTest::addRow("0x%x", index) << index << "rw" << false;
    QTest::newRow("read only table") << 0x1800 << "ro" << false;
    QTest::newRow("static table") << 0x1801 << "const" << false;
}

void TestCheckCorrections::onlyTheFirstFourDynamicTransmitPdosAreDisabled()
{
    QFETCH(int, index);
    QFETCH(QString, access);
    QFETCH(bool, isCorrected);
    const Project project;
    project.set("overwrite_predef", "1");
    project.pdo(quint16(index), "$NODEID+0x301", {}, access);
    project.variable(0x2200, sub("Other", CAN::Unsigned8, "rw", "0"));
    if (access == "rw") {
        project.put(quint16(index + 0x200), 1, sub("Entry", CAN::Unsigned32, "rw", "0x22000008"));
        QCOMPARE(project.get(quint16(index + 0x200), 0).defaultvalue, "0");
    }
    const Outcome outcome = Checker().checkCANopen(project);
    QCOMPARE(outcome.changed, isCorrected);
    QCOMPARE(outcome.messages.last().contains("PDO is enabled but its mapping table"), !isCorrected);
    QCOMPARE(Project(save(project)).get(quint16(index), 1).defaultvalue,
             isCorrected ? "$NODEID+0x80000301" : "$NODEID+0x301");
}

// A count that was corrected maps what it says now, and a PDO that was disabled is not enabled any more.
void TestCheckCorrections::aCorrectionIsSeenByTheRulesBehindIt()
{
    Project project;
    project.mapping(0x1600, {"0x20000108", "0"}, "const", "1");
    project.pdo(0x1801, "$NODEID+0x280", {"0x20010010"}, "rw");
    project.value(0x1A01, 0, "0");
    compare(Checker().checkCANopen(project),
            {"Object 0x1600</i>: The value of subindex 0 does not fit to the highest subindex."_corrected,
             "Object 0x1600:2 is an active mapping entry but maps no object (empty entry)."_error,
             "Object 0x1801</i>: The COB-ID of this PDO has been disabled ($NODEID+0x80000280), because it "
             "does not contain active mapping entries."_corrected});
}

void TestCheckCorrections::correctionsOfTheSecondLineStayThere()
{
    Project project;
    project.value(0x2000, 0, "9");
    project.addLine(1, CANopenLine);
    project.value(0x2000, 0, "9");
    QVERIFY(Checker().checkCANopen(project).changed);
    Project saved(save(project));
    QCOMPARE(saved.get(0x2000, 0).defaultvalue, "9");
    saved.line = 1;
    QCOMPARE(saved.get(0x2000, 0).defaultvalue, "2");
}

void TestCheckCorrections::correctionsAreWrittenThroughTheStore()
{
    const Project project;
    project.edit(0x2000, 0, [](Sub &s) { s.implementation = CANopen::ManagedVariable; });
    const StoreTest::RecordedChanges changes(*project.store);
    QVERIFY(Checker().checkCANopen(project).changed);
    QCOMPARE(changes.all(), QList<ChangeSet>({{.type = ObjectDataBase::SubIndexChanged, .index = 0x2000}}));
}

void TestCheckCorrections::cachedRecordsShowTheCorrection()
{
    const Project project;
    project.value(0x2000, 0, "9");
    project.edit(0x1018, 0, [](Sub &s) { s.implementation = CANopen::ManagedVariable; });
    project.store->cacheAllSubs(0);
    QVERIFY(Checker().checkCANopen(project).changed);
    for (int pass = 0; pass < 2; ++pass) {
        QCOMPARE(project.get(0x2000, 0).defaultvalue, "2");
        QCOMPARE(project.get(0x1018, 0).implementation, int(CANopen::ManagedConst));
        project.store->clearSubCache();
    }
}

void TestCheckCorrections::withoutAutomaticCorrectionNothingIsWritten()
{
    const Project project;
    project.set("overwrite_predef", "1");
    project.value(0x1018, 0, "9");
    project.edit(0x2000, 0, [](Sub &s) { s.implementation = CANopen::ManagedVariable; });
    project.pdo(0x1800, "$NODEID+0x180", {"0x20010010"}, "rw");
    project.value(0x1A00, 0, "0");
    disableCorrections();
    const QString before = project.store->contentHash();
    const StoreTest::RecordedChanges changes(*project.store);
    compare(Checker().checkCANopen(project),
            {"Object 0x1800: PDO is enabled but its mapping table (0x1a00) is empty (sub 0 = 0)."_error});
    QCOMPARE(project.store->contentHash(), before);
    QVERIFY(changes.all().isEmpty());
}

void TestCheckCorrections::theUsersChoiceIsReadForEachLine()
{
    const Project project;
    Checker checker;
    for (const bool isDisabled : {true, false, true}) {
        project.value(0x2000, 0, "9");
        disableCorrections(isDisabled);
        QCOMPARE(checker.checkCANopen(project).changed, !isDisabled);
    }
}

void TestCheckCorrections::aValidProjectIsNotTouched_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {1, 2, 4, 5, 6, 7})
        QTest::addRow("%d", type) << type;
}

void TestCheckCorrections::aValidProjectIsNotTouched()
{
    QFETCH(int, type);
    Project project(type);
    project.addLine(1, type);
    const QString before = project.store->contentHash();
    const StoreTest::RecordedChanges changes(*project.store);
    compare(Checker().checkAll(project), {});
    QCOMPARE(project.store->contentHash(), before);
    QVERIFY(changes.all().isEmpty());
}

void TestCheckCorrections::theHintAtStackFilesIsGivenOnce()
{
    const Project project;
    project.setMisc("PreviousToolVersion", "3.8.0");
    compare(Checker().checkProject(project),
            {"Add <font color='red'>co_memcpy.c</font> to your project or Makefile."_hint});
    const StoreTest::DatabaseFile file(save(project));
    QCOMPARE(file.column("select value from MiscSettings where item = 'PreviousToolVersion'"),
             QStringList{""});
}

QTEST_GUILESS_MAIN(TestCheckCorrections)
#include "tst_checkcorrections.moc"
