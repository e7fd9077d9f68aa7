#include "generators/GeneratorRun.h"

#include "generators/CppOutput.h"
#include "generators/DefineProps.h"
#include "generators/EdsVariants.h"
#include "generators/GeneratorMainHandler.h"
#include "generators/LineProtocols.h"
#include "generators/StaleFiles.h"
#include "store/ObjectDataBase.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *classicalEdsStarted = "Generation of %2 classical EDS file in %1 started";
constexpr const char *classicalEdsNotWritable = "The EDS file %2_classical.eds in %1 is not writable";

/** Rows that are gone through together: one row, or all rows of a step that work on lines. */
qsizetype passLength(std::span<const GeneratorRow> rows)
{
    const auto other = std::find_if(rows.begin(), rows.end(), [&](const GeneratorRow &row) {
        return qstrcmp(row.step, rows.front().step) != 0;
    });
    return rows.front().pass == RowPass::Once ? 1 : other - rows.begin();
}

} // namespace

GeneratorRun::GeneratorRun(GeneratorMainHandler &handler, const GeneratorFactories &factories, Place place,
                           RunFacts facts)
    : m_handler(handler), m_factories(factories), m_place(std::move(place)), m_facts(std::move(facts))
{
}

bool GeneratorRun::isFolderWritable(const QString &path)
{
    const QFileInfo info(path);
    return info.isDir() && info.isWritable();
}

GeneratorRun::End GeneratorRun::run()
{
    std::span<const GeneratorRow> rows = generatorTable();
    while (!rows.empty() && m_end == End::Complete) {
        const auto length = size_t(passLength(rows));
        runPass(rows.first(length));
        rows = rows.subspan(length);
    }
    if (m_end == End::Complete)
        checkFolder();
    return m_end;
}

void GeneratorRun::runPass(std::span<const GeneratorRow> rows)
{
    if (rows.front().pass == RowPass::Once) {
        runRow(rows.front(), 0);
        return;
    }
    for (const quint8 line : m_facts.lines) {
        for (const GeneratorRow &row : rows) {
            if (row.includes(m_facts.lineType(line)))
                runRow(row, line);
        }
    }
}

void GeneratorRun::runRow(const GeneratorRow &row, quint8 line)
{
    if (m_end != End::Complete || !row.applies(m_facts))
        return;
    switch (row.task) {
    case RowTask::Generate:
        runJob({request(row, line), row.started, row.notWritable, row.endsRunOnFailure});
        break;
    case RowTask::GenerateEdsVariants:
        runEdsVariants(row, line);
        break;
    case RowTask::RemoveFiles:
        removeStaleFiles(m_place.outputDir, row.files);
        break;
    case RowTask::WriteDefineProps:
        writeDefineProps(row);
        break;
    case RowTask::WriteCppOutput:
        writeCppOutput(m_place.outputDir);
        break;
    }
}

GeneratorRequest GeneratorRun::request(const GeneratorRow &row, quint8 line) const
{
    GeneratorRequest result{.kind = row.kind, .core = m_facts.core, .line = line, .lines = m_facts.lines};
    if (LineProtocols::isMixed(m_facts.lineType(line)) && row.pass != RowPass::Once)
        result.fileSuffix = QString::fromLatin1(row.mixedLineSuffix);
    if (row.kind == GeneratorKind::Indication)
        result.core = m_facts.core || m_facts.udsStaticIndication;
    result.forJ1939SdoServer = row.forJ1939SdoServer;
    result.compactArrays = m_facts.compactArrays && !row.forJ1939SdoServer;
    result.generateVirtualObjects = m_facts.generateVirtualObjects;
    result.staticSrdoData = m_facts.staticSrdoData;
    result.hasJ1939 = m_facts.hasJ1939;
    result.multiProtocol = m_facts.isMultiProtocol();
    result.disableDocu = m_facts.disableDocu;
    return result;
}

