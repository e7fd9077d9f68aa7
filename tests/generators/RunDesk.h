#pragma once

#include "generators/FakeGenerator.h"
#include "generators/GeneratorMainHandler.h"
#include "generators/RecordingOutputHandler.h"
#include "store/StoreTest.h"

#include <QDir>
#include <QSettings>
#include <QSharedPointer>
#include <QTemporaryDir>

/** A project, its output folder and everything that a generation run is connected to. */
class RunDesk
{
public:
    using Result = GeneratorMainHandler::GeneratorResult;

    /** Lines 0, 1, ... of these types; a type of 0 stays unset. */
    explicit RunDesk(const QList<int> &lineTypes) : RunDesk(QSharedPointer<StoreTest::NewStore>::create())
    {
        for (int line = 0; line < lineTypes.size(); ++line)
            addLine(quint8(line), lineTypes[line]);
    }
    RunDesk(std::initializer_list<int> lineTypes) : RunDesk(QList<int>(lineTypes)) { }
    explicit RunDesk(const QSharedPointer<ObjectDataBase> &project) : store(project)
    {
        QSettings(QStringLiteral("korvel"), QCoreApplication::applicationName()).clear();
        handler.setFactories(fakes.factories());
        handler.setOutputHandler(&output);
        handler.setProgressHandler(&progress);
        handler.setProject(store, folder.path(), QStringLiteral("project"));
        QObject::connect(&handler, &GeneratorMainHandler::finished, &handler, [this](Result result) {
            results.append(result);
            output.all.append(QStringLiteral("finished"));
        });
    }

    void addLine(quint8 line, int type)
    {
        if (!store->nodeExists(line))
            store->addNode(line, {});
        if (type != 0)
            store->setGeneralSetting(QStringLiteral("line%1type").arg(line), QString::number(type));
    }
    void set(const QString &key, const QString &value) { store->setGeneralSetting(key, value); }
    void setJ1939(const QString &key, const QString &value) { store->setJ1939Setting(key, value); }
    void setMisc(const QString &key, const QString &value) { store->setMiscSetting(key, value); }
    static void setUser(const QString &key, const QVariant &value)
    {
        QSettings settings(QStringLiteral("korvel"), QCoreApplication::applicationName());
        settings.setValue(key, value);
    }

    /** Adds an object with one sub-index. */
    void object(quint8 line, quint16 index, int implementation = 0, const QString &edsDefine = {},
                const QString &subEdsDefine = {})
    {
        ObjectDataBase::INDEX_DATA_T object = StoreTest::sampleIndex();
        object.metadata = metadata(edsDefine);
        store->addIndex(line, index, object);
        ObjectDataBase::SUBINDEX_DATA_T sub = StoreTest::sampleSub();
        sub.implementation = implementation;
        sub.metadata = metadata(subEdsDefine);
        store->addSubIndex(line, index, 0, sub);
    }

    /** A run that goes on in spite of errors; its result. */
    Result run() { return runChecked(true); }
    Result runChecked(bool ignoreErrors = false)
    {
        handler.runGeneration(ignoreErrors);
        return results.last();
    }

    QString path(const QString &name) const { return folder.filePath(name); }
    bool exists(const QString &name) const { return QFile::exists(path(name)); }
    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(name));
    }
    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }
    /** Messages behind the model check, up to the end of the run. */
    QStringList messagesOfTheRun() const
    {
        return output.all.sliced(
            output.all.indexOf(QStringLiteral("\nCheck of model consistency finished.\n")) + 1);
    }

    QSharedPointer<ObjectDataBase> store;
    QTemporaryDir folder{QDir::temp().filePath(QStringLiteral("run-XXXXXX"))};
    FakeGenerators fakes;
    RecordingOutputHandler output;
    RecordingProgressHandler progress;
    GeneratorMainHandler handler;
    QList<Result> results;

private:
    static MetadataMap metadata(const QString &edsDefine)
    {
        return edsDefine.isEmpty() ? MetadataMap() : MetadataMap{{QStringLiteral("eds_define"), edsDefine}};
    }
};
