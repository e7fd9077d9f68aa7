#include "app/ExampleProjects.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct ExampleFolder
{
    QLatin1StringView name;
    bool multiLine;
};

constexpr ExampleFolder exampleFolders[]{
    {QLatin1StringView("co_example_sl"), false},    {QLatin1StringView("co_example_bootloader"), false},
    {QLatin1StringView("co_example_ml"), true},     {QLatin1StringView("j1939_example_sl"), false},
    {QLatin1StringView("j1939_example_ml"), true},  {QLatin1StringView("example_eb"), false},
    {QLatin1StringView("co_fd_example_sl"), false}, {QLatin1StringView("co_fd_example_ml"), true},
    {QLatin1StringView("example_customer"), false}, {QLatin1StringView("example_intern"), false},
};

/** The example folders lie in the stack's folder or one below it. */
QStringList foldersOfName(const QDir &stack, QLatin1StringView name)
{
    QStringList folders;
    QStringList parents = stack.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    parents.prepend(u"."_s);
    for (const QString &parent : std::as_const(parents)) {
        const QString folder = QDir::cleanPath(stack.filePath(parent + u'/' + name));
        if (QFileInfo(folder).isDir())
            folders.append(folder);
    }
    return folders;
}

QStringList projectFiles(const QString &folder, bool multiLine)
{
    static const QRegularExpression slaveProject(u"slave1.*\\.vexp"_s);
    QStringList files;
    QDirIterator iterator(folder, {u"*.vexp"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (iterator.hasNext()) {
        const QString file = iterator.next();
        if (!multiLine || slaveProject.match(QFileInfo(file).fileName()).hasMatch())
            files.append(file);
    }
    files.sort();
    return files;
}

} // namespace

QList<ExampleProjects::Example> ExampleProjects::find(const QString &stackPath)
{
    QList<Example> examples;
    if (stackPath.isEmpty())
        return examples;
    for (const ExampleFolder &example : exampleFolders) {
        const QStringList folders = foldersOfName(QDir(stackPath), example.name);
        for (const QString &folder : folders) {
            const QStringList files = projectFiles(folder, example.multiLine);
            for (const QString &file : files)
                examples.append({example.name + u'/' + QDir(folder).relativeFilePath(file), file});
        }
    }
    return examples;
}
