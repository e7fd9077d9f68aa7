#include "app/CommandLine.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

bool isGiven(std::string_view option, int argc, const char *const *argv)
{
    return std::find(argv, argv + argc, option) != argv + argc;
}

/** Whether the environment or Qt's own options name a display or a platform plug-in. */
bool namesPlatform(int argc, const char *const *argv)
{
    constexpr std::array variables{"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    constexpr std::array options{"-platform", "--platform", "-display", "--display"};
    return !std::ranges::all_of(variables, [](const char *name) { return qEnvironmentVariableIsEmpty(name); })
        || std::ranges::any_of(options, [&](const char *option) { return isGiven(option, argc, argv); });
}

} // namespace

CommandLine::CommandLine(const QStringList &arguments)
    : m_arguments(arguments), m_launchFolder(QDir::currentPath())
{
}

bool CommandLine::contains(QLatin1StringView option) const
{
    return m_arguments.contains(option);
}

QString CommandLine::value(QLatin1StringView option) const
{
    const qsizetype position = m_arguments.indexOf(option);
    return position < 0 ? QString() : m_arguments.value(position + 1);
}

QString CommandLine::file(QLatin1StringView option) const
{
    QString path = value(option);
    if (path.isEmpty() || QDir::isAbsolutePath(path))
        return path;
    const QFileInfo launched(QDir(m_launchFolder), path);
    return launched.isFile() ? launched.absoluteFilePath() : path;
}

std::optional<QString> CommandLine::project() const
{
    if (m_arguments.size() < 2)
        return std::nullopt;
    const QString &first = m_arguments.at(1);
    if (first == "-j1939"_L1 || first.contains("--"_L1))
        return std::nullopt;
    return first;
}

bool CommandLine::needsOffscreenPlatform(int argc, const char *const *argv)
{
    return !namesPlatform(argc, argv) && isGiven("-hidden", argc, argv);
}

bool CommandLine::lacksDisplay(int argc, const char *const *argv)
{
    return !namesPlatform(argc, argv) && !isGiven("-hidden", argc, argv);
}
