#include "app/NodeSmith.h"
#include "app/TestHome.h"
#include "app/UserSettings.h"
#include "widgets/KorvelBaseApplication.h"
#include "widgets/MessageLog.h"
#include "widgets/TerminationSignals.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QStyle>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <optional>

using namespace Qt::StringLiterals;

/** What every program of the house gets from its application object. */
class TestBaseApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanupTestCase() { m_application.reset(); }
    void theSettingsNameIsApplicationNameAndMajorVersion_data();
    void theSettingsNameIsApplicationNameAndMajorVersion();
    void theFirstStartTakesOverTheNewestFormerSettings_data();
    void theFirstStartTakesOverTheNewestFormerSettings();
    void ownSettingsAreNeverReplaced();
    void aLogLineIsOneLineWithTimeKindAndText_data();
    void aLogLineIsOneLineWithTimeKindAndText();
    void aTimedLineTellsTheMillisecondsOfTheRun();
    void timingEndsWithTheRun();
    void itemsOpenOnADoubleClickOnEveryDesktop();
    void aDragBeginsBehind100MillisecondsOrTenPixels();
    void aSignalEndsAllEventLoopsWithTheExitCodeOfShells_data();
    void aSignalEndsAllEventLoopsWithTheExitCodeOfShells();
    void aSignalThatTheCallerSwitchedOffStaysOff();

private:
    static void make(const QString &name, const QString &version);

    static inline char m_name[] = "test";
    static inline char *m_argv[]{m_name, nullptr};
    static inline int m_argc = 1;
    static inline std::optional<KorvelBaseApplication> m_application;
};

void TestBaseApplication::make(const QString &name, const QString &version)
{
    m_application.reset();
    m_application.emplace(m_argc, m_argv, name, version);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    MessageLog::uninstall(); // so that the test's own handler sees the messages
}

void TestBaseApplication::init()
{
    make(u"CANopen NodeSmith"_s, u"4.3.2"_s);
    for (int major = 0; major <= 5; ++major)
        QSettings(u"korvel"_s, u"CANopen NodeSmith %1"_s.arg(major)).clear();
}

void TestBaseApplication::theSettingsNameIsApplicationNameAndMajorVersion_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("expected");
    QTest::newRow("CANopen") << u"CANopen NodeSmith"_s << u"4.3.2"_s << u"CANopen NodeSmith 4"_s;
    QTest::newRow("EnergyBus") << u"EnergyBus NodeGuide"_s << u"4.3.2"_s << u"EnergyBus NodeGuide 4"_s;
    QTest::newRow("two digits") << u"CAN NodeSmith"_s << u"12.0"_s << u"CAN NodeSmith 12"_s;
    QTest::newRow("no number") << u"CAN NodeSmith"_s << u"beta"_s << u"CAN NodeSmith 0"_s;
}

void TestBaseApplication::theSettingsNameIsApplicationNameAndMajorVersion()
{
    QFETCH(const QString, name);
    QFETCH(const QString, version);
    QFETCH(const QString, expected);
    make(name, version);
    QCOMPARE(qApp->property("AppNameWithVersion").toString(), expected);
    QCOMPARE(QCoreApplication::applicationName(), name);
    QCOMPARE(QCoreApplication::applicationVersion(), version);
    QVERIFY(UserSettings().fileName().endsWith("korvel/"_L1 + expected + ".conf"_L1));
}

void TestBaseApplication::theFirstStartTakesOverTheNewestFormerSettings_data()
{
    QTest::addColumn<QList<int>>("formerVersions");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << QList<int>{} << QString();
    QTest::newRow("the version before") << QList<int>{3} << u"of 3"_s;
    QTest::newRow("newest of several") << QList<int>{1, 2} << u"of 2"_s;
    QTest::newRow("three back") << QList<int>{1} << u"of 1"_s;
    QTest::newRow("too old") << QList<int>{0} << QString();
    QTest::newRow("newer than this version") << QList<int>{5} << QString();
}

void TestBaseApplication::theFirstStartTakesOverTheNewestFormerSettings()
{
    QFETCH(const QList<int>, formerVersions);
    QFETCH(const QString, expected);
    for (const int major : formerVersions) {
        QSettings former(u"korvel"_s, u"CANopen NodeSmith %1"_s.arg(major));
        former.setValue("General/projectpath"_L1, u"of %1"_s.arg(major));
    }
    m_application->initSettings(3);
    QCOMPARE(UserSettings().value("General/projectpath"_L1).toString(), expected);
}

void TestBaseApplication::ownSettingsAreNeverReplaced()
{
    {
        QSettings former(u"korvel"_s, u"CANopen NodeSmith 3"_s);
        former.setValue("General/projectpath"_L1, u"old"_s);
    }
    UserSettings().setValue("General/implinfo"_L1, 1);
    m_application->initSettings(3);
    QVERIFY(!UserSettings().contains("General/projectpath"_L1));
    QCOMPARE(UserSettings().value("General/implinfo"_L1).toInt(), 1);
}

