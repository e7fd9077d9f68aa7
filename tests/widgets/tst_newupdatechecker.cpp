#include "widgets/GuiHelper.h"
#include "widgets/WidgetTest.h"
#include "widgets/newUpdateChecker.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <memory>

using namespace Qt::StringLiterals;

class TestNewUpdateChecker : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theNewestVersionIsTold_data();
    void theNewestVersionIsTold();
    void anAnswerThatCannotBeUnderstoodIsAFailure_data();
    void anAnswerThatCannotBeUnderstoodIsAFailure();
    void versionsAreComparedAsNumbers_data();
    void versionsAreComparedAsNumbers();
    void withoutAnAddressNothingHappens();
    void withoutAnAddressAnExplicitCheckSaysSo();
    void theAddressComesFromTheSettings_data();
    void theAddressComesFromTheSettings();
    void theAnswerOfAServerIsTaken();
    void theRequestTellsNothingOfTheUser();
    void aServerThatIsNotThereIsAFailure();
    void anAnswerWithoutEndIsBrokenOff();
    void aServerThatNeverAnswersDoesNotHoldTheProgramUp();
    void aSecondCheckWaitsForTheFirst();

private:
    QUrl answerFile(const QByteArray &content) const;
    /** Serves one answer to each request and keeps what was asked. */
    void serve(const QByteArray &answer);
    QUrl serverUrl() const
    {
        return QUrl("http://127.0.0.1:"_L1 + QString::number(m_server->serverPort()) + "/versions.json"_L1);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QTcpServer> m_server;
    QByteArray m_request;
    int m_requests = 0;
};

void TestNewUpdateChecker::init()
{
    GuiHelper::userSettings()->clear();
    m_folder = std::make_unique<QTemporaryDir>();
    m_server = std::make_unique<QTcpServer>();
    m_request.clear();
    m_requests = 0;
}

QUrl TestNewUpdateChecker::answerFile(const QByteArray &content) const
{
    QFile file(m_folder->filePath(u"versions.json"_s));
    const bool written = file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    return written ? QUrl::fromLocalFile(file.fileName()) : QUrl();
}

void TestNewUpdateChecker::serve(const QByteArray &answer)
{
    QVERIFY(m_server->listen(QHostAddress::LocalHost));
    connect(m_server.get(), &QTcpServer::newConnection, this, [this, answer] {
        ++m_requests;
        QTcpSocket *socket = m_server->nextPendingConnection();
        connect(socket, &QTcpSocket::readyRead, socket, [this, socket, answer] {
            m_request += socket->readAll();
            if (!m_request.endsWith("\r\n\r\n"))
                return;
            socket->write(answer);
            socket->disconnectFromHost();
        });
    });
}

void TestNewUpdateChecker::theNewestVersionIsTold_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("newer");
    QTest::newRow("newer") << R"({"01006": "4.4.0"})"_ba << u"4.4.0"_s << true;
    QTest::newRow("two digits") << R"({"01006": "4.10"})"_ba << u"4.10"_s << true;
    QTest::newRow("the same") << R"({"01006": "4.3.2"})"_ba << u"4.3.2"_s << false;
    QTest::newRow("older") << R"({"01006": "4.3.1"})"_ba << u"4.3.1"_s << false;
    QTest::newRow("among others") << R"({"01005": "9.0", "01006": " 5.0 ", "x": 1})"_ba << u"5.0"_s << true;
}

void TestNewUpdateChecker::theNewestVersionIsTold()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, version);
    QFETCH(const bool, newer);
    const newUpdateChecker checker(u"01006"_s, u"4.3.2"_s, answerFile(answer));
    QSignalSpy told(&checker, &newUpdateChecker::newVersion);
    QVERIFY(told.wait());
    QCOMPARE(told.constFirst(), QVariantList({version, u"01006"_s, newer}));
}

