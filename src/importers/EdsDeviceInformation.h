#pragma once

class EdsDocument;
class EdsFindings;
class ObjectDataBase;

/** The sections of a device description that describe the device instead of its objects. */
namespace EdsDeviceInformation {

/**
 * Writes file and device information, the dummy types, the comment and the sections that are unknown here
 * to the description settings of the line that is chosen in the store. A key that the file does not have
 * leaves its setting as it is.
 */
void store(const EdsDocument &document, ObjectDataBase &database, EdsFindings &findings);

/** The number of PDOs that a key of [DeviceInfo] declares, else the setting of that name; 0 without either.
 */
int pdoCount(const EdsDocument &document, ObjectDataBase &database, const char *key);

} // namespace EdsDeviceInformation
