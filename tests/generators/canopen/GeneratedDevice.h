#pragma once

#include "generators/RunDesk.h"
#include "support/CCompiler.h"

#include <QStringList>

#include <optional>

/** The application around generated code, as its developer would write it: variables and start of the stack.
 */
namespace TestApplication {

/** Number that the application gives a variable, small enough for every type; the same for the same name. */
int valueOf(const QString &variable);
/** Bytes of a text of the application, without a default value from the project. */
QByteArray textOf(const QString &variable, int size);
/** Its bytes when the stack has started, with the default value if the project asks for default values. */
QByteArray textAtStart(const QString &variable, const ObjectDataBase::SUBINDEX_DATA_T &sub,
                       bool hasStringDefaults);
/** The variable behind a name of the project: "PLACE(x)" and "ADDRESS(x)" are macros around "x". */
QString plainName(const QString &variable);

} // namespace TestApplication

/**
 * A project on its way through the public road: a generation run, an application around its sources, the C
 * compilers, and the program that results from it with the run-time of tests/stack.
 */
class GeneratedDevice
{
public:
    /** The run takes the project as it stands, and may correct it. */
    explicit GeneratedDevice(const QSharedPointer<ObjectDataBase> &store);

    /** Runs the generators, in spite of what the model check says if told to; its result. */
    RunDesk::Result generate(bool ignoreErrors = false);
    /**
     * Builds and runs with each compiler; the first thing that is not as the project says: messages of a
     * compiler, or two lines that differ. Empty when all is well.
     */
    QString firstFault(const QStringList &compilers = CCompiler::programs()) const;
    QString read(const QString &name) const { return QString::fromUtf8(m_desk.read(name)); }

private:
    QString build(const QString &compiler) const;
    QStringList run(const QString &compiler) const;
    void writeApplication() const;
    QByteArray mainProgram() const;
    QString start() const;
    QString load() const;
    /** Whether some line has the value of a setting. */
    bool hasForLine(const QString &key, const QString &value) const;
    QByteArray j1939Program() const;
    QByteArray variables() const;

    QSharedPointer<ObjectDataBase> m_store;
    RunDesk m_desk;
};
