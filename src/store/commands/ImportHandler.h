#pragma once

#include <QList>
#include <QObject>
#include <QSharedPointer>
#include <QString>

class ObjectDataBase;

/**
 * Applies an import command file to a project: deletes, copies and imports objects.
 *
 * The file is an INI file with the sections "Projects" (number and path of each source project),
 * "Options" ("delete_objects") and "Actions" (the commands, run in the order of their sorted keys). A
 * relative project path is relative to the command file's folder. A failed action ends the run; what
 * was done before it stays done.
 */
class ImportHandler : public QObject
{
    Q_OBJECT

public:
    /** One command of the section "Actions". */
    struct actionSetting
    {
        enum Type { Delete = 0, Import = 1, Copy = 2 };

        int type = Delete;
        quint16 from = 0;
        quint16 to = 0; ///< inclusive
        quint16 offset = 0; ///< added to each object's index
        quint8 sourceLine = 0;
        quint8 targetLine = 0;
        QString text; ///< the command as read
        QString projectPath; ///< of an import; empty where "Projects" has no such number
    };

    explicit ImportHandler(const QSharedPointer<ObjectDataBase> &store, QObject *parent = nullptr);

    /** False with an error text where the file cannot be read or holds no command file. */
    bool setFile(const QString &path);
    /** Releases the store's write lock and runs all actions; an import serves events while it waits. */
    bool applyImportFile();
    QString errorString() const { return m_error; }

private:
    bool processAction(actionSetting &action);
    bool processDelete(actionSetting &action);
    bool processCopy(actionSetting &action);
    bool processImport(actionSetting &action);

    bool isProjectLine(quint8 line);
    bool makeScratchLine();
    bool readIntoScratchLine(const actionSetting &action);
    bool takeFromScratchLine(const actionSetting &action);
    bool removeOtherObjects(quint8 line, const QList<quint16> &keptIndices);

    QSharedPointer<ObjectDataBase> m_store;
    QString m_path;
    QString m_error;
    bool m_deleteObjects = false;
};
