#include "app/SettingsDialogDesk.h"
#include "app/TestHome.h"
#include "app/TestProject.h"
#include "app/UserSettings.h"
#include "support/DialogUser.h"
#include "widgets/KorvelBaseApplication.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace SettingsDialogDesk;

/** Keeps the addresses that would be opened in a browser. */
class AddressKeeper : public QObject
{
    Q_OBJECT

public:
    AddressKeeper() { QDesktopServices::setUrlHandler(u"https"_s, this, "keep"); }
    ~AddressKeeper() override { QDesktopServices::unsetUrlHandler(u"https"_s); }

    QList<QUrl> addresses;

public Q_SLOTS:
    void keep(const QUrl &address) { addresses.append(address); }
};

/** The settings of programs that follow a generation: the EDS checker, the user's and the project's command.
 */
class TestSettingsPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void theEdsCheckerIsWrittenWhereTheRunReads();
    void aCheckerThatOnlyTheRunKnowsIsShown();
    void aMissingCheckerIsTold();
    void theStackFolderIsCheckedForItsChangelog();
    void theCheckerIsSelectedInAFileDialog();
    void theStackFolderIsSelectedInAFileDialog();
    void downloadOpensThePage();

    void withoutProjectItsGroupIsDisabled();
    void projectValuesMakeTheRoundTrip();
    void anUnchangedProjectIsNotWritten();
    void onlyOneCommandIsEnabled();
    void theGlobalCommandRestsWhileTheProjectHasItsOwn();
    void theGlobalCommandComesBackWithoutTheProjects();
    void enablingTheGlobalCommandDisablesTheProjects();
    void rejectLeavesTheProjectAlone();

private:
    static QSharedPointer<ObjectDataBase> makeStore();
};

void TestSettingsPrograms::init()
{
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
    UserSettings().clear();
}

QSharedPointer<ObjectDataBase> TestSettingsPrograms::makeStore()
{
    auto store = QSharedPointer<ObjectDataBase>::create();
    return TestProject::fill(*store, {0}, u"1"_s) ? store : nullptr;
}

void TestSettingsPrograms::theEdsCheckerIsWrittenWhereTheRunReads()
{
    SettingsDialog dialog;
    dialog.show();
    enter(dialog, "EDSChecker", true);
    enter(dialog, "EDSCheckerPath", u"/opt/checker"_s);
    press(dialog, QDialogButtonBox::Ok);
    const UserSettings settings;
    QCOMPARE(settings.value("EDSChecker/checkeds"_L1).toBool(), true);
    QCOMPARE(settings.value("EDSChecker/EDSCheckerPath"_L1).toString(), u"/opt/checker"_s);
    QCOMPARE(settings.value("General/EDSChecker"_L1).toBool(), true);
    QCOMPARE(settings.value("General/EDSCheckerPath"_L1).toString(), u"/opt/checker"_s);
}

void TestSettingsPrograms::aCheckerThatOnlyTheRunKnowsIsShown()
{
    UserSettings().setValue("EDSChecker/checkeds"_L1, true);
    UserSettings().setValue("EDSChecker/EDSCheckerPath"_L1, u"/opt/checker"_s);
    {
        const SettingsDialog dialog;
        QCOMPARE(shown(dialog, "EDSChecker").toBool(), true);
        QCOMPARE(shown(dialog, "EDSCheckerPath").toString(), u"/opt/checker"_s);
    }
    UserSettings().setValue("General/EDSChecker"_L1, false);
    UserSettings().setValue("General/EDSCheckerPath"_L1, u"/own/checker"_s);
    const SettingsDialog dialog;
    QCOMPARE(shown(dialog, "EDSChecker").toBool(), false);
    QCOMPARE(shown(dialog, "EDSCheckerPath").toString(), u"/own/checker"_s);
}

void TestSettingsPrograms::aMissingCheckerIsTold()
{
    SettingsDialog dialog;
    const auto *hint = find<QLabel>(dialog, "lblEdsHint");
    QVERIFY(hint->text().isEmpty());
    find<QLineEdit>(dialog, "EDSCheckerPath")->setText(u"/no/such/checker"_s);
    QVERIFY(!hint->text().isEmpty());
    find<QLineEdit>(dialog, "EDSCheckerPath")->setText(QCoreApplication::applicationFilePath());
    QVERIFY(hint->text().isEmpty());
}

