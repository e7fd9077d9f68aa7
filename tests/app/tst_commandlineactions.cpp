#include "app/CommandLineActions.h"
#include "app/TestHome.h"
#include "app/TestProject.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/** Stands for the window and writes down what it is asked for. */
class RecordingTarget : public CommandLineTarget
{
public:
    void setNormalCursor() override { calls.append(u"cursor"_s); }
    void enterNetworkToolMode() override { calls.append(u"lvx"_s); }
    void saveProject() override { calls.append(u"save"_s); }
    void generateOutput() override { calls.append(u"generate"_s); }
    void hideHelp() override { calls.append(u"hide help"_s); }

    QStringList calls;
};

} // namespace

/** The actions of a batch call: their order, and what the merge of parameter groups takes over. */
class TestCommandLineActions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theOrderOfTheStepsIsFixed();
    void onlyPresentOptionsRunInTheOrderOfTheSteps_data();
    void onlyPresentOptionsRunInTheOrderOfTheSteps();
    void theHelpMenuIsHiddenInTheJ1939EditionOnly_data();
    void theHelpMenuIsHiddenInTheJ1939EditionOnly();
    void generationEndsTheEventLoopWithZero();
    void filesThatDoNotExistAreIgnoredInSilence_data();
    void filesThatDoNotExistAreIgnoredInSilence();
    void aMissingCommandFileIsLogged();
    void aModifierNeedsAValue_data();
    void aModifierNeedsAValue();
    void aModifierFileSetsSettings();
    void anImportCommandFileDeletesObjects();
    void anUnusableImportCommandFileIsLogged();
    void commandFileAndModifierAreBothAppliedInOneRun();
    void anImportIsTriedForAnExistingFile();
    void aDeviceDescriptionGoesIntoLine0();
    void aConfiguredDeviceBringsItsValues();
    void declaredPdosAreCompleted();
    void anImportTakesTheObjectsOfADeviceOnly();
    void anImportIsToldAndAnnouncedOnce();
    void aFileThatCannotBeImportedIsLogged_data();
    void aFileThatCannotBeImportedIsLogged();
    void mergeCopiesTheGroupsOfBothDirectionsLineByLine_data();
    void mergeCopiesTheGroupsOfBothDirectionsLineByLine();
    void mergeWritesReceiveBeforeTransmit();
    void mergeTakesEveryNumberOf18Bits();
    void linesFrom32OnTakeNoPartInTheMerge();
    void aMergeFileThatIsNoProjectChangesNothing();
    void theMergeKeepsTheCurrentFolder();

private:
    static constexpr int stillRunning = 5;
    static constexpr int neverEnded = 99;

    void run(const QStringList &arguments);
    QTimer *startWatchdog();
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString saveOther(const QList<quint8> &lines);
    QString write(const QString &name, const QByteArray &content);

    std::unique_ptr<QTemporaryDir> m_folder;
    QSharedPointer<ObjectDataBase> m_store;
    RecordingTarget m_target;
};

void TestCommandLineActions::init()
{
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
    m_folder = std::make_unique<QTemporaryDir>();
    m_store = QSharedPointer<ObjectDataBase>::create();
    QVERIFY(TestProject::fill(*m_store, {0, 1}, u"2"_s));
    m_target.calls.clear();
}

/** Runs the actions as the event loop does, so that an exit is an exit of that loop. */
void TestCommandLineActions::run(const QStringList &arguments)
{
    const CommandLine line(QStringList{u"program"_s, u"p.vexp"_s} + arguments);
    const bool ends = line.contains("-g"_L1);
    QTimer::singleShot(0, this, [&] {
        CommandLineActions(line, m_store, m_target).run();
        if (!ends)
            QCoreApplication::exit(stillRunning);
    });
    const QTimer *const watchdog = startWatchdog();
    QCOMPARE(QCoreApplication::exec(), ends ? 0 : stillRunning);
    delete watchdog;
}

/** Ends an event loop that nobody else has ended, so that a missing exit fails and does not hang. */
QTimer *TestCommandLineActions::startWatchdog()
{
    auto *watchdog = new QTimer(this);
    connect(watchdog, &QTimer::timeout, this, [] { QCoreApplication::exit(neverEnded); });
    watchdog->start(30000);
    return watchdog;
}

