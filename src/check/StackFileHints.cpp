// What a build must compile in addition since the project was last saved by an older version.

#include "check/CheckFindings.h"
#include "check/LineCheck.h"
#include "check/ProjectRules.h"
#include "store/ObjectDataBase.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView commonAndCopy{
    "<strong>Hint: </strong>Add <font color='red'>co_common.c and co_memcpy.c</font> to your project or "
    "Makefile."};
constexpr QLatin1StringView commonCopyAndMapping{
    "<strong>Hint: </strong>Add <font color='red'>co_common.c, co_memcpy.c and co_mapping.c</font> to your "
    "project or Makefile."};
constexpr QLatin1StringView copyOnly{
    "<strong>Hint: </strong>Add <font color='red'>co_memcpy.c</font> to your project or Makefile."};
constexpr QLatin1StringView copyAndMapping{
    "<strong>Hint: </strong>Add <font color='red'>co_memcpy.c and co_mapping.c</font> to your project or "
    "Makefile."};
constexpr QLatin1StringView udsInit{
    "<strong>Hint: </strong>Add <font color='red'>uds_init.c</font> to your project or Makefile."};

constexpr int hintedMajor = 3;
/** Up to this minor version, the common functions had no file of their own. */
constexpr int minorWithCommonFile = 7;
/** From this minor version on, projects have all the files. */
constexpr int minorWithAllFiles = 9;

bool isCanopenEdition()
{
    return QCoreApplication::applicationName() == "CANopen NodeSmith"_L1;
}

bool usesUds(ObjectDataBase &store)
{
    return unsignedValue(store.getGeneralSetting(u"udsserver_supported"_s)) > 0
        || unsignedValue(store.getGeneralSetting(u"udsclient_supported"_s)) > 0;
}

} // namespace

void hintAtStackFiles(ObjectDataBase &store, CheckFindings &findings)
{
    const QString key = u"PreviousToolVersion"_s;
    const QStringList version = store.getMiscSetting(key).split(u'.');
    const int minor = version.value(1).toInt();
    if (version.constFirst().toInt() != hintedMajor || minor >= minorWithAllFiles)
        return;
    if (minor < minorWithCommonFile) {
        findings.note(isCanopenEdition() ? commonAndCopy : commonCopyAndMapping);
    } else {
        findings.note(isCanopenEdition() ? copyOnly : copyAndMapping);
        if (usesUds(store))
            findings.note(udsInit);
    }
    store.setMiscSetting(key, QString());
}
