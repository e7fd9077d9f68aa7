#include "generators/canopen/GeneratedDevice.h"

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "canopen/Helper.h"
#include "generators/canopen/CanopenGenerators.h"
#include "generators/canopen/DictionaryTypes.h"
#include "generators/canopen/ExpectedDictionary.h"

using namespace Qt::StringLiterals;

namespace {

QString stackFile(const QString &name)
{
    return QStringLiteral(NODESMITH_TEST_GOLDEN "/../stack/") + name;
}

/** C type of a variable of the application; empty for types that the stack keeps no pointers to. */
QString cType(int dataType)
{
    switch (dataType) {
    case CAN::Boolean:
    case CAN::Unsigned8:
        return u"UNSIGNED8"_s;
    case CAN::Unsigned16:
        return u"UNSIGNED16"_s;
    case CAN::Unsigned24:
        return u"UNSIGNED24"_s;
    case CAN::Unsigned32:
        return u"UNSIGNED32"_s;
    case CAN::Unsigned40:
        return u"UNSIGNED40"_s;
    case CAN::Unsigned48:
    case CAN::TimeOfDay:
        return u"UNSIGNED48"_s;
    case CAN::Unsigned64:
        return u"UNSIGNED64"_s;
    case CAN::Integer8:
        return u"INTEGER8"_s;
    case CAN::Integer16:
        return u"INTEGER16"_s;
    case CAN::Integer24:
        return u"INTEGER24"_s;
    case CAN::Integer32:
        return u"INTEGER32"_s;
    case CAN::Real32:
        return u"REAL32"_s;
    case CAN::VisibleString:
    case CAN::Utf8String:
        return u"char"_s;
    case CAN::OctetString:
        return u"UNSIGNED8"_s;
    default:
        return dataType >= CAN::Unsigned2 && dataType <= CAN::Unsigned7 ? u"UNSIGNED8"_s : QString();
    }
}

bool isText(int dataType)
{
    return dataType == CAN::VisibleString || dataType == CAN::OctetString || dataType == CAN::Utf8String;
}

bool isBytes(int dataType)
{
    return dataType == CAN::Unsigned24 || dataType == CAN::Unsigned40 || dataType == CAN::Unsigned48
        || dataType == CAN::TimeOfDay || dataType == CAN::Unsigned64 || dataType == CAN::Integer24;
}

QString initialiser(const ObjectDataBase::SUBINDEX_DATA_T &sub, const QString &name)
{
    if (isBytes(sub.datatype))
        return u"{ { %1u } }"_s.arg(TestApplication::valueOf(name));
    if (!isText(sub.datatype))
        return QString::number(TestApplication::valueOf(name));
    QString bytes;
    const QByteArray text = TestApplication::textOf(name, sub.size);
    for (const char byte : text)
        bytes += u"0x%1, "_s.arg(quint8(byte), 2, 16, '0'_L1);
    return u"{ "_s + bytes + u"}"_s;
}

QString firstDifference(const QStringList &printed, const QStringList &expected)
{
    for (qsizetype i = 0; i < qMax(printed.size(), expected.size()); ++i) {
        const QString is = printed.value(i, u"nothing"_s);
        const QString shall = expected.value(i, u"nothing"_s);
        if (is != shall)
            return u"line %1 is\n%2\nand shall be\n%3"_s.arg(i).arg(is, shall);
    }
    return {};
}

} // namespace

int TestApplication::valueOf(const QString &variable)
{
    constexpr int prime = 113; // fits into every type of eight bits
    int sum = 0;
    for (const QChar c : variable)
        sum = (sum * 31 + c.unicode()) % prime;
    return sum + 1;
}

QByteArray TestApplication::textOf(const QString &variable, int size)
{
    QByteArray text;
    for (int i = 0; i < size; ++i)
        text += char('a' + (valueOf(variable) + i) % 26);
    return text;
}

QByteArray TestApplication::textAtStart(const QString &variable, const ObjectDataBase::SUBINDEX_DATA_T &sub,
                                        bool hasStringDefaults)
{
    QByteArray text = textOf(variable, sub.size);
    if (hasStringDefaults && sub.datatype != CAN::Utf8String) {
        const QByteArray bytes = DictionaryTypes::textBytes(sub.defaultvalue);
        text.replace(0, bytes.size(), bytes);
    }
    return text;
}