/** A project of another tool run: PGN 65226 in both directions and 61444 on each line. */
QString TestCommandLineActions::saveOther(const QList<quint8> &lines)
{
    ObjectDataBase other;
    bool ok = TestProject::fill(other, lines, u"2"_s);
    for (const quint8 line : lines) {
        ok = ok && other.addPGN(line, 65226, TestProject::pgn(u"DM1 in"_s, ObjectDataBase::Receive))
            && other.addPGN(line, 65226, TestProject::pgn(u"DM1 out"_s, ObjectDataBase::Transmit))
            && other.addPGN(line, 61444, TestProject::pgn(u"EEC1"_s, ObjectDataBase::Transmit))
            && other.addPGN(line, 0x3FFFF, TestProject::pgn(u"last"_s, ObjectDataBase::Receive));
    }
    const QString file = path(u"other.vexp"_s);
    return ok && other.saveProject(file) ? file : QString();
}

void TestCommandLineActions::theOrderOfTheStepsIsFixed()
{
    QCOMPARE(CommandLineActions::stepOptions(),
             (QStringList{QString(), u"-i"_s, u"-j"_s, u"--importfile"_s, u"-dbmod"_s, u"-lvx"_s, u"-s"_s,
                          u"-g"_s, QString()}));
}

void TestCommandLineActions::onlyPresentOptionsRunInTheOrderOfTheSteps_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("none") << QStringList{} << QStringList{u"cursor"_s};
    QTest::newRow("save") << QStringList{u"-s"_s} << QStringList{u"cursor"_s, u"save"_s};
    QTest::newRow("network tool") << QStringList{u"-lvx"_s} << QStringList{u"cursor"_s, u"lvx"_s};
    QTest::newRow("all, backwards") << QStringList{u"-g"_s, u"-s"_s, u"-lvx"_s}
                                    << QStringList{u"cursor"_s, u"lvx"_s, u"save"_s, u"generate"_s};
    QTest::newRow("other letter case") << QStringList{u"-S"_s, u"-G"_s} << QStringList{u"cursor"_s};
}

void TestCommandLineActions::onlyPresentOptionsRunInTheOrderOfTheSteps()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QStringList, calls);
    run(arguments);
    QCOMPARE(m_target.calls, calls);
}

void TestCommandLineActions::theHelpMenuIsHiddenInTheJ1939EditionOnly_data()
{
    QTest::addColumn<bool>("hidden");
    QTest::newRow("CANopen NodeSmith") << false;
    QTest::newRow("J1939 NodeSmith") << true;
    QTest::newRow("J1939 NodeSmith beta") << false;
    QTest::newRow("EnergyBus NodeGuide") << false;
}

void TestCommandLineActions::theHelpMenuIsHiddenInTheJ1939EditionOnly()
{
    QFETCH(const bool, hidden);
    QCoreApplication::setApplicationName(QString::fromLatin1(QTest::currentDataTag()));
    run({});
    QCOMPARE(m_target.calls.contains(u"hide help"_s), hidden);
}

void TestCommandLineActions::generationEndsTheEventLoopWithZero()
{
    QElapsedTimer timer;
    timer.start();
    run({u"-g"_s});
    QVERIFY(timer.elapsed() >= 490); // queued messages of the run have this long to arrive
    QCOMPARE(m_target.calls, (QStringList{u"cursor"_s, u"generate"_s}));
}

void TestCommandLineActions::filesThatDoNotExistAreIgnoredInSilence_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("-i, missing") << QStringList{u"-i"_s, u"/no/such.eds"_s};
    QTest::newRow("-i, folder") << QStringList{u"-i"_s, QDir::tempPath()};
    QTest::newRow("-i, last argument") << QStringList{u"-i"_s};
    QTest::newRow("-j, missing") << QStringList{u"-j"_s, u"/no/such.vexp"_s, u"-o"_s, u"keep"_s};
    QTest::newRow("-j, last argument") << QStringList{u"-j"_s};
    QTest::newRow("-o alone") << QStringList{u"-o"_s, u"replace"_s};
}

