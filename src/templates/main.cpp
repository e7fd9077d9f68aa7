// Builds a template database from its text sources; part of the build, not of the product.

#include "templates/TemplateParser.h"
#include "templates/TemplateWriter.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

enum ExitCode {
    Success = 0,
    Failure = 1,
    WrongUsage = 2,
};

void report(const QString &line)
{
    QTextStream(stderr) << line << Qt::endl;
}

bool readSources(const QStringList &paths, TemplateParser &parser)
{
    bool success = true;
    for (const QString &path : paths) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly)) {
            success = parser.parse(file.readAll(), path) && success;
        } else {
            report(TemplateMessage{.file = path, .text = file.errorString()}.toString());
            success = false;
        }
    }
    success = success && parser.finish();
    for (const TemplateMessage &message : parser.messages())
        report(message.toString());
    return success;
}

int build(const QStringList &sources, const QString &output)
{
    TemplateParser parser;
    if (!readSources(sources, parser))
        return Failure;
    QString error;
    if (TemplateWriter::write(parser.project(), output, &error))
        return Success;
    report(TemplateMessage{.file = output, .text = error}.toString());
    return Failure;
}

} // namespace

int main(int argc, char *argv[])
{
    // Working files of the store go here: a build must not need, nor touch, the user's folders.
    const QTemporaryDir home;
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));

    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(NODESMITH_VERSION));
    QCommandLineParser arguments;
    arguments.setApplicationDescription(u"Builds a template database from its text sources."_s);
    arguments.addHelpOption();
    const QCommandLineOption output({u"o"_s, u"output"_s}, u"The database to write."_s, u"file"_s);
    arguments.addOption(output);
    arguments.addPositionalArgument(u"sources"_s, u"Text sources, read in this order."_s, u"sources..."_s);
    arguments.process(application);
    if (!arguments.isSet(output) || arguments.positionalArguments().isEmpty()) {
        report(arguments.helpText());
        return WrongUsage;
    }
    return build(arguments.positionalArguments(), arguments.value(output));
}