QString TestApplication::plainName(const QString &variable)
{
    QString name = variable;
    for (const QString &macro : {u"PLACE("_s, u"ADDRESS("_s})
        if (name.startsWith(macro))
            name = name.sliced(macro.size()).chopped(1);
    return name;
}

GeneratedDevice::GeneratedDevice(const QSharedPointer<ObjectDataBase> &store) : m_store(store), m_desk(store)
{
    m_desk.folder.setAutoRemove(!qEnvironmentVariableIsSet("NODESMITH_KEEP_GENERATED"));
    GeneratorFactories factories;
    addCanopenGenerators(factories);
    m_desk.handler.setFactories(factories);
    m_store->setGeneralSetting(u"applicationheader"_s, u"application.h"_s);
}

RunDesk::Result GeneratedDevice::generate(bool ignoreErrors)
{
    const RunDesk::Result result = m_desk.runChecked(ignoreErrors);
    writeApplication();
    return result;
}

QString GeneratedDevice::firstFault(const QStringList &compilers) const
{
    const QStringList expected = ExpectedDictionary::calls(*m_store) + ExpectedDictionary::objects(*m_store)
        + ExpectedDictionary::writes(*m_store);
    for (const QString &compiler : compilers) {
        if (QString messages = build(compiler); !messages.isEmpty())
            return messages;
        if (const QString difference = firstDifference(run(compiler), expected); !difference.isEmpty())
            return compiler + u": "_s + difference;
    }
    return {};
}

QString GeneratedDevice::build(const QString &compiler) const
{
    const CCompiler c(compiler, m_desk.folder.path());
    return c.build({u"gen_objdict.c"_s, u"application.c"_s, u"main.c"_s, stackFile(u"od_runtime.c"_s),
                    stackFile(u"od_services.c"_s), stackFile(u"od_writing.c"_s)});
}

QStringList GeneratedDevice::run(const QString &compiler) const
{
    QStringList lines;
    const QByteArrayList printed = CCompiler(compiler, m_desk.folder.path()).run();
    for (const QByteArray &line : printed)
        lines.append(QString::fromUtf8(line));
    return lines;
}

void GeneratedDevice::writeApplication() const
{
    if (!m_desk.exists(u"gen_indication.h"_s))
        m_desk.write(u"gen_indication.h"_s, "/* without indications */\n");
    m_desk.write(u"application.h"_s, variables());
    m_desk.write(u"application.c"_s, R"(#include <gen_define.h>
#include <co_canopen.h>
#define APPLICATION_VARIABLE(declaration, ...) declaration = __VA_ARGS__;
#include "application.h"
)");
    m_desk.write(u"main.c"_s, mainProgram());
}

/** One header for declarations and, with APPLICATION_VARIABLE set to it, definitions. */
QByteArray GeneratedDevice::variables() const
{
    QString text = u"#define PLACE(variable) (variable)\n#define ADDRESS(variable) (&(variable))\n"
                   "#ifndef APPLICATION_VARIABLE\n"
                   "#define APPLICATION_VARIABLE(declaration, ...) extern declaration;\n#endif\n"_s;
    QSet<QString> known;
    const QList<quint8> lines = m_store->getLines();
    for (const quint8 line : lines)
        for (const quint16 index : m_store->getIndexList(line, 0x1000))
            for (const quint8 number : m_store->getSubIndexList(line, index)) {
                ObjectDataBase::SUBINDEX_DATA_T sub;
                m_store->getSubIndex(line, index, number, sub);
                if (sub.implementation != CANopen::ApplicationVariable || cType(sub.datatype).isEmpty())
                    continue;
                const QString name =
                    TestApplication::plainName(Helper::substituteVariables(sub.varname, index, number, line));
                if (known.contains(name))
                    continue;
                known.insert(name);
                const QString size = isText(sub.datatype) ? u"[%1]"_s.arg(sub.size) : QString();
                text += u"APPLICATION_VARIABLE(%1 %2%3, %4)\n"_s.arg(cType(sub.datatype), name, size,
                                                                     initialiser(sub, name));
            }
    return text.toUtf8();
}

