#pragma once

#include "generators/canopen/DictionaryDesk.h"
#include "generators/canopen/GenDefineGenerator.h"
#include "generators/canopen/VobjDictGenerator.h"

/** A project with virtual objects and what is generated for them. */
class VirtualDesk : public DictionaryDesk
{
public:
    VirtualDesk()
    {
        qputenv("SOURCE_DATE_EPOCH", "1700000000");
        addLine(0);
        set(QStringLiteral("special_virtual_objects"), QStringLiteral("1"));
    }

    /** The text of gen_vobjdict.c for the V4 stack or the older one. */
    QString dictionary(bool v4 = true)
    {
        const std::unique_ptr<AbstractGenerator> generator = makeVirtualDictionaryGenerator(
            {.kind = GeneratorKind::VobjDict, .core = v4, .compactArrays = compactArrays});
        return run(*generator, QStringLiteral("gen_vobjdict.c"));
    }
    /** The text of gen_define.h; the settings of the project decide on compact arrays. */
    QString defines(bool v4 = true)
    {
        set(QStringLiteral("compact_array_description"), QString::number(int(compactArrays)));
        const std::unique_ptr<AbstractGenerator> generator =
            makeDefineGenerator({.kind = GeneratorKind::Define, .core = v4});
        return run(*generator, QStringLiteral("gen_define.h"));
    }
    QString run(AbstractGenerator &generator, const QString &name)
    {
        generator.setDatabase(&store);
        generator.setOutputDir(folder.path());
        generator.setProjectName(QStringLiteral("Pump"));
        generator.setMultiLine(store.getLines().size() > 1);
        if (generator.startGeneration() != GeneratorStatus::Success)
            return QStringLiteral("not started");
        generator.waitForEnd();
        error = generator.errorString();
        return read(name);
    }

    /** A value that functions of the application serve. */
    static Entry value(int type, const QString &text = QStringLiteral("0"),
                       const QString &access = QStringLiteral("rw"))
    {
        return {.type = type, .value = text, .implementation = CANopen::VirtualObject, .access = access};
    }
    /** One virtual value of every type that a value table has, and of those that have none. */
    static QList<Entry> everyType()
    {
        QList<Entry> entries = everyNumber(CANopen::VirtualObject);
        for (const int type : {CAN::VisibleString, CAN::OctetString, CAN::Utf8String, CAN::Domain})
            entries.append(value(type, QString()));
        return entries;
    }
};
