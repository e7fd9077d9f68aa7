#include "projects/ProjectTexts.h"

using namespace ProjectTexts;

namespace {

// Without the texts that the form has no room for.

ObjectDataBase::PGN plainPgn(int direction, const QString &name = QStringLiteral("EEC1"))
{
    ObjectDataBase::PGN pgn = StoreTest::samplePgn(direction, name);
    pgn.desc.clear();
    return pgn;
}

ObjectDataBase::SPN plainSpn(int pos, const QString &name = QStringLiteral("Engine speed"))
{
    ObjectDataBase::SPN spn = StoreTest::sampleSpn(pos, name);
    spn.desc.clear();
    return spn;
}

void dropTextsWithoutPlace(ObjectDataBase &store)
{
    for (const char *statement :
         {"update Objects0 set device_class = 0", "update SubObjects0 set denotation = 0",
          "update PGNs0 set \"desc\" = 0", "update SPNs0 set \"desc\" = 0"})
        QVERIFY(store.executeSql(QLatin1StringView(statement)));
}

} // namespace

class tst_TextLosses : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void aWholeProjectLosesNothing();
    void textsThatHaveNoPlaceAreToldOf();
    void aNumberInBothDirectionsIsToldOf();
    void signalsOfALostGroupAreToldOfAndLeftOut();
    void aSignalThatIsThereTwiceIsToldOf();
    void everyTableThatIsLeftOutIsToldOf();
    void nodesAreToldOfWhereTheyDifferFromNewOnes();
    void lossesAreThoseOfTheLastSave();
    void rawCanBesideCanopenLosesOnlyItsOwnTables();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_TextLosses::initTestCase()
{
    StoreTest::prepareApplication();
}

void tst_TextLosses::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_TextLosses::aNumberInBothDirectionsIsToldOf()
{
    Store store;
    setLineType(store, 0, 2);
    store.addPGN(0, 59904, plainPgn(ObjectDataBase::Receive, QStringLiteral("in")));
    store.addPGN(0, 59904, plainPgn(ObjectDataBase::Transmit, QStringLiteral("out")));
    QTest::ignoreMessage(
        QtWarningMsg,
        QRegularExpression(QStringLiteral("an earlier row of the same number is lost: PGNs0/59904")));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(Text(path(QStringLiteral("a.vext"))).value(QStringLiteral("PGNs0/59904/name")).toString(),
             QStringLiteral("out"));
    QCOMPARE(store.textLosses(),
             QStringList{QStringLiteral("PGN 59904 of line 0 is there more than once: the text does not hold "
                                        "its earlier receive row.")});
}

void tst_TextLosses::aWholeProjectLosesNothing()
{
    Store store;
    setLineType(store, 0, 5);
    fillCanopen(store, 0);
    fillJ1939(store, 0);
    dropTextsWithoutPlace(store);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(store.textLosses(), QStringList());
}

// Once they are lost there is nothing more to tell.
void tst_TextLosses::textsThatHaveNoPlaceAreToldOf()
{
    Store store;
    setLineType(store, 0, 5);
    fillCanopen(store, 0);
    fillJ1939(store, 0);
    ObjectDataBase::SUBINDEX_DATA_T sub;
    QVERIFY(store.getSubIndex(0, 0x2000, 0, sub));
    sub.denotation.clear();
    QVERIFY(store.addSubIndex(0, 0x2000, 0, sub));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    const QString sentence = QStringLiteral("The text does not hold the %1 of line 0 (count: %2).");
    QCOMPARE(store.textLosses(),
             (QStringList{sentence.arg(QStringLiteral("device classes of objects")).arg(16),
                          sentence.arg(QStringLiteral("descriptions of PGNs")).arg(5),
                          sentence.arg(QStringLiteral("descriptions of SPNs")).arg(15),
                          sentence.arg(QStringLiteral("denotations of sub-indices")).arg(16 * 12 - 1)}));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QVERIFY(reopened.saveProject(QString()));
    QCOMPARE(reopened.textLosses(), QStringList());
}

void tst_TextLosses::signalsOfALostGroupAreToldOfAndLeftOut()
{
    Store store;
    setLineType(store, 0, 2);
    for (const quint8 direction : {ObjectDataBase::Receive, ObjectDataBase::Transmit}) {
        store.addPGN(0, 59904, plainPgn(direction));
        store.addPGN(0, direction, plainPgn(direction));
        store.addSPN(0, direction, direction, 7, plainSpn(0));
    }
    store.addSPN(0, 59904, ObjectDataBase::Transmit, 1, plainSpn(0, QStringLiteral("sent")));
    store.addSPN(0, 59904, ObjectDataBase::Receive, 1, plainSpn(0, QStringLiteral("received")));
    store.addSPN(0, 59904, ObjectDataBase::Receive, 2, plainSpn(1));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("is lost: PGNs0/59904")));
    for (const int spn : {1, 2})
        QTest::ignoreMessage(
            QtWarningMsg,
            QRegularExpression(QStringLiteral("is lost with its group: SPNs0/59904/%1").arg(spn)));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(store.textLosses().size(), 3);
    QCOMPARE(
        store.textLosses().mid(1),
        (QStringList{QStringLiteral("SPN 1 of PGN 59904 of line 0 belongs to the receive row of its PGN, "
                                    "which the text does not hold."),
                     QStringLiteral("SPN 2 of PGN 59904 of line 0 belongs to the receive row of its PGN, "
                                    "which the text does not hold.")}));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(reopened.getSPNList(0, 59904, ObjectDataBase::Transmit), QList<quint32>{1});
    QCOMPARE(reopened.getSPNName(0, 59904, ObjectDataBase::Transmit, 1), QStringLiteral("sent"));
    QVERIFY(reopened.getSPNList(0, 59904, ObjectDataBase::Receive).isEmpty());
    for (const quint8 direction : {ObjectDataBase::Receive, ObjectDataBase::Transmit})
        QCOMPARE(reopened.getSPNList(0, direction, direction), QList<quint32>{7});
}

