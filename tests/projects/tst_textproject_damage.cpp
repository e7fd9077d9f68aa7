#include "projects/ProjectTexts.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

using namespace ProjectTexts;

class tst_TextProjectDamage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void aSavedTextOpensWithoutWarning();
    void anEditedTextOpensWithTheWarning_data();
    void anEditedTextOpensWithTheWarning();
    void whatVersionControlChangesIsNoEdit_data();
    void whatVersionControlChangesIsNoEdit();
    void theHashIsThatOfTheSortedEntries();
    void savingAnEditedTextMakesItWholeAgain();
    void aTextWithoutHashPasses();
    void aDamagedFileIsRefusedAndTheProjectStays_data();
    void aDamagedFileIsRefusedAndTheProjectStays();
    void aTextCutWithinALineIsRefusedOrCountsAsModified();
    void aTextCutAtALineEndNeverPassesForWhole();
    void randomDamageNeverHurtsTheStore();
    void badEntriesAreLeftOut();
    void commasWithoutQuotesStayPartOfTheText();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QByteArray makeText() { return makeSmallText(path(QStringLiteral("a.vext"))); }
    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_TextProjectDamage::initTestCase()
{
    StoreTest::prepareApplication();
}

void tst_TextProjectDamage::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_TextProjectDamage::aSavedTextOpensWithoutWarning()
{
    makeText();
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path(QStringLiteral("a.vext"))));
    QVERIFY(!store.isExternallyModified());
    QCOMPARE(store.getMiscSetting(QStringLiteral("TamperLog")), QString());
    QCOMPARE(store.getMiscSetting(QStringLiteral("FileHash")).size(), 64);
}

void tst_TextProjectDamage::anEditedTextOpensWithTheWarning_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::newRow("a value changed") << QByteArray("co_node_id=5") << QByteArray("co_node_id=6");
    QTest::newRow("an entry removed") << QByteArray("co_node_id=5\n") << QByteArray();
    QTest::newRow("an entry added") << QByteArray("co_node_id=5\n") << QByteArray("co_node_id=5\nnew=\n");
    QTest::newRow("a key changed") << QByteArray("co_node_id=5") << QByteArray("co_node_ie=5");
    QTest::newRow("a name changed") << QByteArray("0x2000\\name=Speed") << QByteArray("0x2000\\name=Speer");
    QTest::newRow("an object moved") << QByteArray("0x2000\\") << QByteArray("0x2001\\");
}

void tst_TextProjectDamage::anEditedTextOpensWithTheWarning()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QByteArray text = makeText();
    QVERIFY(text.contains(from));
    QVERIFY(write(path(QStringLiteral("a.vext")), text.replace(from, to)));
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(path(QStringLiteral("a.vext"))), qPrintable(store.lastError()));
    QVERIFY(store.isExternallyModified());
    const QString log = store.getMiscSetting(QStringLiteral("TamperLog"));
    QVERIFY2(QDateTime::fromString(log, Qt::ISODate).isValid(), qPrintable(log));
}

void tst_TextProjectDamage::whatVersionControlChangesIsNoEdit_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::newRow("line ends") << QByteArray("\n") << QByteArray("\r\n");
    QTest::newRow("comment") << QByteArray("[GeneralSettings]\n")
                             << QByteArray("; seen\n[GeneralSettings]\n");
    QTest::newRow("empty lines") << QByteArray("[Nodes]") << QByteArray("\n\n[Nodes]");
    QTest::newRow("order") << QByteArray("co_node_id=5\nline0type=5\n")
                           << QByteArray("line0type=5\nco_node_id=5\n");
}

void tst_TextProjectDamage::whatVersionControlChangesIsNoEdit()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QByteArray text = makeText();
    QVERIFY(text.contains(from));
    QVERIFY(write(path(QStringLiteral("a.vext")), text.replace(from, to)));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path(QStringLiteral("a.vext"))));
    QVERIFY(!store.isExternallyModified());
}

void tst_TextProjectDamage::theHashIsThatOfTheSortedEntries()
{
    makeText();
    const Text text(path(QStringLiteral("a.vext")));
    QByteArray content;
    const auto feed = [&content](const QString &part) {
        content += QByteArray::number(part.toUtf8().size()) + ':' + part.toUtf8() + '\n';
    };
    QStringList keys = text.keys();
    keys.sort();
    keys.removeOne(QStringLiteral("MiscSettings/FileHash"));
    for (const QString &key : std::as_const(keys)) {
        feed(key);
        if (key.endsWith(QStringLiteral("/metadata")))
            content += "0\n";
        else
            feed(text.value(key).toString());
    }
    QCOMPARE(text.value(QStringLiteral("MiscSettings/FileHash")).toByteArray(),
             QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex());
}