void TestNewUpdateChecker::anAnswerThatCannotBeUnderstoodIsAFailure_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("empty") << ""_ba;
    QTest::newRow("no JSON") << "<html>Not found</html>"_ba;
    QTest::newRow("no object") << R"(["01006"])"_ba;
    QTest::newRow("other product") << R"({"01005": "9.0"})"_ba;
    QTest::newRow("no version") << R"({"01006": "soon"})"_ba;
    QTest::newRow("a number") << R"({"01006": 5})"_ba;
    QTest::newRow("cut off") << R"({"01006": "4.4)"_ba;
}

void TestNewUpdateChecker::anAnswerThatCannotBeUnderstoodIsAFailure()
{
    QFETCH(const QByteArray, answer);
    const newUpdateChecker checker(u"01006"_s, u"4.3.2"_s, answerFile(answer));
    const QSignalSpy told(&checker, &newUpdateChecker::newVersion);
    QSignalSpy failed(&checker, &newUpdateChecker::checkFailed);
    QVERIFY(failed.wait());
    QVERIFY(!failed.constFirst().constFirst().toString().isEmpty());
    QCOMPARE(told.count(), 0);
}

void TestNewUpdateChecker::versionsAreComparedAsNumbers_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("than");
    QTest::addColumn<bool>("newer");
    QTest::newRow("major") << u"5.0.0"_s << u"4.9.9"_s << true;
    QTest::newRow("ten is more than nine") << u"4.10.0"_s << u"4.9.0"_s << true;
    QTest::newRow("nine is less than ten") << u"4.9.0"_s << u"4.10.0"_s << false;
    QTest::newRow("more parts") << u"4.3.2.1"_s << u"4.3.2"_s << true;
    QTest::newRow("zero parts") << u"4.3.0"_s << u"4.3"_s << false;
    QTest::newRow("missing parts") << u"4.3"_s << u"4.3.0"_s << false;
    QTest::newRow("the same") << u"4.3.2"_s << u"4.3.2"_s << false;
    QTest::newRow("suffix") << u"4.4.0-beta"_s << u"4.3.2"_s << true;
    QTest::newRow("leading zeros") << u"4.03"_s << u"4.3"_s << false;
}

void TestNewUpdateChecker::versionsAreComparedAsNumbers()
{
    QFETCH(const QString, version);
    QFETCH(const QString, than);
    QTEST(newUpdateChecker::isNewer(version, than), "newer");
}

void TestNewUpdateChecker::withoutAnAddressNothingHappens()
{
    const newUpdateChecker checker(u"01006"_s, u"4.3.2"_s);
    QVERIFY(!checker.isConfigured());
    const QSignalSpy told(&checker, &newUpdateChecker::newVersion);
    const QSignalSpy failed(&checker, &newUpdateChecker::checkFailed);
    QTest::qWait(100);
    QCOMPARE(told.count(), 0);
    QCOMPARE(failed.count(), 0);
}

void TestNewUpdateChecker::withoutAnAddressAnExplicitCheckSaysSo()
{
    newUpdateChecker checker(u"01006"_s, u"4.3.2"_s);
    const QSignalSpy failed(&checker, &newUpdateChecker::checkFailed);
    checker.check();
    QCOMPARE(failed.count(), 1);
}

void TestNewUpdateChecker::theAddressComesFromTheSettings_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QUrl>("expected");
    QTest::newRow("none") << QString() << QUrl();
    QTest::newRow("https") << u"https://a.invalid/v.json"_s << QUrl(u"https://a.invalid/v.json"_s);
    QTest::newRow("file") << u"file:///a/v.json"_s << QUrl(u"file:///a/v.json"_s);
    QTest::newRow("other scheme") << u"ftp://a.invalid/v"_s << QUrl();
    QTest::newRow("no address") << u"not an address"_s << QUrl();
}

void TestNewUpdateChecker::theAddressComesFromTheSettings()
{
    QFETCH(const QString, setting);
    GuiHelper::userSettings()->setValue(newUpdateChecker::addressKey, setting);
    QTEST(newUpdateChecker::configuredAddress(), "expected");
}

