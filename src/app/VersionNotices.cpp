#include "app/VersionNotices.h"

#include "app/Edition.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr int firstMinorWithCommon = 7;
constexpr int firstMinorWithMemcpy = 9;

} // namespace

VersionNotices::VersionNotices(const QString &saveToolVersion)
{
    const QStringList numbers = saveToolVersion.split(u'.');
    m_major = numbers.value(0).toInt();
    m_minor = numbers.value(1).toInt();
}

QString VersionNotices::missingSources() const
{
    if (m_major != 3 || m_minor >= firstMinorWithMemcpy)
        return QString();
    if (m_minor >= firstMinorWithCommon)
        return Edition::isCANopen()
            ? tr("This project has been created by an older version. Please add the file co_memcpy.c to your "
                 "project or makefile.")
            : tr("This project has been created by an older version. Please add the file co_memcpy.c and "
                 "co_mapping.c to your project or makefile.");
    return Edition::isCANopen()
        ? tr("This project has been created by an older version. Please add the file co_common.c and "
             "co_memcpy.c to your project or makefile.")
        : tr("This project has been created by an older version. Please add the file co_common.c, "
             "co_memcpy.c and co_mapping.c to your project or makefile.");
}

QString VersionNotices::keepCopy(const QString &projectPath) const
{
    const QString copy = copyPath(projectPath);
    if (!needsCopy() || QFile::exists(copy))
        return QString();
    if (!QFile::copy(projectPath, copy)) {
        qWarning().noquote() << "The project of the former version cannot be copied to" << copy;
        return tr("The project had been created using V3.x of the tool, but no copy could be saved as %1. "
                  "Keep a copy of your own before you save it.")
            .arg(QDir::toNativeSeparators(copy));
    }
    return tr("The project had been created using V3.x of the tool. A copy has been saved as %1.\n\n")
               .arg(QDir::toNativeSeparators(copy))
        + tr(" In order to use the current project %1 with this version of NodeSmith, make sure to use the "
             "corresponding stack version.")
              .arg(QDir::toNativeSeparators(projectPath));
}
