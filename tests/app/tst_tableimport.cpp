#include "app/CommandLineActions.h"
#include "app/TestProject.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/** A window that the actions need, but that a table asks nothing of. */
class SilentTarget : public CommandLineTarget
{
public:
    void setNormalCursor() override { }
    void enterNetworkToolMode() override { }
    void saveProject() override { }
    void generateOutput() override { }
    void hideHelp() override { }
};

} // namespace

/** Tables of objects on the command line: "-i" with a CSV or ICSV file. */
class TestTableImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aTableIsReadIntoLine0_data();
    void aTableIsReadIntoLine0();
    void onlyTheObjectsOfADeviceAreRead();
    void commandsRunAfterTheImport();
    void commandsReachWhatTheProjectHad();
    void theFormsAreToldToReadEverythingAnew();
    void modifiersSeeTheProjectAfterTheImport();

private:
    void run(const QString &name, const QByteArray &table, const QStringList &options = {});
    QString path(const QString &name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QSharedPointer<ObjectDataBase> m_store;
    SilentTarget m_target;
    QList<int> m_changes; ///< types of what the store told
};

void TestTableImport::init()
{
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
    m_folder = std::make_unique<QTemporaryDir>();
    m_store = QSharedPointer<ObjectDataBase>::create();
    QVERIFY(TestProject::fill(*m_store, {0, 1}, u"1"_s));
    m_changes.clear();
}

/** Runs the actions as the event loop does, with "-i" and the options. */
void TestTableImport::run(const QString &name, const QByteArray &table, const QStringList &options)
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(table), table.size());
    file.close();
    const CommandLine line(QStringList{u"program"_s, u"p.vexp"_s, u"-i"_s, file.fileName()} + options);
    QTimer::singleShot(0, this, [&] {
        CommandLineActions(line, m_store, m_target).run();
        QCoreApplication::exit();
    });
    QCOMPARE(QCoreApplication::exec(), 0);
}

void TestTableImport::aTableIsReadIntoLine0_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("read");
    QTest::newRow("csv") << u"table.csv"_s << true;
    QTest::newRow("icsv") << u"table.icsv"_s << true;
    QTest::newRow("upper case") << u"TABLE.CSV"_s << true;
    QTest::newRow("a dot in the name") << u"device.v2.icsv"_s << true;
    QTest::newRow("other suffix") << u"table.txt"_s << false;
    QTest::newRow("no suffix") << u"csv"_s << false;
}

void TestTableImport::aTableIsReadIntoLine0()
{
    QFETCH(QString, name);
    QFETCH(bool, read);
    run(name, "index,edsname\n0x2000,Speed\n");
    QCOMPARE(m_store->getIndexName(0, 0x2000), read ? u"Speed"_s : QString());
    QVERIFY(!m_store->indexExists(1, 0x2000));
    QVERIFY(!m_store->nodeExists(ObjectDataBase::ReferenceLine));
}

void TestTableImport::onlyTheObjectsOfADeviceAreRead()
{
    run(u"table.csv"_s, "index\n0x0FFF\n0x1000\n0xBFFF\n0xC000\n");
    QCOMPARE(m_store->getIndexList(0), (QList<quint16>{0x1000, 0xBFFF}));
}

void TestTableImport::commandsRunAfterTheImport()
{
    run(u"table.csv"_s,
        "index,sub,edsname\nd,0x2000,1\nd,0x2010\nc,0x2000,0x2100\n0x2000,0,Count\n0x2000,1,One\n"
        "0x2000,2,Two\n0x2010,0,Gone\nc,0x2000,2,5\n");
    QCOMPARE(m_store->getIndexList(0), (QList<quint16>{0x2000, 0x2100}));
    QCOMPARE(m_store->getSubIndexList(0, 0x2000), (QList<quint8>{0, 2, 5}));
    QCOMPARE(m_store->getSubIndexList(0, 0x2100), (QList<quint8>{0, 1, 2}));
}

void TestTableImport::commandsReachWhatTheProjectHad()
{
    for (const quint8 line : {quint8(0), quint8(1)})
        QVERIFY(m_store->addIndex(line, 0x3000, {.name = u"old"_s}));
    run(u"table.csv"_s, "index;sub\nd;0x3000\n");
    QVERIFY(!m_store->indexExists(0, 0x3000));
    QVERIFY(m_store->indexExists(1, 0x3000));
}

void TestTableImport::theFormsAreToldToReadEverythingAnew()
{
    connect(m_store.get(), &ObjectDataBase::updateNotify, this,
            [this](const ObjectDataBase::ChangeSet &changes) { m_changes.append(changes.type); });
    run(u"table.csv"_s, "index\n0x2000\n");
    QCOMPARE(m_changes.count(ObjectDataBase::ProjectChanged), 1);
}

void TestTableImport::modifiersSeeTheProjectAfterTheImport()
{
    const QString modifier = path(u"settings.dbmod"_s);
    QFile file(modifier);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("GeneralSettings:co_node_id:5\n");
    file.close();
    run(u"table.csv"_s, "index\n0x2000\n", {u"-dbmod"_s, modifier});
    QVERIFY(m_store->indexExists(0, 0x2000));
    QCOMPARE(m_store->getGeneralSetting(u"co_node_id"_s), u"5"_s);
}

QTEST_MAIN(TestTableImport)
#include "tst_tableimport.moc"
