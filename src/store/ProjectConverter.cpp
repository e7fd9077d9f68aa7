#include "store/ProjectConverter.h"

#include "store/ApplicationSettings.h"
#include "store/ObjectDataBase.h"

#include <QDebug>
#include <QMap>
#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr int groupFilterOn = 1;
constexpr int formerUdsServerVersion = 5;
/** Former versions made sub-index 0 of this object a constant. */
constexpr quint16 emcyObject = 0x1032;
constexpr int managedVariable = 0;
constexpr int constant = 1;

const QString stackPathKey()
{
    return QStringLiteral("costackpath");
}

/** The numbers n of the keys that a pattern with one group matches, with their keys, in ascending order. */
QMap<int, QString> numberedKeys(const QStringList &keys, const QRegularExpression &pattern)
{
    QMap<int, QString> numbered;
    for (const QString &key : keys) {
        const QRegularExpressionMatch match = pattern.match(key);
        bool isNumber = false;
        const int number = match.captured(1).toInt(&isNumber);
        if (match.hasMatch() && isNumber)
            numbered.insert(number, key);
    }
    return numbered;
}

QMap<int, QString> securityKinds(ObjectDataBase &store)
{
    static const QRegularExpression pattern(QStringLiteral("^sec_(\\d+)_kind$"));
    return numberedKeys(store.getEnergyBusSettingKeys(), pattern);
}

/** The number that `device_cnt` holds; where it holds none, every device there is counts. */
int deviceCount(ObjectDataBase &store, const QMap<int, QString> &keys)
{
    bool isNumber = false;
    const int count = store.getEnergyBusSetting(QStringLiteral("device_cnt")).toInt(&isNumber);
    if (isNumber && count >= 0)
        return count;
    return keys.isEmpty() ? 0 : keys.lastKey() - keys.firstKey() + 1;
}

/** The texts of the virtual devices that `device_cnt` counts, by their numbers; emptied ones are gone. */
QMap<int, QString> virtualDevices(ObjectDataBase &store, int &first)
{
    static const QRegularExpression pattern(QStringLiteral("^device_(\\d+)$"));
    const QMap<int, QString> keys = numberedKeys(store.getEnergyBusSettingKeys(), pattern);
    const int count = deviceCount(store, keys);
    // The list begins at 0, or at 1 where it reaches as far as its count.
    first = !keys.contains(0) && keys.contains(count) ? 1 : 0;
    QMap<int, QString> devices;
    for (auto key = keys.cbegin(); key != keys.cend(); ++key) {
        const QString text = store.getEnergyBusSetting(key.value());
        if (key.key() >= first && key.key() - first < count && !text.isEmpty())
            devices.insert(key.key(), text);
    }
    return devices;
}

QString correctSpelling(const QString &device)
{
    static const QRegularExpression misspelt(QStringLiteral("(?<![sS])ecurity"));
    QString corrected = device;
    return corrected.replace(misspelt, QStringLiteral("security"));
}

} // namespace

ProjectConverter::ProjectConverter(QObject *parent) : QObject(parent) { }

void ProjectConverter::setDataBase(const QSharedPointer<ObjectDataBase> &store)
{
    m_store = store;
}

QList<quint8> ProjectConverter::projectLines() const
{
    QList<quint8> lines = m_store->getLines();
    lines.removeIf([](quint8 line) { return line >= ObjectDataBase::ClipboardLine; });
    return lines;
}

bool ProjectConverter::doGenericCorrection()
{
    qDebug() << Q_FUNC_INFO;
    if (!m_store)
        return false;
    bool success = true;
    const QString filterKey = QStringLiteral("drv_group_filter");
    if (m_store->getGeneralSetting(filterKey).toInt() == groupFilterOn) {
        const QString definesKey = QStringLiteral("hw_defines");
        const QString defines = m_store->getGeneralSetting(definesKey)
            + QStringLiteral("\n\n /* old group filter setting */\n#define CO_DRV_GROUP_FILTER 1u\n");
        success = m_store->setGeneralSetting(filterKey, QStringLiteral("0"))
            && m_store->setGeneralSetting(definesKey, defines);
    }
    const QString versionKey = QStringLiteral("udsserver_version");
    if (m_store->getGeneralSetting(versionKey).toInt() == formerUdsServerVersion)
        success = m_store->setGeneralSetting(versionKey, QStringLiteral("6")) && success;
    return success;
}

