#pragma once

#include "check/CheckProject.h"
#include "generators/RunDesk.h"
#include "generators/canopen/CanopenGenerators.h"
#include "support/CCompiler.h"

/** Projects that nobody means to make, and the road of their sources to the compilers. */
namespace UglyProjects {

using CheckTest::Project;
using CheckTest::Sub;

/** Services that settings have a say in, on the line where the project stands. */
inline void addServices(Project &project)
{
    for (const quint16 index : {0x1003, 0x1010, 0x1016, 0x1028, 0x1201, 0x1280, 0x1F81, 0x2400})
        project.array(index, {QStringLiteral("1"), QStringLiteral("2")});
    project.pdo(0x1801, QStringLiteral("$NODEID+0x280"),
                {QStringLiteral("0x20000120"), QStringLiteral("0x20000220")}, QStringLiteral("rw"));
    Sub data = CheckTest::sub(QStringLiteral("Far away"), CAN::Unsigned16, QStringLiteral("rw"),
                              QStringLiteral("7"));
    data.implementation = CANopen::VirtualObject;
    project.variable(0x2500, data);
}

inline void removeObjects(Project &project)
{
    const QList<quint16> indices = project.store->getIndexList(project.line, 0x1000, 0xFFFF);
    for (const quint16 index : indices)
        project.remove(index);
}

inline void addLine(Project &project, quint8 line)
{
    project.addLine(line, CheckTest::CANopenLine);
    project.varName(0x2001, 0, QStringLiteral("speed1"));
}

/** Virtual sub-indices of all kinds; those that a second line has in common with the first one. */
inline void addVirtual(Project &project, bool areShared)
{
    project.set(QStringLiteral("special_virtual_objects"), QStringLiteral("1"));
    quint16 index = 0x2600;
    for (const int type : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 15, 16, 17, 21, 22, 24, 25, 27, 102, 124, 0, 200}) {
        Sub data = CheckTest::sub(QStringLiteral("Far */ \"away\\"), type, QStringLiteral("rw"),
                                  QStringLiteral("7"));
        data.implementation = CANopen::VirtualObject;
        data.sharedlines = areShared;
        project.variable(index++, data);
    }
    project.array(0x2700, QStringList(254, QStringLiteral("-5")));
    for (int number = 1; number < 255; ++number)
        project.implementation(0x2700, quint8(number), CANopen::VirtualObject);
}

/** Asks for the sources of one of the two stacks. */
inline void chooseStack(Project &project, bool v4)
{
    project.set(QStringLiteral("use_core_headers"), v4 ? QStringLiteral("V4") : QStringLiteral("V3"));
    project.set(QStringLiteral("new_init_structure"), v4 ? QStringLiteral("1") : QStringLiteral("0"));
    project.set(QStringLiteral("applicationheader"), QStringLiteral("application.h"));
}

/** A run of the real generators, and what they and the compilers say to their sources. */
class UglyDesk : public RunDesk
{
public:
    explicit UglyDesk(const Project &project) : RunDesk(project.store)
    {
        folder.setAutoRemove(!qEnvironmentVariableIsSet("NODESMITH_KEEP_GENERATED"));
        GeneratorFactories factories;
        addCanopenGenerators(factories);
        handler.setFactories(factories);
    }

    QString messages() const
    {
        write(QStringLiteral("application.h"), "extern UNSIGNED16 speed;\nextern UNSIGNED16 speed1;\n");
        write(QStringLiteral("defines.c"),
              "#include <gen_define.h>\n#include <gen_define.h>\n"
              "#ifndef GEN_DEFINE_H\n#error not there\n#endif\nint unit;\n");
        QStringList sources{QStringLiteral("defines.c")};
        for (const QString &name : {QStringLiteral("gen_objdict.c"), QStringLiteral("gen_vobjdict.c"),
                                    QStringLiteral("gen_srdo.c")})
            if (exists(name))
                sources.append(name);
        QString all = output.all.filter(QStringLiteral("ERROR - ")).join(QLatin1Char('\n'));
        for (const QString &compiler : CCompiler::programs())
            all += CCompiler(compiler, folder.path()).check(sources);
        return all;
    }
};

} // namespace UglyProjects
