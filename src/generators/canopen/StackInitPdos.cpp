#include "generators/canopen/StackInitPdos.h"

#include "generators/CodeWriter.h"
#include "generators/canopen/StackInitContext.h"

#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace {

// CiA 301: sub-indices of a communication object
constexpr quint8 transmissionType = 2;
constexpr quint8 inhibitTime = 3;
constexpr quint8 eventTimer = 5;
constexpr quint8 syncStartValue = 6;

constexpr std::array receiveParameters{transmissionType, inhibitTime, eventTimer};
constexpr std::array transmitParameters{transmissionType, inhibitTime, eventTimer, syncStartValue};

QString arguments(const StackInitLine &line, const DictionaryPdo &pdo, std::span<const quint8> parameters)
{
    QStringList result{u"%1u"_s.arg(pdo.number)};
    for (const quint8 sub : parameters)
        result.append(line.constant(pdo.index, sub, u"0u"_s));
    result.append(pdo.mappingTable.isEmpty() ? u"NULL"_s : QString(u'&' + pdo.mappingTable));
    return result.join(", "_L1);
}

} // namespace

void writeTransmitPdoInit(CodeWriter &out, const StackInitLine &line)
{
    const StackCalls calls = line.context.lineCalls();
    for (const DictionaryPdo &pdo : line.dictionary.transmitPdos) {
        out << u"    /* initialize TPDO " << pdo.number << u" */\n";
        calls.writeChecked(out, u"coPdoTransmitInit", arguments(line, pdo, transmitParameters));
    }
}

void writeReceivePdoInit(CodeWriter &out, const StackInitLine &line)
{
    const StackCalls calls = line.context.lineCalls();
    for (const DictionaryPdo &pdo : line.dictionary.receivePdos) {
        out << u"    /* initialize RPDO " << pdo.number << u" */\n";
        calls.writeChecked(out, u"coPdoReceiveInit", arguments(line, pdo, receiveParameters));
    }
}
