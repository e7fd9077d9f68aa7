#pragma once

#include "generators/Dialect.h"

#include <QObject>
#include <QPointer>

class ObjectDataBase;

/**
 * The text blocks that more than one source generator writes, for both generations of the stack.
 *
 * It reads the project whenever it is asked; without a store it writes nothing.
 */
class GeneratorTextBlocks : public QObject
{
    Q_OBJECT

public:
    GeneratorTextBlocks(ObjectDataBase *database, const Dialect &dialect, QObject *parent);

    /** Appends the common initialisation structure of the stack, commonInitVars. */
    void commonInitBlock(QString &text) const;

    const Dialect &dialect() const { return m_dialect; }

private:
    QPointer<ObjectDataBase> m_database;
    const Dialect &m_dialect;
};

/** The blocks for the V4 stack. */
class CommonGeneratorHelperV4 : public GeneratorTextBlocks
{
    Q_OBJECT

public:
    explicit CommonGeneratorHelperV4(ObjectDataBase *database, QObject *parent = nullptr)
        : GeneratorTextBlocks(database, Dialect::v4(), parent)
    {
    }
};

/** The blocks for the older stack. */
class CommonGeneratorHelper : public GeneratorTextBlocks
{
    Q_OBJECT

public:
    explicit CommonGeneratorHelper(ObjectDataBase *database, QObject *parent = nullptr)
        : GeneratorTextBlocks(database, Dialect::older(), parent)
    {
    }
};
