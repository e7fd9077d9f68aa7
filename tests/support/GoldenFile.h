#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QString>

/**
 * Comparison of generated text with a file under tests/golden.
 *
 *     const QString difference = GoldenFile::difference("new-database/schema.sql", text);
 *     QVERIFY2(difference.isEmpty(), qPrintable(difference));
 *
 * With the environment variable NODESMITH_UPDATE_GOLDEN set the file is rewritten instead.
 */
namespace GoldenFile {

inline QString path(const QString &name)
{
    return QStringLiteral(NODESMITH_TEST_GOLDEN "/") + name;
}

inline QString write(const QString &name, const QByteArray &text)
{
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text) == text.size())
        return {};
    return QStringLiteral("cannot write %1: %2").arg(file.fileName(), file.errorString());
}

/** The first line that differs, with its number and both texts. */
inline QString firstDifference(const QString &name, const QByteArray &expected, const QByteArray &actual)
{
    const QList<QByteArray> expectedLines = expected.split('\n');
    const QList<QByteArray> actualLines = actual.split('\n');
    qsizetype line = 0;
    while (line < expectedLines.size() && line < actualLines.size()
           && expectedLines.at(line) == actualLines.at(line))
        ++line;
    const auto shown = [line](const QList<QByteArray> &lines) {
        return line < lines.size() ? QString::fromUtf8(lines.at(line)) : QStringLiteral("<end of text>");
    };
    return QStringLiteral("%1:%2\n  golden: %3\n  actual: %4\nNODESMITH_UPDATE_GOLDEN=1 rewrites the file")
        .arg(name)
        .arg(line + 1)
        .arg(shown(expectedLines), shown(actualLines));
}

/** Empty when the text equals the golden file byte by byte, otherwise a message for the test. */
inline QString difference(const QString &name, const QByteArray &actual)
{
    if (qEnvironmentVariableIsSet("NODESMITH_UPDATE_GOLDEN"))
        return write(name, actual);
    QFile file(path(name));
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("cannot read %1: %2").arg(file.fileName(), file.errorString());
    const QByteArray expected = file.readAll();
    return expected == actual ? QString() : firstDifference(name, expected, actual);
}

} // namespace GoldenFile
