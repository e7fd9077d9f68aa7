#include "app/SettingsDialog.h"

#include "app/UserSettings.h"
#include "generators/GenerationClock.h"
#include "ui_SettingsDialog.h"
#include "widgets/GuiHelper.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView downloadPage{"https://korvel.invalid/downloads/eds-checker"};
constexpr QLatin1StringView stackMarker{"CHANGELOG"}; ///< the file that tells the folder of a protocol stack
constexpr QLatin1StringView checkerPurpose{"eds-checker"};

// Properties of widgets that hold a value.
constexpr QLatin1StringView checkedProperty{"checked"};
constexpr QLatin1StringView textProperty{"text"};
constexpr QLatin1StringView indexProperty{"currentIndex"};

constexpr QLatin1StringView globalGroup{"gbGlobalPostGen"};

/** A key, the widget that shows it and the property of that widget that holds the value. */
struct Row
{
    QLatin1StringView key;
    QLatin1StringView widget;
    QLatin1StringView property;
};

constexpr std::array userRows{
    Row{SettingsKeys::loadLastProject, "loadlastproject"_L1, checkedProperty},
    Row{SettingsKeys::stackPath, "costackpath"_L1, textProperty},
    Row{SettingsKeys::focusMask, "focusmask"_L1, checkedProperty},
    Row{SettingsKeys::focusOverview, "focusoverview"_L1, checkedProperty},
    Row{SettingsKeys::metadata, "metadata"_L1, checkedProperty},
    Row{SettingsKeys::rarelyUsed, "rarelyused"_L1, checkedProperty},
    Row{SettingsKeys::keyboardNavigation, "keyboardnavigation"_L1, checkedProperty},
    Row{SettingsKeys::warnBeforeDeleting, "warnbeforedeleting"_L1, checkedProperty},
    Row{SettingsKeys::disableCheck, "disablecheck"_L1, checkedProperty},
    Row{SettingsKeys::disableAutoCorrection, "disableautocorrection"_L1, checkedProperty},
    Row{SettingsKeys::clearLogging, "clearlogging"_L1, checkedProperty},
    Row{SettingsKeys::implementationInfo, "implinfo"_L1, checkedProperty},
    Row{SettingsKeys::alwaysMultiLine, "alwaysml"_L1, checkedProperty},
    Row{SettingsKeys::lineEndingIndex, "line_ending_index"_L1, indexProperty},
    Row{SettingsKeys::dateTimeFormat, "date_time_format"_L1, textProperty},
    Row{SettingsKeys::postGenEnabled, globalGroup, checkedProperty},
    Row{SettingsKeys::postGenCommand, "postgenerationcommand"_L1, textProperty},
    Row{SettingsKeys::postGenArguments, "postgenerationcommandarguments"_L1, textProperty},
    Row{SettingsKeys::waitPostGen, "waitPostGen"_L1, checkedProperty},
    Row{SettingsKeys::edsChecker, "EDSChecker"_L1, checkedProperty},
    Row{SettingsKeys::edsCheckerPath, "EDSCheckerPath"_L1, textProperty},
    // What a generation run reads of the EDS checker: the same once more.
    Row{SettingsKeys::checkEds, "EDSChecker"_L1, checkedProperty},
    Row{SettingsKeys::checkEdsPath, "EDSCheckerPath"_L1, textProperty},
    Row{SettingsKeys::enableInternalSettings, "enableinternalsettings"_L1, checkedProperty},
    Row{SettingsKeys::ignoreLvx, "ignorelvx"_L1, checkedProperty},
};

/** Misc settings of the project. */
constexpr std::array projectRows{
    Row{"postGenEnabled"_L1, "gbProjectPostGen"_L1, checkedProperty},
    Row{"postgencmd"_L1, "postgencmd"_L1, textProperty},
    Row{"postgencmdargs"_L1, "postgencmdargs"_L1, textProperty},
    Row{"postGenWait"_L1, "postGenWait"_L1, checkedProperty},
};

// What they switch exists only for the objects of a CANopen object dictionary.
constexpr std::array canopenOnly{"focusmask"_L1,         "focusoverview"_L1,      "rarelyused"_L1,
                                 "gbObjectTree"_L1,      "keyboardnavigation"_L1, "ignorelvx"_L1,
                                 "warnbeforedeleting"_L1};

