// An installed protocol stack tells in its feature files which version of the tool it goes with.

#include "check/LineCheck.h"
#include "check/LineRules.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView pathMissing{
    "Info: Path to protocol stack not specified. Cannot check if generated code fits to installed "
    "stack/framework."};
constexpr QLatin1StringView pathAdvice{"Specify path to protocol stack at Options -> Settings."};
constexpr QLatin1StringView fileMissing{
    "Info: No *_featureinfo_*.xml file found in protocol stack folder %1. Cannot check if generated code "
    "fits to installed stack/framework."};
constexpr QLatin1StringView olderToolNeeded{
    "<strong><font color='red'>Error: </font></strong>Version of installed stack does not fit. It requires "
    "an older version of the tool. Cannot generate files."};
constexpr QLatin1StringView otherToolNeeded{
    "<strong><font color='red'>Error: </font></strong>Version of installed stack does not fit. It requires "
    "tool version %1. Cannot generate files. This is version %2."};

constexpr QLatin1StringView versionName{"required_tool_version"};
/** What stacks require that were made before versions were compared. */
constexpr QLatin1StringView anyOlderVersion{"0.0"};

QString pathKey()
{
    return u"costackpath"_s;
}

/** Empty where no path is set, or where a relative one leads nowhere. */
QString stackFolder(const LineCheck &check)
{
    QString path = check.store.getMiscSetting(pathKey());
    if (path.isEmpty() || !QDir::isRelativePath(path))
        return path;
    return QFileInfo(QDir(check.projectPath).filePath(path)).canonicalFilePath();
}

/** The text of the element, or the attribute of any element, that has the name; empty without either. */
QString requiredToolVersion(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == versionName)
            return xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
        if (xml.attributes().hasAttribute(versionName))
            return xml.attributes().value(versionName).trimmed().toString();
    }
    return {};
}

/** Major and minor version: stacks do not depend on what comes behind. */
QString comparedToolVersion()
{
    QString version = QCoreApplication::applicationVersion();
    const qsizetype lastDot = version.lastIndexOf(u'.');
    switch (version.count(u'.')) {
    case 2:
        return version.left(lastDot);
    case 3:
        return version.left(lastDot - 2);
    default:
        return version;
    }
}

void compareVersions(const LineCheck &check, const QDir &folder, const QStringList &fileNames)
{
    const QString present = comparedToolVersion();
    for (const QString &fileName : fileNames) {
        const QString required = requiredToolVersion(folder.filePath(fileName));
        if (required == present)
            continue;
        const QString text = required == anyOlderVersion
            ? QString(olderToolNeeded)
            : otherToolNeeded.arg(required.toHtmlEscaped(), present);
        check.findings.error(text, ProjectLocation::ofSetting(pathKey()));
        return;
    }
}

} // namespace

void checkStackVersion(LineCheck &check)
{
    const ProjectLocation where = ProjectLocation::ofSetting(pathKey());
    const QString path = stackFolder(check);
    if (path.isEmpty()) {
        check.findings.note(pathMissing, where);
        check.findings.note(pathAdvice, where);
        return;
    }
    const QDir folder(path);
    const QStringList fileNames = folder.entryList({u"*_featureinfo_*.xml"_s}, QDir::Files);
    if (fileNames.isEmpty())
        check.findings.note(fileMissing.arg(path.toHtmlEscaped()), where);
    else
        compareVersions(check, folder, fileNames);
}
