#pragma once

#include <QCoreApplication>
#include <QSettings>
#include <QVariant>

/** The user's settings of this edition and major version, as the floors without a window read them. */
namespace ApplicationSettings {

/** The value of a key such as "General/undomaxdepth"; `otherwise` when the user never set it. */
inline QVariant value(const QString &key, const QVariant &otherwise = {})
{
    QString name = QCoreApplication::instance()
        ? QCoreApplication::instance()->property("AppNameWithVersion").toString()
        : QString();
    if (name.isEmpty())
        name = QCoreApplication::applicationName();
    return QSettings(QStringLiteral("korvel"), name).value(key, otherwise);
}

} // namespace ApplicationSettings
