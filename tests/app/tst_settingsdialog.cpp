#include "app/BoxAnswerer.h"
#include "app/SettingsDialogDesk.h"
#include "app/TestHome.h"
#include "app/TestProject.h"
#include "app/UserSettings.h"
#include "generators/GenerationClock.h"
#include "widgets/KorvelBaseApplication.h"

#include <QDate>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace SettingsDialogDesk;

namespace {

/** Keys that other parts of the program write; the dialog must leave them alone. */
const QList<QLatin1StringView> &keysOfOthers()
{
    static const QList<QLatin1StringView> keys{SettingsKeys::lastProject,      SettingsKeys::projectPath,
                                               SettingsKeys::undoMaximumDepth, SettingsKeys::tmpFloat,
                                               SettingsKeys::windowSize,       SettingsKeys::windowPosition,
                                               SettingsKeys::windowMaximized};
    return keys;
}

QMap<QString, QVariant> storedSettings()
{
    const UserSettings settings;
    QMap<QString, QVariant> values;
    const QStringList keys = settings.allKeys();
    for (const QString &key : keys)
        values.insert(key, settings.value(key));
    return values;
}

} // namespace

/** The settings dialog: what it shows, what it writes and where. */
class TestSettingsDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void aValueMakesTheRoundTrip_data();
    void aValueMakesTheRoundTrip();
    void rejectWritesNothing_data() { aValueMakesTheRoundTrip_data(); }
    void rejectWritesNothing();
    void absentKeysReadAsTheirStandard_data() { aValueMakesTheRoundTrip_data(); }
    void absentKeysReadAsTheirStandard();
    void everyKeyIsEitherShownOrOfOthers();
    void keysOfOthersStayAsTheyAre();
    void aLineEndingOutOfRangeCountsAsNative();
    void textsAreToTheLetter_data();
    void textsAreToTheLetter();
    void titleNamesTheProgram();
    void escapeWritesNothing();
    void unwritableSettingsAreToldAndTheDialogStays();

    void theTimeStampIsShownAsItWillBe();
    void theNextGenerationHasTheNewTimeFormat();

    void theJ1939EditionHidesObjectSettingsAndKeepsTheirValues();
    void everyPageIsReachedByKeysAndHasNoClippedText();

private:
    static QSharedPointer<ObjectDataBase> makeStore();
};
void TestSettingsDialog::init()
{
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
    qunsetenv("SOURCE_DATE_EPOCH");
    UserSettings().clear();
}

QSharedPointer<ObjectDataBase> TestSettingsDialog::makeStore()
{
    auto store = QSharedPointer<ObjectDataBase>::create();
    return TestProject::fill(*store, {0}, u"1"_s) ? store : nullptr;
}

void TestSettingsDialog::aValueMakesTheRoundTrip_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QByteArray>("widget");
    QTest::addColumn<QVariant>("standard"); // what the dialog shows of an absent key
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("stored"); // value and type in the settings
    const auto number = [](const char *key) {
        QTest::newRow(key) << u"General/"_s + QLatin1StringView(key) << QByteArray(key) << QVariant(false)
                           << QVariant(true) << QVariant(1);
    };
    const auto flag = [](const char *key, const char *widget = nullptr) {
        QTest::newRow(key) << u"General/"_s + QLatin1StringView(key) << QByteArray(widget ? widget : key)
                           << QVariant(false) << QVariant(true) << QVariant(true);
    };
    const auto text = [](const char *key, const QString &standard, const QString &value) {
        QTest::newRow(key) << u"General/"_s + QLatin1StringView(key) << QByteArray(key) << QVariant(standard)
                           << QVariant(value) << QVariant(value);
    };
    for (const char *key :
         {"loadlastproject", "implinfo", "focusmask", "focusoverview", "clearlogging", "warnbeforedeleting"})
        number(key);
    for (const char *key : {"keyboardnavigation", "metadata", "rarelyused", "enableinternalsettings",
                            "disablecheck", "ignorelvx", "disableautocorrection", "alwaysml", "EDSChecker"})
        flag(key);
    flag("postGenEnabled", "gbGlobalPostGen");
    text("date_time_format", u"ddd MMM dd yyyy  HH:mm:ss"_s, u"yyyy-MM-dd"_s);
    text("EDSCheckerPath", QString(), u"/opt/checker.exe"_s);
    text("costackpath", QString(), u"/opt/stack"_s);
    QTest::newRow("line_ending_index") << u"General/line_ending_index"_s << QByteArray("line_ending_index")
                                       << QVariant(0) << QVariant(2) << QVariant(2);
    // These are enabled with their group only.
    text("postgenerationcommand", QString(), u"/usr/bin/make"_s);
    text("postgenerationcommandarguments", QString(), u"-C %D all"_s);
    flag("waitPostGen");
}

