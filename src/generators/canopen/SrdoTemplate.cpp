#include "generators/canopen/SrdoTemplate.h"

#include "generators/CodeWriter.h"
#include "store/ApplicationSettings.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

/** Makes the template of the program known, which a static library does not do by itself. */
static void registerSrdoResources()
{
    Q_INIT_RESOURCE(srdo);
}

namespace {

constexpr auto stackPathKey = "General/costackpath"_L1;
constexpr auto multiLineTemplate = "/co_lib_ml/src/gen_srdo.tpl"_L1;
constexpr auto singleLineTemplate = "/co_lib_sl/src/gen_srdo.tpl"_L1;

/** Head and functions of the program's own template. */
constexpr auto ownHead = ":/data/srdoproto.data"_L1;
constexpr auto ownFunctions = ":/data/srdo.data"_L1;

constexpr auto lineWord = "CAN_LINE"_L1;
constexpr auto lineArgument = "canLine"_L1;

std::optional<QString> readText(const QString &path)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return std::nullopt;
    return QString::fromUtf8(file.readAll());
}

QString stackTemplate(bool multiLine, const QString &projectFolder)
{
    const QString path = ApplicationSettings::value(stackPathKey).toString();
    if (path.isEmpty())
        return {};
    const QString stack = QDir(projectFolder).absoluteFilePath(QDir::fromNativeSeparators(path));
    return stack + (multiLine ? multiLineTemplate : singleLineTemplate);
}

QString blockText(const SrdoTemplate::Block &block)
{
    QString text;
    CodeWriter out(text);
    block(out);
    return text;
}

} // namespace

std::optional<QString> SrdoTemplate::read(bool multiLine, const QString &projectFolder)
{
    if (auto text = readText(stackTemplate(multiLine, projectFolder)))
        return text;
    registerSrdoResources();
    const auto head = readText(ownHead);
    const auto functions = readText(ownFunctions);
    return head && functions ? std::optional(*head + *functions) : std::nullopt;
}

QString SrdoTemplate::filled(const QString &text, const QHash<QString, Block> &blocks, bool multiLine)
{
    static const QRegularExpression words(u"\\b(__GEN_SRDO_\\w+__|CAN_LINE)\\b"_s);
    QString result;
    qsizetype end = 0;
    for (auto found = words.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const QString word = match.captured();
        result += QStringView(text).sliced(end, match.capturedStart() - end);
        end = match.capturedEnd();
        if (word == lineWord) {
            result += multiLine ? lineArgument : lineWord;
            continue;
        }
        const auto block = blocks.constFind(word);
        if (block == blocks.constEnd()) {
            result += word;
            continue;
        }
        result += blockText(*block);
        if (end < text.size() && text[end] == u'\n' && result.endsWith(u'\n'))
            result.chop(1);
    }
    return result + QStringView(text).sliced(end);
}