void tst_TextProjectDamage::savingAnEditedTextMakesItWholeAgain()
{
    QByteArray text = makeText();
    QVERIFY(write(path(QStringLiteral("a.vext")), text.replace("co_node_id=5", "co_node_id=6")));
    QString log;
    {
        ObjectDataBase store;
        QVERIFY(store.openDataBase(path(QStringLiteral("a.vext"))));
        log = store.getMiscSetting(QStringLiteral("TamperLog"));
        QVERIFY(store.saveProject(QString()));
    }
    ObjectDataBase again;
    QVERIFY(again.openDataBase(path(QStringLiteral("a.vext"))));
    QVERIFY(!again.isExternallyModified());
    QCOMPARE(again.getMiscSetting(QStringLiteral("TamperLog")), log);
    QCOMPARE(again.getGeneralSetting(QStringLiteral("co_node_id")), QStringLiteral("6"));
}

void tst_TextProjectDamage::aTextWithoutHashPasses()
{
    QByteArray text = makeText();
    const qsizetype start = text.indexOf("FileHash=");
    text.remove(start, text.indexOf('\n', start) + 1 - start);
    QVERIFY(write(path(QStringLiteral("a.vext")), text));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path(QStringLiteral("a.vext"))));
    QVERIFY(!store.isExternallyModified());
}

void tst_TextProjectDamage::aDamagedFileIsRefusedAndTheProjectStays_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("only a line end") << QByteArray("\n");
    QTest::newRow("settings of another program") << QByteArray("[Window]\nsize=5\n[General]\nname=x\n");
    QTest::newRow("no group") << QByteArray("line0type=1\n");
    QTest::newRow("settings alone") << QByteArray(
        "[DescriptionSettings]\nVendorName=x\n[GeneralSettings]\nline0type=1\n");
    QTest::newRow("prose") << QByteArray("This is a letter.\nIt has two lines.\n");
    QTest::newRow("unsettled merge") << QByteArray(
        "[MiscSettings]\n<<<<<<< HEAD\na=1\n=======\na=2\n>>>>>>> other\n");
    QTest::newRow("a binary project") << QByteArray("SQLite format 3\0\x10\0", 18) + QByteArray(4000, '\0');
    QTest::newRow("zeros") << QByteArray(5000, '\0');
    QByteArray noise(20000, Qt::Uninitialized);
    QRandomGenerator random(7);
    for (char &byte : noise)
        byte = char(random.bounded(256));
    QTest::newRow("noise") << noise;
    QTest::newRow("an open bracket") << QByteArray("[MiscSettings");
    QTest::newRow("one long line") << QByteArray(2000000, 'x');
}

void tst_TextProjectDamage::aDamagedFileIsRefusedAndTheProjectStays()
{
    QFETCH(QByteArray, content);
    const QString good = path(QStringLiteral("a.vext"));
    const QString bad = path(QStringLiteral("bad.vext"));
    makeText();
    QVERIFY(write(bad, content));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(good));
    QVERIFY(!store.openDataBase(bad));
    QVERIFY2(store.lastError().contains(bad), qPrintable(store.lastError()));
    QCOMPARE(store.projectPath(), good);
    QCOMPARE(store.getIndexName(0, 0x2000), QStringLiteral("Speed"));
    QVERIFY(!store.loadTextProject(path(QStringLiteral("missing.vext"))));
    QVERIFY(!store.lastError().isEmpty());
    QVERIFY(QDir().mkpath(path(QStringLiteral("folder.vext"))));
    QVERIFY(!store.loadTextProject(path(QStringLiteral("folder.vext"))));
    QVERIFY(!store.loadTextProject(QString()));
    QVERIFY(store.openDataBase(good));
    QVERIFY(store.lastError().isEmpty());
    QCOMPARE(read(bad), content);
}

void tst_TextProjectDamage::aTextCutWithinALineIsRefusedOrCountsAsModified()
{
    const QByteArray text = makeText();
    const QString cut = path(QStringLiteral("cut.vext"));
    const qsizetype objects = text.indexOf("[Objects0]");
    ObjectDataBase store;
    int opened = 0;
    const int step = int(text.size() / 150);
    for (qsizetype length = 0; length < text.size(); length += step) {
        if (length > 0 && text.at(length - 1) == '\n')
            continue;
        QVERIFY(write(cut, text.first(length)));
        if (store.openDataBase(cut)) {
            ++opened;
            QVERIFY2(store.isExternallyModified(), qPrintable(QString::number(length)));
        } else {
            QVERIFY2(length < objects, qPrintable(QString::number(length)));
            QVERIFY(!store.lastError().isEmpty());
        }
    }
    QVERIFY(opened > 50);
    QVERIFY(store.openDataBase(path(QStringLiteral("a.vext"))));
    QVERIFY(!store.isExternallyModified());
}

