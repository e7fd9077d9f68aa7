#pragma once

#include <QSettings>

/** The user's settings of this edition and major version, open for one reading or writing task. */
class UserSettings : public QSettings
{
    Q_OBJECT

public:
    UserSettings();
};
