#pragma once

#include "app/CommandLine.h"

#include <QSharedPointer>

class ObjectDataBase;

/** What the command-line actions ask of the program's window. */
class CommandLineTarget
{
public:
    virtual ~CommandLineTarget() = default;

    virtual void setNormalCursor() = 0;
    /** Shows that the network tool drives the program and locks what it decides. */
    virtual void enterNetworkToolMode() = 0;
    virtual void saveProject() = 0;
    virtual void generateOutput() = 0;
    virtual void hideHelp() = 0;
};

/**
 * The actions of a batch call (import, merge, modify, save, generate).
 *
 * Their order is fixed by the table of steps and not by the command line; a step runs only when its
 * option is present. A file that cannot be used is at most a line in the log: nothing here makes the
 * run fail, and "-g" ends it with exit code 0. After a termination signal no further step begins.
 */
class CommandLineActions
{
public:
    /** Command line and target must outlive the run. */
    CommandLineActions(const CommandLine &commandLine, const QSharedPointer<ObjectDataBase> &project,
                       CommandLineTarget &target);

    void run();
    /** The options in the order of their steps; an empty text stands for a step that always runs. */
    static QStringList stepOptions();

private:
    struct Step;
    static const QList<Step> &steps();

    void setNormalCursor();
    void importDescription();
    void mergeParameterGroups();
    void applyImportCommands();
    void applyModifier();
    void enterNetworkToolMode();
    void save();
    void generateAndQuit();
    void hideHelp();

    void copyParameterGroups(ObjectDataBase &source);

    const CommandLine &m_commandLine;
    QSharedPointer<ObjectDataBase> m_project;
    CommandLineTarget &m_target;
    QString m_mergeMode; ///< "-o": accepted beside "-j"; there is one way of merging only
};
