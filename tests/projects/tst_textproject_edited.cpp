// Texts that a person or another program has had in hand.

#include "projects/ProjectTexts.h"

#include <QRegularExpression>
#include <QScopeGuard>

#include <filesystem>

using namespace ProjectTexts;

class tst_TextProjectEdited : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void aByteOrderMarkIsSkipped();
    void anEditWithoutALastLineEndOpensWithTheWarning();
    void aMissingLastLineEndAloneIsNoEdit();
    void withoutAHashAMissingLastLineEndCountsAsEdit();
    void aLineThatIsNothingIsLoggedAndLeftOut_data();
    void aLineThatIsNothingIsLoggedAndLeftOut();
    void anOpenQuoteCostsNoOtherLine();
    void anOpenBracketStillBeginsItsGroup();
    void onlyTheFirstOfManyBadLinesAreLogged();
    void anUnsettledMergeIsRefusedWithItsLine_data();
    void anUnsettledMergeIsRefusedWithItsLine();
    void strayLinesDoNotMakeAProjectOfAnotherFile();
    void aTextRewrittenWithinOneTickIsReadAnew();
    void groupsInAnyOrderGiveTheSameProject_data();
    void groupsInAnyOrderGiveTheSameProject();
    void missingEntriesHaveTheValuesOfANewRow();
    void entriesThatNoTableHasAreLeftOut();
    void readingLeavesNothingBehind();
    void withoutATemporaryFolderNothingIsReadOrWritten();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString textPath() const { return path(QStringLiteral("a.vext")); }
    QByteArray makeText() { return makeSmallText(textPath()); }
    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_TextProjectEdited::initTestCase()
{
    StoreTest::prepareApplication();
}

void tst_TextProjectEdited::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_TextProjectEdited::aByteOrderMarkIsSkipped()
{
    const QByteArray text = makeText();
    QVERIFY(write(textPath(), "\xEF\xBB\xBF" + text));
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(textPath()), qPrintable(store.lastError()));
    QVERIFY(!store.isExternallyModified());
    store.setDescriptionLine(0);
    ObjectDataBase original;
    QVERIFY(write(path(QStringLiteral("b.vext")), text));
    QVERIFY(original.openDataBase(path(QStringLiteral("b.vext"))));
    QCOMPARE(store.getDescriptionSettingKeys(), original.getDescriptionSettingKeys());
}

void tst_TextProjectEdited::anEditWithoutALastLineEndOpensWithTheWarning()
{
    const QByteArray text = makeText();
    QVERIFY(write(textPath(), text + "17\\userlevels=4"));
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(textPath()), qPrintable(store.lastError()));
    QVERIFY(store.isExternallyModified());
    QCOMPARE(store.getUDSServiceUserLevels(0, UDS::SID(17)), QStringLiteral("4"));
    QCOMPARE(store.getIndexName(0, 0x2000), QStringLiteral("Speed"));
}

void tst_TextProjectEdited::aMissingLastLineEndAloneIsNoEdit()
{
    const QByteArray text = makeText();
    QVERIFY(write(textPath(), text.chopped(1)));
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(textPath()), qPrintable(store.lastError()));
    QVERIFY(!store.isExternallyModified());
}

void tst_TextProjectEdited::withoutAHashAMissingLastLineEndCountsAsEdit()
{
    const QByteArray text = "[GeneralSettings]\nline0type=1\n[Nodes]\n0\\name=x\n";
    ObjectDataBase store;
    QVERIFY(write(textPath(), text));
    QVERIFY(store.openDataBase(textPath()));
    QVERIFY(!store.isExternallyModified());
    QVERIFY(write(textPath(), text.chopped(1)));
    QVERIFY(store.openDataBase(textPath()));
    QVERIFY(store.isExternallyModified());
}

void tst_TextProjectEdited::aLineThatIsNothingIsLoggedAndLeftOut_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("prose") << QByteArray("ask Anna about this");
    QTest::newRow("a quote") << QByteArray("the \"speed is new");
    QTest::newRow("a quoted entry") << QByteArray("\"co_node_id=9\"");
    QTest::newRow("a hash sign") << QByteArray("# a comment of other formats");
    QTest::newRow("a backslash at its end") << QByteArray("a\\");
    QTest::newRow("an entry behind a comment") << QByteArray("seen ; co_node_id=9");
}

