#pragma once

#include <QList>
#include <QString>

class ObjectDataBase;

/** A variable that the application owns and generated tables point to. */
struct ExternalVariable
{
    QString type; ///< C type, of an element where the variable is an array
    QString declarator; ///< the name, with the sizes of an array behind it
    QString source; ///< a comment: what it holds the value of
};

/**
 * The variables of the application in all lines of a project, in the order of lines; a name that was met
 * before, on whatever line, does not come again.
 *
 * What the project calls a variable but is an expression ("motor.speed", "PLACE(x)") is none that could be
 * declared here; the application's own headers have to.
 */
struct ExternalVariables
{
    struct Line
    {
        quint8 number = 0;
        QList<ExternalVariable> variables;
    };

    QList<Line> lines; ///< ascending, those without variables included

    static ExternalVariables read(ObjectDataBase &store);
};