void TestCommandLineActions::filesThatDoNotExistAreIgnoredInSilence()
{
    QFETCH(const QStringList, arguments);
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    const QString before = m_store->contentHash();
    run(arguments);
    QCOMPARE(m_store->contentHash(), before);
    QCOMPARE(m_target.calls, QStringList{u"cursor"_s});
}

void TestCommandLineActions::aMissingCommandFileIsLogged()
{
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(u"^Import Handler file: /no/such.txt does not exist$"_s));
    run({u"--importfile"_s, u"/no/such.txt"_s});
}

void TestCommandLineActions::aModifierNeedsAValue_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("logged");
    QTest::newRow("empty value") << QStringList{u"-dbmod"_s, u""_s} << false;
    QTest::newRow("last argument") << QStringList{u"-dbmod"_s} << false;
    QTest::newRow("missing file") << QStringList{u"-dbmod"_s, u"/no/such.mod"_s} << true;
}

void TestCommandLineActions::aModifierNeedsAValue()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const bool, logged);
    if (logged)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"applyModifier.*/no/such.mod"_s));
    else
        QTest::failOnWarning(QRegularExpression(u".*"_s));
    const QString before = m_store->contentHash();
    run(arguments);
    QCOMPARE(m_store->contentHash(), before);
}

void TestCommandLineActions::aModifierFileSetsSettings()
{
    const QString file = write(u"settings.mod"_s, "# station\nGeneralSettings:co_node_id:5\nFoo:bar:1\n");
    run({u"-dbmod"_s, file});
    QCOMPARE(m_store->getGeneralSetting(u"co_node_id"_s), u"5"_s);
}

void TestCommandLineActions::anImportCommandFileDeletesObjects()
{
    QVERIFY(m_store->addIndex(0, 0x2000, {}));
    QVERIFY(m_store->addIndex(0, 0x2001, {}));
    const QString file = write(u"import.ini"_s, "[Projects]\n1=other.vexp\n[Actions]\n1=delete 0:0x2000\n");
    run({u"--importfile"_s, file});
    QVERIFY(!m_store->indexExists(0, 0x2000));
    QVERIFY(m_store->indexExists(0, 0x2001));
}

void TestCommandLineActions::anUnusableImportCommandFileIsLogged()
{
    const QString file = write(u"short.ini"_s, "[Actions]\n");
    QTest::ignoreMessage(QtWarningMsg, "Import Handler file error: File too small");
    run({u"--importfile"_s, file});
}

void TestCommandLineActions::commandFileAndModifierAreBothAppliedInOneRun()
{
    QVERIFY(m_store->addIndex(0, 0x2000, {}));
    const QString commands =
        write(u"import.ini"_s, "[Projects]\n1=other.vexp\n[Actions]\n1=delete 0:0x2000\n");
    const QString modifier = write(u"settings.mod"_s, "GeneralSettings:co_node_id:9\n");
    run({u"-dbmod"_s, modifier, u"--importfile"_s, commands});
    QCOMPARE(m_store->getGeneralSetting(u"co_node_id"_s), u"9"_s);
    QVERIFY(!m_store->indexExists(0, 0x2000));
}

/** A file in the test's folder. */
QString TestCommandLineActions::write(const QString &name, const QByteArray &content)
{
    return TestProject::write(path(name), content) ? path(name) : QString();
}