void tst_TextLosses::aSignalThatIsThereTwiceIsToldOf()
{
    Store store;
    setLineType(store, 0, 2);
    store.addPGN(0, 59904, plainPgn(ObjectDataBase::Transmit));
    store.addSPN(0, 59904, ObjectDataBase::Receive, 1, plainSpn(0));
    store.addSPN(0, 59904, ObjectDataBase::Transmit, 1, plainSpn(0));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("is lost: SPNs0/59904/1")));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(store.textLosses(),
             QStringList{QStringLiteral("SPN 1 of PGN 59904 of line 0 is there more than once: the text does "
                                        "not hold its earlier receive row.")});
}

void tst_TextLosses::everyTableThatIsLeftOutIsToldOf()
{
    Store store;
    store.addNode(1, ObjectDataBase::NODE_DATA_T());
    setLineType(store, 0, 1);
    setLineType(store, 1, 2);
    store.addPGN(0, 1, StoreTest::samplePgn(ObjectDataBase::Receive));
    store.addIndex(1, 0x2000, StoreTest::sampleIndex());
    store.addSubIndex(1, 0x2000, 0, StoreTest::sampleSub());
    store.addSubIndex(1, 0x2000, 1, StoreTest::sampleSub());
    store.addCANID(0, 5, StoreTest::sampleCanId(ObjectDataBase::Transmit));
    store.addDataElement(0, 5, ObjectDataBase::Transmit, 0, StoreTest::sampleElement(0));
    store.setEnergyBusSetting(QStringLiteral("device_cnt"), QStringLiteral("1"));
    QVERIFY(store.executeSql(QStringLiteral("insert into Connections (prodnode) values (1)")));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    const QString sentence = QStringLiteral("The text does not hold the %1 (count: %2).");
    QCOMPARE(store.textLosses(),
             (QStringList{sentence.arg(QStringLiteral("raw CAN messages of line 0")).arg(1),
                          sentence.arg(QStringLiteral("connections between objects")).arg(1),
                          sentence.arg(QStringLiteral("raw CAN signals of line 0")).arg(1),
                          sentence.arg(QStringLiteral("EnergyBus settings")).arg(1),
                          sentence.arg(QStringLiteral("objects of line 1")).arg(1),
                          sentence.arg(QStringLiteral("PGNs of line 0")).arg(1),
                          sentence.arg(QStringLiteral("sub-indices of line 1")).arg(2)}));
}

void tst_TextLosses::nodesAreToldOfWhereTheyDifferFromNewOnes()
{
    Store store;
    ObjectDataBase::NODE_DATA_T node;
    node.name = QStringLiteral("engine");
    store.addNode(1, node);
    setLineType(store, 0, 2);
    setLineType(store, 1, 2);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(store.textLosses(),
             QStringList{QStringLiteral("The text does not hold the node data of line 1.")});
}

void tst_TextLosses::lossesAreThoseOfTheLastSave()
{
    Store store;
    setLineType(store, 0, 1);
    store.setEnergyBusSetting(QStringLiteral("device_cnt"), QStringLiteral("1"));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(store.textLosses().size(), 1);
    QVERIFY(!store.saveProject(path(QStringLiteral("missing/a.vext"))));
    QCOMPARE(store.textLosses(), QStringList());
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QVERIFY(store.removeEnergyBusSetting(QStringLiteral("device_cnt")));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(store.textLosses(), QStringList());
}

void tst_TextLosses::rawCanBesideCanopenLosesOnlyItsOwnTables()
{
    Store store;
    store.addNode(1, ObjectDataBase::NODE_DATA_T());
    setLineType(store, 0, 6);
    setLineType(store, 1, 1);
    fillCanopen(store, 0);
    fillCanopen(store, 1);
    store.addCANID(0, 5, StoreTest::sampleCanId(ObjectDataBase::Transmit));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QCOMPARE(reopened.getIndexList(0).size(), 16);
    QCOMPARE(reopened.getIndexList(1).size(), 16);
    QVERIFY(reopened.getCANIDList(0, ObjectDataBase::BothDirections).isEmpty());
    QVERIFY(reopened.addCANID(0, 6, StoreTest::sampleCanId(ObjectDataBase::Receive)));
}

QTEST_GUILESS_MAIN(tst_TextLosses)
#include "tst_textlosses.moc"