void tst_TextProjectEdited::aLineThatIsNothingIsLoggedAndLeftOut()
{
    QFETCH(QByteArray, line);
    QByteArray text = makeText();
    const qsizetype at = text.indexOf("co_node_id=5\n");
    const qsizetype number = text.first(at).count('\n') + 1;
    QVERIFY(write(textPath(), text.insert(at, line + '\n')));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("line %1 is neither a group nor an entry: %2")
                                                .arg(number)
                                                .arg(QRegularExpression::escape(QString::fromUtf8(line)))));
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(textPath()), qPrintable(store.lastError()));
    QVERIFY(store.isExternallyModified());
    QCOMPARE(store.getGeneralSetting(QStringLiteral("co_node_id")), QStringLiteral("5"));
    QCOMPARE(store.getGeneralSetting(QStringLiteral("line0type")), QStringLiteral("5"));
    QCOMPARE(store.getPGNList(0, ObjectDataBase::BothDirections).size(), 5);
}

void tst_TextProjectEdited::anOpenQuoteCostsNoOtherLine()
{
    QByteArray text = makeText();
    QVERIFY(text.contains("co_node_id=5\n"));
    QVERIFY(write(textPath(), text.replace("co_node_id=5\n", "co_node_id=\"5\n")));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("leaves a quote open: co_node_id")));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(textPath()));
    QVERIFY(store.isExternallyModified());
    QCOMPARE(store.getGeneralSetting(QStringLiteral("co_node_id")), QStringLiteral("5"));
    QCOMPARE(store.getGeneralSetting(QStringLiteral("line0type")), QStringLiteral("5"));
    QCOMPARE(store.getIndexName(0, 0x2000), QStringLiteral("Speed"));
}

void tst_TextProjectEdited::anOpenBracketStillBeginsItsGroup()
{
    QByteArray text = makeText();
    QVERIFY(text.contains("[Objects0]\n"));
    QVERIFY(write(textPath(), text.replace("[Objects0]\n", "[Objects0\n")));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("is no whole group: .Objects0")));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(textPath()));
    QVERIFY(store.isExternallyModified());
    QCOMPARE(store.getIndexName(0, 0x2000), QStringLiteral("Speed"));
}

void tst_TextProjectEdited::onlyTheFirstOfManyBadLinesAreLogged()
{
    const QByteArray text = makeText();
    QVERIFY(write(textPath(), QByteArray("prose\n").repeated(25) + text));
    for (int line = 1; line <= 20; ++line)
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("line %1 is neither").arg(line)));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("5 more bad lines")));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(textPath()));
    QVERIFY(store.isExternallyModified());
}

void tst_TextProjectEdited::anUnsettledMergeIsRefusedWithItsLine_data()
{
    QTest::addColumn<QByteArray>("mark");
    QTest::newRow("ours") << QByteArray("<<<<<<< HEAD");
    QTest::newRow("middle") << QByteArray("=======");
    QTest::newRow("theirs") << QByteArray(">>>>>>> a branch");
    QTest::newRow("common") << QByteArray("||||||| 0815");
    QTest::newRow("common, without a name") << QByteArray("|||||||");
    QTest::newRow("with the line end of another system") << QByteArray("=======\r");
}

void tst_TextProjectEdited::anUnsettledMergeIsRefusedWithItsLine()
{
    QFETCH(QByteArray, mark);
    QByteArray text = makeText();
    const qsizetype at = text.indexOf("co_node_id=5\n");
    const qsizetype number = text.first(at).count('\n') + 1;
    QVERIFY(write(textPath(), text.insert(at, mark + '\n')));
    ObjectDataBase store;
    QVERIFY(!store.openDataBase(textPath()));
    QCOMPARE(store.lastError(),
             QStringLiteral("%1 is not the text of a project: line %2 marks a merge that is not settled.")
                 .arg(textPath())
                 .arg(number));
}

void tst_TextProjectEdited::strayLinesDoNotMakeAProjectOfAnotherFile()
{
    QVERIFY(write(textPath(), "Dear reader,\n[Window]\nsize=5\n"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("line 1 is neither")));
    ObjectDataBase store;
    QVERIFY(!store.openDataBase(textPath()));
    QVERIFY2(store.lastError().contains(QStringLiteral("no tables of a project")),
             qPrintable(store.lastError()));
}