void TestCommandLineActions::anImportIsTriedForAnExistingFile()
{
    QFile file(path(u"device.EDS"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QTest::ignoreMessage(QtDebugMsg, qPrintable("try to import "_L1 + file.fileName()));
    run({u"-i"_s, file.fileName()});
}

void TestCommandLineActions::aDeviceDescriptionGoesIntoLine0()
{
    m_store->setDescriptionLine(1);
    const QString file =
        write(u"device.eds"_s,
              "[DeviceInfo]\nVendorName=Maker\n[Comments]\nLines=1\nLine1=Pump\n;;The speed\n[2000]\n"
              "ParameterName=Speed\nDataType=6\nAccessType=rw\nDefaultValue=5\nParameterValue=6\n");
    run({u"-i"_s, file});
    ObjectDataBase::SUBINDEX_DATA_T sub;
    QVERIFY(m_store->getSubIndex(0, 0x2000, 0, sub));
    QCOMPARE(sub.name, u"Speed"_s);
    QCOMPARE(sub.defaultvalue, u"5"_s);
    ObjectDataBase::INDEX_DATA_T object;
    QVERIFY(m_store->getIndex(0, 0x2000, object));
    QCOMPARE(object.description, u"The speed"_s);
    QVERIFY(!m_store->indexExists(1, 0x2000));
    QCOMPARE(m_store->getDescriptionSetting(u"VendorName"_s), QString()); // of line 1
    m_store->setDescriptionLine(0);
    QCOMPARE(m_store->getDescriptionSetting(u"VendorName"_s), u"Maker"_s);
    QCOMPARE(m_store->getDescriptionSetting(u"Comment"_s), u"Pump"_s);
}

void TestCommandLineActions::aConfiguredDeviceBringsItsValues()
{
    const QString file = write(u"device.DCF"_s,
                               "[2000]\nParameterName=Speed\nDataType=6\nAccessType=rw\nDefaultValue=5\n"
                               "ParameterValue=6\n");
    run({u"-i"_s, file});
    QCOMPARE(m_store->getSubIndexDefault(0, 0x2000, 0), u"6"_s);
}

void TestCommandLineActions::declaredPdosAreCompleted()
{
    const QString file = write(u"device.eds"_s,
                               "[DeviceInfo]\nNrOfRXPDO=2\n[1000]\nParameterName=Device type\nDataType=7\n"
                               "AccessType=ro\n");
    run({u"-i"_s, file});
    QCOMPARE(m_store->getIndexList(0, 0x1000), (QList<quint16>{0x1000, 0x1400, 0x1401, 0x1600, 0x1601}));
}

void TestCommandLineActions::anImportTakesTheObjectsOfADeviceOnly()
{
    QByteArray text;
    for (const char *index : {"0FFF", "1000", "BFFF", "C000"})
        text += QByteArray("[") + index + "]\nParameterName=Value\nDataType=5\nAccessType=ro\n";
    run({u"-i"_s, write(u"device.eds"_s, text)});
    QCOMPARE(m_store->getIndexList(0), (QList<quint16>{0x1000, 0xBFFF}));
}

void TestCommandLineActions::anImportIsToldAndAnnouncedOnce()
{
    const QString file = write(u"device.eds"_s, "[2000]\nParameterName=Value\nDataType=5\nAccessType=R\n");
    const QSignalSpy changes(m_store.get(), &ObjectDataBase::updateNotify);
    QTest::ignoreMessage(QtDebugMsg, qPrintable("try to import "_L1 + file));
    QTest::ignoreMessage(QtInfoMsg,
                         qPrintable(QString(file + u":4: The AccessType \"R\" is read as \"ro\"."_s)));
    QTest::ignoreMessage(QtInfoMsg, qPrintable("1 objects imported from "_L1 + file));
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QElapsedTimer timer;
    timer.start();
    run({u"-i"_s, file});
    QVERIFY(timer.elapsed() >= 490); // queued messages of the import have this long to arrive
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.first().first().value<ObjectDataBase::ChangeSet>().type,
             int(ObjectDataBase::ProjectChanged));
}

void TestCommandLineActions::aFileThatCannotBeImportedIsLogged_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("warning");
    QTest::newRow("no device description") << u"text.eds"_s << QByteArray("Dear reader")
                                           << u"^Import error: .*text.eds: The file holds no section.$"_s;
    QTest::newRow("no object") << u"empty.eds"_s << QByteArray("[DeviceInfo]\n")
                               << u"^Import error: File .*empty.eds describes no object.$"_s;
    QTest::newRow("XML description") << u"device.xdd"_s << QByteArray("<a/>")
                                     << u"^No importer for .*device.xdd"_s;
    QTest::newRow("profile database") << u"profile.codb"_s << QByteArray() << u"^No importer for .*codb"_s;
    QTest::newRow("without suffix") << u"device"_s << QByteArray() << u"^No importer for .*device"_s;
}

void TestCommandLineActions::aFileThatCannotBeImportedIsLogged()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, content);
    QFETCH(const QString, warning);
    const QString before = m_store->contentHash();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(warning));
    run({u"-i"_s, write(name, content)});
    QCOMPARE(m_store->contentHash(), before);
}