void TestSettingsDialog::aValueMakesTheRoundTrip()
{
    QFETCH(QString, key);
    QFETCH(QByteArray, widget);
    QFETCH(QVariant, value);
    QFETCH(QVariant, stored);
    SettingsDialog dialog;
    dialog.show();
    if (find<QWidget>(dialog, widget)->parent() == find<QGroupBox>(dialog, "gbGlobalPostGen"))
        enter(dialog, "gbGlobalPostGen", true);
    enter(dialog, widget, value);
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(!dialog.isVisible());
    QVariant read = UserSettings().value(key);
    QCOMPARE(read.toString(), stored.toString());
    QVERIFY(read.convert(stored.metaType()));
    QCOMPARE(read, stored);
    const SettingsDialog again;
    QCOMPARE(shown(again, widget), value);
}

void TestSettingsDialog::rejectWritesNothing()
{
    QFETCH(QByteArray, widget);
    QFETCH(QVariant, value);
    UserSettings().setValue("General/costackpath"_L1, u"/former"_s);
    const QMap<QString, QVariant> before = storedSettings();
    SettingsDialog dialog;
    dialog.show();
    if (find<QWidget>(dialog, widget)->parent() == find<QGroupBox>(dialog, "gbGlobalPostGen"))
        enter(dialog, "gbGlobalPostGen", true);
    enter(dialog, widget, value);
    QCOMPARE(shown(dialog, widget), value);
    press(dialog, QDialogButtonBox::Cancel);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QCOMPARE(storedSettings(), before);
}

void TestSettingsDialog::absentKeysReadAsTheirStandard()
{
    QFETCH(QByteArray, widget);
    const SettingsDialog dialog;
    QTEST(shown(dialog, widget), "standard");
}

/** A key that is added to the table and forgotten in the dialog, or here, shows up. */
void TestSettingsDialog::everyKeyIsEitherShownOrOfOthers()
{
    SettingsDialog dialog;
    dialog.on_buttonBox_accepted();
    const UserSettings settings;
    QSet<QString> names;
    for (const SettingsKeys::Key &key : SettingsKeys::all) {
        names.insert(key.name);
        QVERIFY2(settings.contains(key.name) != keysOfOthers().contains(key.name), key.name.data());
    }
    QCOMPARE(names.size(), qsizetype(SettingsKeys::all.size())); // no key stands in the table twice
    const QStringList written = settings.allKeys();
    for (const QString &key : written)
        QVERIFY2(names.contains(key), qPrintable(key));
}

void TestSettingsDialog::keysOfOthersStayAsTheyAre()
{
    {
        UserSettings settings;
        for (const QLatin1StringView key : keysOfOthers())
            settings.setValue(key, QString(u"value of "_s + key));
        settings.setValue("RecentProjects/project0path"_L1, u"/a.vexp"_s);
        settings.setValue("RecentProjects/project0time"_L1, u"now"_s);
    }
    const QMap<QString, QVariant> before = storedSettings();
    SettingsDialog dialog;
    dialog.on_buttonBox_accepted();
    const QMap<QString, QVariant> after = storedSettings();
    QVERIFY(after.size() > before.size());
    for (auto value = before.begin(); value != before.end(); ++value)
        QCOMPARE(after.value(value.key()), value.value());
}