QWidget *widgetOf(const QWidget &dialog, QLatin1StringView name)
{
    auto *widget = dialog.findChild<QWidget *>(name);
    Q_ASSERT_X(widget, name.data(), "the form has no such widget");
    return widget;
}

bool isTrue(const QString &value)
{
    return QVariant(value.trimmed()).toBool();
}

} // namespace

SettingsDialog::SettingsDialog(QWidget *parent, bool isJ1939Edition)
    : QDialog(parent), m_ui(std::make_unique<Ui::SettingsDialog>())
{
    m_ui->setupUi(this);
    setWindowTitle(tr("Settings - %1").arg(QCoreApplication::applicationName()));
    setUpPages();
    if (isJ1939Edition)
        hideCanopenOnly();
    load();
    setDataBase({});
}

SettingsDialog::~SettingsDialog() = default;

void SettingsDialog::setUpPages()
{
    constexpr int margin = 16; // beside the longest name of a page, in pixels
    for (int page = 0; page < m_ui->swPages->count(); ++page)
        m_ui->lwPages->addItem(m_ui->swPages->widget(page)->windowTitle());
    const QListWidget &pages = *m_ui->lwPages;
    m_ui->lwPages->setFixedWidth(pages.sizeHintForColumn(0) + 2 * (pages.frameWidth() + pages.spacing())
                                 + margin);
    m_ui->lwPages->setCurrentRow(0);
    m_ui->lwPages->setFocus();
    m_ui->date_time_format->setPlaceholderText(SettingsKeys::row(SettingsKeys::dateTimeFormat).standard);
    connect(m_ui->date_time_format, &QLineEdit::textChanged, this, &SettingsDialog::showPreview);
    connect(m_ui->costackpath, &QLineEdit::textChanged, this, &SettingsDialog::showPathHints);
    connect(m_ui->EDSCheckerPath, &QLineEdit::textChanged, this, &SettingsDialog::showPathHints);
    connect(m_ui->EDSChecker, &QCheckBox::toggled, this, &SettingsDialog::showPathHints);
}

void SettingsDialog::hideCanopenOnly()
{
    for (const QLatin1StringView name : canopenOnly)
        widgetOf(*this, name)->hide();
}

void SettingsDialog::load()
{
    const UserSettings settings;
    for (const Row &row : userRows)
        if (row.key != SettingsKeys::checkEds && row.key != SettingsKeys::checkEdsPath)
            widgetOf(*this, row.widget)->setProperty(row.property.data(), settings.read(row.key));
    loadEdsChecker(settings);
    if (m_ui->line_ending_index->currentIndex() < 0)
        m_ui->line_ending_index->setCurrentIndex(0);
    m_isGlobalPostGenWanted = m_ui->gbGlobalPostGen->isChecked();
    showPreview();
    showPathHints();
}

/** Settings of the run that nobody has made here yet are shown, lest an accepted dialog drop them. */
void SettingsDialog::loadEdsChecker(const UserSettings &settings)
{
    if (!settings.contains(SettingsKeys::edsChecker))
        m_ui->EDSChecker->setChecked(settings.read(SettingsKeys::checkEds).toBool());
    if (!settings.contains(SettingsKeys::edsCheckerPath))
        m_ui->EDSCheckerPath->setText(settings.read(SettingsKeys::checkEdsPath).toString());
}

void SettingsDialog::setDataBase(const QSharedPointer<ObjectDataBase> &dataBase)
{
    m_dataBase = dataBase && dataBase->isOpen() ? dataBase : nullptr;
    m_ui->gbProjectPostGen->setEnabled(bool(m_dataBase));
    for (const Row &row : projectRows) {
        const QString value = m_dataBase ? m_dataBase->getMiscSetting(row.key) : QString();
        const bool isFlag = row.property == checkedProperty;
        widgetOf(*this, row.widget)
            ->setProperty(row.property.data(), isFlag ? QVariant(isTrue(value)) : value);
    }
    on_gbProjectPostGen_toggled(m_ui->gbProjectPostGen->isChecked());
}

