#pragma once

#include "generators/canopen/DictionaryDesk.h"

/** The words of the functions that start the stack, and where they stand in a generated file. */
namespace StackInitTexts {

/** A call with a result, and the test of it. */
inline QString checked(const QString &call, int indent = 4)
{
    const QString blanks(indent, u' ');
    return blanks + QStringLiteral("retVal = ") + call + QStringLiteral(";\n") + blanks
        + QStringLiteral("if (retVal != RET_OK) {\n") + blanks + QStringLiteral("    return(retVal);\n")
        + blanks + QStringLiteral("}\n") + blanks + QStringLiteral("CORE_HANDLE_WATCHDOG\n");
}

/** A comment, and the call that it is about. */
inline QString service(const QString &comment, const QString &call)
{
    return QStringLiteral("    ") + comment + u'\n' + checked(call);
}

/** What stands behind one text and before the next occurrence of another; a message where one is missing. */
inline QString between(const QString &text, const QString &from, const QString &to)
{
    const qsizetype begin = text.indexOf(from);
    if (begin < 0)
        return QStringLiteral("missing: ") + from;
    const qsizetype start = begin + from.size();
    const qsizetype end = text.indexOf(to, start);
    return end < 0 ? QStringLiteral("missing: ") + to : text.sliced(start, end - start);
}

/** A whole function or structure that begins with that line, up to its closing brace. */
inline QString definition(const QString &text, const QString &firstLine)
{
    const qsizetype begin = QString(u'\n' + text).indexOf(QString(u'\n' + firstLine));
    if (begin < 0)
        return QStringLiteral("missing: ") + firstLine;
    qsizetype end = text.indexOf(QStringLiteral("\n}"), begin);
    end = end < 0 ? text.size() : text.indexOf(u'\n', end + 1) + 1;
    return text.sliced(begin, end - begin);
}

/** All that follows the tables. */
inline QString afterTables(const QString &text)
{
    const QString tables = Generated::definition(text, QStringLiteral("CORE_CONST CO_OD_DATA_VARIABLES_T"));
    return text.section(tables, 1);
}

/** The services that the single-line form starts, object dictionary and network management included. */
inline QString singleLineServices(const QString &text)
{
    return between(text, checked(QStringLiteral("coCanOpenStackVarInit(&serviceInitVars)")),
                   QStringLiteral("    return(RET_OK);\n}\n"));
}

/** The services that the function of a line starts. */
inline QString lineServices(const QString &text, int line)
{
    const QString function = definition(text, QStringLiteral("RET_T coCanOpenStackInit_line%1(\n").arg(line));
    QString services =
        between(function, QStringLiteral("    RET_T retVal;\n"), QStringLiteral("    return(RET_OK);\n}\n"));
    return services.remove(QStringLiteral("    (void) pCoOptions; /* currently unused */\n\n"));
}

/** Where the tables of a device with one object stand, as the single-line form tells the stack. */
inline QString singleLineTables()
{
    return QStringLiteral(
        "    /* initialize object dictionary variables and pointers */\n"
        "    coOdInitOdPtr(&od_assign[0], CO_OD_ASSIGN_CNT, &od_description[0], CO_OBJ_DESC_CNT, NULL, "
        "&od_data_variables);\n");
}

/** The rows of od_assign that are a line's. */
inline QString lineTables(int first, int count)
{
    return QStringLiteral("    /* initialize object dictionary variables and pointers */\n"
                          "    coOdInitOdPtr(canLine, &od_assign[%1], %2, od_description, CO_OBJ_DESC_CNT, "
                          "NULL, &od_data_variables);\n")
        .arg(first)
        .arg(count);
}

/** The load function as the stack takes it: without one that is fixed at compile time. */
inline QString loadFunction()
{
    return QStringLiteral("\n    /* initialize load parameter function */\n"
                          "#if defined(CO_EVENT_DYNAMIC_STORE) || defined(CO_EVENT_PROFILE_STORE)\n")
        + checked(QStringLiteral("coEventRegister_LOAD_PARA(pLoadFunction)"))
        + QStringLiteral("#else\n"
                         "    if (pLoadFunction != NULL) {\n"
                         "        return(RET_PARAMETER_INVALID);\n"
                         "    }\n"
                         "#endif /* CO_EVENT_DYNAMIC_STORE || CO_EVENT_PROFILE_STORE */\n");
}

/** Device type and error register, the least that a line of its own has. */
constexpr int usualObjects = 2;

inline void addUsualObjects(DictionaryDesk &desk, quint8 line)
{
    desk.variable(0x1000, {.type = CAN::Unsigned32, .value = QStringLiteral("0x191")}, line);
    desk.variable(0x1001, {}, line);
}

inline QString nmtSlave(const QString &arguments)
{
    return service(QStringLiteral("/* initialize NMT slave */ "),
                   QStringLiteral("coNmtInit(%1)").arg(arguments));
}

} // namespace StackInitTexts