void TestSettingsDialog::aLineEndingOutOfRangeCountsAsNative()
{
    for (const int index : {-1, 4, 1000}) {
        UserSettings().setValue("General/line_ending_index"_L1, index);
        const SettingsDialog dialog;
        QCOMPARE(find<QComboBox>(dialog, "line_ending_index")->currentIndex(), 0);
    }
}

void TestSettingsDialog::textsAreToTheLetter_data()
{
    QTest::addColumn<QByteArray>("widget");
    QTest::addColumn<QString>("text");
    QTest::newRow("implinfo") << QByteArray("implinfo")
                              << u"Include implementation information in  documentation"_s;
    QTest::newRow("focusmask") << QByteArray("focusmask") << u"Focus index mask if available"_s;
    QTest::newRow("clearlogging") << QByteArray("clearlogging")
                                  << u"Clear generator output window automatically"_s;
    QTest::newRow("warnbeforedeleting")
        << QByteArray("warnbeforedeleting") << u"Warn before deleting multiple objects"_s;
    QTest::newRow("keyboardnavigation")
        << QByteArray("keyboardnavigation") << u"Enable keyboard navigation in CANopen object browser"_s;
    QTest::newRow("metadata") << QByteArray("metadata") << u"Show meta data"_s;
    QTest::newRow("rarelyused") << QByteArray("rarelyused") << u"Show rarely used attributes"_s;
    QTest::newRow("enableinternalsettings")
        << QByteArray("enableinternalsettings") << u"Enable internal settings (use by Korvel only)"_s;
    QTest::newRow("disablecheck") << QByteArray("disablecheck") << u"Disable pre-generation check"_s;
    QTest::newRow("waitPostGen") << QByteArray("waitPostGen") << u"Wait for process finished"_s;
    QTest::newRow("ignorelvx") << QByteArray("ignorelvx") << u"Ignore LVX limitations"_s;
    QTest::newRow("disableautocorrection")
        << QByteArray("disableautocorrection") << u"Disable auto-correction"_s;
    QTest::newRow("alwaysml") << QByteArray("alwaysml")
                              << u"Generate ML API calls even with single line projects"_s;
    QTest::newRow("EDSChecker") << QByteArray("EDSChecker")
                                << u"Check EDS after generation (Syntax, CiA-301)"_s;
    QTest::newRow("EDSCheckerPath") << QByteArray("lblEDSCheckerPath") << u"Path to EDS Checker:"_s;
    QTest::newRow("costackpath") << QByteArray("lblcostackpath") << u"Path to Korvel protocol stack:"_s;
    QTest::newRow("global disabled") << QByteArray("lblGlobalDisabled")
                                     << u"Disabled because project post generation is enabled."_s;
}

void TestSettingsDialog::textsAreToTheLetter()
{
    QFETCH(QByteArray, widget);
    const SettingsDialog dialog;
    QString text = find<QWidget>(dialog, widget)->property("text").toString();
    QTEST(text.remove(u'&'), "text");
    QCOMPARE(find<QWidget>(dialog, "rarelyused")->toolTip(),
             u"This enables rarely used attributes. (Currently only for CANopen sub indices)"_s);
    const auto *endings = find<QComboBox>(dialog, "line_ending_index");
    const QStringList expected{u"native (current OS)"_s, u"Windows (CR LF)"_s, u"Linux (LF)"_s,
                               u"other (CR)"_s};
    for (int i = 0; i < expected.size(); ++i)
        QCOMPARE(endings->itemText(i), expected.at(i));
    QCOMPARE(endings->count(), int(expected.size()));
}

void TestSettingsDialog::titleNamesTheProgram()
{
    QCOMPARE(SettingsDialog().windowTitle(), u"Settings - CANopen NodeSmith"_s);
}

void TestSettingsDialog::escapeWritesNothing()
{
    SettingsDialog dialog;
    dialog.show();
    enter(dialog, "metadata", true);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
    QVERIFY(storedSettings().isEmpty());
}

