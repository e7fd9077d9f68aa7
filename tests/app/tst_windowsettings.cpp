#include "app/SettingsDialog.h"
#include "app/SettingsDialogDesk.h"
#include "app/TestHome.h"
#include "app/WindowTest.h"
#include "store/UndoManager.h"
#include "support/DialogUser.h"
#include "widgets/KorvelBaseApplication.h"

#include <QStatusBar>

using namespace Qt::StringLiterals;

/** What the window makes of the user's settings, and what it stores of its own. */
class TestWindowSettings : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void anAcceptedSettingsDialogIsFollowed_data();
    void anAcceptedSettingsDialogIsFollowed();
    void theTimeFormatIsThatOfTheNextGeneration();
    void theUndoDepthIsReadAtTheStartOnly();
    void closingKeepsTheStateOfOtherWindows();

private:
    /** Opens the settings, lets somebody change them, and presses a button. */
    static void atSettings(const VexMainWindow &window, const std::function<void(SettingsDialog &)> &change,
                           QDialogButtonBox::StandardButton button = QDialogButtonBox::Ok);
};

void TestWindowSettings::atSettings(const VexMainWindow &window,
                                    const std::function<void(SettingsDialog &)> &change,
                                    QDialogButtonBox::StandardButton button)
{
    bool changed = false;
    const DialogUser<SettingsDialog> user([&](SettingsDialog &dialog) {
        change(dialog);
        changed = true;
        SettingsDialogDesk::press(dialog, button);
    });
    action(window, u"actionSettings"_s)->trigger();
    QVERIFY(changed);
}

void TestWindowSettings::anAcceptedSettingsDialogIsFollowed_data()
{
    QTest::addColumn<QDialogButtonBox::StandardButton>("button");
    QTest::addColumn<bool>("followed");
    QTest::newRow("ok") << QDialogButtonBox::Ok << true;
    QTest::newRow("cancel") << QDialogButtonBox::Cancel << false;
}

void TestWindowSettings::anAcceptedSettingsDialogIsFollowed()
{
    QFETCH(const QDialogButtonBox::StandardButton, button);
    QFETCH(const bool, followed);
    const auto window = makeWindow();
    QVERIFY(!action(*window, u"actionProjecttransformer"_s)->isVisible());
    atSettings(
        *window, [](const SettingsDialog &dialog) { SettingsDialogDesk::enter(dialog, "metadata", true); },
        button);
    QCOMPARE(action(*window, u"actionProjecttransformer"_s)->isVisible(), followed);
}

void TestWindowSettings::theTimeFormatIsThatOfTheNextGeneration()
{
    UserSettings().setValue("General/disablecheck"_L1, true);
    UserSettings().setValue("General/date_time_format"_L1, u"'first stamp'"_s);
    const auto window = makeWindow();
    window->openProject(saveProject());
    const auto generated = [&] {
        action(*window, u"actionGenerate_Output"_s)->trigger();
        QFile file(path(u"gen_define.h"_s));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    };
    QVERIFY(generated().contains("first stamp"_L1));
    atSettings(*window, [](const SettingsDialog &dialog) {
        SettingsDialogDesk::enter(dialog, "date_time_format", u"'second stamp'"_s);
    });
    const QString text = generated();
    QVERIFY(text.contains("second stamp"_L1));
    QVERIFY(!text.contains("first stamp"_L1));
}

void TestWindowSettings::theUndoDepthIsReadAtTheStartOnly()
{
    UserSettings().setValue("General/undomaxdepth"_L1, 1);
    const auto window = makeWindow();
    window->show();
    window->openProject(saveProject());
    UserSettings().setValue("General/undomaxdepth"_L1, 5);
    atSettings(*window, [](const SettingsDialog &) {}); // nor does the dialog bring it in or write it
    QCOMPARE(UserSettings().value("General/undomaxdepth"_L1).toInt(), 5);
    for (const QString &value : {u"1"_s, u"2"_s, u"3"_s}) {
        QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, value));
        window->findChild<UndoManager *>()->handleDebounceTimeout();
    }
    QCOMPARE(window->statusBar()->currentMessage(),
             u"Undo limit reached - the oldest undo step has been dropped."_s);
    action(*window, u"actionUndo"_s)->trigger();
    QCOMPARE(m_store->getGeneralSetting(u"co_node_id"_s), u"2"_s);
    QVERIFY(!action(*window, u"actionUndo"_s)->isEnabled());
}

void TestWindowSettings::closingKeepsTheStateOfOtherWindows()
{
    const auto window = makeWindow();
    window->doThingsAfterStartup();
    window->show();
    QVERIFY(window->close());
    QCOMPARE(UserSettings().value("General/tmpFloat"_L1), QVariant(true));
    QCOMPARE(UserSettings().value("General/metadata"_L1), QVariant(false));
    QVERIFY(UserSettings().contains("Geometry/maximized"_L1));
    UserSettings().setValue("General/tmpFloat"_L1, false);
    UserSettings().setValue("General/metadata"_L1, true);
    const auto second = makeWindow();
    second->show();
    QVERIFY(second->close());
    QCOMPARE(UserSettings().value("General/tmpFloat"_L1).toBool(), false);
    QCOMPARE(UserSettings().value("General/metadata"_L1).toBool(), true);
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestWindowSettings test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_windowsettings.moc"
