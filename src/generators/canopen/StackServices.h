#pragma once

#include <QStringView>

#include <optional>

/**
 * Which objects of the communication profile (CiA 301 and its companions) the stack serves by itself, and
 * how their description rows say so.
 */
namespace StackServices {

/** Whether the stack keeps the value, so that no managed variable is needed. */
bool holdsValue(quint16 index, quint8 subIndex);

/** Suffix of the storage class macro ("_SYNC"); empty for an object that no service serves. */
QStringView specifier(quint16 index, quint8 subIndex);

/** What stands for a value position: the index or the number of the service; none where a position does. */
std::optional<quint16> reference(quint16 index, quint8 subIndex);

} // namespace StackServices
