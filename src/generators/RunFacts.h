#pragma once

#include <QList>
#include <QMap>

class ObjectDataBase;

/** What the settings and lines of a project say about the generators that it needs. */
struct RunFacts
{
    QList<quint8> lines; ///< ascending, without the reserved ones
    QMap<quint8, int> lineTypes;
    bool hasCANopen = false;
    bool hasJ1939 = false;
    bool hasRawCan = false;
    bool multiLine = false;

    bool core = false; ///< for the newer generation of the stack
    bool bootloader = false; ///< a UDS bootloader, which has a single line
    bool canFd = false;
    bool udsStaticIndication = false;
    bool compactArrays = false;
    bool staticSrdoData = false;
    bool cppOutput = false;
    bool csharpProps = false;
    bool j1939Adapter = false;
    bool j1939SdoServer = false; ///< SDO server for CiA 510 on a J1939 line
    bool safetyMessages = false;
    bool disableDocu = false;

    bool hasSrdo = false; ///< some line has SRDO communication objects
    bool hasVirtualObjects = false;

    /** Decided by the caller of the run, not by the project. */
    bool generateVirtualObjects = false;
    bool generateSrdo = true;

    static RunFacts read(ObjectDataBase &store);
    /** The lines of a project in ascending order, without clipboard and reference line. */
    static QList<quint8> projectLines(ObjectDataBase &store);
    /** The stored type of a line; 0 where it is not set. */
    static int lineType(ObjectDataBase &store, quint8 line);
    int lineType(quint8 line) const { return lineTypes.value(line); }

    bool hasAnyProtocol() const { return hasCANopen || hasJ1939 || hasRawCan; }
    bool isCANopenOnly() const { return hasCANopen && !hasJ1939 && !hasRawCan; }
    bool isJ1939Only() const { return hasJ1939 && !hasCANopen && !hasRawCan; }
    /** Several protocols have to share one initialisation. */
    bool isMultiProtocol() const { return (hasJ1939 && hasCANopen) || hasRawCan; }
};
