#pragma once

#include <QString>

/**
 * What differs between the four editions. All of it is decided at run time by the application name.
 *
 * Some decisions look for a part of the name, others compare the whole name; the two manners give
 * different answers for names outside the four and are not interchangeable.
 */
namespace Edition {

bool isCANopen();
bool isJ1939();
bool isCan();
bool isEnergyBus();

/** Whether an opened project gets the corrections of that protocol: the name need only hold the words. */
bool nameHoldsJ1939();
bool nameHoldsCan();

/** Type of line 0 in the store that the program starts with; empty when the edition leaves it open. */
QString startLineType();
/** Template database of a new project; the file need not exist. */
QString projectTemplate();
/** Database of the predefined objects that the start-up logic loads into the reference store. */
QString referenceProfile();
/** Icon of the application's windows. */
QString iconPath();

} // namespace Edition
