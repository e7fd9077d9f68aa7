#pragma once

#include <QSettings>

/** The keys that more than one place reads or writes. */
namespace SettingsKeys {

inline constexpr QLatin1StringView lastProject{"General/lastproject"}; ///< whole path of the last project
inline constexpr QLatin1StringView loadLastProject{"General/loadlastproject"}; ///< bool: open it at the start
inline constexpr QLatin1StringView projectPath{"General/projectpath"}; ///< folder of the file dialogs

} // namespace SettingsKeys

/** The user's settings of this edition and major version, open for one reading or writing task. */
class UserSettings : public QSettings
{
    Q_OBJECT

public:
    UserSettings();
};