void SettingsDialog::on_gbProjectPostGen_toggled(bool checked)
{
    const QSignalBlocker quiet(m_ui->gbGlobalPostGen);
    m_ui->gbGlobalPostGen->setChecked(!checked && m_isGlobalPostGenWanted);
    m_ui->lblGlobalDisabled->setVisible(checked);
}

void SettingsDialog::on_gbGlobalPostGen_toggled(bool checked)
{
    m_isGlobalPostGenWanted = checked;
    if (checked)
        m_ui->gbProjectPostGen->setChecked(false);
}

void SettingsDialog::showPreview()
{
    const QString format = m_ui->date_time_format->text();
    const QString used = format.isEmpty() ? m_ui->date_time_format->placeholderText() : format;
    m_ui->lblTimeStampPreview->setText(tr("Example: %1").arg(GenerationClock::now().toString(used)));
}

void SettingsDialog::showPathHints()
{
    const QString stack = m_ui->costackpath->text();
    const bool isStack = stack.isEmpty() || QFileInfo::exists(stack + u'/' + stackMarker);
    m_ui->lblStackHint->setText(isStack ? QString() : tr("There is no file CHANGELOG in this folder."));
    const QString checker = m_ui->EDSCheckerPath->text();
    const bool isChecker = checker.isEmpty() ? !m_ui->EDSChecker->isChecked() : QFileInfo(checker).isFile();
    m_ui->lblEdsHint->setText(isChecker ? QString() : tr("There is no such file; nothing will be checked."));
}

void SettingsDialog::on_btnFileSelect_clicked()
{
    const QString present = m_ui->EDSCheckerPath->text();
    const QString start = present.isEmpty() ? GuiHelper::dialogFolder(checkerPurpose) : present;
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Find EDS Checker"), start, tr("EDS Checker (*.exe)") + ";;"_L1 + tr("All files (*)"));
    if (path.isEmpty())
        return;
    m_ui->EDSCheckerPath->setText(QDir::toNativeSeparators(path));
    GuiHelper::rememberDialogFolder(checkerPurpose, path);
}

void SettingsDialog::on_btnPathSelect_clicked()
{
    const QString present = m_ui->costackpath->text();
    const QString path =
        QFileDialog::getExistingDirectory(this, tr("Specify CANopen stack installation folder"),
                                          present.isEmpty() ? QDir::homePath() : present);
    if (!path.isEmpty())
        m_ui->costackpath->setText(QDir::toNativeSeparators(path));
}

void SettingsDialog::on_btnDownload_clicked()
{
    QDesktopServices::openUrl(QUrl(downloadPage));
}

void SettingsDialog::on_buttonBox_accepted()
{
    if (!save())
        return;
    saveProject();
    accept();
}

void SettingsDialog::on_buttonBox_rejected()
{
    reject();
}

QVariant SettingsDialog::wished(QLatin1StringView widget, QLatin1StringView property) const
{
    if (widget == globalGroup)
        return m_isGlobalPostGenWanted;
    return widgetOf(*this, widget)->property(property.data());
}

bool SettingsDialog::save()
{
    UserSettings settings;
    for (const Row &row : userRows)
        settings.write(row.key, wished(row.widget, row.property));
    settings.sync();
    if (settings.status() == QSettings::NoError)
        return true;
    QMessageBox box(QMessageBox::Warning, GuiHelper::productTitle(), tr("Cannot save the settings."),
                    QMessageBox::Ok, this);
    box.setInformativeText(tr("The file %1 cannot be written.").arg(settings.fileName()));
    box.exec();
    return false;
}

/** Only what differs is written: each write marks the project as modified. */
void SettingsDialog::saveProject()
{
    if (!m_dataBase)
        return;
    for (const Row &row : projectRows) {
        const QString stored = m_dataBase->getMiscSetting(row.key);
        const QVariant wish = wished(row.widget, row.property);
        const bool isFlag = row.property == checkedProperty;
        if (isFlag ? isTrue(stored) == wish.toBool() : stored == wish.toString())
            continue;
        const QString flag = wish.toBool() ? u"1"_s : u"0"_s;
        m_dataBase->setMiscSetting(row.key, isFlag ? flag : wish.toString());
    }
}
