#include "widgets/KorvelBaseApplication.h"

#include "widgets/KorvelAppStyle.h"
#include "widgets/MessageLog.h"

#include <QDebug>
#include <QSettings>
#include <QVersionNumber>

using namespace Qt::StringLiterals;

namespace {

bool copySettings(const QSettings &from, QSettings &to)
{
    const QStringList keys = from.allKeys();
    for (const QString &key : keys)
        to.setValue(key, from.value(key));
    return !keys.isEmpty();
}

} // namespace

// The log comes first, so that what Qt itself says while it starts has the log's form, too.
KorvelBaseApplication::KorvelBaseApplication(int &argc, char **argv, const QString &name,
                                             const QString &version)
    : QApplication((MessageLog::install(), argc), argv),
      m_majorVersion(QVersionNumber::fromString(version).majorVersion())
{
    setApplicationName(name);
    setApplicationVersion(version);
    setProperty("AppNameWithVersion", settingsName(m_majorVersion));
    setStyle(new KorvelAppStyle);
}

KorvelBaseApplication::~KorvelBaseApplication()
{
    MessageLog::uninstall();
}

void KorvelBaseApplication::initSettings(quint8 generations)
{
    QSettings own(organizationName(), settingsName(m_majorVersion));
    own.setFallbacksEnabled(false);
    if (!own.allKeys().isEmpty())
        return;
    const int oldest = qMax(0, m_majorVersion - generations);
    for (int major = m_majorVersion - 1; major >= oldest; --major) {
        QSettings former(organizationName(), settingsName(major));
        former.setFallbacksEnabled(false);
        if (copySettings(former, own)) {
            qInfo().noquote() << "Settings of" << settingsName(major) << "taken over";
            return;
        }
    }
}

void KorvelBaseApplication::onInstrumentFunctionChanged(bool enable)
{
    const qint64 duration = MessageLog::setTiming(enable);
    if (duration >= 0)
        qInfo("Run ended after %lld ms", static_cast<long long>(duration));
}

QString KorvelBaseApplication::settingsName(int majorVersion) const
{
    return applicationName() + u' ' + QString::number(majorVersion);
}