void TestBaseApplication::aLogLineIsOneLineWithTimeKindAndText_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("debug") << int(QtDebugMsg) << u"a  b"_s << "debug: a  b\n"_ba;
    QTest::newRow("information") << int(QtInfoMsg) << u"a"_s << "info: a\n"_ba;
    QTest::newRow("warning") << int(QtWarningMsg) << u"gr\u00FCn"_s << "warning: gr\xC3\xBCn\n"_ba;
    QTest::newRow("error") << int(QtCriticalMsg) << u"a"_s << "error: a\n"_ba;
    QTest::newRow("fatal") << int(QtFatalMsg) << u"a"_s << "fatal: a\n"_ba;
    QTest::newRow("line breaks") << int(QtInfoMsg) << u"a\nb\r\nc\rd"_s << "info: a | b | c | d\n"_ba;
    QTest::newRow("empty") << int(QtInfoMsg) << QString() << "info: \n"_ba;
}

void TestBaseApplication::aLogLineIsOneLineWithTimeKindAndText()
{
    QFETCH(const int, kind);
    QFETCH(const QString, text);
    QFETCH(const QByteArray, expected);
    const QDateTime time({2026, 11, 20}, {7, 8, 9, 10});
    QCOMPARE(MessageLog::line(QtMsgType(kind), text, time),
             QByteArray("2026-11-20 07:08:09.010 " + expected));
}

void TestBaseApplication::aTimedLineTellsTheMillisecondsOfTheRun()
{
    const QDateTime time({2026, 11, 20}, {7, 8, 9, 10});
    QCOMPARE(MessageLog::line(QtInfoMsg, u"a"_s, time, 42), "2026-11-20 07:08:09.010 info +42 ms: a\n"_ba);
}

void TestBaseApplication::timingEndsWithTheRun()
{
    QCOMPARE(MessageLog::setTiming(false), -1);
    m_application->onInstrumentFunctionChanged(true);
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression(u"^Run ended after \\d+ ms$"_s));
    m_application->onInstrumentFunctionChanged(false);
    QCOMPARE(MessageLog::setTiming(false), -1);
}

void TestBaseApplication::itemsOpenOnADoubleClickOnEveryDesktop()
{
    QCOMPARE(QApplication::style()->styleHint(QStyle::SH_ItemView_ActivateItemOnSingleClick), 0);
    QCOMPARE(QApplication::style()->pixelMetric(QStyle::PM_ToolBarIconSize), 22);
}

void TestBaseApplication::aDragBeginsBehind100MillisecondsOrTenPixels()
{
    QApplication::setStartDragTime(1);
    QApplication::setStartDragDistance(1);
    setUpApplication(*m_application, u"CANopen NodeSmith"_s);
    QCOMPARE(QApplication::startDragTime(), 100);
    QCOMPARE(QApplication::startDragDistance(), 10);
}

void TestBaseApplication::aSignalEndsAllEventLoopsWithTheExitCodeOfShells_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("SIGHUP") << SIGHUP << 129;
    QTest::newRow("SIGINT") << SIGINT << 130;
    QTest::newRow("SIGTERM") << SIGTERM << 143;
}

void TestBaseApplication::aSignalEndsAllEventLoopsWithTheExitCodeOfShells()
{
    QFETCH(const int, signal);
    QFETCH(const int, exitCode);
    struct sigaction former = {};
    struct sigaction usual = {};
    usual.sa_handler = SIG_DFL;
    QCOMPARE(sigaction(signal, &usual, &former), 0);
    {
        const TerminationSignals handling;
        QCOMPARE(TerminationSignals::received(), 0);
        QCOMPARE(TerminationSignals::exitCode(7), 7);
        QTest::ignoreMessage(QtWarningMsg, qPrintable(u"Ended by signal %1"_s.arg(signal)));
        QTimer::singleShot(0, m_application.operator->(), [signal] {
            QEventLoop inner;
            QTimer::singleShot(0, &inner, [signal] { raise(signal); });
            inner.exec();
        });
        QCOMPARE(QCoreApplication::exec(), exitCode);
        QCOMPARE(TerminationSignals::received(), signal);
        QCOMPARE(TerminationSignals::exitCode(0), exitCode);
    }
    struct sigaction left = {};
    QCOMPARE(sigaction(signal, &former, &left), 0);
    QVERIFY(left.sa_handler == SIG_DFL);
}

void TestBaseApplication::aSignalThatTheCallerSwitchedOffStaysOff()
{
    struct sigaction former = {};
    struct sigaction ignored = {};
    ignored.sa_handler = SIG_IGN;
    QCOMPARE(sigaction(SIGHUP, &ignored, &former), 0);
    {
        const TerminationSignals handling;
        QCOMPARE(raise(SIGHUP), 0);
        QCOMPARE(TerminationSignals::received(), 0);
    }
    QCOMPARE(sigaction(SIGHUP, &former, nullptr), 0);
}

int main(int argc, char **argv)
{
    const TestHome home;
    TestBaseApplication test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_baseapplication.moc"
