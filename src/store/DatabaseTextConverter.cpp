#include "store/DatabaseTextConverter.h"

#include "store/DatabaseTextConverterShared.h"
#include "store/ObjectDataBase.h"

#include <QCryptographicHash>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <algorithm>

namespace {

constexpr QLatin1StringView hashKey("MiscSettings/FileHash");
constexpr QLatin1StringView tamperLogKey("MiscSettings/TamperLog");

/** Appends a text with its length, so that no two lists of texts give the same bytes. */
void feed(QByteArray &bytes, const QString &text)
{
    // QSettings drops a byte order mark at the start of a value.
    const QByteArray utf8 = QString(text).remove(QChar::ByteOrderMark).toUtf8();
    bytes += QByteArray::number(utf8.size());
    bytes += ':';
    bytes += utf8;
    bytes += '\n';
}

void feedValue(QByteArray &bytes, const QVariant &value)
{
    if (value.typeId() != QMetaType::QVariantMap) {
        feed(bytes, TextForm::entryText(value));
        return;
    }
    const QVariantMap map = value.toMap();
    bytes += QByteArray::number(map.size());
    bytes += '\n';
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        feed(bytes, entry.key());
        feed(bytes, entry.value().toString());
    }
}

/** True for a group that only the text of a project has; settings alone are the head of a cut file. */
bool isProjectGroup(const QString &group)
{
    static constexpr std::array kinds = {"MiscSettings", "Nodes", "Objects",    "SubObjects",
                                         "PGNs",         "SPNs",  "UDSSettings"};
    return std::any_of(kinds.begin(), kinds.end(),
                       [&](const char *kind) { return group.startsWith(QLatin1StringView(kind)); });
}

} // namespace

DatabaseTextConverter::DatabaseTextConverter(QObject *parent) : QObject(parent) { }

DatabaseTextConverter::~DatabaseTextConverter() = default;

void DatabaseTextConverter::setDataBase(ObjectDataBase *store, const QSqlDatabase &database,
                                        ConnectionGate *gate)
{
    m_store = store;
    m_database = database;
    m_gate = gate;
}

void DatabaseTextConverter::setOutputFile(const QString &path)
{
    QFile::remove(path);
    m_settings.reset(new QSettings(path, QSettings::IniFormat));
}

bool DatabaseTextConverter::isWritten() const
{
    return m_settings && m_settings->status() == QSettings::NoError && QFile::exists(m_settings->fileName());
}

bool DatabaseTextConverter::hasGroup(const QString &group) const
{
    return m_settings && m_settings->childGroups().contains(group);
}

QString DatabaseTextConverter::defect() const
{
    if (!m_inputDefect.isEmpty())
        return m_inputDefect;
    if (!m_settings)
        return QStringLiteral("there is no text");
    const QStringList groups = m_settings->childGroups();
    if (m_settings->status() == QSettings::AccessError)
        return QStringLiteral("it cannot be read");
    if (std::none_of(groups.begin(), groups.end(), isProjectGroup))
        return QStringLiteral("it holds no tables of a project");
    return {};
}

bool DatabaseTextConverter::hasBadLines() const
{
    return m_badLines > 0 || (m_settings && m_settings->status() == QSettings::FormatError);
}

QString DatabaseTextConverter::storedHash() const
{
    return m_settings ? TextForm::entryText(m_settings->value(hashKey)) : QString();
}

QString DatabaseTextConverter::entriesHash() const
{
    if (!m_settings)
        return {};
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const QStringList keys = m_settings->allKeys();
    QByteArray bytes;
    for (const QString &key : keys) {
        if (key == hashKey || key == tamperLogKey)
            continue;
        bytes.clear();
        feed(bytes, key);
        feedValue(bytes, m_settings->value(key));
        hash.addData(bytes);
    }
    return QString::fromLatin1(hash.result().toHex());
}

// The hash goes into the store as well: text and working database tell the same.
void DatabaseTextConverter::seal()
{
    const QString hash = entriesHash();
    m_store->setMiscSetting(QStringLiteral("FileHash"), hash);
    m_settings->setValue(hashKey, hash);
    m_settings->sync();
}
