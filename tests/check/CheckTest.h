#pragma once

#include "check/CheckProject.h"
#include "check/ModelChecker.h"

#include <QTest>

#include <functional>
#include <initializer_list>

namespace CheckTest {

/** What one check told. */
struct Outcome
{
    QStringList messages;
    QList<ProjectLocation> locations; ///< one for each message
    int errors = 0;
    bool changed = false;

    /** Puts what a further check told behind it. */
    Outcome &operator+=(const Outcome &other);
};

/** One checker, as one generation run has it, with what it tells. */
class Checker
{
public:
    Checker();
    Outcome checkProject(const Project &project, const QString &folder = QString());
    Outcome checkCANopen(const Project &project);
    Outcome checkJ1939(const Project &project);
    Outcome checkRawCan(const Project &project);
    /** The whole check: the project, then each line by its type. */
    Outcome checkAll(Project &project);

private:
    ModelChecker m_checker;
    Outcome m_outcome;
};

/** Spoils a valid project, or changes it without harm. */
using Change = std::function<void(Project &)>;

/** One line of a table of tests: the messages are all that the check tells, in their order. */
struct Row
{
    QByteArray name;
    Change change;
    QStringList messages;
};

/** Makes the rows of a data function; every table also has the untouched valid project, which is silent. */
void addRows(const QList<Row> &rows);
/** Check the valid project of the kind with the change of the row, and compare. */
void checkCANopenRow();
void checkJ1939Row();
void checkRawCanRow();
void checkProjectRow(int lineType = CANopenLine);

/** Compares texts, the count of errors that they stand for, and the mark of corrections. */
void compare(const Outcome &outcome, const QStringList &messages);
/** What a list of messages counts: failed conversions twice, dynamic mapping without granularity not. */
int countedErrors(const QStringList &messages);

/** Names the edition and gives the user's settings a place of their own. */
void prepareApplication();
/** The user's choice that the check corrects nothing. */
void disableCorrections(bool disabled = true);

/** The CAN-ID or PGN groups that the stack handles by itself, as a generation run names them. */
const QList<quint32> &reservedPgns();

namespace Texts {

inline QString operator""_error(const char *text, std::size_t size)
{
    return QStringLiteral("<strong>Error: </strong>") + QString::fromUtf8(text, qsizetype(size));
}
inline QString operator""_red(const char *text, std::size_t size)
{
    return QStringLiteral("<strong><font color='red'>Error: </font></strong>")
        + QString::fromUtf8(text, qsizetype(size));
}
inline QString operator""_warning(const char *text, std::size_t size)
{
    return QStringLiteral("Warning: ") + QString::fromUtf8(text, qsizetype(size));
}
inline QString operator""_strong(const char *text, std::size_t size)
{
    return QStringLiteral("<strong>Warning: </strong>") + QString::fromUtf8(text, qsizetype(size));
}
inline QString operator""_hint(const char *text, std::size_t size)
{
    return QStringLiteral("<strong>Hint: </strong>") + QString::fromUtf8(text, qsizetype(size));
}
inline QString operator""_corrected(const char *text, std::size_t size)
{
    return QStringLiteral("<i>Corrected: ") + QString::fromUtf8(text, qsizetype(size));
}

} // namespace Texts

} // namespace CheckTest

Q_DECLARE_METATYPE(CheckTest::Change)
