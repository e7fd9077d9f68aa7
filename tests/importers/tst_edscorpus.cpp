#include "importers/EDSImporter.h"
#include "importers/ImporterTest.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRegularExpression>

#include <bit>
#include <optional>

using namespace Qt::StringLiterals;
using ImporterTest::staging;

namespace {

using Entries = QHash<QString, QString>; ///< lower-case key to trimmed value

/** A second reader of EDS files that shares nothing with the importer: what it finds must be imported. */
struct PlainEds
{
    QHash<QString, Entries> sections; ///< by lower-case name

    explicit PlainEds(const QByteArray &bytes)
    {
        static const QRegularExpression lineEnd(u"\r\n|\n|\r"_s);
        QString current;
        const QStringList lines = QString::fromLatin1(bytes).split(lineEnd);
        for (const QString &raw : lines) {
            const QString line = raw.trimmed();
            if (line.isEmpty() || line.startsWith(u';') || line.startsWith(u'#'))
                continue;
            if (line.startsWith(u'[')) {
                current = line.mid(1, line.indexOf(u']') - 1).trimmed().toLower();
                sections[current];
            } else if (const qsizetype equals = line.indexOf(u'='); equals > 0 && !current.isEmpty()) {
                const QString key = line.left(equals).trimmed().toLower();
                if (!sections[current].contains(key))
                    sections[current].insert(key, line.mid(equals + 1).trimmed());
            }
        }
    }
};

/** Letters outside of ASCII depend on the encoding; each run of them counts as one mark. */
QString asciiOf(const QString &text)
{
    static const QRegularExpression foreign(u"[^\\x00-\\x7f]+"_s);
    QString result = text;
    if (result.size() > 1 && result.startsWith(u'"') && result.endsWith(u'"'))
        result = result.mid(1, result.size() - 2);
    return result.replace(foreign, u"?"_s);
}

std::optional<qulonglong> numberOf(QString text)
{
    static const QRegularExpression suffix(u"[uUlL]+$"_s);
    text = text.section(u';', 0, 0).section(u'#', 0, 0).trimmed().remove(suffix);
    bool ok = false;
    const qulonglong number =
        text.startsWith(u'-') ? qulonglong(text.toLongLong(&ok, 0)) : text.toULongLong(&ok, 0);
    if (ok)
        return number;
    const qulonglong decimal = text.toULongLong(&ok, 10);
    return ok ? std::optional(decimal) : std::nullopt;
}

/** Bits of the signed integers; 0 for other types. */
int signedBitsOf(int type)
{
    static const QMap<int, int> bits{{2, 8},   {3, 16},  {4, 32},  {16, 24},
                                     {18, 40}, {19, 48}, {20, 56}, {21, 64}};
    return bits.value(type);
}

/** The bits of a floating-point number that is told in either way. */
QString bitsOfReal(const QString &text, int type)
{
    const bool isPattern = text.startsWith(u"0x"_s, Qt::CaseInsensitive);
    if (type == 8)
        return QString::number(isPattern ? text.toUInt(nullptr, 16) : std::bit_cast<quint32>(text.toFloat()));
    return QString::number(isPattern ? text.toULongLong(nullptr, 16)
                                     : std::bit_cast<quint64>(text.toDouble()));
}

/** The meaning of a value, the same for all spellings of it. */
QString meaning(const QString &value, int type)
{
    const bool isText = type == 9 || type == 10 || type == 11 || type == 15;
    if (isText || value.isEmpty())
        return asciiOf(value);
    static const QRegularExpression node(u"\\$nodeid"_s, QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression bareHex(u"^[0-9a-f]+h?$"_s, QRegularExpression::CaseInsensitiveOption);
    QString text = value;
    if (text.contains(node)) {
        const QString rest = text.remove(node).remove(u'+').trimmed();
        return u"node+%1"_s.arg(rest.isEmpty() ? 0 : numberOf(rest).value_or(0));
    }
    if (type == 8 || type == 17)
        return bitsOfReal(text, type);
    if (const auto number = numberOf(text)) {
        const int bits = signedBitsOf(type);
        return QString::number(bits > 0 ? *number << (64 - bits) : *number);
    }
    if (bareHex.match(text).hasMatch())
        return QString::number(text.remove(QChar(u'h'), Qt::CaseInsensitive).toULongLong(nullptr, 16));
    return asciiOf(text);
}

QString accessOf(const QString &text)
{
    static const QRegularExpression word(u"^[a-z]+"_s);
    const QString first = word.match(text.toLower()).captured();
    static const QStringList known{u"const"_s, u"ro"_s, u"rw"_s, u"wo"_s, u"rww"_s, u"rwr"_s};
    if (known.contains(first))
        return first;
    return first == "r"_L1 ? u"ro"_s : first == "w"_L1 ? u"wo"_s : QString();
}

int typeOf(const QString &text)
{
    static const QHash<QString, int> words{
        {u"boolean"_s, 1},   {u"integer8"_s, 2},   {u"integer16"_s, 3},  {u"integer32"_s, 4},
        {u"unsigned8"_s, 5}, {u"unsigned16"_s, 6}, {u"unsigned32"_s, 7}, {u"visible_string"_s, 9}};
    const auto number = numberOf(text);
    return number ? int(*number) : words.value(text.toLower());
}

struct Device
{
    PlainEds file;
    bool dcf;
    ObjectDataBase &store;
    QStringList differences;
    int objects = 0; ///< sections that describe an object or sub-index

    void differ(const QString &place, const QString &what, const QVariant &found, const QVariant &expected)
    {
        if (found != expected)
            differences.append(
                u"%1 %2: \"%3\" instead of \"%4\""_s.arg(place, what, found.toString(), expected.toString()));
    }

    void compareSub(const Entries &entries, quint16 index, quint8 sub)
    {
        const QString place = ImporterTest::subName({index, sub});
        const auto row = ImporterTest::sub(store, staging, index, sub);
        const QString typeText = entries.value(u"datatype"_s);
        const int type = typeText.isEmpty() ? row.datatype : typeOf(typeText);
        differ(place, u"name"_s, asciiOf(row.name), asciiOf(entries.value(u"parametername"_s)));
        differ(place, u"type"_s, row.datatype, type);
        if (const QString access = accessOf(entries.value(u"accesstype"_s)); !access.isEmpty())
            differ(place, u"access"_s, row.accesstype, access);
        QString value = entries.value(u"defaultvalue"_s);
        if (const QString configured = entries.value(u"parametervalue"_s); dcf && !configured.isEmpty())
            value = configured;
        // A count that the file leaves open is that of its sub-indices.
        const int code = ImporterTest::object(store, staging, index).objecttype;
        if (value.isEmpty() && sub == 0 && (code == 8 || code == 9) && row.defaultineds)
            value = QString::number(highestSub(index));
        differ(place, u"value"_s, meaning(row.defaultvalue, type), meaning(value, type));
        differ(place, u"has default"_s, row.defaultineds, !value.isEmpty());
        compareLimits(entries, row, place, type);
        const bool mapped = numberOf(entries.value(u"pdomapping"_s)).value_or(0) != 0;
        differ(place, u"mapping"_s, row.pdomapping.toBinary() != 0, mapped);
    }

    int highestSub(quint16 index) const
    {
        const QString base = QString::number(index, 16).rightJustified(4, u'0');
        for (int sub = 0xFE; sub > 0; --sub)
            if (file.sections.contains(base + u"sub"_s + QString::number(sub, 16)))
                return sub;
        return 0;
    }

    void compareLimits(const Entries &entries, const ObjectDataBase::SUBINDEX_DATA_T &row,
                       const QString &place, int type)
    {
        const QString low = entries.value(u"lowlimit"_s);
        const QString high = entries.value(u"highlimit"_s);
        differ(place, u"has limits"_s, row.limitineds, !low.isEmpty() || !high.isEmpty());
        if (!low.isEmpty())
            differ(place, u"low limit"_s, meaning(row.lowlimit, type), meaning(low, type));
        if (!high.isEmpty())
            differ(place, u"high limit"_s, meaning(row.uplimit, type), meaning(high, type));
    }

    void compareCompact(const Entries &entries, quint16 index, int count)
    {
        const QString base = QString::number(index, 16).rightJustified(4, u'0');
        const Entries names = file.sections.value(base + u"name"_s);
        const Entries values = file.sections.value(base + u"value"_s);
        for (int sub = 1; sub <= count; ++sub) {
            Entries entry = entries;
            entry.insert(u"parametername"_s,
                         names.value(QString::number(sub),
                                     u"%1 %2"_s.arg(entries.value(u"parametername"_s)).arg(sub)));
            entry.insert(u"parametervalue"_s, values.value(QString::number(sub)));
            compareSub(entry, index, quint8(sub));
        }
    }
};

} // namespace

/** Device descriptions from the field, where they are at hand: nothing that they say gets lost. */
class TestEdsCorpus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everythingInTheFileIsInTheProject_data();
    void everythingInTheFileIsInTheProject();

private:
    static void compareObjects(Device &device);
    QDir m_corpus{QStringLiteral(FIELD_FILES)};
};

