#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

struct Outcome
{
    int exitCode = -1;
    QString output;
    QString errors;
};

Outcome runTool(const QStringList &arguments, const QString &home = {})
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!home.isEmpty()) {
        environment.insert(u"HOME"_s, home);
        environment.remove(u"XDG_DATA_HOME"_s);
        process.setProcessEnvironment(environment);
    }
    process.start(QStringLiteral(NODESMITH_TEMPLATE_TOOL), arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QString source(const QString &name)
{
    return QStringLiteral(NODESMITH_TEMPLATE_SOURCES) + u'/' + name;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TemplateToolTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void givesTheSameBytesForTheSameSources_data();
    void givesTheSameBytesForTheSameSources();
    void leavesNothingElseBehind();
    void buildsTheDatabaseBesideTheExecutables();
    void showsFindingsAndKeepsTheFormerDatabase();
    void tellsAnUnreadableSource();
    void tellsAnUnwritableTarget();
    void asksForSourcesAndTarget_data();
    void asksForSourcesAndTarget();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString makeSource(const QByteArray &text) const
    {
        QFile file(path(u"bad.txt"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write a source");
        return file.fileName();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TemplateToolTest::givesTheSameBytesForTheSameSources_data()
{
    QTest::addColumn<QStringList>("sources");
    QTest::newRow("mt") << QStringList{u"settings.txt"_s, u"mt.txt"_s};
    QTest::newRow("mtj1939") << QStringList{u"settings.txt"_s, u"mtj1939.txt"_s};
    QTest::newRow("objects") << QStringList{u"objects.txt"_s};
}

void TemplateToolTest::givesTheSameBytesForTheSameSources()
{
    QFETCH(QStringList, sources);
    for (QString &name : sources)
        name = source(name);
    QByteArray first;
    for (const QString &name : {u"a.data"_s, u"longer name.data"_s, u"a.data"_s}) {
        const Outcome outcome = runTool(QStringList{u"-o"_s, path(name)} + sources);
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(outcome.exitCode, 0);
        const QByteArray content = contentOf(path(name));
        QVERIFY(content.startsWith("SQLite format 3"));
        if (first.isEmpty())
            first = content;
        QVERIFY(content == first);
    }
}

void TemplateToolTest::leavesNothingElseBehind()
{
    const QString home = path(u"home"_s);
    QVERIFY(QDir().mkpath(home));
    const Outcome outcome = runTool({u"-o"_s, path(u"a.data"_s), source(u"objects.txt"_s)}, home);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, QString());
    QVERIFY(QDir(home).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"a.data"_s});
}

void TemplateToolTest::buildsTheDatabaseBesideTheExecutables()
{
    QCOMPARE(
        runTool({u"--output"_s, path(u"a.data"_s), source(u"settings.txt"_s), source(u"mt.txt"_s)}).exitCode,
        0);
    QVERIFY(contentOf(path(u"a.data"_s)) == contentOf(QStringLiteral(NODESMITH_BIN_DIR "/data/mt.data")));
}

void TemplateToolTest::showsFindingsAndKeepsTheFormerDatabase()
{
    const QString target = path(u"a.data"_s);
    QCOMPARE(runTool({u"-o"_s, target, source(u"objects.txt"_s)}).exitCode, 0);
    const QByteArray former = contentOf(target);
    const QString bad = makeSource("[Template]\nedition = X\n[Objects 0]\n"
                                   "0x2000 | VAR | WORD | A\n0x2001 | VAR | UNSIGNED8 | A\n");
    const Outcome outcome = runTool({u"-o"_s, target, bad});
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors, QString(bad + u":4:16: error: unknown data type \"WORD\"\n"_s));
    QVERIFY(contentOf(target) == former);
}

void TemplateToolTest::tellsAnUnreadableSource()
{
    const QString missing = path(u"none.txt"_s);
    const Outcome outcome = runTool({u"-o"_s, path(u"a.data"_s), missing});
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors, QString(missing + u": error: No such file or directory\n"_s));
    QVERIFY(!QFile::exists(path(u"a.data"_s)));
}

void TemplateToolTest::tellsAnUnwritableTarget()
{
    const QString target = path(u"none/a.data"_s);
    const Outcome outcome = runTool({u"-o"_s, target, source(u"objects.txt"_s)});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.startsWith(target + u": error: "_s), qPrintable(outcome.errors));
}

void TemplateToolTest::asksForSourcesAndTarget_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("nothing") << QStringList{};
    QTest::newRow("no target") << QStringList{source(u"mt.txt"_s)};
    QTest::newRow("no source") << QStringList{u"-o"_s, u"a.data"_s};
}

void TemplateToolTest::asksForSourcesAndTarget()
{
    QFETCH(QStringList, arguments);
    const Outcome outcome = runTool(arguments);
    QCOMPARE(outcome.exitCode, 2);
    QVERIFY2(outcome.errors.startsWith(u"Usage: "_s), qPrintable(outcome.errors));
}

QTEST_GUILESS_MAIN(TemplateToolTest)
#include "tst_templatetool.moc"
