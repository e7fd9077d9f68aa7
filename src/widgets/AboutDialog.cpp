#include "widgets/AboutDialog.h"

#include "ui_AboutDialog.h"
#include "widgets/GuiHelper.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QSettings>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconPixels = 64;
constexpr qreal nameScale = 1.5; // of the product's name over the other text

/** Asks the library that Qt's driver runs on, which need not be the one that this program was built with. */
QString sqliteVersion()
{
    const QString connection = u"AboutDialog"_s;
    QString version;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, connection);
        database.setDatabaseName(u":memory:"_s);
        QSqlQuery query(database);
        if (database.open() && query.exec(u"SELECT sqlite_version()"_s) && query.next())
            version = query.value(0).toString();
    }
    QSqlDatabase::removeDatabase(connection);
    return version.isEmpty() ? AboutDialog::tr("not available") : version;
}

QString licenceText()
{
    QFile file(u":/licences/LICENSE"_s);
    return file.open(QIODevice::ReadOnly)
        ? QString::fromUtf8(file.readAll())
        : AboutDialog::tr("The text of the licence has not been installed.");
}

} // namespace

AboutDialog::AboutDialog(QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::AboutDialog>())
{
    m_ui->setupUi(this);
    setWindowTitle(tr("About %1").arg(QCoreApplication::applicationName()));
    m_ui->lblIcon->setPixmap(
        QApplication::windowIcon().pixmap(QSize(iconPixels, iconPixels), devicePixelRatio()));
    m_ui->lblProduct->setText(GuiHelper::productTitle());
    QFont font = m_ui->lblProduct->font();
    font.setPointSizeF(font.pointSizeF() * nameScale);
    font.setBold(true);
    m_ui->lblProduct->setFont(font);
    m_ui->lblFacts->setText(facts());
    m_ui->pteLicence->setFont(GuiHelper::monospacedFont());
    m_ui->pteLicence->setPlainText(licenceText());
    auto *copy = m_ui->buttonBox->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    copy->setObjectName(u"btnCopy"_s);
    copy->setIcon(GuiHelper::icon(u"edit-copy"_s));
    copy->setToolTip(tr("Copy the versions for a request for support"));
    connect(copy, &QPushButton::clicked, this, &AboutDialog::copyFacts);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_ui->buttonBox->button(QDialogButtonBox::Close)->setFocus();
}

AboutDialog::~AboutDialog() = default;

QString AboutDialog::facts()
{
    const QStringList lines{
        GuiHelper::productTitle(),
        tr("Qt %1 (built with %2)").arg(QString::fromLatin1(qVersion()), QStringLiteral(QT_VERSION_STR)),
        tr("SQLite %1").arg(sqliteVersion()),
        tr("System: %1, %2").arg(QSysInfo::prettyProductName(), QSysInfo::currentCpuArchitecture()),
        tr("Platform: %1").arg(QGuiApplication::platformName()),
        tr("Settings: %1").arg(QDir::toNativeSeparators(GuiHelper::userSettings()->fileName())),
    };
    return lines.join(u'\n');
}

void AboutDialog::copyFacts()
{
    QGuiApplication::clipboard()->setText(facts());
    m_ui->lblCopied->setText(tr("Copied"));
}
