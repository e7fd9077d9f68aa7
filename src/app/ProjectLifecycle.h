#pragma once

#include "app/LineType.h"

#include <QSharedPointer>

#include <functional>

class ObjectDataBase;

/**
 * New, open and save of the project in one store, without a window.
 *
 * It knows where the project lives and what each edition needs of a project; asking the user,
 * cursors and message boxes belong to the caller.
 */
class ProjectLifecycle
{
public:
    enum class OpenResult {
        Opened,
        UnknownKind, ///< neither ".vexp" nor ".vext"; the store was not touched
        Failed, ///< the store holds nothing usable any more; see its lastError()
    };
    using ProtocolChooser = std::function<LineType()>;

    /**
     * Fills the store that the program starts with: an empty line 0 of the edition's type. Without a
     * usable data folder the store stays closed, which the log tells.
     */
    static void prepareProjectStore(ObjectDataBase &store);
    /** What an opened project of a former version needs before it is shown, by edition. */
    static void correctProject(const QSharedPointer<ObjectDataBase> &store);
    /** Fills the store of the predefined objects; the same holds for the data folder. */
    static void prepareReferenceStore(ObjectDataBase &store);

    /** Without a file of its own here, a new project comes from the template of the edition. */
    void setTemplate(const QString &path) { m_template = path; }
    /** The store must outlive this object or be replaced; without one every operation fails. */
    void setDataBase(ObjectDataBase *store) { m_store = store; }

    /**
     * Replaces the project by a new one: the edition's template where it exists and can be read,
     * otherwise an empty project with one default line. The CAN edition asks for the protocol of line 0.
     * After a failure there is no project at all and the store is closed; see its lastError().
     */
    bool newProject(const ProtocolChooser &chooseProtocol);
    /** A relative path means the current folder. */
    OpenResult openProject(const QString &path);
    /** Saves to the project's own file; fails for a project that has none. */
    bool save();
    /** Saves to the path, which becomes the project's file when that worked. */
    bool saveAs(const QString &path);

    /** False before the first project and after a new one that failed. */
    bool hasProject() const { return !m_projectBaseName.isEmpty(); }
    /** Empty for a project that was never saved. */
    const QString &projectDir() const { return m_projectDir; }
    const QString &projectBaseName() const { return m_projectBaseName; }
    const QString &projectFile() const { return m_projectFile; }

private:
    bool openTemplateOrEmpty();
    void forgetProject();
    void chooseFirstLine(LineType type);
    void markAsCurrent();
    void setProjectFile(const QString &path);
    QString lineZeroType() const;

    ObjectDataBase *m_store = nullptr;
    QString m_template;
    QString m_projectDir;
    QString m_projectBaseName;
    QString m_projectFile;
};
