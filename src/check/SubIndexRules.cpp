#include "check/SubIndexRules.h"

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "check/LineCheck.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView limitCheckIsOff{
    "Warning: Object 0x%1-0x%2: Limit Check is activated, but it is deactivated in the global settings."};
constexpr QLatin1StringView nameMissing{
    "<strong>Error: </strong>Object 0x%1-0x%2: The object does not have a name. (Required for EDS)"};
constexpr QLatin1StringView variableNameMissing{
    "<strong>Error: </strong>Object 0x%1-0x%2: The variable name is missing."};
constexpr QLatin1StringView variableNameInvalid{"<strong>Error: </strong>Object 0x%1-0x%2: The variable name "
                                                "contains invalid characters like spaces or commas."};
constexpr QLatin1StringView accessTypeInvalid{"<strong>Error: </strong>Object 0x%1-0x%2: The access type "
                                              "'%3' is invalid. Use ro, rw, const, wo, rww or rwr instead."};
constexpr QLatin1StringView constIsWritable{
    "<strong>Error: </strong>Object 0x%1-0x%2: The implementation type is Managed Const, but the access type "
    "allows write access."};
constexpr QLatin1StringView managedOctetString{"<strong>Error: </strong>Object 0x%1-0x%2: The implementation "
                                               "type 'Managed Variable' is not possible for octet strings."};
constexpr QLatin1StringView managedVisibleString{
    "<strong>Error: </strong>Object 0x%1-0x%2: The implementation type 'Managed Variable' is not possible "
    "for visible strings. Use 'Managed Const' or 'Variable' instead."};
constexpr QLatin1StringView managedUtf8String{
    "<strong>Error: </strong>Object 0x%1-0x%2: The implementation type 'Managed Variable' is not possible "
    "for UTF8 strings. Use 'Managed Const' or 'Variable' instead."};
constexpr QLatin1StringView dataTypeUnknown{
    "<strong>Error: </strong>Object 0x%1-0x%2: Unknown or unsupported datatype."};
constexpr QLatin1StringView valueOutOfLimits{
    "<strong>Error: </strong>Object 0x%1-0x%2: The defaultvalue is not in the range of the limits."};

/** An upper limit that switches the test of the range off. */
constexpr qint64 unboundedUpperLimit = 0x7FFFFF;

/** Types whose values the generated code cannot keep in a variable of its own. */
struct TextType
{
    CAN::CANopenDataType number;
    QLatin1StringView managedMessage;
    bool hasLimits;
};

constexpr std::array textTypes = std::to_array<TextType>({
    {CAN::OctetString, managedOctetString, false},
    {CAN::VisibleString, managedVisibleString, false},
    {CAN::Utf8String, managedUtf8String, true},
});

/** The sub-index that the rules below are asked about. */
struct Subject
{
    const LineCheck &check;
    const SubIndexEntry &entry;
    const int objectCode;

    QString text(QLatin1StringView message) const
    {
        return message.arg(indexText(entry.index), subIndexText(entry.subIndex));
    }
    ProjectLocation where() const { return check.at(entry.index, entry.subIndex); }
    void error(QLatin1StringView message) const { check.findings.error(text(message), where()); }
    void warning(QLatin1StringView message) const { check.findings.note(text(message), where()); }
};

void checkLimitFlag(const Subject &subject)
{
    if (subject.entry.hasLimits && !subject.check.limitCheckEnabled)
        subject.warning(limitCheckIsOff);
}

void checkName(const Subject &subject)
{
    const bool needsName = subject.objectCode == CANopen::Array || subject.objectCode == CANopen::Record;
    if (needsName && !subject.entry.isNamed)
        subject.error(nameMissing);
}

void checkVariable(const Subject &subject)
{
    if (subject.entry.implementation != CANopen::ApplicationVariable)
        return;
    if (!subject.entry.hasVariableName)
        subject.error(variableNameMissing);
    if (!subject.entry.isVariableNameValid)
        subject.error(variableNameInvalid);
}

void checkAccessType(const Subject &subject)
{
    if (subject.entry.isAccessTypeKnown)
        return;
    ObjectDataBase::SUBINDEX_DATA_T data;
    subject.check.read(subject.entry.index, subject.entry.subIndex, data);
    subject.check.findings.error(accessTypeInvalid.arg(indexText(subject.entry.index),
                                                       subIndexText(subject.entry.subIndex),
                                                       data.accesstype.toHtmlEscaped()),
                                 subject.where());
}

void checkConstAccess(const Subject &subject)
{
    if (subject.entry.implementation == CANopen::ManagedConst && subject.entry.allowsWriting)
        subject.error(constIsWritable);
}

void checkLimits(const Subject &subject)
{
    if (!subject.entry.isInLimits)
        subject.error(valueOutOfLimits);
}

void checkDataType(const Subject &subject)
{
    const int dataType = subject.entry.dataType;
    for (const TextType &type : textTypes) {
        if (dataType != type.number)
            continue;
        if (subject.entry.implementation == CANopen::ManagedVariable)
            subject.error(type.managedMessage);
        if (type.hasLimits)
            checkLimits(subject);
        return;
    }
    if (dataType == CAN::NoDataType)
        subject.error(dataTypeUnknown);
    if (dataType != CAN::Domain)
        checkLimits(subject);
}

using Rule = void (*)(const Subject &);

constexpr Rule rules[] = {
    checkLimitFlag, checkName, checkVariable, checkAccessType, checkConstAccess, checkDataType,
};

} // namespace

void checkSubIndex(const LineCheck &check, const SubIndexEntry &entry, int objectCode)
{
    const Subject subject{.check = check, .entry = entry, .objectCode = objectCode};
    for (const Rule rule : rules)
        rule(subject);
}

bool isInLimits(const ObjectDataBase::SUBINDEX_DATA_T &data)
{
    bool isBounded = false;
    const qint64 high = data.uplimit.toLongLong(&isBounded, 0);
    if (!isBounded || high == unboundedUpperLimit)
        return true;
    const qint64 value = data.defaultvalue.toLongLong(nullptr, 0);
    return value >= data.lowlimit.toLongLong(nullptr, 0) && value <= high;
}

bool isAccessType(const QString &text)
{
    return std::any_of(
        CANopen::accessTypes.begin(), CANopen::accessTypes.end(),
        [&](const CANopen::AccessType &access) { return text == QLatin1StringView(access.word); });
}

bool isVariableName(const QString &text)
{
    return !text.contains(u' ') && !text.contains(u',') && !text.contains(u';');
}