// As a checkout may do, or a copy that keeps the time. QSettings keeps short texts for later readers.
void tst_TextProjectEdited::aTextRewrittenWithinOneTickIsReadAnew()
{
    QByteArray text = "[GeneralSettings]\nline0type=1\nco_node_id=5\n[Nodes]\n0\\name=x\n";
    QVERIFY(write(textPath(), text));
    const std::filesystem::path file(QFile::encodeName(textPath()).toStdString());
    const auto time = std::filesystem::last_write_time(file);
    ObjectDataBase store;
    QVERIFY(store.openDataBase(textPath()));
    QCOMPARE(store.getGeneralSetting(QStringLiteral("co_node_id")), QStringLiteral("5"));
    QVERIFY(write(textPath(), text.replace("co_node_id=5", "co_node_id=6")));
    std::filesystem::last_write_time(file, time);
    QVERIFY(store.openDataBase(textPath()));
    QCOMPARE(store.getGeneralSetting(QStringLiteral("co_node_id")), QStringLiteral("6"));
}

namespace {

/** The groups of a text, each with its head. */
QByteArrayList groupsOf(const QByteArray &text)
{
    QByteArrayList groups;
    for (qsizetype start = 0; start >= 0 && start < text.size();) {
        const qsizetype next = text.indexOf("\n[", start + 1);
        groups.append(text.mid(start, next < 0 ? -1 : next + 1 - start));
        start = next < 0 ? -1 : next + 1;
    }
    return groups;
}

/** Each group in two parts, the first entries of all groups before the other ones. */
QByteArray inTwoParts(const QByteArrayList &groups)
{
    QByteArray first;
    QByteArray second;
    for (const QByteArray &group : groups) {
        const qsizetype head = group.indexOf('\n') + 1;
        const qsizetype cut = group.indexOf('\n', head + (group.size() - head) / 2) + 1;
        first += group.first(cut) + '\n';
        second += group.first(head) + group.sliced(cut) + '\n';
    }
    return first + second;
}

} // namespace

void tst_TextProjectEdited::groupsInAnyOrderGiveTheSameProject_data()
{
    QTest::addColumn<bool>("split");
    QTest::newRow("reversed") << false;
    QTest::newRow("in two parts") << true;
}

void tst_TextProjectEdited::groupsInAnyOrderGiveTheSameProject()
{
    QFETCH(bool, split);
    Store original;
    fillMixedProject(original);
    QVERIFY(original.saveProject(textPath()));
    const QByteArray text = read(textPath());
    QByteArrayList groups = groupsOf(text);
    QVERIFY(groups.size() > 10);
    std::reverse(groups.begin(), groups.end());
    QVERIFY(write(textPath(), split ? inTwoParts(groups) : groups.join('\n')));
    QVERIFY(read(textPath()) != text);
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(textPath()), qPrintable(store.lastError()));
    QVERIFY(!store.isExternallyModified());
    QCOMPARE(store.getLines(), (QList<quint8>{0, 1, 2}));
    QVERIFY(store.saveProject(path(QStringLiteral("b.vext"))));
    QCOMPARE(read(path(QStringLiteral("b.vext"))), text);
}

void tst_TextProjectEdited::missingEntriesHaveTheValuesOfANewRow()
{
    QVERIFY(write(textPath(),
                  "[GeneralSettings]\nline0type=5\n[Nodes]\n0\\name=x\n[Objects0]\n0x2000\\name=Speed\n"
                  "[SubObjects0]\n0x2000\\0x1\\name=Set point\n[PGNs0]\n61444\\direction=85\n"
                  "[SPNs0]\n61444\\190\\direction=85\n[UDSSettings0]\n34\\active=1\n"));
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(textPath()), qPrintable(store.lastError()));
    QVERIFY(!store.isExternallyModified());
    ObjectDataBase::INDEX_DATA_T object;
    QVERIFY(store.getIndex(0, 0x2000, object));
    QVERIFY(object == ObjectDataBase::INDEX_DATA_T{.name = QStringLiteral("Speed")});
    ObjectDataBase::SUBINDEX_DATA_T sub;
    QVERIFY(store.getSubIndex(0, 0x2000, 1, sub));
    ObjectDataBase::SUBINDEX_DATA_T expected;
    expected.name = QStringLiteral("Set point");
    QVERIFY(sub == expected);
    ObjectDataBase::PGN pgn;
    QVERIFY(store.getPGN(0, 61444, ObjectDataBase::Transmit, pgn));
    QVERIFY(pgn == ObjectDataBase::PGN{.direction = ObjectDataBase::Transmit});
    ObjectDataBase::SPN spn;
    QVERIFY(store.getSPN(0, 61444, ObjectDataBase::Transmit, 190, spn));
    QVERIFY(spn == ObjectDataBase::SPN());
    QCOMPARE(store.getUDSActiveServices(0), QList<UDS::SID>{UDS::SID(34)});
    QCOMPARE(store.getUDSServiceSessions(0, UDS::SID(34)), QString());
    ObjectDataBase::NODE_DATA_T node;
    QVERIFY(store.getNode(0, node));
    ObjectDataBase::NODE_DATA_T expectedNode;
    expectedNode.name = QStringLiteral("x");
    QVERIFY(node == expectedNode);
    QVERIFY(store.saveProject(path(QStringLiteral("b.vexp"))));
    QVERIFY(store.openDataBase(path(QStringLiteral("b.vexp"))));
}