/** An application of a J1939 device with an SDO server (CiA 510). */
QByteArray GeneratedDevice::j1939Program() const
{
    QString text = u"#include \"od_runtime.h\"\n#include <j1939_cam11_cam21.h>\nint main(void)\n{\n"_s;
    const bool isMultiLine =
        m_store->getLines().contains(1) || m_store->getMiscSetting(u"generateML"_s) == "true"_L1;
    const QList<quint8> lines = m_store->getLines();
    for (const quint8 line : lines)
        if (line < ObjectDataBase::MaximumLines)
            text += u"    if (j1939OdInit(%1) != RET_OK)\n        return 1;\n"_s.arg(
                isMultiLine ? QString::number(line) : QString());
    text += u"    odPrint();\n    odWriteAll();\n    return 0;\n}\n"_s;
    return text.toUtf8();
}

bool GeneratedDevice::hasForLine(const QString &key, const QString &value) const
{
    const QList<quint8> lines = m_store->getLines();
    return std::any_of(lines.begin(), lines.end(), [&](quint8 line) {
        return line < ObjectDataBase::MaximumLines && m_store->getGeneralSettingForLine(key, line) == value;
    });
}

/** The start of the stack as the application calls it, with options for every line where it asks for them. */
QString GeneratedDevice::start() const
{
    const bool isFd = m_store->getGeneralSetting(u"canfd_supported"_s).toInt() > 0;
    const bool hasOptions = hasForLine(u"nmtmaster"_s, u"2"_s);
    const QString name = hasOptions ? u"coCanOpenStackInitPara"_s : u"coCanOpenStackInit"_s;
    return u"RET_T %1(CO_EVENT_STORE_T pLoadFunction%2%3);\nstatic RET_T start(void)\n{\n"
           "    static CO_INIT_OPTION_T options[] = { { 1 }, { 0 }, { 1 }, { 0 } };\n"
           "    static BOOL_T modes[] = { CO_TRUE, CO_FALSE, CO_TRUE, CO_FALSE };\n"
           "    (void)options;\n    (void)modes;\n    return %1(NULL%4%5);\n}\n"_s.arg(
               name, hasOptions ? u", CO_INIT_OPTION_T *pCoOptions"_s : QString(),
               isFd ? u", BOOL_T *pModes"_s : QString(), hasOptions ? u", options"_s : QString(),
               isFd ? u", modes"_s : QString());
}

/** What the application does when the stack asks it to load parameters. */
QString GeneratedDevice::load() const
{
    QString text = u"static void load(void)\n{\n"_s;
    const QList<quint8> lines = m_store->getLines();
    const bool isMultiLine = lines.contains(1) || m_store->getMiscSetting(u"generateML"_s) == "true"_L1;
    for (const quint8 line : lines)
        if (line < ObjectDataBase::MaximumLines && hasForLine(u"overwrite_predef"_s, u"1"_s))
            text += u"    genLoadIndication(%1 1);\n"_s.arg(isMultiLine ? u"%1,"_s.arg(line) : QString());
    return u"RET_T genLoadIndication(CO_EVENT_PARA UNSIGNED8 subIndex);\n"_s + text + u"}\n"_s;
}

QByteArray GeneratedDevice::mainProgram() const
{
    if (DictionaryTypes::isJ1939Server(*m_store))
        return j1939Program();
    const bool hasInitialisers = m_store->getGeneralSetting(u"init_static_variables"_s) == "1"_L1;
    const bool hasStringDefaults = m_store->getGeneralSetting(u"generate_string_defaults"_s).toInt() > 0;
    QString text = u"#include \"od_runtime.h\"\n"_s;
    if (hasStringDefaults)
        text += u"#include <gen_user.h>\n"_s;
    text += start() + load() + u"int main(void)\n{\n"_s;
    if (hasInitialisers)
        text += u"    odSetsDefaults = CO_FALSE;\n"_s;
    text += u"    if (start() != RET_OK)\n        return 1;\n"_s;
    if (hasStringDefaults)
        text += u"    if (userOverwriteStringDefaultvalues() != RET_OK)\n        return 1;\n"_s;
    text += u"    load();\n    odPrint();\n    odWriteAll();\n    return 0;\n}\n"_s;
    return text.toUtf8();
}
