#pragma once

#include "generators/AbstractGenerator.h"

class CodeWriter;

/**
 * A generator whose work is one file in the output folder.
 *
 * What derives from it names the file and writes it: a view of the project and templates. This class opens
 * and closes the file, tells failures and frames the run. A generator with a second file writes that one
 * through a GeneratedFile of its own.
 */
class FileGenerator : public AbstractGenerator
{
    Q_OBJECT

public:
    bool isOutputWritable() override;
    GeneratorStatus startGeneration() override;
    GeneratorStatus requestStop() override;

public Q_SLOTS:
    void doJob() override;

protected:
    /** Name of the file in the output folder; it may depend on the project. */
    virtual QString fileName() const = 0;
    /** What the run is called in messages. */
    virtual QString jobName() const { return fileName(); }
    /**
     * Reads what the run needs, before the file is opened and the former one emptied. False, with fail()
     * called, ends the run without a file.
     */
    virtual bool prepare() { return true; }
    /** Writes the file. */
    virtual void write(CodeWriter &out) = 0;
};
