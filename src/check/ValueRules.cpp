// Values must read as numbers where their data type is one.

#include "canopen/CANTypes.h"
#include "check/LineCheck.h"
#include "check/LineRules.h"
#include "check/ModelChecker.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView conversionFailed{
    "<strong>Error: </strong>Value conversion failed with Object 0x%1-0x%2."};

bool readsAsUnsigned(const QString &text)
{
    bool isNumber = false;
    text.toULongLong(&isNumber, 0);
    return isNumber || text.contains("$NODEID"_L1);
}

bool readsAsSigned(const QString &text)
{
    bool isNumber = false;
    text.toInt(&isNumber, 0);
    return isNumber;
}

bool readsAsReal(const QString &text)
{
    bool isNumber = false;
    text.toFloat(&isNumber);
    return isNumber;
}

void checkValue(const LineCheck &check, const SubIndexEntry &entry)
{
    if (entry.isValueValid)
        return;
    // The sub-index stands in decimal behind its "0x" here; build scripts know the message so.
    check.findings.error(conversionFailed.arg(indexText(entry.index), QString::number(entry.subIndex)),
                         check.at(entry.index, entry.subIndex));
}

} // namespace

bool ModelChecker::isValidValue(int dataType, const QString &text)
{
    if (text.isEmpty())
        return true;
    switch (dataType) {
    case CAN::Boolean:
    case CAN::Unsigned8:
    case CAN::Unsigned16:
    case CAN::Unsigned32:
    case CAN::Unsigned24:
    case CAN::Unsigned40:
    case CAN::Unsigned48:
    case CAN::Unsigned64:
    case CAN::Unsigned2:
    case CAN::Unsigned3:
    case CAN::Unsigned4:
    case CAN::Unsigned5:
    case CAN::Unsigned6:
    case CAN::Unsigned7:
        return readsAsUnsigned(text);
    case CAN::Integer8:
    case CAN::Integer16:
    case CAN::Integer32:
    case CAN::Integer24:
        return readsAsSigned(text);
    case CAN::Real32:
        return readsAsReal(text);
    default:
        return true;
    }
}

void checkValueConversions(LineCheck &check)
{
    for (const ObjectEntry &object : check.objects()) {
        if (!check.serveEvents())
            return;
        for (const SubIndexEntry &entry : check.entries(object))
            checkValue(check, entry);
    }
}