void TestSettingsPrograms::theStackFolderIsCheckedForItsChangelog()
{
    const QTemporaryDir folder;
    SettingsDialog dialog;
    const auto *hint = find<QLabel>(dialog, "lblStackHint");
    QVERIFY(hint->text().isEmpty());
    find<QLineEdit>(dialog, "costackpath")->setText(folder.path());
    QVERIFY(hint->text().contains(u"CHANGELOG"_s));
    QVERIFY(TestProject::write(folder.filePath(u"CHANGELOG"_s), "V4"));
    find<QLineEdit>(dialog, "costackpath")->setText(folder.path() + u'/');
    QVERIFY(hint->text().isEmpty());
}

void TestSettingsPrograms::theCheckerIsSelectedInAFileDialog()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"checker.exe"_s);
    QVERIFY(TestProject::write(file, "x"));
    SettingsDialog dialog;
    dialog.show();
    showPageOf(dialog, find<QWidget>(dialog, "btnFileSelect"));
    QString title;
    QStringList filters;
    const DialogUser<QFileDialog> user([&](QFileDialog &chooser) {
        title = chooser.windowTitle();
        filters = chooser.nameFilters();
        chooser.findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(file);
        QMetaObject::invokeMethod(&chooser, "accept");
    });
    QTest::mouseClick(find<QPushButton>(dialog, "btnFileSelect"), Qt::LeftButton);
    QCOMPARE(title, u"Find EDS Checker"_s);
    QCOMPARE(filters.constFirst(), u"EDS Checker (*.exe)"_s);
    QCOMPARE(shown(dialog, "EDSCheckerPath").toString(), file);
}

void TestSettingsPrograms::theStackFolderIsSelectedInAFileDialog()
{
    const QTemporaryDir folder;
    SettingsDialog dialog;
    dialog.show();
    QString title;
    const DialogUser<QFileDialog> user([&](QFileDialog &chooser) {
        title = chooser.windowTitle();
        chooser.findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(folder.path());
        QMetaObject::invokeMethod(&chooser, "accept");
    });
    QTest::mouseClick(find<QPushButton>(dialog, "btnPathSelect"), Qt::LeftButton);
    QCOMPARE(title, u"Specify CANopen stack installation folder"_s);
    QCOMPARE(shown(dialog, "costackpath").toString(), folder.path());
}

void TestSettingsPrograms::downloadOpensThePage()
{
    const AddressKeeper keeper;
    SettingsDialog dialog;
    dialog.show();
    showPageOf(dialog, find<QWidget>(dialog, "btnDownload"));
    QTest::mouseClick(find<QPushButton>(dialog, "btnDownload"), Qt::LeftButton);
    QCOMPARE(keeper.addresses.size(), 1);
    QVERIFY(keeper.addresses.constFirst().isValid());
}

void TestSettingsPrograms::withoutProjectItsGroupIsDisabled()
{
    SettingsDialog dialog;
    dialog.setDataBase({});
    QVERIFY(!find<QGroupBox>(dialog, "gbProjectPostGen")->isEnabled());
    dialog.setDataBase(QSharedPointer<ObjectDataBase>::create());
    QVERIFY(!find<QGroupBox>(dialog, "gbProjectPostGen")->isEnabled());
    dialog.setDataBase(makeStore());
    QVERIFY(find<QGroupBox>(dialog, "gbProjectPostGen")->isEnabled());
    dialog.on_buttonBox_accepted();
}

void TestSettingsPrograms::projectValuesMakeTheRoundTrip()
{
    const auto store = makeStore();
    {
        SettingsDialog dialog;
        dialog.setDataBase(store);
        dialog.show();
        enter(dialog, "gbProjectPostGen", true);
        enter(dialog, "postgencmd", u"/bin/sh"_s);
        enter(dialog, "postgencmdargs", u"-c %P"_s);
        enter(dialog, "postGenWait", true);
        press(dialog, QDialogButtonBox::Ok);
    }
    QCOMPARE(store->getMiscSetting(u"postGenEnabled"_s), u"1"_s);
    QCOMPARE(store->getMiscSetting(u"postgencmd"_s), u"/bin/sh"_s);
    QCOMPARE(store->getMiscSetting(u"postgencmdargs"_s), u"-c %P"_s);
    QCOMPARE(store->getMiscSetting(u"postGenWait"_s), u"1"_s);
    SettingsDialog again;
    again.setDataBase(store);
    again.show();
    QCOMPARE(shown(again, "gbProjectPostGen").toBool(), true);
    QCOMPARE(shown(again, "postgencmd").toString(), u"/bin/sh"_s);
    QCOMPARE(shown(again, "postgencmdargs").toString(), u"-c %P"_s);
    QCOMPARE(shown(again, "postGenWait").toBool(), true);
    enter(again, "postGenWait", false);
    press(again, QDialogButtonBox::Ok);
    QCOMPARE(store->getMiscSetting(u"postGenWait"_s), u"0"_s);
}

