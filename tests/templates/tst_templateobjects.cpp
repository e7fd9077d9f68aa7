#include "canopen/COHelper.h"
#include "store/StoreTest.h"
#include "templates/TemplateFile.h"

using namespace Qt::StringLiterals;
using namespace TemplateFile;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString place(const ObjectDataBase::SubEntry &entry)
{
    return u"%1:%2"_s.arg(QString::number(entry.index, 16).toUpper()).arg(entry.subindex);
}

qint64 numberOf(const QString &text)
{
    return text.startsWith("0x"_L1) ? text.sliced(2).toLongLong(nullptr, 16) : text.toLongLong();
}

struct ProfileRow
{
    QString type;
    QString access;
    bool isMappable = false;
};

/** The sub-index rows of the communication profiles, by "index:sub-index". */
QMap<QString, ProfileRow> profileRows()
{
    QMap<QString, ProfileRow> rows;
    for (const QString &profile : {u":/codb/v302.codb"_s, u":/codb/v301.codb"_s}) {
        const QStringList lines = QString::fromLatin1(contentOf(profile)).split(u'\n');
        for (const QString &line : lines) {
            const QStringList fields = line.split(u':');
            if (fields.size() > 21 && !fields.at(1).isEmpty() && !line.startsWith(u'#'))
                rows.insert(u"%1:%2"_s.arg(fields.at(0)).arg(fields.at(1).toInt(nullptr, 16)),
                            {fields.at(7), fields.at(9), fields.at(21) == "y"_L1});
        }
    }
    return rows;
}

} // namespace

class TemplateObjectsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { StoreTest::prepareApplication(); }

    void theObjectTemplatesAreThoseThatEditorsCopy();
    void theObjectTemplatesHaveTheirValues_data();
    void theObjectTemplatesHaveTheirValues();
    void theObjectTemplatesCopyIntoANewProject();
    void entriesAreConsistent_data();
    void entriesAreConsistent();
    void entriesAgreeWithTheProfiles_data();
    void entriesAgreeWithTheProfiles();
};

void TemplateObjectsTest::theObjectTemplatesAreThoseThatEditorsCopy()
{
    Template store(u"objects"_s);
    QCOMPARE(store.getIndexList(0),
             (QList<quint16>{0x1005, 0x1006, 0x1007, 0x100C, 0x100D, 0x1012, 0x1014, 0x1015,
                             0x1016, 0x1019, 0x1028, 0x102A, 0x1280, 0x1300, 0x1301, 0x1381,
                             0x13FE, 0x13FF, 0x1400, 0x1600, 0x1800, 0x1A00}));
}

void TemplateObjectsTest::theObjectTemplatesHaveTheirValues_data()
{
    addValueColumns();
    addValue(0x1005, 0, 7, "rw", "0x00000080", "0..4294967295", 0, 0);
    addValue(0x1006, 0, 7, "rw", "0", "0..4294967295", 0, 0);
    addValue(0x1007, 0, 7, "rw", "0", "0..4294967295", 0, 0);
    addValue(0x100C, 0, 6, "rw", "0", "0..65535", 0, 0);
    addValue(0x100D, 0, 5, "rw", "0", "0..255", 0, 0);
    addValue(0x1012, 0, 7, "rw", "0x00000100", "0..4294967295", 0, 0);
    addValue(0x1014, 0, 7, "rw", "$NODEID+0x80", "0..4294967295", 0, 0);
    addValue(0x1015, 0, 6, "rw", "0", "0..65535", 0, 0);
    addValue(0x1016, 0, 5, "const", "1", "1..127", 0, 1);
    addValue(0x1016, 1, 7, "rw", "0x00000000", "0..4294967295", 0, 0);
    addValue(0x1019, 0, 5, "rw", "0", "0..240", 0, 0);
    addValue(0x1028, 1, 7, "rw", "0x00000081", "0..4294967295", 0, 0);
    addValue(0x102A, 0, 6, "rw", "0", "0..65535", 0, 0);
    addValue(0x1280, 0, 5, "const", "3", "3..3", 0, 1);
    addValue(0x1280, 1, 7, "rw", "0x80000000", "0..4294967295", 0, 0);
    addValue(0x1280, 3, 5, "rw", "1", "1..127", 0, 0);
    addValue(0x1300, 0, 5, "rw", "0", "0..1", 0, 0);
    addValue(0x1301, 2, 6, "rw", "25", "1..65535", 0, 0);
    addValue(0x1301, 3, 5, "rw", "20", "1..255", 0, 0);
    addValue(0x1301, 4, 5, "ro", "254", "254..254", 0, 0);
    addValue(0x1301, 5, 7, "rw", "0xff + 2 * $NODEID", "0..4294967295", 0, 0);
    addValue(0x1301, 6, 7, "rw", "0x100 + 2 * $NODEID", "0..4294967295", 0, 0);
    addValue(0x1381, 0, 5, "const", "0", "0..16", 0, 1);
    addValue(0x13FE, 0, 5, "rw", "0x00", "0..255", 0, 0);
    addValue(0x13FF, 1, 6, "rw", "0x0000", "0..65535", 0, 0);
    addValue(0x1400, 0, 5, "const", "5", "2..5", 0, 1);
    addValue(0x1400, 1, 7, "rw", "$NODEID+0x200", "0..4294967295", 0, 0);
    addValue(0x1400, 5, 6, "rw", "0", "0..65535", 0, 0);
    addValue(0x1600, 0, 5, "const", "1", "0..255", 0, 1);
    addValue(0x1600, 1, 7, "const", "0x00000000", "0..4294967295", 0, 1);
    addValue(0x1800, 0, 5, "const", "6", "2..6", 0, 1);
    addValue(0x1800, 1, 7, "rw", "$NODEID+0x180", "0..4294967295", 0, 0);
    addValue(0x1800, 2, 5, "rw", "255", "0..255", 0, 0);
    addValue(0x1800, 3, 6, "rw", "0", "0..65535", 0, 0);
    addValue(0x1800, 6, 5, "rw", "0", "0..240", 0, 0);
    addValue(0x1A00, 1, 7, "const", "0x00000000", "0..4294967295", 0, 1);
}

