#pragma once

#include "importers/DeviceDescriptionImporter.h"

class QIODevice;
class QXmlStreamAttributes;
class QXmlStreamReader;

/**
 * Reads the objects of an XML device description of CANopen FD (CiA 1311, "xdd").
 *
 * What stands before an error of the XML is imported. Elements and attributes of other formats are left
 * alone.
 */
class XDDImporter : public DeviceDescriptionImporter
{
    Q_OBJECT

public:
    XDDImporter() = default;
    ~XDDImporter() override;

protected:
    void read() override;

private:
    struct Object
    {
        quint16 index = 0; ///< 0 while there is none
        ObjectDataBase::INDEX_DATA_T data;
        Rows rows;
        int line = 0;
        bool own = false; ///< the value of sub-index 0 stands at the object itself
    };

    /** How an attribute tells a number, and what it is without one. */
    struct NumberForm
    {
        int base;
        int highest;
        int otherwise;
    };

    bool readToken(QXmlStreamReader &xml, QIODevice &file);
    void takeToken(QXmlStreamReader &xml);
    void takeStart(QXmlStreamReader &xml);
    void takeObject(QXmlStreamReader &xml);
    void takeElement(QXmlStreamReader &xml);
    void takeRow(const QXmlStreamAttributes &attributes, quint8 subIndex, const QString &name,
                 int sourceLine);
    void writeCurrentObject();
    QString valueOf(const QXmlStreamAttributes &attributes, QLatin1StringView name, quint16 dataType,
                    int sourceLine);
    QString accessType(const QXmlStreamAttributes &attributes, const QString &readWrite, int sourceLine);
    int number(const QXmlStreamAttributes &attributes, QLatin1StringView name, NumberForm form,
               int sourceLine);

    // The state of one read.
    Object m_object;
    bool m_found = false; ///< at least one object element: the format is right
    QSet<quint16> m_known; ///< indices that were imported
    bool m_inProductName = false;
    bool m_hasProductName = false;
    QString m_productName;
    int m_depth = 0;
};
