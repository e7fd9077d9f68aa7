// Texts that a person or another program has had in hand.

#include "projects/ProjectTexts.h"

#include <QRegularExpression>

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

QTEST_GUILESS_MAIN(tst_TextProjectEdited)
#include "tst_textproject_edited.moc"
