#include "widgets/AboutDialog.h"
#include "widgets/WidgetTest.h"

#include <QApplication>
#include <QClipboard>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSqlDatabase>

using namespace Qt::StringLiterals;

class TestAboutDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theProductItsVersionAndIconAreTold();
    void theFactsNameWhatAProblemReportNeeds_data();
    void theFactsNameWhatAProblemReportNeeds();
    void theLicenceCanBeRead();
    void theCopyButtonCopiesTheFacts();
    void noDatabaseConnectionIsLeftBehind();
    void escapeCloses();
};

void TestAboutDialog::theProductItsVersionAndIconAreTold()
{
    QApplication::setWindowIcon(QIcon(u":/icon/icon/canopen-nodesmith.svg"_s));
    const AboutDialog dialog;
    QCOMPARE(dialog.windowTitle(), u"About CANopen NodeSmith"_s);
    QCOMPARE(dialog.findChild<QLabel *>(u"lblProduct"_s)->text(), u"CANopen NodeSmith  4.3.2"_s);
    QVERIFY(!dialog.findChild<QLabel *>(u"lblIcon"_s)->pixmap().isNull());
}

void TestAboutDialog::theFactsNameWhatAProblemReportNeeds_data()
{
    QTest::addColumn<QRegularExpression>("line");
    const auto row = [](const char *name, const QString &line) {
        QTest::newRow(name) << QRegularExpression(QRegularExpression::anchoredPattern(line));
    };
    row("product", u"CANopen NodeSmith  4\\.3\\.2"_s);
    row("Qt", u"Qt 6\\.\\d+\\.\\d+ \\(built with 6\\.\\d+\\.\\d+\\)"_s);
    row("SQLite", u"SQLite 3\\.\\d+\\.\\d+"_s);
    row("system", u"System: .+, .+"_s);
    row("platform", u"Platform: offscreen"_s);
    row("settings", u"Settings: /.*CANopen NodeSmith 4\\.conf"_s);
}

void TestAboutDialog::theFactsNameWhatAProblemReportNeeds()
{
    QFETCH(const QRegularExpression, line);
    const AboutDialog dialog;
    const QString facts = dialog.findChild<QLabel *>(u"lblFacts"_s)->text();
    QVERIFY2(!facts.split(u'\n').filter(line).isEmpty(), qPrintable(facts));
}

void TestAboutDialog::theLicenceCanBeRead()
{
    const AboutDialog dialog;
    const QString text = dialog.findChild<QPlainTextEdit *>(u"pteLicence"_s)->toPlainText();
    QVERIFY(text.contains("Apache License"_L1));
    QVERIFY(text.contains("Version 2.0"_L1));
}

void TestAboutDialog::theCopyButtonCopiesTheFacts()
{
    AboutDialog dialog;
    dialog.show();
    QGuiApplication::clipboard()->clear();
    QTest::mouseClick(dialog.findChild<QPushButton *>(u"btnCopy"_s), Qt::LeftButton);
    QCOMPARE(QGuiApplication::clipboard()->text(), AboutDialog::facts());
    QCOMPARE(dialog.findChild<QLabel *>(u"lblCopied"_s)->text(), u"Copied"_s);
}

void TestAboutDialog::noDatabaseConnectionIsLeftBehind()
{
    QVERIFY(!AboutDialog::facts().isEmpty());
    QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
}

void TestAboutDialog::escapeCloses()
{
    AboutDialog dialog;
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestAboutDialog>(argc, argv);
}

#include "tst_aboutdialog.moc"