void TestEdsCorpus::initTestCase()
{
    ImporterTest::prepareApplication();
    if (!m_corpus.exists())
        QSKIP("No device descriptions from the field beside the source tree.");
}

void TestEdsCorpus::everythingInTheFileIsInTheProject_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("dcf");
    for (const bool dcf : {false, true}) {
        const QDir folder(m_corpus.filePath(dcf ? u"dcf"_s : u"eds"_s));
        const QStringList names = folder.entryList(QDir::Files);
        for (const QString &name : names)
            QTest::newRow(qPrintable(name)) << folder.filePath(name) << dcf;
    }
}

void TestEdsCorpus::compareObjects(Device &device)
{
    static const QRegularExpression form(u"^(?:0x)?([0-9a-f]{4})(?:sub(?:0x)?([0-9a-f]{1,2}))?$"_s);
    const auto &sections = device.file.sections;
    QSet<quint16> withSubs;
    for (auto section = sections.begin(); section != sections.end(); ++section) {
        const auto match = form.match(section.key());
        device.objects += match.hasMatch();
        if (match.hasMatch() && match.hasCaptured(2)) {
            const auto index = match.captured(1).toUShort(nullptr, 16);
            withSubs.insert(index);
            device.compareSub(*section, index, quint8(match.captured(2).toUShort(nullptr, 16)));
        }
    }
    for (auto section = sections.begin(); section != sections.end(); ++section) {
        const auto match = form.match(section.key());
        if (!match.hasMatch() || match.hasCaptured(2))
            continue;
        const auto index = match.captured(1).toUShort(nullptr, 16);
        const auto object = ImporterTest::object(device.store, staging, index);
        device.differ(match.captured(1), u"name"_s, asciiOf(object.name),
                      asciiOf(section->value(u"parametername"_s)));
        const int compact = int(numberOf(section->value(u"compactsubobj"_s)).value_or(0));
        if (const auto code = numberOf(section->value(u"objecttype"_s)))
            device.differ(match.captured(1), u"code"_s, object.objecttype, int(*code));
        if (compact > 0)
            device.compareCompact(*section, index, compact);
        else if (!withSubs.contains(index) && object.objecttype != 8 && object.objecttype != 9)
            device.compareSub(*section, index, 0);
    }
}

