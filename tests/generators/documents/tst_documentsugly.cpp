#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "canopen/COHelper.h"
#include "generators/RunDesk.h"
#include "generators/documents/DocumentGenerators.h"
#include "importers/CsvDesk.h"
#include "support/UglyTexts.h"

#include <QDomDocument>

using namespace Qt::StringLiterals;

namespace {

/** A run over a project whose texts are as bad as they come. */
class UglyDesk : public RunDesk
{
public:
    UglyDesk(const QList<int> &lineTypes, quint32 seed) : RunDesk(lineTypes), m_random(seed)
    {
        GeneratorFactories factories;
        addDocumentGenerators(factories);
        handler.setFactories(factories);
        setUser(u"General/implinfo"_s, 1);
    }

    void fill(quint8 line, int objects)
    {
        store->setDescriptionLine(line);
        for (const QString &key : {u"VendorName"_s, u"ProductName"_s, u"OrderCode"_s, u"Comment"_s})
            store->setDescriptionSetting(key, text());
        store->setDescriptionLine(0);
        for (int i = 0; i < objects; ++i)
            addObject(line, quint16(m_random.bounded(0x1000, 0x10000)));
    }

    QString document(const QString &name) const { return QString::fromUtf8(read(name)); }

private:
    QString text() { return UglyTexts::any(m_random); }

    void addObject(quint8 line, quint16 index)
    {
        static const QList<int> codes{CANopen::Var, CANopen::Array, CANopen::Record};
        const int code = codes.at(m_random.bounded(codes.size()));
        store->addIndex(line, index,
                        {.name = text(), .datatype = dataType(), .objecttype = code, .description = text()});
        store->addSubIndex(line, index, 0, sub());
        for (int i = code == CANopen::Var ? 0 : m_random.bounded(4); i > 0; --i)
            store->addSubIndex(line, index, quint8(m_random.bounded(256)), sub());
    }
    int dataType()
    {
        static const QList<quint16> types = COHelper::stringDataTypeIndexMap.keys();
        return types.at(m_random.bounded(types.size()));
    }
    /** What an importer can take for what it was: an access type that is one, a variable that has a name. */
    ObjectDataBase::SUBINDEX_DATA_T sub()
    {
        static const QStringList access{u"ro"_s, u"rw"_s, u"wo"_s, u"rww"_s, u"rwr"_s, u"const"_s};
        ObjectDataBase::SUBINDEX_DATA_T sub;
        sub.name = text();
        sub.datatype = dataType();
        sub.accesstype = access.at(m_random.bounded(access.size()));
        sub.defaultvalue = text();
        sub.pdomapping = PDOMapping(m_random.bounded(5));
        sub.lowlimit = text();
        sub.uplimit = text();
        sub.size = m_random.bounded(100);
        sub.defaultineds = m_random.bounded(2);
        sub.implementation = sub.accesstype == "const"_L1 ? int(CANopen::ManagedConst) : m_random.bounded(4);
        sub.description = text();
        sub.varname = u"v"_s + text();
        sub.writedefaulttoeds = quint8(m_random.bounded(2));
        sub.nvstorage = m_random.bounded(2);
        return sub;
    }

    QRandomGenerator m_random;
};

/** Reads a table into line 0 of a desk of its own, whose documents are then written. */
class Reimport : public UglyDesk
{
public:
    explicit Reimport(const QByteArray &table, const QString &name) : UglyDesk({1}, 0)
    {
        CsvImporter importer;
        importer.setDatabase(store);
        importer.setLine(0);
        importer.setRange(0x1000, 0xFFFF);
        write(name, table);
        m_isRead = importer.setFile(path(name)) && ImporterTest::run(importer);
        m_isRead = m_isRead && run() == Result::Completed;
    }
    bool isRead() const { return m_isRead; }

private:
    bool m_isRead = false;
};

QStringList linesOf(const QByteArray &text)
{
    QStringList lines = QString::fromUtf8(text).split(u'\n');
    for (QString &line : lines)
        if (constexpr qsizetype readable = 500; line.size() > readable)
            line = line.left(readable) + QString::number(qHash(line));
    return lines;
}

} // namespace

/** The documents of projects with texts that would break a careless generator. */
class TestDocumentsUgly : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }
    void theHtmlDocumentIsWellFormed_data() { addSeeds(); }
    void theHtmlDocumentIsWellFormed();
    void theTextDocumentHasARowForEveryObject_data() { addSeeds(); }
    void theTextDocumentHasARowForEveryObject();
    void theTablesComeBackTheSame_data() { addSeeds(); }
    void theTablesComeBackTheSame();
    void aLongDescriptionComesBack_data();
    void aLongDescriptionComesBack();
    void aProjectOf250LinesHasAllDocuments();

