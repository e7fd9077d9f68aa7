#pragma once

#include "canopen/PDOMapping.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <array>

class ObjectDataBase;

/** One sub-index as a device description shows it. */
struct DescribedSubIndex
{
    quint8 number = 0;
    QString name;
    int dataType = 0; ///< number of CiA 301; the project's own types have a stand-in
    QString accessType;
    PDOMapping pdoMapping;
    bool hasDefault = false; ///< whether the value is told
    QString defaultValue;
    bool hasLimits = false;
    QString lowLimit;
    QString highLimit;
    quint32 flags = 0; ///< ObjFlags of CiA 306
    QString description;
};

/** One object with the sub-indices that belong to the variant. */
struct DescribedObject
{
    quint16 index = 0;
    QString name;
    int code = 0; ///< object code of CiA 301
    int dataType = 0; ///< of the object itself; 0 where only its sub-indices tell one
    QString description;
    QList<DescribedSubIndex> subIndices; ///< ascending

    /** The sub-index, or nullptr where the object has none of that number. */
    const DescribedSubIndex *find(quint8 number) const;
    /** Whether its sub-indices stand on their own; otherwise sub-index 0 is the object. */
    bool isStructured() const;
};

/** The identity of a device as object 0x1018 holds it; "0" for what that object does not tell. */
struct DeviceIdentity
{
    QString vendor;
    QString product;
    QString revision;
};

/**
 * All that the description files of one line tell, read once so that their writers need no store.
 *
 * Texts are those of the project; a writer brings them into the form of its file. Numbers among the
 * settings are "0" where the project has none.
 */
struct DeviceDescription
{
    static constexpr std::array baudRates{10, 20, 50, 125, 250, 500, 800, 1000}; ///< kBit/s, CiA 306
    static constexpr int dummyTypes = 7; ///< BOOLEAN to UNSIGNED32, mapped to skip bits of a PDO

    QString fileVersion;
    QString fileRevision;
    QString createdBy;
    QString modifiedBy;
    QDateTime created;

    QString vendorName;
    QString productName;
    QString orderCode;
    DeviceIdentity identity;
    std::array<QString, baudRates.size()> supportedBaudRates;
    int receivePdos = 0;
    int transmitPdos = 0;
    QString lssSupported;
    QString granularity;
    bool hasGroupMessaging = false; ///< some PDO is multiplexed

    std::array<QString, dummyTypes> dummyUsage;
    QString comment;
    QString additionalSections;

    QList<DescribedObject> objects; ///< of the variant, ascending from 0x1000 on

    /**
     * The description of a line. Objects and sub-indices whose metadata key "eds_define" is set are left
     * out unless it names the variant; an empty variant holds none of them.
     */
    static DeviceDescription read(ObjectDataBase &store, quint8 line, const QString &variant);
};
