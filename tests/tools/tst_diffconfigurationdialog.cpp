#include "tools/DiffConfigurationDialog.h"
#include "tools/DiffDialogTest.h"
#include "widgets/WidgetTest.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPushButton>

using namespace Qt::StringLiterals;
using DiffDialogTest::widget;

class TestDiffConfigurationDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFieldHasATickBoxThatIsOn_data();
    void everyFieldHasATickBoxThatIsOn();
    void tickBoxesShowAndGiveTheSelection();
    void theDefaultsAreRestored();

private:
    static QList<QCheckBox *> fields(const QWidget &dialog, const char *group)
    {
        return widget<QGroupBox>(dialog, group).findChildren<QCheckBox *>();
    }
};

void TestDiffConfigurationDialog::everyFieldHasATickBoxThatIsOn_data()
{
    QTest::addColumn<DiffLevel>("level");
    QTest::newRow("gbObject") << DiffLevel::Object;
    QTest::newRow("gbSubIndex") << DiffLevel::SubIndex;
    QTest::newRow("gbPGN") << DiffLevel::Pgn;
    QTest::newRow("gbSPN") << DiffLevel::Spn;
    QTest::newRow("gbCANID") << DiffLevel::CanId;
    QTest::newRow("gbDataElement") << DiffLevel::DataElement;
}

void TestDiffConfigurationDialog::everyFieldHasATickBoxThatIsOn()
{
    QFETCH(const DiffLevel, level);
    const DiffConfigurationDialog dialog;
    QStringList titles;
    const QList<QCheckBox *> boxes = fields(dialog, QTest::currentDataTag());
    for (const QCheckBox *box : boxes) {
        titles.append(box->text());
        QVERIFY2(box->isChecked(), qPrintable(box->text()));
    }
    QCOMPARE(titles, DiffFields::titles(level));
}

void TestDiffConfigurationDialog::tickBoxesShowAndGiveTheSelection()
{
    DiffConfigurationDialog dialog;
    QCOMPARE(dialog.selection(), DiffSelection());
    DiffSelection selection;
    selection.setCounting(DiffLevel::Pgn, 1, false);
    dialog.setSelection(selection);
    QVERIFY(!fields(dialog, "gbPGN").at(1)->isChecked());
    QCOMPARE(dialog.selection(), selection);
    QTest::mouseClick(fields(dialog, "gbSPN").at(2), Qt::LeftButton);
    selection.setCounting(DiffLevel::Spn, 2, false);
    QCOMPARE(dialog.selection(), selection);
}

void TestDiffConfigurationDialog::theDefaultsAreRestored()
{
    DiffConfigurationDialog dialog;
    DiffSelection selection;
    selection.setCounting(DiffLevel::Object, 0, false);
    dialog.setSelection(selection);
    const auto &buttons = widget<QDialogButtonBox>(dialog, "buttonBox");
    QTest::mouseClick(buttons.button(QDialogButtonBox::RestoreDefaults), Qt::LeftButton);
    QCOMPARE(dialog.selection(), DiffSelection());
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestDiffConfigurationDialog>(argc, argv);
}

#include "tst_diffconfigurationdialog.moc"
