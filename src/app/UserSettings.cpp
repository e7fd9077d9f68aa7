#include "app/UserSettings.h"

#include <QCoreApplication>

UserSettings::UserSettings()
    : QSettings(QCoreApplication::organizationName(),
                QCoreApplication::instance()->property("AppNameWithVersion").toString())
{
}
