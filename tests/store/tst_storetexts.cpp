#include "FieldCases.h"

using namespace StoreTest;

namespace {

struct TextPlace
{
    QByteArray name;
    std::function<bool(ObjectDataBase &, const QString &)> write;
    std::function<QString(ObjectDataBase &)> read;
};

QList<TextPlace> fieldPlaces()
{
    QList<TextPlace> places;
    for (const FieldCases::FieldCase &field : FieldCases::all()) {
        if (field.isText)
            places.append({field.name,
                           [field](ObjectDataBase &s, const QString &t) { return field.write(s, t); },
                           [field](ObjectDataBase &s) { return field.read(s).toString(); }});
    }
    return places;
}

using Store = ObjectDataBase;

QList<TextPlace> settingPlaces()
{
    const QString key = QStringLiteral("key");
    return {
        {"GeneralSettings.value", [=](Store &s, const QString &t) { return s.setGeneralSetting(key, t); },
         [=](Store &s) { return s.getGeneralSetting(key); }},
        {"DescriptionSettings.value",
         [=](Store &s, const QString &t) { return s.setDescriptionSetting(key, t); },
         [=](Store &s) { return s.getDescriptionSetting(key); }},
        {"EnergyBusSettings.value", [=](Store &s, const QString &t) { return s.setEnergyBusSetting(key, t); },
         [=](Store &s) { return s.getEnergyBusSetting(key); }},
        {"J1939Settings.value", [=](Store &s, const QString &t) { return s.setJ1939Setting(key, t); },
         [=](Store &s) { return s.getJ1939Setting(key); }},
        {"MiscSettings.value", [=](Store &s, const QString &t) { return s.setMiscSetting(key, t); },
         [=](Store &s) { return s.getMiscSetting(key); }},
        {"GeneralSettings.item", [](Store &s, const QString &t) { return s.setGeneralSetting(t, t); },
         [](Store &s) { return s.getGeneralSettingKeys().value(0); }},
        {"J1939Settings.item", [](Store &s, const QString &t) { return s.setJ1939Setting(t, t); },
         [](Store &s) { return s.getJ1939SettingKeys().value(0); }},
        {"EnergyBusSettings.item", [](Store &s, const QString &t) { return s.setEnergyBusSetting(t, t); },
         [](Store &s) { return s.getEnergyBusSettingKeys().value(0); }},
        {"UDSSettings.sessions",
         [](Store &s, const QString &t) { return s.setUDSServiceSessions(0, UDS::ECUReset, t); },
         [](Store &s) { return s.getUDSServiceSessions(0, UDS::ECUReset); }},
        {"UDSSettings.userlevels",
         [](Store &s, const QString &t) { return s.setUDSServiceUserLevels(0, UDS::ECUReset, t); },
         [](Store &s) { return s.getUDSServiceUserLevels(0, UDS::ECUReset); }},
        {"UDSSettings.authentication",
         [](Store &s, const QString &t) { return s.setUDSAuthentication(0, UDS::ECUReset, t); },
         [](Store &s) { return s.getUDSAuthentication(0, UDS::ECUReset); }},
    };
}

QList<TextPlace> singleColumnPlaces()
{
    const auto addObject = [](Store &s) {
        return s.addIndex(0, 0x2000, sampleIndex()) && s.addSubIndex(0, 0x2000, 1, sampleSub());
    };
    const QString objects = QStringLiteral("Objects0");
    const QString subObjects = QStringLiteral("SubObjects0");
    return {
        {"renameIndex",
         [=](Store &s, const QString &t) { return addObject(s) && s.renameIndex(0, 0x2000, t); },
         [](Store &s) { return s.getIndexName(0, 0x2000); }},
        {"renameSubIndex",
         [=](Store &s, const QString &t) { return addObject(s) && s.renameSubIndex(0, 0x2000, 1, t); },
         [](Store &s) { return s.getSubIndexName(0, 0x2000, 1); }},
        {"setSubIndexDefault",
         [=](Store &s, const QString &t) { return addObject(s) && s.setSubIndexDefault(0, 0x2000, 1, t); },
         [](Store &s) { return s.getSubIndexDefault(0, 0x2000, 1); }},
        {"setObjectIndexSqlValue",
         [=](Store &s, const QString &t) {
             s.setObjectIndexSqlValue(objects, 0x2000, QStringLiteral("name"), t);
             return true;
         },
         [](Store &s) { return s.getIndexName(0, 0x2000); }},
        {"setSubindexSqlValue",
         [=](Store &s, const QString &t) {
             s.setSubindexSqlValue(subObjects, 0x2000, 1, QStringLiteral("defaultvalue"), t);
             return true;
         },
         [](Store &s) { return s.getSubIndexDefault(0, 0x2000, 1); }},
        {"setNodeSqlValue",
         [](Store &s, const QString &t) {
             s.setNodeSqlValue(0, QStringLiteral("edspath"), t);
             return true;
         },
         [](Store &s) {
             ObjectDataBase::NODE_DATA_T node;
             return s.getNode(0, node) ? node.edspath : QStringLiteral("<missing>");
         }},
        {"addString", [](Store &s, const QString &t) { return s.addString(t) == 1; },
         [](Store &s) {
             s.loadStrings();
             return s.getString(1);
         }},
    };
}

const QList<TextPlace> &places()
{
    static const QList<TextPlace> all = fieldPlaces() + settingPlaces() + singleColumnPlaces();
    return all;
}

} // namespace

/** Whatever a user types or a file holds goes in and comes out unchanged, in every text column. */
class TestStoreTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareApplication(); }
    void anyTextComesBackUnchanged_data() { textRows(); }
    void anyTextComesBackUnchanged();
    void anyTextSurvivesSaveAndOpen_data() { textRows(); }
    void anyTextSurvivesSaveAndOpen();
    void anyTextIsReadFromTheCaches_data() { textRows(); }
    void anyTextIsReadFromTheCaches();

