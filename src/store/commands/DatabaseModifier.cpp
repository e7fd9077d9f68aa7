#include "store/commands/DatabaseModifier.h"

#include "canopen/LegacyText.h"
#include "store/ObjectDataBase.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

struct SettingsTable
{
    QLatin1StringView name;
    bool (ObjectDataBase::*set)(const QString &, const QString &);
};

constexpr SettingsTable tables[] = {
    {"GeneralSettings"_L1, &ObjectDataBase::setGeneralSetting},
    {"J1939Settings"_L1, &ObjectDataBase::setJ1939Setting},
};

constexpr qsizetype fieldsOfLine = 3;

} // namespace

DatabaseModifier::DatabaseModifier(const QSharedPointer<ObjectDataBase> &store, QObject *parent)
    : QObject(parent), m_store(store)
{
}

bool DatabaseModifier::applyModifierFile()
{
    m_error.clear();
    if (!m_store) {
        m_error = u"There is no project to modify."_s;
        return false;
    }
    m_store->setWriteLock(false);
    qDebug().noquote() << u"Applying "_s + m_path;
    QFile file(m_path);
    if (!QFileInfo(m_path).isFile() || !file.open(QIODevice::ReadOnly)) {
        m_error = u"File %1 is not readable."_s.arg(m_path);
        return false;
    }
    static const QRegularExpression lineEnd(u"\r\n|\r|\n"_s);
    const QStringList lines = LegacyText::decode(file.readAll()).text.split(lineEnd, Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        qDebug().noquote() << line;
        if (line.startsWith(u'#') || applyLine(line))
            continue;
        m_error = line;
        return false;
    }
    return true;
}

bool DatabaseModifier::applyLine(const QString &line)
{
    const QStringList fields = line.split(u':');
    if (fields.size() != fieldsOfLine)
        return true;
    for (const SettingsTable &table : tables) {
        if (fields[0] == table.name)
            return ((*m_store).*table.set)(fields[1], fields[2]);
    }
    return true;
}
