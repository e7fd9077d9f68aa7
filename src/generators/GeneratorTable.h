#pragma once

#include "generators/GeneratorFactories.h"
#include "generators/RunFacts.h"

#include <span>

/** What a row of the table does once, or for each line of a kind in ascending order. */
enum class RowTask {
    Generate,
    GenerateEdsVariants, ///< one description per variant that the objects of the line name
    RemoveFiles, ///< left by an earlier run with other settings
    WriteDefineProps,
    WriteCppOutput,
};

enum class RowPass { Once, EveryLine, CANopenLines, J1939Lines, RawCanLines };

/**
 * One row: what has to be written under which condition, and what the user is told. In the texts %1 is
 * the output folder; %2 is the EDS variant where something has started and the project name where it
 * cannot be written.
 */
struct GeneratorRow
{
    const char *step;
    bool (*applies)(const RunFacts &facts);
    RowPass pass = RowPass::Once;
    RowTask task = RowTask::Generate;
    GeneratorKind kind = GeneratorKind::Define;
    const char *started = "";
    const char *notWritable = "";
    const char *mixedLineSuffix = ""; ///< file suffix on lines of two protocols
    bool forJ1939SdoServer = false;
    bool endsRunOnFailure = false;
    std::span<const char *const> files = {}; ///< of RemoveFiles

    bool includes(int lineType) const;
};

/**
 * The order of a generation run. Consecutive rows of one step that work on lines share one pass: all of
 * them serve a line before the next line has its turn.
 */
std::span<const GeneratorRow> generatorTable();