private:
    static void textRows();
};

void TestStoreTexts::textRows()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("only blanks") << "   ";
    QTest::newRow("blanks around") << "  a  b ";
    QTest::newRow("one quote") << "'";
    QTest::newRow("quotes") << "it's ''two'' \"three\"";
    QTest::newRow("statement") << "'); drop table Nodes; --";
    QTest::newRow("backslashes") << "C:\\dir\\n\\";
    QTest::newRow("line ends and tabs") << "a\r\nb\nc\td\r";
    QTest::newRow("placeholders") << "%1 %L2 $NODEID :name ?1 @x %";
    QTest::newRow("embedded NUL") << QString(QStringLiteral("a") + QChar(0) + QStringLiteral("b") + QChar(0));
    QTest::newRow("control characters") << QStringLiteral("\x01\x02\x1f\x7f");
    QTest::newRow("4-byte UTF-8") << QString::fromUtf8("\xF0\x9F\x94\x8B\xF0\x90\x8D\x88");
    QTest::newRow("byte order mark first") << QString(QChar(0xFEFF) + QStringLiteral("text"));
    QTest::newRow("combining and right to left") << QString::fromUtf8("e\u0301 \u05D0\u200F \uFFFD \uFFFE");
    QTest::newRow("number with leading zeros") << "007";
    QTest::newRow("exponent") << "1e3";
    QTest::newRow("more digits than a number holds") << "123456789012345678901234567890";
    QTest::newRow("1 MB") << QString(1024 * 1024, u'x');
}

void TestStoreTexts::anyTextComesBackUnchanged()
{
    QFETCH(QString, text);
    for (const TextPlace &place : places()) {
        NewStore store;
        QVERIFY2(place.write(store, text), place.name.constData());
        QVERIFY2(place.read(store) == text, place.name.constData());
        store.loadStrings();
        QVERIFY2(place.read(store) == text, place.name.constData());
    }
}

// One project holds the text in all places at once: the columns of a row do not disturb each other.
void TestStoreTexts::anyTextSurvivesSaveAndOpen()
{
    QFETCH(QString, text);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("p.vexp"));
    ObjectDataBase::INDEX_DATA_T index = sampleIndex(text);
    index.description = index.device_class = text;
    index.metadata.insert(text, text);
    ObjectDataBase::SUBINDEX_DATA_T sub = sampleSub(text);
    sub.accesstype = sub.defaultvalue = sub.currentvalue = sub.lowlimit = sub.uplimit = text;
    sub.allowedaccesstypes = sub.varname = sub.description = sub.denotation = text;
    sub.metadata.insert(text, text);
    ObjectDataBase::NODE_DATA_T node;
    node.name = node.edspath = node.xddpath = node.dcfpath = node.iconpath = node.prefix = text;
    node.outputpath = QStringLiteral("out");
    ObjectDataBase::PGN pgn = samplePgn(85, text);
    pgn.desc = text;
    NewStore store;
    QVERIFY(store.addNode(0, node));
    QVERIFY(store.addIndex(0, 0x2000, index));
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sub));
    QVERIFY(store.addPGN(0, 61444, pgn));
    QVERIFY(store.setGeneralSetting(QStringLiteral("user_defines"), text));
    QVERIFY(store.saveProject(path));

    ObjectDataBase opened;
    QVERIFY2(opened.openDataBase(path), qPrintable(opened.lastError()));
    QVERIFY(!opened.isExternallyModified());
    ObjectDataBase::INDEX_DATA_T readIndex;
    ObjectDataBase::SUBINDEX_DATA_T readSub;
    ObjectDataBase::NODE_DATA_T readNode;
    ObjectDataBase::PGN readPgn;
    QVERIFY(opened.getIndex(0, 0x2000, readIndex));
    QVERIFY(opened.getSubIndex(0, 0x2000, 1, readSub));
    QVERIFY(opened.getNode(0, readNode));
    QVERIFY(opened.getPGN(0, 61444, 85, readPgn));
    QVERIFY(readIndex == index);
    QVERIFY(readSub == sub);
    QVERIFY(readNode == node);
    QVERIFY(readPgn == pgn);
    QVERIFY(opened.getGeneralSetting(QStringLiteral("user_defines")) == text);
}

void TestStoreTexts::anyTextIsReadFromTheCaches()
{
    QFETCH(QString, text);
    ObjectDataBase::SUBINDEX_DATA_T sub = sampleSub(text);
    sub.accesstype = sub.defaultvalue = sub.currentvalue = sub.varname = sub.denotation = text;
    ObjectDataBase::SPN spn = sampleSpn(1, text);
    spn.varname = spn.defaultvalue = spn.desc = text;
    NewStore store;
    QVERIFY(store.addSubIndex(0, 0x2000, 1, sub));
    QVERIFY(store.addSPN(0, 61444, 85, 190, spn));
    store.loadStrings();
    store.cacheAllSubs(0);
    store.cacheSubNames(0);
    store.cacheAllSpns(0);
    ObjectDataBase::SUBINDEX_DATA_T readSub;
    ObjectDataBase::SPN readSpn;
    QVERIFY(store.getSubIndex(0, 0x2000, 1, readSub));
    QVERIFY(store.getSPN(0, 61444, 85, 190, readSpn));
    QVERIFY(readSub == sub);
    QVERIFY(readSpn == spn);
    QVERIFY(store.getSubIndexName(0, 0x2000, 1, true) == text);
}

QTEST_GUILESS_MAIN(TestStoreTexts)
#include "tst_storetexts.moc"
