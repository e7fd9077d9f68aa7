#include "generators/descriptions/EDSGenerator.h"

#include "generators/GenerationClock.h"
#include "generators/descriptions/DescriptionFileName.h"
#include "generators/descriptions/EdsWriter.h"
#include "store/ObjectDataBase.h"

#include <QDebug>

using namespace Qt::StringLiterals;

namespace {

constexpr quint8 headWritten = 25; // percent
constexpr quint8 objectsWritten = 98;

} // namespace

EDSGenerator::EDSGenerator(const QString &variantName, bool fdVariant, bool classical)
    : m_variantName(variantName), m_fdVariant(fdVariant), m_classical(classical)
{
}

QString EDSGenerator::fileName() const
{
    QStringList parts{m_projectName};
    if (m_multiLine)
        parts.append(QString::number(m_line));
    if (!m_variantName.isEmpty())
        parts.append(fileNamePart(m_variantName));
    else if (m_classical)
        parts.append(u"classical"_s);
    return parts.join(u'_') + u".eds"_s;
}

bool EDSGenerator::prepare()
{
    if (!m_database) {
        fail(u"There is no project."_s);
        return false;
    }
    m_device = DeviceDescription::read(*m_database, m_line, m_variantName);
    return true;
}

void EDSGenerator::write(CodeWriter &out)
{
    EdsWriter eds(out, m_device);
    eds.head(m_projectName, m_version, GenerationClock::now());
    Q_EMIT progress(headWritten);
    eds.objectLists();
    for (const DescribedObject &object : std::as_const(m_device.objects)) {
        if (m_stopRequested) {
            qDebug("Generation aborted");
            return;
        }
        eds.object(object);
    }
    Q_EMIT progress(objectsWritten);
    eds.additionalSections();
}
