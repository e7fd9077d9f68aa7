#pragma once

#include "generators/GeneratorFactories.h"
#include "generators/RunFacts.h"
#include "generators/canopen/GenDefineGenerator.h"
#include "store/StoreTest.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSharedPointer>
#include <QTemporaryDir>

#include <memory>

/** A sub-index of a test's object. */
struct DefineSub
{
    quint8 number = 0;
    QString value;
    int datatype = 7;
    int implementation = 0;
    QString access = QStringLiteral("ro");
    bool isStored = false;
    bool isShared = false;
};

/** A project, an output folder and the generator of gen_define.h. */
class DefineDesk
{
public:
    /** Lines 0, 1, ... of these types. */
    explicit DefineDesk(const QList<int> &lineTypes = {1})
    {
        qputenv("SOURCE_DATE_EPOCH", "1700000000");
        set(QStringLiteral("new_init_structure"), QStringLiteral("1")); // as in every opened project
        for (int line = 0; line < lineTypes.size(); ++line)
            addLine(quint8(line), lineTypes.at(line));
    }

    void addLine(quint8 line, int type)
    {
        if (!store->nodeExists(line))
            store->addNode(line, {});
        set(QStringLiteral("line%1type").arg(line), QString::number(type));
    }
    void set(const QString &key, const QString &value) { store->setGeneralSetting(key, value); }
    void setJ1939(const QString &key, const QString &value) { store->setJ1939Setting(key, value); }
    void setEnergyBus(const QString &key, const QString &value) { store->setEnergyBusSetting(key, value); }

    /** An object with these sub-indices. */
    void object(quint8 line, quint16 index, const QList<DefineSub> &subs = {{}})
    {
        store->addIndex(line, index, StoreTest::sampleIndex());
        for (const DefineSub &sub : subs) {
            ObjectDataBase::SUBINDEX_DATA_T data;
            data.name = QStringLiteral("entry %1").arg(sub.number);
            data.datatype = sub.datatype;
            data.accesstype = sub.access;
            data.defaultvalue = sub.value;
            data.implementation = sub.implementation;
            data.nvstorage = sub.isStored;
            data.sharedlines = sub.isShared;
            store->addSubIndex(line, index, sub.number, data);
        }
    }
    /** An object with sub-index 0 and so many entries. */
    void array(quint8 line, quint16 index, int entries, const QString &value = QStringLiteral("0"))
    {
        QList<DefineSub> subs{{.number = 0, .value = QString::number(entries)}};
        for (int i = 1; i <= entries; ++i)
            subs.append({.number = quint8(i), .value = value});
        object(line, index, subs);
    }
    /** Objects one behind the other, with sub-index 0 only. */
    void objects(quint8 line, quint16 first, int count)
    {
        for (int i = 0; i < count; ++i)
            object(line, quint16(first + i));
    }

    QString path() const { return folder.filePath(QStringLiteral("gen_define.h")); }
    void write(const QByteArray &content) const
    {
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path()));
    }
    QByteArray read() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }

    /** A generator for the project, as a run makes it. */
    std::unique_ptr<AbstractGenerator> generator(bool v4 = true)
    {
        const RunFacts facts = RunFacts::read(*store);
        auto made = makeDefineGenerator({.kind = GeneratorKind::Define,
                                         .core = v4,
                                         .lines = facts.lines,
                                         .hasJ1939 = facts.hasJ1939,
                                         .multiProtocol = facts.isMultiProtocol()});
        made->setMultiLine(facts.multiLine);
        made->setDatabase(store.get());
        made->setOutputDir(folder.path());
        made->setProjectName(QStringLiteral("pump"));
        return made;
    }
    /** Runs a generator to its end; its error, empty if it has none. */
    static QString run(AbstractGenerator &generator)
    {
        if (generator.startGeneration() != GeneratorStatus::Success)
            return QStringLiteral("not started");
        generator.waitForEnd();
        return generator.errorString();
    }
    /** The file of the project. */
    QByteArray generate(bool v4 = true)
    {
        const auto made = generator(v4);
        if (const QString error = run(*made); !error.isEmpty())
            return "failed: " + error.toUtf8();
        return read();
    }
    QString text(bool v4 = true) { return QString::fromUtf8(generate(v4)); }
    /** The lines of the file. */
    QStringList lines(bool v4 = true) { return text(v4).split(u'\n'); }
    /** The define of a macro as it stands, separator included; empty where there is none. */
    QString define(const QString &macro, bool v4 = true)
    {
        const QString begin = QStringLiteral("#define ") + macro;
        const QStringList all = lines(v4);
        for (const QString &line : all)
            if (line.startsWith(begin) && !line.mid(begin.size(), 1).contains(nameCharacter))
                return line;
        return {};
    }
    /** What stands behind the name of a macro, without blanks around it. */
    QString value(const QString &macro, bool v4 = true)
    {
        return define(macro, v4).mid(QStringLiteral("#define ").size() + macro.size()).trimmed();
    }

    QSharedPointer<ObjectDataBase> store = QSharedPointer<StoreTest::NewStore>::create();
    QTemporaryDir folder{QDir::temp().filePath(QStringLiteral("define-XXXXXX"))};

private:
    inline static const QRegularExpression nameCharacter{QStringLiteral("[A-Za-z0-9_]")};
};