private:
    static void addSeeds()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 8; ++seed)
            QTest::addRow("project %u", seed) << seed;
    }
    static int subCount(ObjectDataBase &store)
    {
        int count = 0;
        const QList<quint16> indices = store.getIndexList(0, 0x1000);
        for (const quint16 index : indices)
            count += int(store.getSubIndexList(0, index).size());
        return count;
    }
};

void TestDocumentsUgly::theHtmlDocumentIsWellFormed()
{
    QFETCH(quint32, seed);
    UglyDesk desk({1}, seed);
    desk.fill(0, 30);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    QDomDocument document;
    QString fault;
    QVERIFY2(document.setContent(desk.document(u"project.html"_s), false, &fault), qPrintable(fault));
    const QDomElement root = document.documentElement();
    const qsizetype objects = desk.store->getIndexList(0, 0x1000).size();
    QVERIFY(objects > 10);
    QCOMPARE(root.elementsByTagName(u"table"_s).size(), 2 + objects + subCount(*desk.store));
    QCOMPARE(root.elementsByTagName(u"a"_s).size(), 2 + objects);
    QCOMPARE(root.elementsByTagName(u"script"_s).size(), 0);
}

void TestDocumentsUgly::theTextDocumentHasARowForEveryObject()
{
    QFETCH(quint32, seed);
    UglyDesk desk({1}, seed);
    desk.fill(0, 30);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    const QString text = desk.document(u"project_doc.txt"_s);
    const qsizetype objects = desk.store->getIndexList(0, 0x1000).size();
    const int subs = subCount(*desk.store);
    QCOMPARE(text.count("\nIndex:       0x"_L1), objects);
    QCOMPARE(text.count("\nSub:          0x"_L1), subs);
    QCOMPARE(text.count("\nDescription: "_L1), objects + subs);
}

void TestDocumentsUgly::theTablesComeBackTheSame()
{
    QFETCH(quint32, seed);
    UglyDesk desk({1}, seed);
    desk.fill(0, 30);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    for (const QString &name : {u"project.icsv"_s, u"project.csv"_s}) {
        const QByteArray table = desk.read(name);
        const Reimport copy(table, name);
        QVERIFY(copy.isRead());
        QCOMPARE(linesOf(copy.read(name)), linesOf(table));
    }
}

void TestDocumentsUgly::aLongDescriptionComesBack_data()
{
    QTest::addColumn<QString>("description");
    constexpr int length = 65536;
    QTest::newRow("letters") << QString(length, u'x');
    QTest::newRow("letters of three bytes") << QString(length, QChar(0x8F6C));
    QTest::newRow("line breaks") << QString(length, u'\n');
    QTest::newRow("quotation marks") << QString(u',' + QString(length - 1, u'"'));
}

void TestDocumentsUgly::aLongDescriptionComesBack()
{
    QFETCH(QString, description);
    UglyDesk desk({1}, 0);
    desk.store->addIndex(0, 0x2000, {.name = u"Long"_s, .objecttype = CANopen::Var});
    desk.store->addSubIndex(
        0, 0x2000, 0,
        {.name = u"Long"_s, .datatype = CAN::Unsigned8, .accesstype = u"rw"_s, .description = description});
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    const Reimport copy(desk.read(u"project.icsv"_s), u"project.icsv"_s);
    QVERIFY(copy.isRead());
    QVERIFY(ImporterTest::sub(*copy.store, 0, 0x2000, 0).description == description);
}

void TestDocumentsUgly::aProjectOf250LinesHasAllDocuments()
{
    constexpr int lineCount = 250;
    UglyDesk desk(QList<int>(lineCount, 1), 4711);
    for (int line = 0; line < lineCount; ++line)
        desk.fill(quint8(line), 1);
    QCOMPARE(desk.run(), RunDesk::Result::Completed);
    const QDir folder(desk.folder.path());
    for (const QString &pattern :
         {u"project_*.html"_s, u"project_*.txt"_s, u"project_*.csv"_s, u"project_*.icsv"_s})
        QCOMPARE(folder.entryList({pattern}, QDir::Files).size(), lineCount);
}

QTEST_GUILESS_MAIN(TestDocumentsUgly)
#include "tst_documentsugly.moc"