// Behind the hash a cut shows as a modification, before it the tables of the project are missing.
void tst_TextProjectDamage::aTextCutAtALineEndNeverPassesForWhole()
{
    const QByteArray text = makeText();
    const QString cut = path(QStringLiteral("cut.vext"));
    const qsizetype hash = text.indexOf("FileHash=");
    const qsizetype misc = text.indexOf("[MiscSettings]");
    int cuts = 0;
    ObjectDataBase store;
    for (qsizetype end = text.indexOf('\n'); end >= 0 && end + 1 < text.size();
         end = text.indexOf('\n', end + 9)) {
        if (end > misc && end < hash + 80)
            continue;
        ++cuts;
        QVERIFY(write(cut, text.first(end + 1)));
        const bool opened = store.openDataBase(cut);
        QVERIFY2(!opened || store.isExternallyModified() || text.mid(end + 1).trimmed().isEmpty(),
                 qPrintable(QString::number(end)));
    }
    QVERIFY(cuts > 100);
}

void tst_TextProjectDamage::randomDamageNeverHurtsTheStore()
{
    const QByteArray text = makeText();
    const QString damaged = path(QStringLiteral("damaged.vext"));
    QRandomGenerator random(1234);
    ObjectDataBase store;
    for (int round = 0; round < 150; ++round) {
        QByteArray broken = text;
        for (int hit = 0; hit < 1 + round % 8; ++hit) {
            const auto at = random.bounded(int(broken.size()));
            broken[at] = char(uchar(broken.at(at)) ^ uchar(1 << random.bounded(8)));
        }
        QVERIFY(write(damaged, broken));
        if (!store.openDataBase(damaged))
            QVERIFY(!store.lastError().isEmpty());
        else
            QVERIFY(store.getLines().contains(0));
    }
    QVERIFY(store.openDataBase(path(QStringLiteral("a.vext"))));
    QVERIFY(!store.isExternallyModified());
}

void tst_TextProjectDamage::badEntriesAreLeftOut()
{
    QVERIFY(write(
        path(QStringLiteral("a.vext")),
        "[GeneralSettings]\nline0type=5\n[MiscSettings]\nDatabaseVersion=107\n"
        "[Nodes]\n0\\name=good\n0\\nosuch=1\n254\\name=bad\n999\\name=bad\nx\\name=bad\nstray=1\n"
        "[Objects0]\n0x2000\\name=good\n0x10000\\name=bad\nzz\\name=bad\n0x2000\\nosuch=1\nstray=2\n"
        "[Objects255]\n0x2000\\name=bad\n[Objects99999999999]\n0x2000\\name=bad\n[ObjectsX]\n0x1\\name=bad\n"
        "[SubObjects0]\n0x2000\\0x1\\name=good\n0x2000\\0x100\\name=bad\n0x2000\\name=bad\n"
        "0x2000\\0x1\\datatype=lots\n"
        "[PGNs0]\n61444\\name=good\n61444\\direction=85\n61444\\priority%29%3Bdrop%20table%20Nodes%3B--=1\n"
        "-1\\name=bad\n[SPNs0]\n61444\\190\\name=good\n61444\\190\\direction=85\n61444\\x\\name=bad\n"
        "[UDSSettings0]\n16\\active=1\n16\\sid=99\n[Strange7]\na=1\n"));
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(path(QStringLiteral("a.vext"))), qPrintable(store.lastError()));
    QCOMPARE(store.getLines(), QList<quint8>{0});
    QCOMPARE(store.getIndexList(0), QList<quint16>{0x2000});
    QCOMPARE(store.getIndexName(0, 0x2000), QStringLiteral("good"));
    QCOMPARE(store.getSubIndexList(0, 0x2000), QList<quint8>{1});
    QCOMPARE(store.getSubIndexDatatype(0, 0x2000, 1), 0);
    QCOMPARE(store.getPGNList(0, ObjectDataBase::Transmit), QList<quint32>{61444});
    QCOMPARE(store.getSPNList(0, 61444, ObjectDataBase::Transmit), QList<quint32>{190});
    QCOMPARE(store.getUDSActiveServices(0), QList<UDS::SID>{UDS::SID(16)});
    ObjectDataBase::NODE_DATA_T node;
    QVERIFY(store.getNode(0, node));
    QCOMPARE(node.name, QStringLiteral("good"));
}

void tst_TextProjectDamage::commasWithoutQuotesStayPartOfTheText()
{
    QVERIFY(write(path(QStringLiteral("a.vext")),
                  "[GeneralSettings]\nline0type=1\nco_node_id=1,2\n[MiscSettings]\nDatabaseVersion=107\n"
                  "[SubObjects0]\n0x2000\\0x1\\allowedaccesstypes=ro,rw\n"));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path(QStringLiteral("a.vext"))));
    QCOMPARE(store.getGeneralSetting(QStringLiteral("co_node_id")), QStringLiteral("1,2"));
    ObjectDataBase::SUBINDEX_DATA_T sub;
    QVERIFY(store.getSubIndex(0, 0x2000, 1, sub));
    QCOMPARE(sub.allowedaccesstypes, QStringLiteral("ro,rw"));
}

QTEST_GUILESS_MAIN(tst_TextProjectDamage)
#include "tst_textproject_damage.moc"
