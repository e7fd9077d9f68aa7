#pragma once

#include <QSettings>

#include <array>

/** Every key of the user's settings that has a name of its own, once. */
namespace SettingsKeys {

inline constexpr QLatin1StringView loadLastProject{"General/loadlastproject"};
inline constexpr QLatin1StringView lastProject{"General/lastproject"}; ///< whole path of the last project
inline constexpr QLatin1StringView projectPath{"General/projectpath"}; ///< folder of the file dialogs
inline constexpr QLatin1StringView implementationInfo{"General/implinfo"};
inline constexpr QLatin1StringView focusMask{"General/focusmask"};
inline constexpr QLatin1StringView focusOverview{"General/focusoverview"};
inline constexpr QLatin1StringView clearLogging{"General/clearlogging"};
inline constexpr QLatin1StringView warnBeforeDeleting{"General/warnbeforedeleting"};
inline constexpr QLatin1StringView keyboardNavigation{"General/keyboardnavigation"};
inline constexpr QLatin1StringView metadata{"General/metadata"};
inline constexpr QLatin1StringView rarelyUsed{"General/rarelyused"};
inline constexpr QLatin1StringView enableInternalSettings{"General/enableinternalsettings"};
inline constexpr QLatin1StringView disableCheck{"General/disablecheck"};
inline constexpr QLatin1StringView postGenCommand{"General/postgenerationcommand"};
inline constexpr QLatin1StringView postGenArguments{"General/postgenerationcommandarguments"};
inline constexpr QLatin1StringView postGenEnabled{"General/postGenEnabled"};
inline constexpr QLatin1StringView waitPostGen{"General/waitPostGen"};
inline constexpr QLatin1StringView ignoreLvx{"General/ignorelvx"};
inline constexpr QLatin1StringView disableAutoCorrection{"General/disableautocorrection"};
inline constexpr QLatin1StringView alwaysMultiLine{"General/alwaysml"};
inline constexpr QLatin1StringView lineEndingIndex{"General/line_ending_index"};
inline constexpr QLatin1StringView dateTimeFormat{"General/date_time_format"};
inline constexpr QLatin1StringView edsChecker{"General/EDSChecker"};
inline constexpr QLatin1StringView edsCheckerPath{"General/EDSCheckerPath"};
inline constexpr QLatin1StringView checkEds{"EDSChecker/checkeds"}; ///< what a generation run reads
inline constexpr QLatin1StringView checkEdsPath{"EDSChecker/EDSCheckerPath"}; ///< what a generation run reads
inline constexpr QLatin1StringView stackPath{"General/costackpath"};
inline constexpr QLatin1StringView undoMaximumDepth{"General/undomaxdepth"};
inline constexpr QLatin1StringView tmpFloat{"General/tmpFloat"};
inline constexpr QLatin1StringView windowSize{"Geometry/size"};
inline constexpr QLatin1StringView windowPosition{"Geometry/pos"};
inline constexpr QLatin1StringView windowMaximized{"Geometry/maximized"};

/** How the value of a key is stored. */
enum class Kind {
    Switch, ///< the number 0 or 1
    Number,
    Flag, ///< a bool
    Text,
    Window, ///< size or position
};

struct Key
{
    QLatin1StringView name;
    Kind kind;
    QLatin1StringView standard = {}; ///< the value of an absent key, as text
};

/** All keys with a fixed name; the lists of recent projects number theirs. */
inline constexpr std::array all{
    Key{loadLastProject, Kind::Switch},
    Key{lastProject, Kind::Text},
    Key{projectPath, Kind::Text, QLatin1StringView{"~"}},
    Key{implementationInfo, Kind::Switch},
    Key{focusMask, Kind::Switch},
    Key{focusOverview, Kind::Switch},
    Key{clearLogging, Kind::Switch},
    Key{warnBeforeDeleting, Kind::Switch},
    Key{keyboardNavigation, Kind::Flag},
    Key{metadata, Kind::Flag},
    Key{rarelyUsed, Kind::Flag},
    Key{enableInternalSettings, Kind::Flag},
    Key{disableCheck, Kind::Flag},
    Key{postGenCommand, Kind::Text},
    Key{postGenArguments, Kind::Text},
    Key{postGenEnabled, Kind::Flag},
    Key{waitPostGen, Kind::Flag},
    Key{ignoreLvx, Kind::Flag},
    Key{disableAutoCorrection, Kind::Flag},
    Key{alwaysMultiLine, Kind::Flag},
    Key{lineEndingIndex, Kind::Number},
    Key{dateTimeFormat, Kind::Text, QLatin1StringView{"ddd MMM dd yyyy  HH:mm:ss"}},
    Key{edsChecker, Kind::Flag},
    Key{edsCheckerPath, Kind::Text},
    Key{checkEds, Kind::Flag},
    Key{checkEdsPath, Kind::Text},
    Key{stackPath, Kind::Text},
    Key{undoMaximumDepth, Kind::Number, QLatin1StringView{"20"}},
    Key{tmpFloat, Kind::Flag, QLatin1StringView{"true"}},
    Key{windowSize, Kind::Window},
    Key{windowPosition, Kind::Window},
    Key{windowMaximized, Kind::Flag},
};

/** The row of a key; a key that has none counts as a text without standard. */
Key row(QLatin1StringView key);

} // namespace SettingsKeys

/** The user's settings of this edition and major version, open for one reading or writing task. */
class UserSettings : public QSettings
{
    Q_OBJECT

public:
    UserSettings();

    /** The value of a key or its standard, in the type of its kind; a flag of any kind reads as bool. */
    QVariant read(QLatin1StringView key) const;
    /** Writes a value in the form of the key's kind. */
    void write(QLatin1StringView key, const QVariant &value);
};
