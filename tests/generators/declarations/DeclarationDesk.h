#pragma once

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "generators/GeneratorFactories.h"
#include "generators/RunFacts.h"
#include "generators/declarations/DeclarationGenerators.h"
#include "store/StoreTest.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/** A project in memory and the headers that come out of it. */
class DeclarationDesk
{
public:
    using Sub = ObjectDataBase::SUBINDEX_DATA_T;

    /** Lines 0, 1, ... of these types. */
    explicit DeclarationDesk(const QList<int> &lineTypes = {1})
        : folder(QDir::temp().filePath(QStringLiteral("declarations-XXXXXX")))
    {
        addDeclarationGenerators(m_factories);
        for (int line = 0; line < lineTypes.size(); ++line)
            addLine(quint8(line), lineTypes.at(line));
    }

    void addLine(quint8 line, int type)
    {
        if (!store.nodeExists(line))
            require(store.addNode(line, {}));
        require(store.setGeneralSetting(QStringLiteral("line%1type").arg(line), QString::number(type)));
    }
    /** Adds an object with its first sub-indices. */
    void object(quint16 index, const QString &name, const QList<Sub> &subs = {}, quint8 line = 0,
                const MetadataMap &metadata = {})
    {
        require(
            store.addIndex(line, index, {.name = name, .objecttype = CANopen::Record, .metadata = metadata}));
        for (int number = 0; number < subs.size(); ++number)
            require(store.addSubIndex(line, index, quint8(number), subs.at(number)));
    }
    /** Adds an object of one application variable. */
    void applicationVariable(quint16 index, const QString &name, int dataType, int size = 0, quint8 line = 0)
    {
        object(index, name,
               {{.datatype = dataType,
                 .size = size,
                 .implementation = CANopen::ApplicationVariable,
                 .varname = name}},
               line);
    }
    void group(quint32 number, const QString &name, int direction = ObjectDataBase::Receive, quint8 line = 0,
               int sources = 0)
    {
        ObjectDataBase::PGN pgn = StoreTest::samplePgn(direction, name);
        pgn.multisourceaddress = sources;
        require(store.addPGN(line, number, pgn));
    }
    void spn(quint32 pgn, quint32 number, const ObjectDataBase::SPN &signal,
             int direction = ObjectDataBase::Receive, quint8 line = 0)
    {
        require(store.addSPN(line, pgn, quint8(direction), number, signal));
    }
    void message(quint32 id, int direction = ObjectDataBase::Receive, quint8 line = 0)
    {
        require(store.addCANID(line, id, StoreTest::sampleCanId(direction)));
    }
    void element(quint32 id, quint32 number, const ObjectDataBase::DataElement &signal,
                 int direction = ObjectDataBase::Receive, quint8 line = 0)
    {
        require(store.addDataElement(line, id, quint8(direction), number, signal));
    }
    void forceMultiLine()
    {
        require(store.setMiscSetting(QStringLiteral("generateML"), QStringLiteral("true")));
    }

    std::unique_ptr<AbstractGenerator> generator(GeneratorKind kind, bool core = true)
    {
        const QList<quint8> lines = RunFacts::projectLines(store);
        std::unique_ptr<AbstractGenerator> made =
            m_factories.create({.kind = kind, .core = core, .lines = lines});
        made->setDatabase(&store);
        made->setOutputDir(folder.path());
        made->setProjectName(QStringLiteral("Pump"));
        made->setMultiLine(lines.size() > 1);
        return made;
    }
    void generate(GeneratorKind kind, bool core = true)
    {
        const auto made = generator(kind, core);
        require(made->startGeneration() == GeneratorStatus::Success);
        made->waitForEnd();
        error = made->errorString();
    }
    QString indices()
    {
        generate(GeneratorKind::Indices);
        return read(QStringLiteral("gen_indices.h"));
    }
    /** The defines of gen_indices.h but the last, each with one blank before its value. */
    QStringList defines()
    {
        QStringList result;
        const QStringList lines = indices().split(u'\n');
        for (const QString &line : lines)
            if (line.startsWith(QStringLiteral("#define ")) && line.contains(u'\t'))
                result.append(line.sliced(8).simplified());
        result.removeLast();
        return result;
    }
    /** The text of gen_extern_decl.h. */
    QString declarations(bool core = true)
    {
        generate(GeneratorKind::ExtDecl, core);
        return read(QStringLiteral("gen_extern_decl.h"));
    }
    /** The declarations of gen_extern_decl.h, without the comment behind them. */
    QStringList declared()
    {
        QStringList result;
        const QStringList lines = declarations().split(u'\n');
        for (const QString &line : lines)
            if (line.startsWith(QStringLiteral("extern ")))
                result.append(line.section(u';', 0, 0).sliced(7));
        return result;
    }
    QString read(const QString &name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QStringLiteral("no file");
    }

    StoreTest::NewStore store;
    QTemporaryDir folder;
    QString error; ///< of the last run

private:
    static void require(bool done)
    {
        if (!done)
            qFatal("the project could not be made");
    }

    GeneratorFactories m_factories;
};

/** A J1939 signal of the application. */
inline ObjectDataBase::SPN applicationSpn(const QString &variable, int dataType, int bits = 0)
{
    return {.datatype = dataType,
            .implementation = CANopen::ApplicationVariable,
            .varname = variable,
            .name = variable,
            .bitsize = bits};
}

/** A raw CAN signal of the application. */
inline ObjectDataBase::DataElement applicationElement(const QString &variable, int dataType, int bits = 0)
{
    return {.datatype = dataType,
            .implementation = CANopen::ApplicationVariable,
            .varname = variable,
            .name = variable,
            .bitsize = bits};
}
