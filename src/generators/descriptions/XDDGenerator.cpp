#include "generators/descriptions/XDDGenerator.h"

#include "generators/CodeWriter.h"
#include "generators/descriptions/DescriptionFileName.h"
#include "generators/descriptions/XddWriter.h"
#include "store/ObjectDataBase.h"

#include <QDebug>

using namespace Qt::StringLiterals;

QString XDDGenerator::fileName() const
{
    QStringList parts{m_projectName, QString::number(m_line)};
    if (!m_variantName.isEmpty())
        parts.append(fileNamePart(m_variantName));
    return parts.join(u'_') + u".xdd"_s;
}

QString XDDGenerator::jobName() const
{
    return u"XDD file"_s;
}

bool XDDGenerator::prepare()
{
    if (!m_database) {
        fail(u"There is no project."_s);
        return false;
    }
    m_device = DeviceDescription::read(*m_database, m_line, m_variantName);
    return true;
}

void XDDGenerator::write(CodeWriter &out)
{
    XddWriter xdd(m_device, fileName());
    xdd.head(m_projectName, m_version);
    for (const DescribedObject &object : std::as_const(m_device.objects)) {
        if (m_stopRequested) {
            qDebug("Generation aborted");
            break;
        }
        xdd.object(object);
    }
    out << xdd.end();
}
