#pragma once

#include "generators/GeneratorTable.h"

#include <QList>
#include <QPointer>
#include <QSharedPointer>
#include <QString>

class GeneratorMainHandler;
class ObjectDataBase;

/**
 * Goes through the table of a generation run once, one generator at a time.
 *
 * The target that cannot be written and the generator that fails are told and passed over; only a folder
 * that cannot be written any more, and a failure that the table says so of, end the run.
 */
class GeneratorRun
{
public:
    enum class End { Complete, FolderNotWritable, GeneratorFailed };

    struct Place
    {
        QSharedPointer<ObjectDataBase> store;
        QString outputDir;
        QString projectName;
    };

    /** The handler takes the messages and the progress of the generators. */
    GeneratorRun(GeneratorMainHandler &handler, const GeneratorFactories &factories, Place place,
                 RunFacts facts);

    End run();

    static bool isFolderWritable(const QString &path);

private:
    struct Job
    {
        GeneratorRequest request;
        const char *started;
        const char *notWritable;
        bool endsRunOnFailure;
    };

    void runPass(std::span<const GeneratorRow> rows);
    void runRow(const GeneratorRow &row, quint8 line);
    GeneratorRequest request(const GeneratorRow &row, quint8 line) const;
    void runEdsVariants(const GeneratorRow &row, quint8 line);
    void runJob(const Job &job);
    bool prepare(AbstractGenerator &generator, const Job &job);
    void drive(AbstractGenerator &generator, const Job &job);
    void tellResult(const AbstractGenerator &generator, const Job &job);
    void writeDefineProps(const GeneratorRow &row);
    /** False, with the run ended, where nothing can be written into the folder any more. */
    bool checkFolder();
    QString filled(const char *text, const QString &name) const;

    GeneratorMainHandler &m_handler;
    const GeneratorFactories &m_factories;
    const Place m_place;
    const RunFacts m_facts;
    End m_end = End::Complete;
};
