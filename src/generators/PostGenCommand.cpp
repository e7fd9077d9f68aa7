#include "generators/PostGenCommand.h"

#include "store/ApplicationSettings.h"
#include "store/ObjectDataBase.h"

using namespace Qt::StringLiterals;

namespace {

struct Texts
{
    QString command;
    QString arguments;
    bool wait = false;
};

bool isTrue(const QString &value)
{
    return QVariant(value.trimmed()).toBool();
}

Texts commandTexts(ObjectDataBase &store)
{
    if (isTrue(store.getMiscSetting(u"postGenEnabled"_s)))
        return {store.getMiscSetting(u"postgencmd"_s), store.getMiscSetting(u"postgencmdargs"_s),
                isTrue(store.getMiscSetting(u"postGenWait"_s))};
    const auto global = [](const char *key) {
        return ApplicationSettings::value(u"General/"_s + QLatin1StringView(key));
    };
    if (global("postGenEnabled").toBool())
        return {global("postgenerationcommand").toString(),
                global("postgenerationcommandarguments").toString(), global("waitPostGen").toBool()};
    return {};
}

/** In one pass, so that a folder whose name holds such a sign stays as it is. */
QString filled(const QString &arguments, const QString &outputDir, const QString &projectName)
{
    const QString file = projectName + ".vexp"_L1;
    QString result;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QChar sign = arguments[i] == u'%' && i + 1 < arguments.size() ? arguments[i + 1] : QChar();
        if (sign == u'P')
            result += outputDir + u'/' + file;
        else if (sign == u'D')
            result += outputDir;
        else if (sign == u'N')
            result += file;
        else
            result += arguments[i];
        if (sign == u'P' || sign == u'D' || sign == u'N')
            ++i;
    }
    return result;
}

} // namespace

PostGenCommand PostGenCommand::read(ObjectDataBase &store, const QString &outputDir,
                                    const QString &projectName)
{
    const Texts texts = commandTexts(store);
    PostGenCommand command{.program = texts.command, .wait = texts.wait};
    if (!texts.arguments.isEmpty())
        command.arguments = filled(texts.arguments, outputDir, projectName).split(u' ');
    return command;
}
