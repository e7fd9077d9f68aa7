#pragma once

#include "generators/descriptions/DeviceDescription.h"

#include <QBuffer>
#include <QXmlStreamWriter>

/** Makes the text of an XDD file. Whatever the texts of the project hold, the file is well-formed XML. */
class XddWriter
{
public:
    XddWriter(const DeviceDescription &device, const QString &fileName);

    /** The device profile, and the communication profile up to its list of objects. */
    void head(const QString &projectName, const QString &version);
    void object(const DescribedObject &object);
    /** Closes what is open; the whole text. */
    QString end();

private:
    void profileHeader(const QString &identification, const QString &classId);
    void beginBody(const QString &type);
    void deviceProfile();
    void deviceFunction();
    void subIndex(const DescribedSubIndex &sub);
    void label(const QString &text);
    void attribute(const QString &name, const QString &value);
    void element(const QString &name, const QString &text);

    const DeviceDescription &m_device;
    QString m_fileName;
    QByteArray m_text;
    QBuffer m_buffer{&m_text};
    QXmlStreamWriter m_xml{&m_buffer};
};
