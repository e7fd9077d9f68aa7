#pragma once

#include "store/ObjectDataBase.h"
#include "store/ProjectConverter.h"
#include "store/StoreTest.h"

#include <QSettings>

/** A project and its converter, as the tests of corrections need them. */
namespace ConverterDesk {

inline const char *const settingsName = "NodeSmith converter test";

/** A store with an empty project and its converter. */
struct Desk
{
    QSharedPointer<ObjectDataBase> store = QSharedPointer<ObjectDataBase>::create();
    ProjectConverter converter;

    Desk()
    {
        if (!store->createNewDataBase())
            qFatal("the store cannot make a new database");
        converter.setDataBase(store);
    }

    void set(const char *key, const QString &value) const
    {
        store->setGeneralSetting(QLatin1StringView(key), value);
    }
    QString get(const char *key) const { return store->getGeneralSetting(QLatin1StringView(key)); }
    void setBus(const char *key, const QString &value) const
    {
        store->setEnergyBusSetting(QLatin1StringView(key), value);
    }
    QString bus(const char *key) const { return store->getEnergyBusSetting(QLatin1StringView(key)); }
    QStringList rows(const QString &sql) const
    {
        store->executeSql(sql);
        QStringList trimmed;
        for (const QString &row : store->sqlResult())
            trimmed.append(row.trimmed());
        return trimmed;
    }
};

} // namespace ConverterDesk
