#include "store/StoreTest.h"
#include "templates/TemplateParser.h"
#include "templates/TemplateWriter.h"

using namespace Qt::StringLiterals;

namespace {

QByteArray head()
{
    return "[Template]\nedition = CANopen NodeSmith\n";
}

QString oddText()
{
    return u"  a|b \"q\" \\n 'x' # ; = äöü €😀\n\t[c]\r "_s;
}

QByteArray quoted(const QString &text)
{
    QString cell = text;
    cell.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s).replace(u'\n', u"\\n"_s);
    cell.replace(u'\r', u"\\r"_s).replace(u'\t', u"\\t"_s);
    return '"' + cell.toUtf8() + '"';
}

} // namespace

class TemplateWriterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { StoreTest::prepareApplication(); }

    void bringsOddTextsThroughToTheDatabase();
    void writesObjectsOfAFurtherLine();
    void refusesADatabaseWithoutTheEmptyText();
    void leavesTheFormerFileWhenTheFolderIsMissing();
};

void TemplateWriterTest::bringsOddTextsThroughToTheDatabase()
{
    const QByteArray odd = quoted(oddText());
    TemplateParser parser;
    QVERIFY(parser.parse(head() + "[GeneralSettings]\nline0type=1\nuser_defines = " + odd
                             + "\nhw_defines = a | b = \"c\" # d\n[Objects 0]\n0x2000 | VAR | UNSIGNED8 | "
                             + odd + " | " + odd + "\n 0 | VISIBLE_STRING | ro | " + odd
                             + " | | | no | const | default | " + odd + "|" + odd + "\n",
                         u"a.txt"_s));
    QVERIFY(parser.finish());
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"odd.data"_s);
    QString error;
    QVERIFY2(TemplateWriter::write(parser.project(), path, &error), qPrintable(error));

    ObjectDataBase store;
    QVERIFY(store.openDataBase(path));
    QVERIFY(!store.isExternallyModified());
    QCOMPARE(store.getGeneralSetting(u"user_defines"_s), oddText());
    QCOMPARE(store.getGeneralSetting(u"hw_defines"_s), u"a | b = \"c\" # d"_s);
    ObjectDataBase::INDEX_DATA_T object;
    QVERIFY(store.getIndex(0, 0x2000, object));
    QCOMPARE(object.name, oddText());
    QCOMPARE(object.description, oddText());
    ObjectDataBase::SUBINDEX_DATA_T sub;
    QVERIFY(store.getSubIndex(0, 0x2000, 0, sub));
    QCOMPARE(sub.defaultvalue, oddText());
    QCOMPARE(sub.name, oddText());
    QCOMPARE(sub.description, oddText());
    QCOMPARE(sub.size, int(oddText().toUtf8().size()));
}

void TemplateWriterTest::writesObjectsOfAFurtherLine()
{
    TemplateParser parser;
    QVERIFY(parser.parse(
        head()
            + "[GeneralSettings]\nline0type=1\nline2type=2\n"
              "[PGNs 2]\n65280 | transmit | 6 | 0 | 0 | A\n 1 | UNSIGNED8 | 0 | | | managed | B\n",
        u"a.txt"_s));
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"lines"_s);
    QString error;
    QVERIFY2(TemplateWriter::write(parser.project(), path, &error), qPrintable(error));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{u"lines"_s});

    QCoreApplication::setApplicationName(u"CAN NodeSmith"_s);
    ObjectDataBase store;
    QVERIFY(store.openDataBase(path));
    QVERIFY(!store.isExternallyModified());
    QCOMPARE(store.getLines(), (QList<quint8>{0, 2}));
    QCOMPARE(store.getPGNMappingCount(2, 65280, ObjectDataBase::Transmit), 1);
}

void TemplateWriterTest::refusesADatabaseWithoutTheEmptyText()
{
    TemplateParser parser;
    QVERIFY(parser.parse(head() + "[PGNs 0]\n65280 | transmit | 6 | 0 | 0 | A | B\n", u"a.txt"_s));
    const QTemporaryDir folder;
    QString error;
    QVERIFY(!TemplateWriter::write(parser.project(), folder.filePath(u"a.data"_s), &error));
    QCOMPARE(error, u"nothing uses the empty text, its place in the string pool is lost"_s);
    QVERIFY(QDir(folder.path()).isEmpty());
}

void TemplateWriterTest::leavesTheFormerFileWhenTheFolderIsMissing()
{
    TemplateParser parser;
    QVERIFY(parser.parse(head(), u"a.txt"_s));
    QString error;
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"none/a.data"_s);
    QVERIFY(!TemplateWriter::write(parser.project(), path, &error));
    QVERIFY2(error.startsWith(path + u" cannot be written: "_s), qPrintable(error));
}

QTEST_GUILESS_MAIN(TemplateWriterTest)
#include "tst_templatewriter.moc"
