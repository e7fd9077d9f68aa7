#include "widgets/newUpdateChecker.h"

#include "widgets/GuiHelper.h"

#include <QCoreApplication>
#include <QDebug>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSettings>
#include <QTimer>
#include <QVersionNumber>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds timeout = 10s;
constexpr qint64 maximumAnswer = 64LL * 1024; // bytes; the answer is a line

QVersionNumber numberOf(const QString &version)
{
    return QVersionNumber::fromString(version.trimmed()).normalized();
}

QNetworkRequest makeRequest(const QUrl &address)
{
    QNetworkRequest request(address);
    request.setTransferTimeout(int(timeout.count()));
    request.setHeader(QNetworkRequest::UserAgentHeader, QCoreApplication::applicationName());
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    return request;
}

} // namespace

newUpdateChecker::newUpdateChecker(const QString &productCode, const QString &version, QObject *parent)
    : newUpdateChecker(productCode, version, configuredAddress(), parent)
{
}

newUpdateChecker::newUpdateChecker(QString productCode, QString version, QUrl address, QObject *parent)
    : QObject(parent), m_productCode(std::move(productCode)), m_version(std::move(version)),
      m_address(std::move(address))
{
    if (isConfigured())
        QTimer::singleShot(0ms, this, &newUpdateChecker::check);
}

newUpdateChecker::~newUpdateChecker() = default;

QUrl newUpdateChecker::configuredAddress()
{
    const QString text =
        GuiHelper::userSettings()->value(addressKey, QStringLiteral(NODESMITH_UPDATE_URL)).toString();
    const QUrl address(text, QUrl::StrictMode);
    const bool supported =
        address.isValid() && QStringList{u"http"_s, u"https"_s, u"file"_s}.contains(address.scheme());
    return supported ? address : QUrl();
}

bool newUpdateChecker::isNewer(const QString &version, const QString &thanVersion)
{
    return numberOf(version) > numberOf(thanVersion);
}

void newUpdateChecker::check()
{
    if (m_isChecking)
        return;
    if (!isConfigured()) {
        Q_EMIT checkFailed(tr("No address is configured to ask for new versions."));
        return;
    }
    m_isChecking = true;
    if (!m_network) // making it loads plugins, which nobody should wait for who does not ask
        m_network = std::make_unique<QNetworkAccessManager>();
    QNetworkReply *reply = m_network->get(makeRequest(m_address));
    connect(reply, &QNetworkReply::downloadProgress, reply, [reply](qint64 received) {
        if (received > maximumAnswer)
            reply->abort();
    });
    connect(reply, &QNetworkReply::finished, this, [this, reply] { handleReply(*reply); });
}

void newUpdateChecker::handleReply(QNetworkReply &reply)
{
    m_isChecking = false;
    reply.deleteLater();
    if (reply.error() == QNetworkReply::NoError) {
        takeAnswer(reply.read(maximumAnswer));
        return;
    }
    qDebug().noquote() << "Update check:" << reply.errorString();
    Q_EMIT checkFailed(reply.errorString());
}

void newUpdateChecker::takeAnswer(const QByteArray &answer)
{
    const QString newest = QJsonDocument::fromJson(answer).object().value(m_productCode).toString();
    if (numberOf(newest).isNull()) {
        qDebug().noquote() << "Update check: no version of" << m_productCode << "in the answer";
        Q_EMIT checkFailed(tr("The answer names no version of this product."));
        return;
    }
    Q_EMIT newVersion(newest.trimmed(), m_productCode, isNewer(newest, m_version));
}