void TestSettingsPrograms::anUnchangedProjectIsNotWritten()
{
    const auto store = makeStore();
    QVERIFY(store->setMiscSetting(u"postGenEnabled"_s, u"true"_s)); // an older way to say "1"
    const QSignalSpy changes(store.get(), &ObjectDataBase::updateNotify);
    SettingsDialog dialog;
    dialog.setDataBase(store);
    QCOMPARE(shown(dialog, "gbProjectPostGen").toBool(), true);
    dialog.on_buttonBox_accepted();
    QCOMPARE(changes.count(), 0);
    QCOMPARE(store->getMiscSetting(u"postGenEnabled"_s), u"true"_s);
}

void TestSettingsPrograms::onlyOneCommandIsEnabled()
{
    const auto store = makeStore();
    QVERIFY(store->setMiscSetting(u"postGenEnabled"_s, u"1"_s));
    UserSettings().setValue("General/postGenEnabled"_L1, true);
    SettingsDialog dialog;
    dialog.setDataBase(store);
    dialog.show();
    auto *project = find<QGroupBox>(dialog, "gbProjectPostGen");
    auto *global = find<QGroupBox>(dialog, "gbGlobalPostGen");
    const auto *note = find<QLabel>(dialog, "lblGlobalDisabled");
    showPageOf(dialog, project);
    QVERIFY(project->isChecked());
    QVERIFY(!global->isChecked());
    QVERIFY(note->isVisible());
    toggle(global);
    QVERIFY(!project->isChecked());
    QVERIFY(global->isChecked());
    QVERIFY(!note->isVisible());
    toggle(project);
    QVERIFY(project->isChecked());
    QVERIFY(!global->isChecked());
    QVERIFY(note->isVisible());
}

void TestSettingsPrograms::theGlobalCommandRestsWhileTheProjectHasItsOwn()
{
    const auto store = makeStore();
    UserSettings().setValue("General/postGenEnabled"_L1, true);
    SettingsDialog dialog;
    dialog.setDataBase(store);
    dialog.show();
    enter(dialog, "gbProjectPostGen", true);
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(store->getMiscSetting(u"postGenEnabled"_s), u"1"_s);
    QCOMPARE(UserSettings().value("General/postGenEnabled"_L1).toBool(), true); // for all other projects
}

void TestSettingsPrograms::theGlobalCommandComesBackWithoutTheProjects()
{
    const auto store = makeStore();
    QVERIFY(store->setMiscSetting(u"postGenEnabled"_s, u"1"_s));
    UserSettings().setValue("General/postGenEnabled"_L1, true);
    SettingsDialog dialog;
    dialog.setDataBase(store);
    dialog.show();
    enter(dialog, "gbProjectPostGen", false);
    QVERIFY(find<QGroupBox>(dialog, "gbGlobalPostGen")->isChecked());
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(store->getMiscSetting(u"postGenEnabled"_s), u"0"_s);
    QCOMPARE(UserSettings().value("General/postGenEnabled"_L1).toBool(), true);
}

void TestSettingsPrograms::enablingTheGlobalCommandDisablesTheProjects()
{
    const auto store = makeStore();
    QVERIFY(store->setMiscSetting(u"postGenEnabled"_s, u"1"_s));
    QVERIFY(store->setMiscSetting(u"postgencmd"_s, u"make"_s));
    SettingsDialog dialog;
    dialog.setDataBase(store);
    dialog.show();
    enter(dialog, "gbGlobalPostGen", true);
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(store->getMiscSetting(u"postGenEnabled"_s), u"0"_s);
    QCOMPARE(store->getMiscSetting(u"postgencmd"_s), u"make"_s);
    QCOMPARE(UserSettings().value("General/postGenEnabled"_L1).toBool(), true);
}

void TestSettingsPrograms::rejectLeavesTheProjectAlone()
{
    const auto store = makeStore();
    const QSignalSpy changes(store.get(), &ObjectDataBase::updateNotify);
    SettingsDialog dialog;
    dialog.setDataBase(store);
    dialog.show();
    enter(dialog, "gbProjectPostGen", true);
    enter(dialog, "postgencmd", u"make"_s);
    press(dialog, QDialogButtonBox::Cancel);
    QCOMPARE(changes.count(), 0);
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestSettingsPrograms test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_settingsprograms.moc"
