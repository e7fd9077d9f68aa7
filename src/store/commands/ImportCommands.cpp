#include "store/commands/ImportCommands.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryFile>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

using Action = ImportHandler::actionSetting;

constexpr int anyCBase = 0;

/** Positions of the words of a command. */
enum Token : qsizetype {
    KeywordToken = 0,
    SourceToken = 1,
    TargetToken = 3, // behind a word such as "to", which means nothing
    OptionToken = 4,
    OptionValueToken = 5,
};

template <typename Number>
bool readNumber(const QString &text, Number &number)
{
    bool ok = false;
    const uint value = text.toUInt(&ok, anyCBase);
    if (!ok || value > std::numeric_limits<Number>::max())
        return false;
    number = Number(value);
    return true;
}

/** "<line>:<from>-<to>" or "<line>:<index>". */
bool readObjects(const QString &text, Action &action)
{
    const QStringList parts = text.split(u':');
    if (parts.size() != 2 || !readNumber(parts[0], action.sourceLine))
        return false;
    const QStringList limits = parts[1].split(u'-');
    return limits.size() <= 2 && readNumber(limits.first(), action.from)
        && readNumber(limits.last(), action.to);
}

/** "<project>:<line>" */
bool readProject(const QString &text, const ImportCommands::ProjectMap &projects, Action &action)
{
    const QStringList parts = text.split(u':');
    uint number = 0;
    if (parts.size() != 2 || !readNumber(parts[0], number) || !readNumber(parts[1], action.sourceLine))
        return false;
    action.projectPath = projects.value(number);
    return true;
}

bool readTarget(const QStringList &tokens, Action &action)
{
    if (tokens.size() <= TargetToken || !readNumber(tokens[TargetToken], action.targetLine))
        return false;
    if (tokens.size() <= OptionValueToken || tokens[OptionToken] != u"offset")
        return true;
    return readNumber(tokens[OptionValueToken], action.offset);
}

/** A value with commas is a list for the INI reader, not for us. */
QString valueOf(const QSettings &settings, const QString &key)
{
    return settings.value(key).toStringList().join(u',');
}

QMap<QString, QString> projectValues(const QString &path)
{
    QSettings settings(path, QSettings::IniFormat);
    settings.beginGroup(u"Projects"_s);
    QMap<QString, QString> values;
    const QStringList keys = settings.allKeys();
    for (const QString &key : keys)
        values.insert(key, valueOf(settings, key));
    return values;
}

/** The projects' paths when every backslash of the file is meant as one. */
QMap<QString, QString> literalProjectValues(const QString &path)
{
    QFile file(path);
    QTemporaryFile copy;
    if (!file.open(QIODevice::ReadOnly) || !copy.open())
        return {};
    copy.write(file.readAll().replace("\\", "\\\\"));
    copy.close();
    return projectValues(copy.fileName());
}

QString findProject(const QDir &folder, const QStringList &readings)
{
    QStringList candidates;
    for (const QString &reading : readings) {
        if (reading.trimmed().isEmpty())
            continue;
        candidates.append(QDir::cleanPath(folder.absoluteFilePath(reading)));
        candidates.append(QDir::cleanPath(folder.absoluteFilePath(QString(reading).replace(u'\\', u'/'))));
    }
    for (const QString &candidate : std::as_const(candidates)) {
        if (QFileInfo(candidate).isFile())
            return candidate;
    }
    return candidates.value(0);
}

ImportCommands::ProjectMap readProjects(const QString &path)
{
    const QDir folder = QFileInfo(path).absoluteDir();
    const QMap<QString, QString> values = projectValues(path);
    const QMap<QString, QString> literalValues = literalProjectValues(path);
    ImportCommands::ProjectMap projects;
    for (auto value = values.begin(); value != values.end(); ++value) {
        uint number = 0;
        const QString project = findProject(folder, {*value, literalValues.value(value.key())});
        if (readNumber(value.key(), number) && !project.isEmpty())
            projects.insert(number, project);
    }
    return projects;
}

} // namespace

ImportCommands::CommandFile ImportCommands::read(const QString &path)
{
    CommandFile file;
    file.projects = readProjects(path);
    QSettings settings(path, QSettings::IniFormat);
    const QStringList keys = settings.allKeys();
    for (const QString &key : keys) {
        const bool isAction = key.startsWith(u"Actions/"_s);
        file.hasKeys =
            file.hasKeys || isAction || key.startsWith(u"Projects/"_s) || key.startsWith(u"Options/"_s);
        if (!isAction)
            continue;
        if (const auto action = parseAction(valueOf(settings, key), file.projects))
            file.actions.append(*action);
    }
    file.deleteObjects = settings.value(u"Options/delete_objects"_s, false).toBool();
    return file;
}

std::optional<ImportHandler::actionSetting> ImportCommands::parseAction(const QString &text,
                                                                        const ProjectMap &projects)
{
    const QStringList tokens = text.toLower().simplified().split(u' ', Qt::SkipEmptyParts);
    if (tokens.size() <= SourceToken)
        return {};
    Action action;
    action.text = text;
    bool understood = false;
    if (tokens[KeywordToken] == u"delete") {
        action.type = Action::Delete;
        understood = readObjects(tokens[SourceToken], action);
    } else if (tokens[KeywordToken] == u"import") {
        action.type = Action::Import;
        understood = readProject(tokens[SourceToken], projects, action) && readTarget(tokens, action);
    } else if (tokens[KeywordToken] == u"copy") {
        action.type = Action::Copy;
        understood = readObjects(tokens[SourceToken], action) && readTarget(tokens, action);
    }
    return understood ? std::optional(action) : std::nullopt;
}
