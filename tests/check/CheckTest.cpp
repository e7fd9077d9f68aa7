#include "check/CheckTest.h"

#include <QCoreApplication>
#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace CheckTest {

namespace {

constexpr auto settingsName = "NodeSmith check test"_L1;

} // namespace

Outcome &Outcome::operator+=(const Outcome &other)
{
    messages += other.messages;
    locations += other.locations;
    errors += other.errors;
    changed = changed || other.changed;
    return *this;
}

Checker::Checker()
{
    QObject::connect(&m_checker, &ModelChecker::newError, &m_checker, [this](const QString &text) {
        m_outcome.messages.append(text);
        m_outcome.locations.append(m_checker.location());
    });
}

Outcome Checker::checkProject(const Project &project, const QString &folder)
{
    m_outcome = {};
    m_outcome.errors = m_checker.checkProject(project.store, folder);
    return m_outcome;
}

Outcome Checker::checkCANopen(const Project &project)
{
    m_outcome = {};
    bool changed = false;
    m_outcome.errors = m_checker.checkCANopenLine(project.line, project.store, &changed);
    m_outcome.changed = changed;
    return m_outcome;
}

Outcome Checker::checkJ1939(const Project &project)
{
    m_outcome = {};
    m_outcome.errors = m_checker.checkJ1939Line(int(project.store->getLines().size()), project.line,
                                                project.store, reservedPgns());
    return m_outcome;
}

Outcome Checker::checkRawCan(const Project &project)
{
    m_outcome = {};
    m_outcome.errors = m_checker.checkRawCanLine(project.line, project.store);
    return m_outcome;
}

Outcome Checker::checkAll(Project &project)
{
    Outcome all = checkProject(project);
    const QList<quint8> lines = project.store->getLines();
    for (const quint8 line : lines) {
        project.line = line;
        const int type = project.store->getGeneralSetting(u"line%1type"_s.arg(line)).toInt();
        if (type == CANopenLine || type == CANopenAndJ1939 || type == CANopenAndRawCan)
            all += checkCANopen(project);
        if (type == J1939Line || type == CANopenAndJ1939 || type == J1939AndRawCan)
            all += checkJ1939(project);
        if (type == RawCanLine || type == CANopenAndRawCan || type == J1939AndRawCan)
            all += checkRawCan(project);
    }
    return all;
}

void addRows(const QList<Row> &rows)
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("(valid project)") << Change([](Project &) {}) << QStringList();
    for (const Row &row : rows)
        QTest::newRow(row.name.constData()) << row.change << row.messages;
}

namespace {

template <typename Check>
void checkRow(int lineType, Check check)
{
    QFETCH(Change, change);
    QFETCH(QStringList, messages);
    Project project(lineType);
    change(project);
    Checker checker;
    compare(check(checker, project), messages);
}

} // namespace

void checkCANopenRow()
{
    checkRow(CANopenLine,
             [](Checker &checker, const Project &project) { return checker.checkCANopen(project); });
}

void checkJ1939Row()
{
    checkRow(J1939Line, [](Checker &checker, const Project &project) { return checker.checkJ1939(project); });
}

void checkRawCanRow()
{
    checkRow(RawCanLine,
             [](Checker &checker, const Project &project) { return checker.checkRawCan(project); });
}

void checkProjectRow(int lineType)
{
    checkRow(lineType,
             [](Checker &checker, const Project &project) { return checker.checkProject(project); });
}

int countedErrors(const QStringList &messages)
{
    int count = 0;
    for (const QString &message : messages) {
        const bool isError = message.startsWith("<strong>Error: </strong>"_L1)
            || message.startsWith("<strong><font color='red'>Error: </font></strong>"_L1);
        if (message.startsWith("<strong>Error: </strong>Value conversion failed"_L1))
            count += 2;
        else if (isError && !message.contains("Dynamic mapping cannot be used"_L1))
            ++count;
    }
    return count;
}

void compare(const Outcome &outcome, const QStringList &messages)
{
    QCOMPARE(outcome.messages.join(u'\n'), messages.join(u'\n'));
    QCOMPARE(outcome.messages.size(), messages.size());
    QCOMPARE(outcome.errors, countedErrors(messages));
    const bool isCorrected = std::any_of(messages.begin(), messages.end(), [](const QString &message) {
        return message.startsWith("<i>Corrected: "_L1);
    });
    QCOMPARE(outcome.changed, isCorrected);
}

void prepareApplication()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
    QCoreApplication::setApplicationVersion(u"4.3.2"_s);
    qApp->setProperty("AppNameWithVersion", settingsName);
    QSettings(u"korvel"_s, settingsName).clear();
}

void disableCorrections(bool disabled)
{
    QSettings settings(u"korvel"_s, settingsName);
    settings.setValue(u"General/disableautocorrection"_s, disabled);
}

const QList<quint32> &reservedPgns()
{
    static const QList<quint32> numbers{59904, 60928, 60416, 60160, 59392, 3584, 65240, 9472};
    return numbers;
}

} // namespace CheckTest
