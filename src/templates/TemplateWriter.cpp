#include "templates/TemplateWriter.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

/** Readers of older tools take id 1 for the empty text. */
constexpr int emptyTextId = 1;

bool writeSetting(ObjectDataBase &store, const TemplateProject::Setting &setting)
{
    switch (setting.table) {
    case TemplateProject::Table::General:
        return store.setGeneralSetting(setting.key, setting.value);
    case TemplateProject::Table::Description:
        store.setDescriptionLine(0);
        return store.setDescriptionSetting(setting.key, setting.value);
    case TemplateProject::Table::EnergyBus:
        return store.setEnergyBusSetting(setting.key, setting.value);
    case TemplateProject::Table::J1939:
        return store.setJ1939Setting(setting.key, setting.value);
    }
    return false;
}

bool ensureLine(ObjectDataBase &store, quint8 line)
{
    return store.nodeExists(line) || store.addNode(line, ObjectDataBase::NODE_DATA_T());
}

bool writeObject(ObjectDataBase &store, const TemplateProject::Object &object)
{
    return ensureLine(store, object.line) && store.addIndex(object.line, object.index, object.data)
        && store.addSubIndices(object.subIndices);
}

bool writeGroup(ObjectDataBase &store, const TemplateProject::ParameterGroup &group)
{
    const auto direction = quint8(group.data.direction);
    bool success = ensureLine(store, group.line) && store.addPGN(group.line, group.number, group.data);
    for (const TemplateProject::Signal &spn : group.spns)
        success = success && store.addSPN(group.line, group.number, direction, spn.number, spn.data);
    return success && store.setPGNMappingCount(group.line, group.number, direction, int(group.spns.size()));
}

bool fill(ObjectDataBase &store, const TemplateProject &project, QString *error)
{
    if (!store.createNewDataBase() || store.addString(QString()) != emptyTextId) {
        *error = u"no new database can be made: %1"_s.arg(store.lastError());
        return false;
    }
    for (const TemplateProject::Setting &setting : project.settings) {
        if (!writeSetting(store, setting)) {
            *error = u"the store refuses the setting %1"_s.arg(setting.key);
            return false;
        }
    }
    for (const TemplateProject::Object &object : project.objects) {
        if (!writeObject(store, object)) {
            *error = u"the store refuses the object 0x%1"_s.arg(object.index, 4, 16, QChar(u'0'));
            return false;
        }
    }
    for (const TemplateProject::ParameterGroup &group : project.groups) {
        if (!writeGroup(store, group)) {
            *error = u"the store refuses the PGN %1"_s.arg(group.number);
            return false;
        }
    }
    return true;
}

bool copyFile(const QString &from, const QString &to, QString *error)
{
    QFile source(from);
    QSaveFile target(to);
    if (source.open(QIODevice::ReadOnly) && target.open(QIODevice::WriteOnly)) {
        const QByteArray bytes = source.readAll();
        if (target.write(bytes) == bytes.size() && target.commit())
            return true;
    }
    *error = u"%1 cannot be written: %2"_s.arg(to, target.errorString());
    return false;
}

} // namespace

bool TemplateWriter::write(const TemplateProject &project, const QString &path, QString *error)
{
    QCoreApplication::setApplicationName(project.edition);
    ObjectDataBase store;
    if (!fill(store, project, error))
        return false;
    // Saved under a template's suffix whatever the target is called, and without a backup beside it.
    const QTemporaryDir folder;
    const QString saved = folder.filePath(u"template.data"_s);
    if (!folder.isValid() || !store.saveProject(saved)) {
        *error = u"the database cannot be saved: %1"_s.arg(store.lastError());
        return false;
    }
    // The save drops every text that nothing uses.
    if (store.addString(QString()) != emptyTextId) {
        *error = u"nothing uses the empty text, its place in the string pool is lost"_s;
        return false;
    }
    return copyFile(saved, path, error);
}
