#pragma once

#include "store/ObjectDataBase.h"
#include "store/StoreTest.h"
#include "store/UndoManager.h"

#include <QDir>
#include <QSettings>
#include <QSignalSpy>

/** A store with its undo manager, as the tests of undo need them. */
namespace UndoDesk {

inline const char *const settingsName = "NodeSmith undo test";

inline QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
}

inline QString snapshotFolder()
{
    return QStringLiteral("%1/undo_%2").arg(dataFolder()).arg(QCoreApplication::applicationPid());
}

inline QStringList snapshotFiles()
{
    return QDir(snapshotFolder()).entryList(QDir::Files, QDir::Time | QDir::Reversed);
}

inline QStringList workingFiles()
{
    return QDir(dataFolder()).entryList({QStringLiteral("wvxdatatemp_*")}, QDir::Files);
}

inline QSharedPointer<ObjectDataBase> newStore()
{
    auto store = QSharedPointer<ObjectDataBase>::create();
    if (!store->createNewDataBase())
        qFatal("the store cannot make a new database");
    return store;
}

inline void setDepth(const QVariant &depth)
{
    QSettings settings(QStringLiteral("korvel"), QLatin1StringView(settingsName));
    settings.setValue(QStringLiteral("General/undomaxdepth"), depth);
}

/** A store with its undo manager and all that they announce. */
struct Desk
{
    QSharedPointer<ObjectDataBase> store = newStore();
    UndoManager undo;
    QSignalSpy canUndo{&undo, &UndoManager::canUndoChanged};
    QSignalSpy canRedo{&undo, &UndoManager::canRedoChanged};
    QSignalSpy limit{&undo, &UndoManager::historyLimitReached};
    QSignalSpy restored{&undo, &UndoManager::restored};

    Desk() { undo.setDataBase(store); }

    void write(const QString &value) const { store->setGeneralSetting(QStringLiteral("co_node_id"), value); }
    /** One edit with the end of its burst, without waiting for the timer. */
    void edit(const QString &value)
    {
        write(value);
        undo.handleDebounceTimeout();
    }
    QString value() const { return store->getGeneralSetting(QStringLiteral("co_node_id")); }
    bool mayUndo() const { return canUndo.last().first().toBool(); }
    bool mayRedo() const { return canRedo.last().first().toBool(); }
};

/** Working files in a folder of the test's own, without those of an earlier run. */
inline void prepareApplication()
{
    StoreTest::prepareApplication();
    qApp->setProperty("AppNameWithVersion", QLatin1StringView(settingsName));
    QDir(dataFolder()).removeRecursively();
}

} // namespace UndoDesk