void GeneratorRun::runEdsVariants(const GeneratorRow &row, quint8 line)
{
    if (!m_factories.contains(row.kind))
        return;
    const QStringList variants = edsVariants(*m_place.store, line);
    for (const QString &variant : variants) {
        GeneratorRequest eds = request(row, line);
        eds.edsVariant = variant;
        eds.canFd = m_facts.canFd;
        runJob({eds, row.started, row.notWritable, false});
        if (!m_facts.canFd)
            continue;
        eds.canFd = false;
        eds.classical = true;
        runJob({eds, classicalEdsStarted, classicalEdsNotWritable, false});
    }
    if (variants.size() > 1 && m_end == End::Complete)
        m_handler.writeMessage(u"Warning: multiple different EDS files to be generated.\n"_s);
}

void GeneratorRun::runJob(const Job &job)
{
    if (m_end != End::Complete || !m_factories.contains(job.request.kind) || !checkFolder())
        return;
    const std::unique_ptr<AbstractGenerator> generator = m_factories.create(job.request);
    if (!generator || !prepare(*generator, job))
        return;
    if (generator->isOutputWritable())
        drive(*generator, job);
    else
        m_handler.writeMessage(filled(job.notWritable, m_place.projectName));
    QCoreApplication::processEvents();
}

bool GeneratorRun::prepare(AbstractGenerator &generator, const Job &job)
{
    generator.setMultiLine(m_facts.multiLine);
    generator.setDatabase(m_place.store.get());
    const GeneratorStatus folder = generator.setOutputDir(m_place.outputDir);
    generator.setProjectName(m_place.projectName);
    generator.setLine(job.request.line);
    generator.setFileSuffix(job.request.fileSuffix);
    return folder == GeneratorStatus::Success || checkFolder();
}

void GeneratorRun::drive(AbstractGenerator &generator, const Job &job)
{
    QObject::connect(&generator, &AbstractGenerator::progress, &m_handler,
                     &GeneratorMainHandler::generatorProgress);
    const GeneratorStatus status = generator.startGeneration();
    m_handler.writeMessage(filled(job.started, job.request.edsVariant));
    if (status == GeneratorStatus::Success)
        generator.waitForEnd();
    // The last progress is on its way at the latest now, and its sender will be gone.
    QCoreApplication::sendPostedEvents(&m_handler, QEvent::MetaCall);
    tellResult(generator, job);
}

void GeneratorRun::tellResult(const AbstractGenerator &generator, const Job &job)
{
    if (generator.isFailed()) {
        if (!job.endsRunOnFailure || !checkFolder())
            return;
        m_handler.writeMessage(generator.errorString());
        m_end = End::GeneratorFailed;
        return;
    }
    const auto *const keeper = dynamic_cast<const UserSectionKeeper *>(&generator);
    const QString section = keeper ? keeper->userSection().trimmed() : QString();
    if (!section.isEmpty())
        m_handler.writeMessage(QString("gen_define.h contains user section:\n"_L1 + section));
}

void GeneratorRun::writeDefineProps(const GeneratorRow &row)
{
    if (!checkFolder())
        return;
    const bool written = writeDefinePropsFiles(m_place.outputDir + "/gen_define.h"_L1, m_place.outputDir);
    m_handler.writeMessage(filled(written ? row.started : row.notWritable, {}));
}

bool GeneratorRun::checkFolder()
{
    if (m_end == End::Complete && !isFolderWritable(m_place.outputDir))
        m_end = End::FolderNotWritable;
    return m_end == End::Complete;
}

// Not QString::arg, which complains of a text that has no use for the second value.
QString GeneratorRun::filled(const char *text, const QString &name) const
{
    const QStringList parts = QString::fromLatin1(text).split(u'%');
    QString result = parts.first();
    for (const QString &part : parts.sliced(1))
        result += (part.startsWith(u'1') ? m_place.outputDir : name) + part.sliced(1);
    return result;
}