bool ProjectConverter::doProjectCorrection()
{
    if (!m_store)
        return false;
    bool success = fillStackPath();
    success = moveMasterSettings() && success;
    success = enableUsdo(QStringLiteral("usdo_server_enabled"), QStringLiteral("usdo_server_cnt")) && success;
    success = enableUsdo(QStringLiteral("usdo_client_enabled"), QStringLiteral("usdo_client_cnt")) && success;
    const QList<quint8> lines = projectLines();
    for (const quint8 line : lines)
        success = correctEmcyConsumerObject(line) && success;
    return success;
}

bool ProjectConverter::fillStackPath()
{
    if (!m_store->getMiscSetting(stackPathKey()).isEmpty())
        return true;
    const QString path = ApplicationSettings::value(QStringLiteral("General/costackpath")).toString();
    return path.isEmpty() || m_store->setMiscSetting(stackPathKey(), path);
}

// One value stood for all lines, or a list for each; a line without a value keeps what it has.
bool ProjectConverter::moveMasterSettings()
{
    const QString formerKey = QStringLiteral("co_ml_ms");
    if (m_store->getGeneralSetting(formerKey).isEmpty())
        return true;
    bool success = true;
    const QList<quint8> lines = projectLines();
    for (const quint8 line : lines) {
        const QString value = m_store->getGeneralSettingForLine(formerKey, line).trimmed();
        if (!value.isEmpty())
            success = m_store->setGeneralSettingForLine(QStringLiteral("nmtmaster"), value, line) && success;
    }
    return success && m_store->setGeneralSetting(formerKey, QString());
}

bool ProjectConverter::enableUsdo(const QString &enabledKey, const QString &countKey)
{
    if (!m_store->getGeneralSetting(enabledKey).isEmpty()
        || m_store->getGeneralSetting(countKey).toInt() <= 0)
        return true;
    return m_store->setGeneralSetting(enabledKey, QStringLiteral("1"));
}

bool ProjectConverter::correctEmcyConsumerObject(quint8 line)
{
    ObjectDataBase::SUBINDEX_DATA_T sub;
    if (!m_store->getSubIndex(line, emcyObject, 0, sub) || sub.implementation != constant)
        return true;
    sub.implementation = managedVariable;
    return m_store->addSubIndex(line, emcyObject, 0, sub);
}

// Devices behind a gap move down with their kind of security, so that the new count reaches all of them.
bool ProjectConverter::doEnergyBusCorrection()
{
    if (!m_store)
        return false;
    int next = 0;
    const QMap<int, QString> devices = virtualDevices(*m_store, next);
    QMap<int, QString> kinds;
    bool success = true;
    const QMap<int, QString> kindKeys = securityKinds(*m_store);
    for (auto key = kindKeys.cbegin(); key != kindKeys.cend(); ++key) {
        if (devices.contains(key.key()))
            kinds.insert(key.key(), m_store->getEnergyBusSetting(key.value()));
        else
            success = m_store->removeEnergyBusSetting(key.value()) && success;
    }
    for (auto device = devices.cbegin(); device != devices.cend(); ++device, ++next) {
        const QString corrected = correctSpelling(device.value());
        if (corrected != device.value())
            qDebug().noquote() << "correct " << device.value();
        success = m_store->setEnergyBusSetting(QStringLiteral("device_%1").arg(next), corrected) && success;
        if (next == device.key())
            continue;
        success = m_store->removeEnergyBusSetting(QStringLiteral("device_%1").arg(device.key())) && success;
        if (!kinds.contains(device.key()))
            continue;
        success = m_store->removeEnergyBusSetting(QStringLiteral("sec_%1_kind").arg(device.key())) && success;
        success =
            m_store->setEnergyBusSetting(QStringLiteral("sec_%1_kind").arg(next), kinds.value(device.key()))
            && success;
    }
    return m_store->setEnergyBusSetting(QStringLiteral("device_cnt"), QString::number(devices.size()))
        && success;
}
