#pragma once

#include "generators/canopen/DictionaryDesk.h"
#include "generators/canopen/GenDefineGenerator.h"
#include "generators/canopen/SrdoGenerator.h"

/** A project with safety relevant data objects and the files that are generated from it. */
class SrdoDesk : public DictionaryDesk
{
public:
    SrdoDesk() { set(QStringLiteral("line0type"), QStringLiteral("1")); }

    /** What a communication object says, each as the text of the project. */
    struct Communication
    {
        QString direction = QStringLiteral("1");
        QString refreshTime = QStringLiteral("25");
        QString validationTime = QStringLiteral("20");
        QString cobId1 = QStringLiteral("0x101");
        QString cobId2 = QStringLiteral("0x102");
    };

    /** Adds communication and mapping object; the entries are those of the mapping object. */
    void srdo(int number, const QStringList &entries, quint8 line = 0)
    {
        srdo(number, entries, line, Communication());
    }
    void srdo(int number, const QStringList &entries, quint8 line, const Communication &words)
    {
        array(quint16(0x1300 + number),
              {{.value = words.direction},
               {.type = CAN::Unsigned16, .value = words.refreshTime},
               {.value = words.validationTime},
               {.value = QStringLiteral("254")},
               {.type = CAN::Unsigned32, .value = words.cobId1},
               {.type = CAN::Unsigned32, .value = words.cobId2}},
              line);
        QList<Entry> elements;
        for (const QString &entry : entries)
            elements.append({.type = CAN::Unsigned32,
                             .value = entry,
                             .implementation = CANopen::ManagedConst,
                             .access = QStringLiteral("const")});
        array(quint16(0x1380 + number), elements, line);
    }
    /** Adds a variable of the application that an SRDO may carry. */
    void mapped(quint16 index, int type, const QString &name, quint8 line = 0)
    {
        variable(index,
                 {.type = type,
                  .implementation = CANopen::ApplicationVariable,
                  .variable = name,
                  .mapping = PDOMapping::Allowed},
                 line);
    }
    void makeStatic() { set(QStringLiteral("static_srdo_data"), QStringLiteral("1")); }

    /** Runs the generator for the V4 stack, or for the older one; the text of gen_srdo.c. */
    QString srdoFile(bool v4 = true)
    {
        const bool isStatic = store.getGeneralSetting(QStringLiteral("static_srdo_data")).toInt() == 1;
        if (v4) {
            SrdoGeneratorStatic generator(isStatic);
            return run(generator);
        }
        SrdoGenerator generator(isStatic);
        return run(generator);
    }
    QString run(SafetyDataGenerator &generator)
    {
        if (source)
            generator.setTemplateSource(source);
        drive(generator);
        error = generator.errorString();
        return read(QStringLiteral("gen_srdo.c"));
    }
    /** Writes gen_define.h, which the other file needs to compile. */
    void writeDefines(bool v4 = true)
    {
        if (v4) {
            GenDefineGenerator generator(false, false);
            drive(generator);
        } else {
            CoDefineGenerator generator(false, false);
            drive(generator);
        }
    }
    /** The block that stands for a marker. */
    QString block(const QString &marker, bool v4 = true)
    {
        source = [marker](bool, const QString &) {
            return QString(QStringLiteral("<begin>\n") + marker + QStringLiteral("\n<end>\n"));
        };
        const QString text = srdoFile(v4);
        source = nullptr;
        return text.section(QStringLiteral("<begin>\n"), 1).section(QStringLiteral("<end>\n"), 0, 0);
    }

    SafetyDataGenerator::TemplateSource source; ///< of the next run; the generator's own where it is empty

private:
    void drive(AbstractGenerator &generator)
    {
        generator.setDatabase(&store);
        generator.setOutputDir(folder.path());
        generator.setProjectName(QStringLiteral("Pump"));
        if (generator.startGeneration() != GeneratorStatus::Success)
            qFatal("the generator does not start");
        generator.waitForEnd();
    }
};