void TestSettingsDialog::unwritableSettingsAreToldAndTheDialogStays()
{
    QCoreApplication::instance()->setProperty("AppNameWithVersion", u"Folder"_s);
    const QString file = UserSettings().fileName();
    QVERIFY(QDir().mkpath(file)); // a folder in place of the file
    BoxAnswerer answerer(QMessageBox::Ok);
    SettingsDialog dialog;
    dialog.show();
    press(dialog, QDialogButtonBox::Ok);
    QCoreApplication::instance()->setProperty("AppNameWithVersion", u"CANopen NodeSmith 4"_s);
    QCOMPARE(answerer.texts, QStringList{u"Cannot save the settings."_s});
    QVERIFY(answerer.informativeTexts.constFirst().contains(file));
    QVERIFY(dialog.isVisible());
    QVERIFY(QDir().rmdir(file));
}

void TestSettingsDialog::theTimeStampIsShownAsItWillBe()
{
    SettingsDialog dialog;
    find<QLineEdit>(dialog, "date_time_format")->setText(u"yyyy"_s);
    QCOMPARE(find<QLabel>(dialog, "lblTimeStampPreview")->text(),
             u"Example: %1"_s.arg(QDate::currentDate().year()));
    // Without a format the generators use their standard.
    find<QLineEdit>(dialog, "date_time_format")->clear();
    static const QRegularExpression standard(
        u"^Example: [A-Z][a-z]{2} [A-Z][a-z]{2} \\d\\d \\d{4}  \\d\\d:\\d\\d:\\d\\d$"_s);
    QVERIFY(standard.match(find<QLabel>(dialog, "lblTimeStampPreview")->text()).hasMatch());
}

void TestSettingsDialog::theNextGenerationHasTheNewTimeFormat()
{
    QVERIFY(GenerationClock::stamp().contains(u':'));
    SettingsDialog dialog;
    dialog.show();
    enter(dialog, "date_time_format", u"yyyy"_s);
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(GenerationClock::stamp(), QString::number(QDate::currentDate().year()));
}

void TestSettingsDialog::theJ1939EditionHidesObjectSettingsAndKeepsTheirValues()
{
    UserSettings().setValue("General/focusmask"_L1, 1);
    UserSettings().setValue("General/ignorelvx"_L1, true);
    SettingsDialog dialog(nullptr, true);
    dialog.show();
    for (const char *name : {"focusmask", "focusoverview", "rarelyused", "keyboardnavigation",
                             "warnbeforedeleting", "ignorelvx"}) {
        const auto *widget = find<QWidget>(dialog, name);
        showPageOf(dialog, widget);
        QVERIFY2(!widget->isVisible(), name);
    }
    for (const char *name : {"metadata", "EDSChecker", "implinfo", "enableinternalsettings"}) {
        const auto *widget = find<QWidget>(dialog, name);
        showPageOf(dialog, widget);
        QVERIFY2(widget->isVisible(), name);
    }
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(UserSettings().value("General/focusmask"_L1).toInt(), 1);
    QCOMPARE(UserSettings().value("General/ignorelvx"_L1).toBool(), true);
}

void TestSettingsDialog::everyPageIsReachedByKeysAndHasNoClippedText()
{
    SettingsDialog dialog;
    dialog.setDataBase(makeStore());
    dialog.show();
    auto *pages = find<QListWidget>(dialog, "lwPages");
    const auto *stack = find<QStackedWidget>(dialog, "swPages");
    QCOMPARE(pages->count(), stack->count());
    QCOMPARE(dialog.focusWidget(), pages);
    for (int page = 0; page < stack->count(); ++page) {
        QCOMPARE(stack->currentIndex(), page);
        const QList<QWidget *> widgets = stack->currentWidget()->findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            if (!widget->isVisible() || !qobject_cast<const QAbstractButton *>(widget))
                continue;
            QVERIFY2(widget->width() >= widget->minimumSizeHint().width(), qPrintable(widget->objectName()));
            QVERIFY2(dialog.rect().contains(QRect(widget->mapTo(&dialog, QPoint()), widget->size())),
                     qPrintable(widget->objectName()));
        }
        QTest::keyClick(pages, Qt::Key_Down);
    }
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestSettingsDialog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_settingsdialog.moc"
