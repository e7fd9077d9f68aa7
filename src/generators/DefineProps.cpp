#include "generators/DefineProps.h"

#include <QDebug>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *buildProps = R"xml(<?xml version="1.0" encoding="utf-8"?>
<!-- Auto-imported by MSBuild. Pulls in the generated define -->
<!-- symbols (gen_define.props) if present; no error if absent. -->
<Project>
  <Import Project="$(MSBuildThisFileDirectory)gen_define.props"
          Condition="Exists('$(MSBuildThisFileDirectory)gen_define.props')" />
</Project>
)xml";

constexpr const char *propsHead = R"xml(<?xml version="1.0" encoding="utf-8"?>
<!-- Auto-generated from gen_define.h - do not edit. -->
<!-- C# conditional-compilation symbols that make the #if in the -->
<!-- generated wrapper match the compiled stack_wrapper DLL. -->
<!-- Imported automatically by Directory.Build.props when present. -->
<Project>
<PropertyGroup>
<DefineConstants>$(DefineConstants);)xml";

constexpr const char *propsTail = R"xml(</DefineConstants>
</PropertyGroup>
</Project>
)xml";

bool write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Text) && file.write(text) == text.size()
        && file.flush();
}

} // namespace

QStringList definedSymbols(const QString &header)
{
    QStringList symbols;
    // A file that was written by an earlier run has the line ends that the user has chosen.
    static const QRegularExpression lineEnd(u"[\\r\\n]"_s);
    const QStringList lines = header.split(lineEnd);
    for (const QString &line : lines) {
        const QString trimmed = line.trimmed();
        if (!trimmed.startsWith(u'#'))
            continue;
        const QString directive = trimmed.sliced(1).trimmed();
        constexpr auto keyword = "define"_L1;
        if (!directive.startsWith(keyword))
            continue;
        const QString symbol = directive.sliced(keyword.size()).simplified().section(u' ', 0, 0);
        if (!symbol.isEmpty() && !symbols.contains(symbol))
            symbols.append(symbol);
    }
    return symbols;
}

bool writeDefinePropsFiles(const QString &defineFile, const QString &outputDir)
{
    QStringList symbols;
    QFile header(defineFile);
    if (header.open(QIODevice::ReadOnly))
        symbols = definedSymbols(QString::fromUtf8(header.readAll()));
    else
        qDebug().noquote() << "gen_define.h not found, writing Directory.Build.props only:" << defineFile;
    const bool importWritten = write(outputDir + "/Directory.Build.props"_L1, buildProps);
    if (!importWritten)
        qDebug().noquote() << "Unable to write Directory.Build.props to" << outputDir;
    if (symbols.isEmpty())
        return false;
    const QByteArray text = propsHead + symbols.join(u';').toHtmlEscaped().toUtf8() + propsTail;
    const bool symbolsWritten = write(outputDir + "/gen_define.props"_L1, text);
    if (!symbolsWritten)
        qDebug().noquote() << "Unable to write gen_define.props to" << outputDir;
    return importWritten && symbolsWritten;
}
