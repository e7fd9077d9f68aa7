#include "projects/ProjectTexts.h"

using namespace ProjectTexts;

class tst_TextValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void textsComeBack_data();
    void textsComeBack();
    void keysComeBack_data();
    void keysComeBack();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_TextValues::initTestCase()
{
    StoreTest::prepareApplication();
}

void tst_TextValues::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_TextValues::textsComeBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("quotes") << QStringLiteral("it's \"quoted\" `so`");
    QTest::newRow("statement") << QStringLiteral("'); drop table Nodes; --");
    QTest::newRow("lines") << QStringLiteral("a\nb\r\nc\rd\te");
    QTest::newRow("blanks") << QStringLiteral("  at both ends \t");
    QTest::newRow("only a blank") << QStringLiteral(" ");
    QTest::newRow("list") << QStringLiteral("a, b,c;d=e # f");
    QTest::newRow("backslashes") << QStringLiteral("C:\\new\\x41\\");
    QTest::newRow("percent") << QStringLiteral("100 %2f %U0041 %");
    QTest::newRow("brackets") << QStringLiteral("[Nodes]");
    QTest::newRow("Unicode") << QStringLiteral("äöü ß € Привет 漢字 \U0001F600 e\u0301 \u202E");
    QTest::newRow("control characters")
        << QString(QChar(1)) + QStringLiteral("f") + QChar(0x1f) + QStringLiteral("0a\x7f\u0085");
    QTest::newRow("NUL") << QString(QStringLiteral("a") + QChar(0) + QStringLiteral("9"));
    QTest::newRow("at sign") << QStringLiteral("@");
    QTest::newRow("like a byte array") << QStringLiteral("@ByteArray(ä)");
    QTest::newRow("like a variant") << QStringLiteral("@Variant(\\0\\0)");
    QTest::newRow("like an invalid") << QStringLiteral("@Invalid()");
    QTest::newRow("like a string") << QStringLiteral("@String(x)");
    QTest::newRow("a megabyte") << QStringLiteral("0123456789 äöü,\n").repeated(65536);
}

void tst_TextValues::textsComeBack()
{
    QFETCH(QString, text);
    Store store;
    setLineType(store, 0, 5);
    store.setGeneralSetting(QStringLiteral("user_defines"), text);
    auto object = StoreTest::sampleIndex(text);
    object.metadata = {{text, text}};
    store.addIndex(0, 0x2000, object);
    auto sub = StoreTest::sampleSub(text);
    sub.defaultvalue = sub.varname = sub.description = text;
    sub.metadata = {{QStringLiteral("k"), text}};
    store.addSubIndex(0, 0x2000, 1, sub);
    store.addPGN(0, 1, StoreTest::samplePgn(ObjectDataBase::Receive, text));
    auto spn = StoreTest::sampleSpn(0, text);
    spn.defaultvalue = text;
    store.addSPN(0, 1, ObjectDataBase::Receive, 2, spn);
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY2(reopened.loadTextProject(path(QStringLiteral("a.vext"))), qPrintable(reopened.lastError()));
    QVERIFY(!reopened.isExternallyModified());
    QVERIFY(reopened.getGeneralSetting(QStringLiteral("user_defines")) == text);
    ObjectDataBase::INDEX_DATA_T objectBack;
    QVERIFY(reopened.getIndex(0, 0x2000, objectBack));
    QVERIFY(objectBack.name == text && objectBack.metadata == object.metadata);
    ObjectDataBase::SUBINDEX_DATA_T subBack;
    QVERIFY(reopened.getSubIndex(0, 0x2000, 1, subBack));
    sub.denotation.clear();
    QVERIFY(subBack == sub);
    QVERIFY(reopened.getPGNName(0, 1, ObjectDataBase::Receive) == text);
    ObjectDataBase::SPN spnBack;
    QVERIFY(reopened.getSPN(0, 1, ObjectDataBase::Receive, 2, spnBack));
    QVERIFY(spnBack.name == text && spnBack.defaultvalue == text);
}

void tst_TextValues::keysComeBack_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("slash") << QStringLiteral("a/b");
    QTest::newRow("outer slashes") << QStringLiteral("/a/");
    QTest::newRow("double slash") << QStringLiteral("a//b");
    QTest::newRow("only slashes") << QStringLiteral("//");
    QTest::newRow("backslash") << QStringLiteral("a\\b");
    QTest::newRow("percent") << QStringLiteral("%2f");
    QTest::newRow("percent inside") << QStringLiteral("a%20b");
    QTest::newRow("percent and slash") << QStringLiteral("%/%25/");
    QTest::newRow("equals sign") << QStringLiteral("a=b");
    QTest::newRow("brackets") << QStringLiteral("[Nodes]");
    QTest::newRow("blanks") << QStringLiteral(" a b ");
    QTest::newRow("lines") << QStringLiteral("a\nb");
    QTest::newRow("quotes") << QStringLiteral("it's \"a\"");
    QTest::newRow("semicolon") << QStringLiteral("; a");
    QTest::newRow("Unicode") << QStringLiteral("Schlüssel 漢 \U0001F600");
    QTest::newRow("general") << QStringLiteral("General");
    QTest::newRow("at sign") << QStringLiteral("@a");
}

void tst_TextValues::keysComeBack()
{
    QFETCH(QString, key);
    Store store;
    setLineType(store, 0, 5);
    store.setGeneralSetting(key, QStringLiteral("general"));
    store.setMiscSetting(key, QStringLiteral("misc"));
    store.setJ1939Setting(key, QStringLiteral("j1939"));
    store.setDescriptionSetting(key, QStringLiteral("description"));
    QVERIFY(store.saveProject(path(QStringLiteral("a.vext"))));
    ObjectDataBase reopened;
    QVERIFY(reopened.loadTextProject(path(QStringLiteral("a.vext"))));
    QVERIFY(!reopened.isExternallyModified());
    QCOMPARE(reopened.getGeneralSetting(key), QStringLiteral("general"));
    QCOMPARE(reopened.getMiscSetting(key), QStringLiteral("misc"));
    QCOMPARE(reopened.getJ1939Setting(key), QStringLiteral("j1939"));
    QCOMPARE(reopened.getDescriptionSetting(key), QStringLiteral("description"));
    QCOMPARE(reopened.getGeneralSettingKeys().size(), store.getGeneralSettingKeys().size());
}

QTEST_GUILESS_MAIN(tst_TextValues)
#include "tst_textvalues.moc"
