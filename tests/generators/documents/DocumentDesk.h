#pragma once

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "generators/GeneratorFactories.h"
#include "generators/documents/DocumentGenerators.h"
#include "store/StoreTest.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/** A project in memory and the documents that come out of it. */
class DocumentDesk
{
public:
    using Sub = ObjectDataBase::SUBINDEX_DATA_T;

    DocumentDesk() : folder(QDir::temp().filePath(QStringLiteral("documents-XXXXXX")))
    {
        addDocumentGenerators(m_factories);
    }

    /** Adds an object with its first sub-indices. */
    void object(quint16 index, const ObjectDataBase::INDEX_DATA_T &data, const QList<Sub> &subs,
                quint8 line = 0)
    {
        require(store.addIndex(line, index, data));
        for (int number = 0; number < subs.size(); ++number)
            require(store.addSubIndex(line, index, quint8(number), subs.at(number)));
    }
    /** Adds an object of one value. */
    void variable(quint16 index, const Sub &sub, const QString &name = QStringLiteral("Value"))
    {
        object(index, {.name = name, .datatype = sub.datatype, .objecttype = CANopen::Var}, {sub});
    }
    void describe(const QString &key, const QString &value, quint8 line = 0)
    {
        store.setDescriptionLine(line);
        require(store.setDescriptionSetting(key, value));
        store.setDescriptionLine(0);
    }

    std::unique_ptr<AbstractGenerator> generator(const GeneratorRequest &request)
    {
        std::unique_ptr<AbstractGenerator> made = m_factories.create(request);
        made->setDatabase(&store);
        made->setOutputDir(folder.path());
        made->setProjectName(projectName);
        made->setMultiLine(store.getLines().size() > 1);
        made->setFileSuffix(request.fileSuffix);
        require(made->setLine(request.line) == GeneratorStatus::Success);
        return made;
    }
    /** Runs a generator; the text of the file of that name. */
    QString generate(const GeneratorRequest &request, const QString &fileName)
    {
        const auto made = generator(request);
        require(made->startGeneration() == GeneratorStatus::Success);
        made->waitForEnd();
        error = made->errorString();
        return read(fileName);
    }
    QString text() { return generate({.kind = GeneratorKind::TextDoc}, QStringLiteral("Pump_doc.txt")); }
    QString html() { return generate({.kind = GeneratorKind::Html}, QStringLiteral("Pump.html")); }
    QString csv() { return generate({.kind = GeneratorKind::Csv}, QStringLiteral("Pump.csv")); }
    QString icsv(bool disableDocu = false)
    {
        return generate({.kind = GeneratorKind::Icsv, .disableDocu = disableDocu},
                        QStringLiteral("Pump.icsv"));
    }
    QString read(const QString &name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QStringLiteral("no file");
    }

    StoreTest::NewStore store;
    QTemporaryDir folder;
    QString projectName = QStringLiteral("Pump");
    QString error; ///< of the last run

private:
    static void require(bool done)
    {
        if (!done)
            qFatal("the project could not be made");
    }

    GeneratorFactories m_factories;
};
