#pragma once

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QUrl>

/** Takes what the program hands to the desktop, so that no other program starts. */
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    UrlCatcher() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "take"); }
    ~UrlCatcher() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    QList<QUrl> urls;

public Q_SLOTS:
    void take(const QUrl &url) { urls.append(url); }
};
