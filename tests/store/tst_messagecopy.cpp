#include "StoreTest.h"

#include <QElapsedTimer>

using namespace StoreTest;

namespace {

/** The operations and tables of one protocol. */
struct Protocol
{
    bool (ObjectDataBase::*copy)(ObjectDataBase &, quint8, quint8, quint32, quint32, quint8);
    QList<quint32> (ObjectDataBase::*signalList)(quint8, quint32, quint8);
    QString (ObjectDataBase::*messageName)(quint8, quint32, quint8);
    QString messages; ///< table and columns to insert number, direction and name into
    QString members; ///< likewise message, signal, direction and name
    int messageChanged;
    int messageRemoved;
    int signalChanged;
};

const Protocol &j1939()
{
    static const Protocol protocol = {&ObjectDataBase::copyPGNs,
                                      &ObjectDataBase::getSPNList,
                                      &ObjectDataBase::getPGNName,
                                      QStringLiteral("PGNs0 (number, direction, name)"),
                                      QStringLiteral("SPNs0 (pgnnumber, spnnumber, direction, name)"),
                                      ObjectDataBase::PgnChanged,
                                      ObjectDataBase::PgnRemoved,
                                      ObjectDataBase::SpnChanged};
    return protocol;
}

const Protocol &rawCan()
{
    static const Protocol protocol = {&ObjectDataBase::copyCANIDs,
                                      &ObjectDataBase::getDataElementList,
                                      &ObjectDataBase::getCANIDName,
                                      QStringLiteral("CANIDs0 (id, direction, name)"),
                                      QStringLiteral("DataElements0 (canid, number, direction, name)"),
                                      ObjectDataBase::CanIdChanged,
                                      ObjectDataBase::CanIdRemoved,
                                      ObjectDataBase::DataElementChanged};
    return protocol;
}

bool copyAll(const Protocol &protocol, ObjectDataBase &target, ObjectDataBase &source)
{
    return (target.*protocol.copy)(source, 0, 0, 0, 0xFFFFFFFF, ObjectDataBase::Transmit);
}

bool insert(ObjectDataBase &store, const QString &into, const QString &rows)
{
    return store.executeSql(QStringLiteral("insert into %1 %2").arg(into, rows));
}

QString tableOf(const QString &into)
{
    return into.section(u' ', 0, 0);
}

} // namespace

Q_DECLARE_METATYPE(const Protocol *)

/** Copies of messages with their signals between stores, which J1939 and raw CAN do alike. */
class TestMessageCopy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void ofDoubledRowsTheFirstIsCopied_data() { addProtocols(); }
    void ofDoubledRowsTheFirstIsCopied();
    void signalsThatHadNoMessageMakeRoom_data() { addProtocols(); }
    void signalsThatHadNoMessageMakeRoom();
    void everyRowIsToldAndOnlyReplacedOnesAreRemoved_data() { addProtocols(); }
    void everyRowIsToldAndOnlyReplacedOnesAreRemoved();
    void manyMessagesAreCopiedWithoutASearchForEach_data() { addProtocols(); }
    void manyMessagesAreCopiedWithoutASearchForEach();

private:
    static void addProtocols();
};

void TestMessageCopy::addProtocols()
{
    QTest::addColumn<const Protocol *>("protocol");
    QTest::newRow("J1939") << &j1939();
    QTest::newRow("raw CAN") << &rawCan();
}

void TestMessageCopy::ofDoubledRowsTheFirstIsCopied()
{
    QFETCH(const Protocol *, protocol);
    NewStore source;
    NewStore target;
    const int first = source.addString(QStringLiteral("first"));
    const int second = source.addString(QStringLiteral("second"));
    QVERIFY(insert(source, protocol->messages,
                   QStringLiteral("values (5,85,%1), (5,119,%2), (5,85,%2)").arg(first).arg(second)));
    QVERIFY(insert(source, protocol->members,
                   QStringLiteral("values (5,7,85,%1), (5,7,119,%2), (5,7,85,%2)").arg(first).arg(second)));
    QVERIFY(copyAll(*protocol, target, source));
    QCOMPARE((target.*protocol->messageName)(0, 5, ObjectDataBase::Transmit), QStringLiteral("first"));
    const Snapshot file(target);
    QCOMPARE(file->count(tableOf(protocol->messages)), 1);
    QCOMPARE(file->column(QStringLiteral("select string from %1 join Strings on Strings.id = name")
                              .arg(tableOf(protocol->members))),
             QStringList{QStringLiteral("first")});
}

void TestMessageCopy::signalsThatHadNoMessageMakeRoom()
{
    QFETCH(const Protocol *, protocol);
    NewStore source;
    NewStore target;
    QVERIFY(insert(source, protocol->messages, QStringLiteral("values (5,85,0)")));
    QVERIFY(insert(source, protocol->members, QStringLiteral("values (5,1,85,0)")));
    QVERIFY(insert(target, protocol->members,
                   QStringLiteral("values (5,1,85,0), (5,2,85,0), (5,3,119,0), (6,4,85,0)")));
    QVERIFY(copyAll(*protocol, target, source));
    QCOMPARE((target.*protocol->signalList)(0, 5, ObjectDataBase::Transmit), QList<quint32>{1});
    QCOMPARE((target.*protocol->signalList)(0, 5, ObjectDataBase::Receive), QList<quint32>{3});
    QCOMPARE((target.*protocol->signalList)(0, 6, ObjectDataBase::Transmit), QList<quint32>{4});
}

void TestMessageCopy::everyRowIsToldAndOnlyReplacedOnesAreRemoved()
{
    QFETCH(const Protocol *, protocol);
    NewStore source;
    NewStore target;
    QVERIFY(insert(source, protocol->messages, QStringLiteral("values (5,85,0), (6,85,0), (7,119,0)")));
    QVERIFY(insert(source, protocol->members, QStringLiteral("values (5,1,85,0), (5,2,85,0), (7,3,119,0)")));
    QVERIFY(insert(target, protocol->messages, QStringLiteral("values (6,85,0)")));
    const RecordedChanges changes(target);
    QVERIFY(copyAll(*protocol, target, source));
    QCOMPARE(changes.ofType(protocol->messageRemoved).size(), 1);
    QCOMPARE(changes.ofType(protocol->messageChanged).size(), 2);
    QCOMPARE(changes.ofType(protocol->signalChanged).size(), 2);
    QCOMPARE(changes.all().size(), 5);
}

// With a search for each of them this took half a minute.
void TestMessageCopy::manyMessagesAreCopiedWithoutASearchForEach()
{
    QFETCH(const Protocol *, protocol);
    constexpr int count = 20'000;
    NewStore source;
    NewStore target;
    const QString numbers = QStringLiteral(
        "with recursive c(n) as (select 1 union all select n + 1 from c where n < %1) select ");
    QVERIFY(insert(source, protocol->messages, numbers.arg(count) + QStringLiteral("n,85,0 from c")));
    QVERIFY(insert(source, protocol->members, numbers.arg(count) + QStringLiteral("n,1,85,0 from c")));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(copyAll(*protocol, target, source));
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    const Snapshot file(target);
    QCOMPARE(file->count(tableOf(protocol->messages)), count);
    QCOMPARE(file->count(tableOf(protocol->members)), count);
}

QTEST_GUILESS_MAIN(TestMessageCopy)
#include "tst_messagecopy.moc"
