#pragma once

#include "generators/descriptions/DeviceDescription.h"

#include <QDateTime>
#include <QString>

class CodeWriter;

/** Writes the sections of an EDS file (CiA 306, version 4.0) in the order of the file. */
class EdsWriter
{
public:
    EdsWriter(CodeWriter &out, const DeviceDescription &device) : m_out(out), m_device(device) { }

    /** What stands before the objects: title, FileInfo, DeviceInfo, DummyUsage, Comments. */
    void head(const QString &projectName, const QString &version, const QDateTime &now);
    void objectLists();
    void object(const DescribedObject &object);
    void additionalSections();

private:
    void fileInfo(const QString &projectName, const QDateTime &now);
    void deviceInfo();
    void dummyUsage();
    void comments();
    void objectList(QStringView section, const QList<quint16> &indices);
    void structure(const DescribedObject &object);
    void subIndex(quint16 index, const DescribedSubIndex &sub);
    void entry(const DescribedSubIndex &sub, const QString &description);
    void deviceType(const DescribedObject &object);
    void description(const QString &text);

    CodeWriter &m_out;
    const DeviceDescription &m_device;
};