void TestEdsCorpus::everythingInTheFileIsInTheProject()
{
    QFETCH(const QString, path);
    QFETCH(const bool, dcf);
    const auto store = ImporterTest::newStore();
    EDSImporter importer;
    const ImporterTest::Recorder recorder(importer);
    importer.setDatabase(store);
    importer.setRange(0, 0xFFFF);
    importer.setDcfMode(dcf);
    importer.setImportFileInfo(true);
    QVERIFY(importer.setFile(path));
    const ImporterTest::DebugLines silence;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(ImporterTest::run(importer));
    QTRY_COMPARE(recorder.ends, 1);
    QVERIFY(timer.elapsed() < 10000);
    QVERIFY(importer.findings().size() < EdsFindings::limit);

    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    Device device{.file = PlainEds(file.readAll()), .dcf = dcf, .store = *store};
    compareObjects(device);
    QVERIFY2(device.differences.isEmpty(), qPrintable(device.differences.mid(0, 20).join(u'\n')));
    // One file of the field is a form with "14XX" for indices, which names no object at all.
    QCOMPARE(recorder.errors.isEmpty(), device.objects > 0);
    QCOMPARE(importer.importedObjects().isEmpty(), device.objects == 0);
}

QTEST_GUILESS_MAIN(TestEdsCorpus)
#include "tst_edscorpus.moc"
