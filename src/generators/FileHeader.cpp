#include "generators/FileHeader.h"

#include "generators/CText.h"
#include "generators/GenerationClock.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

FileHeader::FileHeader(const QString &projectName, const QString &version)
    : m_projectName(CText::comment(projectName)), m_version(CText::comment(version))
{
}

QString FileHeader::title(const QString &text) const
{
    return text.arg(m_projectName, CText::comment(QCoreApplication::applicationName()), m_version);
}

QString FileHeader::comment(const QString &title) const
{
    return u"/*\n"_s + this->title(title) + u" * "_s + CText::comment(GenerationClock::stamp())
        + u"\n */\n"_s;
}

QString FileHeader::standardLibrary(const QString &outputFolder)
{
    return QFileInfo::exists(outputFolder + u"/no_stdlib_include.txt"_s) ? QString()
                                                                         : u"#include <stdlib.h>\n\n"_s;
}
