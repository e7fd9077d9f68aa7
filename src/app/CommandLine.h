#pragma once

#include <QStringList>

#include <optional>

/**
 * The command line, read once.
 *
 * Options are whole arguments, compared exactly and case-sensitively, in any order behind the first
 * argument. The value of an option is the argument behind its first occurrence, whatever it looks
 * like. A project is only taken from the first argument, even when that is an unknown switch.
 */
class CommandLine
{
public:
    /** The list begins with the program's name. The current folder becomes the launch folder. */
    explicit CommandLine(const QStringList &arguments);

    const QStringList &arguments() const { return m_arguments; }
    bool contains(QLatin1StringView option) const;
    /** Empty when the option is absent or the last argument. */
    QString value(QLatin1StringView option) const;
    /**
     * The option's value as a file: a relative path means the launch folder when the file is there,
     * otherwise the current folder, which an opened project moves to its own.
     */
    QString file(QLatin1StringView option) const;
    /** The first argument, unless it is "-j1939" or holds "--" anywhere. */
    std::optional<QString> project() const;

    /** True when only the offscreen platform can start: "-hidden" is given and nothing to show windows on. */
    static bool needsOffscreenPlatform(int argc, const char *const *argv);
    /** True when the program is to show its window, but there is nothing to show it on. */
    static bool lacksDisplay(int argc, const char *const *argv);

private:
    QStringList m_arguments;
    QString m_launchFolder;
};
