#include "app/CommandLine.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <string_view>

using namespace Qt::StringLiterals;

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
    constexpr std::array variables{"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    return std::any_of(argv, argv + argc, [](std::string_view text) { return text == "-hidden"; })
        && std::ranges::all_of(variables, [](const char *name) { return qEnvironmentVariableIsEmpty(name); });
}