void tst_TextProjectEdited::entriesThatNoTableHasAreLeftOut()
{
    QByteArray text = makeText();
    text.replace("[Objects0]\n", "[Objects0]\n0x2000\\colour=red\n");
    text.replace("[PGNs0]\n", "[PGNs0]\n61440\\colour=red\n");
    text.replace("[UDSSettings0]\n", "[UDSSettings0]\n16\\colour=red\n");
    text.append("\n[Notes]\nby=Anna\n");
    QVERIFY(write(textPath(), text));
    ObjectDataBase store;
    QVERIFY2(store.openDataBase(textPath()), qPrintable(store.lastError()));
    QVERIFY(store.isExternallyModified());
    QCOMPARE(store.getIndexName(0, 0x2000), QStringLiteral("Speed"));
    QCOMPARE(store.getPGNName(0, 61440, ObjectDataBase::Transmit), QStringLiteral("PGN 61440"));
    QCOMPARE(store.getUDSServiceSessions(0, UDS::SID(16)), QStringLiteral("1,2,3,4"));
    QVERIFY(store.saveProject(QString()));
    QVERIFY(!read(textPath()).contains("colour"));
    QVERIFY(!read(textPath()).contains("Anna"));
}

// The private copy goes with the reading, and the folder of the text need not be writable.
void tst_TextProjectEdited::readingLeavesNothingBehind()
{
    const QByteArray text = makeText();
    const QTemporaryDir temporary;
    const QByteArray former = qgetenv("TMPDIR");
    const auto restore = qScopeGuard([&former] { qputenv("TMPDIR", former); });
    qputenv("TMPDIR", QFile::encodeName(temporary.path()));
    ObjectDataBase store;
    QVERIFY(store.openDataBase(textPath()));
    QVERIFY(!store.openDataBase(path(QStringLiteral("missing.vext"))));
    QVERIFY(store.saveProject(path(QStringLiteral("b.vext"))));
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QCOMPARE(QDir(temporary.path()).entryList(everything), QStringList());
    QCOMPARE(QDir(m_folder->path()).entryList(everything),
             (QStringList{QStringLiteral("a.vext"), QStringLiteral("b.vext")}));
    QCOMPARE(read(textPath()), text);
}

void tst_TextProjectEdited::withoutATemporaryFolderNothingIsReadOrWritten()
{
    const QByteArray text = makeText();
    Store store;
    setLineType(store, 0, 1);
    const QByteArray former = qgetenv("TMPDIR");
    const auto restore = qScopeGuard([&former] { qputenv("TMPDIR", former); });
    qputenv("TMPDIR", QFile::encodeName(textPath())); // a file has no room for a folder
    QVERIFY(!store.openDataBase(textPath()));
    QVERIFY2(store.lastError().contains(textPath()), qPrintable(store.lastError()));
    QCOMPARE(store.getGeneralSetting(QStringLiteral("line0type")), QStringLiteral("1"));
    QVERIFY(!store.saveProject(textPath()));
    QVERIFY2(store.lastError().contains(textPath()), qPrintable(store.lastError()));
    QCOMPARE(read(textPath()), text);
}

QTEST_GUILESS_MAIN(tst_TextProjectEdited)
#include "tst_textproject_edited.moc"