void TemplateObjectsTest::theObjectTemplatesHaveTheirValues()
{
    compareValue(u"objects"_s);
}

void TemplateObjectsTest::theObjectTemplatesCopyIntoANewProject()
{
    Template source(u"objects"_s);
    Template target(u"mt"_s);
    const QList<quint16> indices = source.getIndexList(0);
    for (const quint16 index : indices)
        QVERIFY(target.copyIndexFrom(source, 0, index, 0, index, true));
    const QList<ObjectDataBase::SubEntry> entries = source.subIndices();
    for (const ObjectDataBase::SubEntry &entry : entries) {
        ObjectDataBase::SUBINDEX_DATA_T copy;
        QVERIFY2(target.getSubIndex(0, entry.index, entry.subindex, copy), qPrintable(place(entry)));
        QVERIFY2(copy == entry.data, qPrintable(place(entry)));
    }
    QCOMPARE(target.getIndexList(0).size(), 5 + indices.size());
}

void TemplateObjectsTest::entriesAreConsistent_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("mt") << u"mt"_s;
    QTest::newRow("objects") << u"objects"_s;
}

void TemplateObjectsTest::entriesAreConsistent()
{
    QFETCH(QString, name);
    Template store(name);
    const QList<ObjectDataBase::SubEntry> entries = store.subIndices();
    for (const ObjectDataBase::SubEntry &entry : entries) {
        const auto &sub = entry.data;
        const QByteArray where = place(entry).toLatin1();
        ObjectDataBase::INDEX_DATA_T object;
        QVERIFY2(store.getIndex(0, entry.index, object), where);
        if (object.objecttype == CANopen::Var) {
            QVERIFY2(object.datatype == sub.datatype && object.name == sub.name, where);
        } else if (entry.subindex == 0) {
            QVERIFY2(sub.datatype == CAN::Unsigned8, where);
            QVERIFY2(numberOf(sub.defaultvalue) == store.getSubIndexList(0, entry.index).constLast(), where);
        } else if (object.objecttype == CANopen::Array) {
            QVERIFY2(object.datatype == sub.datatype, where);
        }
        // A constant of the generated code cannot be written over the bus.
        if (sub.implementation == CANopen::ManagedConst)
            QVERIFY2(sub.accesstype == "const"_L1 || sub.accesstype == "ro"_L1, where);
        if (!sub.defaultvalue.contains("$NODEID"_L1)) {
            const qint64 value = numberOf(sub.defaultvalue);
            QVERIFY2(value >= numberOf(sub.lowlimit) && value <= numberOf(sub.uplimit), where);
        }
        QVERIFY2(sub.writedefaulttoeds == (sub.defaultineds ? 1 : 0), where);
    }
}

void TemplateObjectsTest::entriesAgreeWithTheProfiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("known");
    QTest::newRow("mt") << u"mt"_s << 11;
    QTest::newRow("objects") << u"objects"_s << 33;
}

void TemplateObjectsTest::entriesAgreeWithTheProfiles()
{
    QFETCH(QString, name);
    QFETCH(int, known);
    const QMap<QString, ProfileRow> profile = profileRows();
    Template store(name);
    const QList<ObjectDataBase::SubEntry> entries = store.subIndices();
    int found = 0;
    for (const ObjectDataBase::SubEntry &entry : entries) {
        const auto row = profile.constFind(place(entry));
        if (row == profile.constEnd())
            continue;
        ++found;
        const QByteArray where = place(entry).toLatin1();
        QVERIFY2(COHelper::index2DataTypeString(quint16(entry.data.datatype)) == row->type, where);
        // A mapping template is a static one, which the standard lets a device have instead.
        const bool isMapping = entry.index == 0x1600 || entry.index == 0x1A00;
        QVERIFY2(entry.data.accesstype == (isMapping ? u"const"_s : row->access), where);
        QVERIFY2(row->isMappable || entry.data.pdomapping == PDOMapping(PDOMapping::Forbidden), where);
    }
    QCOMPARE(found, known);
}

QTEST_GUILESS_MAIN(TemplateObjectsTest)
#include "tst_templateobjects.moc"
