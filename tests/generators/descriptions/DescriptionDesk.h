#pragma once

#include "canopen/CANopenTypes.h"
#include "canopen/COHelper.h"
#include "generators/GeneratorFactories.h"
#include "generators/RunFacts.h"
#include "generators/descriptions/DescriptionGenerators.h"
#include "store/StoreTest.h"

#include <QDir>
#include <QFile>
#include <QSharedPointer>
#include <QTemporaryDir>

#include <memory>

/** A project, an output folder and the generators of device descriptions. */
class DescriptionDesk
{
public:
    using Object = ObjectDataBase::INDEX_DATA_T;
    using Sub = ObjectDataBase::SUBINDEX_DATA_T;

    /** Lines 0, 1, ... of these types. */
    explicit DescriptionDesk(const QList<int> &lineTypes = {1})
    {
        qputenv("SOURCE_DATE_EPOCH", "1700000000");
        for (int line = 0; line < lineTypes.size(); ++line) {
            store->addNode(quint8(line), {});
            store->setGeneralSetting(QStringLiteral("line%1type").arg(line),
                                     QString::number(lineTypes.at(line)));
        }
        store->setDescriptionLine(0);
        addDescriptionGenerators(factories);
    }

    void describe(const QString &key, const QString &value, quint8 line = 0)
    {
        store->setDescriptionLine(line);
        store->setDescriptionSetting(key, value);
        store->setDescriptionLine(0);
    }

    static Sub sub(const QString &name, int dataType, const QString &value = {},
                   const QString &access = QStringLiteral("rw"))
    {
        Sub data;
        data.name = name;
        data.datatype = dataType;
        data.accesstype = access;
        data.defaultvalue = value;
        data.defaultineds = !value.isEmpty();
        data.writedefaulttoeds = data.defaultineds ? 1 : 0;
        COHelper::getDefaultLimits(CAN::CANopenDataType(dataType), data.lowlimit, data.uplimit);
        return data;
    }
    void object(quint16 index, const QString &name, int code, const QMap<quint8, Sub> &subs,
                const QString &description = {}, quint8 line = 0)
    {
        Object data;
        data.name = name;
        data.objecttype = code;
        data.description = description;
        if (code == CANopen::Var && subs.contains(0))
            data.datatype = subs.value(0).datatype;
        store->addIndex(line, index, data);
        for (auto entry = subs.begin(); entry != subs.end(); ++entry)
            store->addSubIndex(line, index, entry.key(), entry.value());
    }
    /** A VAR with this value. */
    void var(quint16 index, const Sub &value, quint8 line = 0)
    {
        object(index, value.name, 7, {{0, value}}, {}, line);
    }
    /** The three objects that every CANopen device has. */
    void mandatoryObjects(quint8 line = 0)
    {
        var(0x1000, sub(QStringLiteral("Device Type"), 7, QStringLiteral("0x00030191"), QStringLiteral("ro")),
            line);
        var(0x1001, sub(QStringLiteral("Error Register"), 5, QStringLiteral("0"), QStringLiteral("ro")),
            line);
        const QString ro = QStringLiteral("ro");
        object(0x1018, QStringLiteral("Identity Object"), 9,
               {{0, sub(QStringLiteral("Number of entries"), 5, QStringLiteral("3"), ro)},
                {1, sub(QStringLiteral("Vendor ID"), 7, QStringLiteral("0x000000AF"), ro)},
                {2, sub(QStringLiteral("Product code"), 7, QStringLiteral("0x00001234"), ro)},
                {3, sub(QStringLiteral("Revision number"), 7, QStringLiteral("0x00010002"), ro)}},
               {}, line);
    }
    void setMetadata(quint16 index, const QString &key, const QString &value)
    {
        store->setObjectMetadata(0, index, {{key, value}});
    }
    void setMetadata(quint16 index, quint8 subIndex, const QString &key, const QString &value)
    {
        store->setSubMetadata(0, index, subIndex, {{key, value}});
    }

    /** A generator for the project, as a run makes it. */
    std::unique_ptr<AbstractGenerator> generator(const GeneratorRequest &request)
    {
        auto made = factories.create(request);
        made->setMultiLine(RunFacts::read(*store).multiLine);
        made->setDatabase(store.get());
        made->setOutputDir(folder.path());
        made->setProjectName(QStringLiteral("pump"));
        made->setLine(request.line);
        return made;
    }
    static GeneratorRequest eds(quint8 line = 0, const QString &variant = {}, bool classical = false)
    {
        return {.kind = GeneratorKind::Eds, .line = line, .edsVariant = variant, .classical = classical};
    }
    static GeneratorRequest xdd(quint8 line = 0, const QString &variant = {})
    {
        return {.kind = GeneratorKind::Xdd, .line = line, .edsVariant = variant};
    }
    /** Runs the generator that is asked for to its end; its error, empty if it has none. */
    QString run(const GeneratorRequest &request)
    {
        const auto made = generator(request);
        if (made->startGeneration() != GeneratorStatus::Success)
            return QStringLiteral("not started");
        made->waitForEnd();
        return made->errorString();
    }

    QString path(const QString &name) const { return folder.filePath(name); }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files, QDir::Name); }
    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }
    /** The EDS of line 0 of a project with one line. */
    QString edsText(const QString &variant = {})
    {
        if (const QString error = run(eds(0, variant)); !error.isEmpty())
            return QStringLiteral("failed: ") + error;
        const QString name =
            variant.isEmpty() ? QStringLiteral("pump.eds") : QStringLiteral("pump_%1.eds").arg(variant);
        return QString::fromUtf8(read(name));
    }
    QString xddText(const QString &variant = {})
    {
        if (const QString error = run(xdd(0, variant)); !error.isEmpty())
            return QStringLiteral("failed: ") + error;
        const QString name =
            variant.isEmpty() ? QStringLiteral("pump_0.xdd") : QStringLiteral("pump_0_%1.xdd").arg(variant);
        return QString::fromUtf8(read(name));
    }
    /** The lines of a section of the EDS behind its header, up to the next empty line. */
    QStringList section(const QString &name, const QString &variant = {})
    {
        const QStringList lines = edsText(variant).split(u'\n');
        const qsizetype header = lines.indexOf(QString(u'[' + name + u']'));
        if (header < 0)
            return {QStringLiteral("<no section>")};
        return lines.mid(header + 1, lines.indexOf(QString(), header) - header - 1);
    }

    QSharedPointer<ObjectDataBase> store = QSharedPointer<StoreTest::NewStore>::create();
    QTemporaryDir folder{QDir::temp().filePath(QStringLiteral("description-XXXXXX"))};
    GeneratorFactories factories;
};
