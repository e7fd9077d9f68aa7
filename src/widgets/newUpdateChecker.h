#pragma once

#include <QObject>
#include <QUrl>

#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

/**
 * Asks once whether a newer version of a product exists, without ever holding the program up.
 *
 * The answer is a JSON object with the newest version of each product, {"01006": "4.4.0"}. It comes from
 * the address in the user's setting "Update/url", else from the one that the program was built with. With
 * none of them, as by default, nothing is asked and nothing is sent. The request carries nothing about
 * the user or the project.
 */
class newUpdateChecker : public QObject
{
    Q_OBJECT

public:
    static constexpr QLatin1StringView addressKey{"Update/url"};

    /** Asks the configured address when the event loop runs next. */
    newUpdateChecker(const QString &productCode, const QString &version, QObject *parent = nullptr);
    newUpdateChecker(QString productCode, QString version, QUrl address, QObject *parent = nullptr);
    ~newUpdateChecker() override;

    /** Where to ask; empty where nobody is to be asked. Schemes other than http, https, file count as none.
     */
    static QUrl configuredAddress();
    /** True when the first version is the newer one; "4.10" is newer than "4.9", "4.3.0" is not than "4.3".
     */
    static bool isNewer(const QString &version, const QString &thanVersion);

    bool isConfigured() const { return !m_address.isEmpty(); }

public Q_SLOTS:
    /** Asks again; without an address, checkFailed() is the answer. A check under way is not disturbed. */
    void check();

Q_SIGNALS:
    /** The newest version is known; `newerVersion` tells whether it is newer than this program. */
    void newVersion(const QString &newVersionString, const QString &productCode, bool newerVersion);
    /** There was no answer, or none that could be understood. Nothing to disturb the user with unasked. */
    void checkFailed(const QString &reason);

private:
    void handleReply(QNetworkReply &reply);
    void takeAnswer(const QByteArray &answer);

    QString m_productCode;
    QString m_version;
    QUrl m_address;
    std::unique_ptr<QNetworkAccessManager> m_network;
    bool m_isChecking = false;
};
