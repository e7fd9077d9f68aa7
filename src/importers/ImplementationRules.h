#pragma once

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"

#include <QStringView>

/** How objects that come from a file hold their values. */
namespace ImplementationRules {

/**
 * The implementation of a sub-index when "managed variables" are asked for.
 *
 * Values without a fixed size stay with the application; a text that is only read is a constant.
 */
inline CANopen::ImplementationKind managed(int dataType, QStringView accessType)
{
    switch (dataType) {
    case CAN::Domain:
    case CAN::OctetString:
    case CAN::Utf8String:
        return CANopen::ApplicationVariable;
    case CAN::VisibleString:
        return accessType == u"ro" ? CANopen::ManagedConst : CANopen::ApplicationVariable;
    default:
        return CANopen::ManagedVariable;
    }
}

/** Whether sub-index 0 of such an object counts its sub-indices instead of holding a value. */
inline bool hasCount(int objectCode)
{
    return objectCode == CANopen::Array || objectCode == CANopen::Record;
}

} // namespace ImplementationRules
