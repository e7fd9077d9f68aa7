#include "check/ModelChecker.h"

#include "check/CheckFindings.h"
#include "check/LineCheck.h"
#include "check/LineRules.h"
#include "check/ProjectRules.h"
#include "store/ObjectDataBase.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView projectReplaced{
    "<strong>Error: </strong>The project was closed or replaced while it was checked."};

// A value that does not read counts here and once more in the sum, as build logs have always shown it.
void checkValueConversionsTwice(LineCheck &check)
{
    const int before = check.findings.errors();
    checkValueConversions(check);
    check.findings.addErrors(check.findings.errors() - before);
}

using LineRule = void (*)(LineCheck &);

/** In the order of the console. */
constexpr LineRule canopenRules[] = {
    checkValueConversionsTwice,
    checkStackVersion,
    checkLineSettings,
    checkMandatoryObjects,
    checkGaps,
    checkSyncUsdoAndStore,
    checkIdentity,
    checkObjects,
    checkPdoMapping,
    checkPdoCommunication,
    checkEventTimers,
    checkSrdo,
    checkMappingGranularity,
    checkPdoCallbacks,
    checkEmcyRouting,
    checkPredefinedConnectionSet,
    checkVariableNames,
};

} // namespace

/** What lasts from one line to the next. */
struct ModelChecker::Private
{
    CheckFindings newFindings(ModelChecker &checker)
    {
        return CheckFindings([this, &checker](const QString &text, const ProjectLocation &where) {
            location = where;
            Q_EMIT checker.newError(text);
        });
    }

    QSharedPointer<ObjectDataBase> database; ///< held: rules serve events, in which its owner may let go
    QString projectPath;
    bool emcyRoutingReported = false;
    ProjectLocation location;
};

ModelChecker::ModelChecker() : d(std::make_unique<Private>()) { }

ModelChecker::~ModelChecker() = default;

const ProjectLocation &ModelChecker::location() const
{
    return d->location;
}

int ModelChecker::checkProject(const QSharedPointer<ObjectDataBase> &database, const QString &projectFolder)
{
    d->projectPath = projectFolder;
    CheckFindings findings = d->newFindings(*this);
    checkUds(*database, findings);
    hintAtStackFiles(*database, findings);
    checkProjectSettings(*database, findings, countLines(*database));
    checkNumericSettings(*database, findings);
    return findings.errors();
}

int ModelChecker::checkCANopenLine(quint8 line, const QSharedPointer<ObjectDataBase> &database, bool *changed)
{
    d->database = database;
    CheckFindings findings = d->newFindings(*this);
    LineCheck check(line, *d->database, findings, d->emcyRoutingReported);
    check.projectPath = d->projectPath;
    for (const LineRule rule : canopenRules)
        if (check.isCurrent())
            rule(check);
    if (!check.isCurrent())
        findings.error(projectReplaced);
    if (changed && findings.hasChanged())
        *changed = true;
    return findings.errors();
}

int ModelChecker::checkJ1939Line(int /*lineCount*/, quint8 line,
                                 const QSharedPointer<ObjectDataBase> &database,
                                 const QList<quint32> &reservedPgns)
{
    CheckFindings findings = d->newFindings(*this);
    checkJ1939Settings(*database, findings, line);
    checkParameterGroups(*database, findings, line, reservedPgns);
    return findings.errors();
}

int ModelChecker::checkRawCanLine(quint8 line, const QSharedPointer<ObjectDataBase> &database)
{
    CheckFindings findings = d->newFindings(*this);
    checkRawCanMessages(*database, findings, line);
    return findings.errors();
}