void TestCommandLineActions::mergeCopiesTheGroupsOfBothDirectionsLineByLine_data()
{
    QTest::addColumn<QStringList>("further");
    QTest::newRow("-j alone") << QStringList{};
    QTest::newRow("-o replace") << QStringList{u"-o"_s, u"replace"_s};
    QTest::newRow("-o as last argument") << QStringList{u"-o"_s};
}

void TestCommandLineActions::mergeCopiesTheGroupsOfBothDirectionsLineByLine()
{
    QFETCH(const QStringList, further);
    QVERIFY(m_store->addPGN(0, 65226, TestProject::pgn(u"own"_s, ObjectDataBase::Receive)));
    QVERIFY(m_store->addPGN(1, 65000, TestProject::pgn(u"stays"_s, ObjectDataBase::Receive)));
    const QString other = saveOther({0, 1, 2});
    QVERIFY(!other.isEmpty());
    run(QStringList{u"-j"_s, other} + further);
    for (const quint8 line : {quint8(0), quint8(1)}) {
        QCOMPARE(m_store->getPGNName(line, 65226, ObjectDataBase::Receive), u"DM1 in"_s);
        QCOMPARE(m_store->getPGNName(line, 65226, ObjectDataBase::Transmit), u"DM1 out"_s);
        QCOMPARE(m_store->getPGNList(line, ObjectDataBase::Transmit), (QList<quint32>{61444, 65226}));
    }
    QVERIFY(m_store->getPGNList(1, ObjectDataBase::Receive).contains(65000));
    QVERIFY(!m_store->nodeExists(2));
}

void TestCommandLineActions::mergeWritesReceiveBeforeTransmit()
{
    const QString other = saveOther({0});
    QVERIFY(!other.isEmpty());
    const QSignalSpy changes(m_store.get(), &ObjectDataBase::updateNotify);
    run({u"-j"_s, other});
    QList<quint32> written;
    for (const QList<QVariant> &arguments : changes) {
        const auto change = arguments.first().value<ObjectDataBase::ChangeSet>();
        if (change.type == ObjectDataBase::PgnChanged)
            written.append(change.pgn);
    }
    const qsizetype received = written.lastIndexOf(0x3FFFF);
    const qsizetype transmitted = written.indexOf(61444);
    QVERIFY(received >= 0);
    QVERIFY(transmitted > received);
}

void TestCommandLineActions::mergeTakesEveryNumberOf18Bits()
{
    const QString other = saveOther({0});
    QVERIFY(!other.isEmpty());
    run({u"-j"_s, other});
    QVERIFY(m_store->getPGNList(0, ObjectDataBase::Receive).contains(0x3FFFF));
}

void TestCommandLineActions::linesFrom32OnTakeNoPartInTheMerge()
{
    for (const quint8 line : {quint8(31), quint8(32)})
        QVERIFY(m_store->addNode(line, ObjectDataBase::NODE_DATA_T()));
    const QString other = saveOther({0, 31, 32});
    QVERIFY(!other.isEmpty());
    run({u"-j"_s, other});
    QCOMPARE(m_store->getPGNList(31, ObjectDataBase::BothDirections).isEmpty(), false);
    QCOMPARE(m_store->getPGNList(32, ObjectDataBase::BothDirections), QList<quint32>());
}

void TestCommandLineActions::aMergeFileThatIsNoProjectChangesNothing()
{
    QFile file(path(u"text.vexp"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("no database");
    file.close();
    const QString before = m_store->contentHash();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Cannot merge from .*text.vexp"_s));
    run({u"-j"_s, file.fileName(), u"-s"_s});
    QCOMPARE(m_store->contentHash(), before);
    QVERIFY(m_target.calls.contains(u"save"_s));
}

void TestCommandLineActions::theMergeKeepsTheCurrentFolder()
{
    const QString before = QDir::currentPath();
    const QString other = saveOther({0});
    QVERIFY(!other.isEmpty());
    run({u"-j"_s, other});
    QCOMPARE(QDir::currentPath(), before);
}

int main(int argc, char **argv)
{
    const TestHome home;
    const QCoreApplication application(argc, argv);
    TestCommandLineActions test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_commandlineactions.moc"
