#pragma once

#include "check/ProjectLocation.h"

#include <QList>
#include <QObject>
#include <QSharedPointer>

#include <memory>

class ObjectDataBase;

/**
 * The consistency check that every generation run starts with.
 *
 * It reads the project through its store, tells each finding as one line of rich text and corrects a few
 * things on the spot. A finding never stops the walk: one run shows all of them. Errors are counted;
 * warnings, hints and corrections are not. One checker serves one run.
 */
class ModelChecker : public QObject
{
    Q_OBJECT

public:
    ModelChecker();
    ~ModelChecker() override;

    /** Checks what concerns all lines together; relative paths to the stack mean `projectFolder`. Errors
     * found. */
    int checkProject(const QSharedPointer<ObjectDataBase> &database, const QString &projectFolder);
    /** Checks one line with CANopen; sets `changed` when it corrected the project. Errors found. */
    int checkCANopenLine(quint8 line, const QSharedPointer<ObjectDataBase> &database, bool *changed);
    /** Checks one line with J1939; the PGNs of the list are the stack's own. Errors found. */
    int checkJ1939Line(int lineCount, quint8 line, const QSharedPointer<ObjectDataBase> &database,
                       const QList<quint32> &reservedPgns);
    /** Checks one line with raw CAN. Errors found. */
    int checkRawCanLine(quint8 line, const QSharedPointer<ObjectDataBase> &database);

    /**
     * Whether a text has the form of a value of a CiA 301 data type; the range of the type is not
     * tested. Empty texts and types without a numeric form are valid.
     */
    static bool isValidValue(int dataType, const QString &text);

    /** What the message that newError is just telling is about; of no use at any other time. */
    const ProjectLocation &location() const;

Q_SIGNALS:
    /** One finding, as rich text. */
    void newError(QString errorText);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
