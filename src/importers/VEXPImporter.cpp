#include "importers/VEXPImporter.h"

#include "importers/ImplementationRules.h"

#include <QDir>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

VEXPImporter::~VEXPImporter()
{
    endWorker();
}

void VEXPImporter::doImport()
{
    const Session session(*this);
    if (!session.isOpen())
        return;
    ObjectDataBase source;
    quint8 from = 0;
    if (!openSource(source) || !chooseLine(source, from) || startIndex() > 0xFFFF)
        return;
    source.cacheAllSubs(from, 0);
    const QList<quint16> indices =
        source.getIndexList(from, quint16(startIndex()), quint16(qMin(endIndex(), quint32(0xFFFF))));
    qint64 done = 0;
    for (const quint16 index : indices) {
        if (isCancelled())
            return;
        if (!copyObject(source, from, index)) {
            Q_EMIT importError(u"Object 0x%1 could not be stored."_s.arg(index, 4, 16, QLatin1Char('0')));
            return;
        }
        reportProgress(++done, indices.size());
    }
}

bool VEXPImporter::openSource(ObjectDataBase &source)
{
    // Opening a project moves the current folder, on which the open project's relative paths depend.
    const auto folder = qScopeGuard([path = QDir::currentPath()] { QDir::setCurrent(path); });
    if (source.openDataBase(fileName(), true))
        return true;
    const QString reason = source.lastError();
    Q_EMIT importError(reason.isEmpty() ? u"File %1 is not readable."_s.arg(fileName()) : reason);
    return false;
}

bool VEXPImporter::chooseLine(ObjectDataBase &source, quint8 &line)
{
    const QList<quint8> lines = source.getLines();
    if (lines.isEmpty()) {
        Q_EMIT importError(u"%1 holds no line."_s.arg(fileName()));
        return false;
    }
    line = m_sourceLine == FirstLine ? lines.first() : m_sourceLine;
    if (lines.contains(line))
        return true;
    Q_EMIT importError(u"%1 has no line %2."_s.arg(fileName()).arg(line));
    return false;
}

bool VEXPImporter::copyObject(ObjectDataBase &source, quint8 sourceLine, quint16 index)
{
    ObjectDataBase::INDEX_DATA_T object;
    if (!source.getIndex(sourceLine, index, object))
        return false;
    if (database().indexExists(line(), index) && !database().removeIndex(line(), index))
        return false;
    if (!addObject(index, object))
        return false;
    const QList<quint8> subIndices = source.getSubIndexList(sourceLine, index);
    for (const quint8 subIndex : subIndices) {
        ObjectDataBase::SUBINDEX_DATA_T sub;
        if (!source.getSubIndex(sourceLine, index, subIndex, sub))
            return false;
        const bool isCount = subIndex == 0 && ImplementationRules::hasCount(object.objecttype);
        if (!m_keepImplementation && !isCount)
            sub.implementation = ImplementationRules::managed(sub.datatype, sub.accesstype);
        addSubIndex(index, subIndex, sub);
    }
    return true;
}