void TestNewUpdateChecker::theAnswerOfAServerIsTaken()
{
    serve("HTTP/1.1 200 OK\r\nContent-Length: 18\r\n\r\n{\"01006\": \"4.4.1\"}");
    GuiHelper::userSettings()->setValue(newUpdateChecker::addressKey, serverUrl().toString());
    const newUpdateChecker checker(u"01006"_s, u"4.3.2"_s);
    QSignalSpy told(&checker, &newUpdateChecker::newVersion);
    QVERIFY(told.wait());
    QCOMPARE(told.constFirst(), QVariantList({u"4.4.1"_s, u"01006"_s, true}));
}

void TestNewUpdateChecker::theRequestTellsNothingOfTheUser()
{
    serve("HTTP/1.1 200 OK\r\nContent-Length: 18\r\n\r\n{\"01006\": \"4.4.1\"}");
    const newUpdateChecker checker(u"01006"_s, u"4.3.2"_s, serverUrl());
    QSignalSpy told(&checker, &newUpdateChecker::newVersion);
    QVERIFY(told.wait());
    QVERIFY(m_request.startsWith("GET /versions.json HTTP/1.1\r\n"));
    QVERIFY(m_request.contains("User-Agent: CANopen NodeSmith\r\n"));
    QVERIFY(!m_request.contains("Cookie"));
    QVERIFY(!m_request.contains("Referer"));
}

void TestNewUpdateChecker::aServerThatIsNotThereIsAFailure()
{
    QVERIFY(m_server->listen(QHostAddress::LocalHost));
    const QUrl url = serverUrl();
    m_server->close();
    const newUpdateChecker checker(u"01006"_s, u"4.3.2"_s, url);
    QSignalSpy failed(&checker, &newUpdateChecker::checkFailed);
    QVERIFY(failed.wait());
}

void TestNewUpdateChecker::anAnswerWithoutEndIsBrokenOff()
{
    serve("HTTP/1.1 200 OK\r\n\r\n" + QByteArray(10 * 1024 * 1024, ' ') + "{\"01006\": \"4.4.1\"}");
    const newUpdateChecker checker(u"01006"_s, u"4.3.2"_s, serverUrl());
    const QSignalSpy told(&checker, &newUpdateChecker::newVersion);
    QSignalSpy failed(&checker, &newUpdateChecker::checkFailed);
    QVERIFY(failed.wait());
    QCOMPARE(told.count(), 0);
}

void TestNewUpdateChecker::aServerThatNeverAnswersDoesNotHoldTheProgramUp()
{
    QVERIFY(m_server->listen(QHostAddress::LocalHost)); // takes the connection, and that is all
    QElapsedTimer time;
    time.start();
    auto checker = std::make_unique<newUpdateChecker>(u"01006"_s, u"4.3.2"_s, serverUrl());
    QVERIFY(time.elapsed() < 200);
    QTest::qWait(300);
    time.restart();
    checker.reset();
    QVERIFY2(time.elapsed() < 500, qPrintable(QString::number(time.elapsed())));
}

void TestNewUpdateChecker::aSecondCheckWaitsForTheFirst()
{
    serve("HTTP/1.1 200 OK\r\nContent-Length: 18\r\n\r\n{\"01006\": \"4.4.1\"}");
    newUpdateChecker checker(u"01006"_s, u"4.3.2"_s, serverUrl());
    QSignalSpy told(&checker, &newUpdateChecker::newVersion);
    checker.check();
    checker.check();
    QVERIFY(told.wait());
    QTest::qWait(100);
    const auto answers = told.count();
    QVERIFY(answers == m_requests);
    m_request.clear();
    checker.check();
    QVERIFY(told.wait());
    QCOMPARE(told.count(), answers + 1);
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestNewUpdateChecker>(argc, argv);
}

#include "tst_newupdatechecker.moc"
