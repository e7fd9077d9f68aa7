#include "store/commands/ImportHandler.h"

#include "importers/VEXPImporter.h"
#include "store/ObjectDataBase.h"
#include "store/commands/ImportCommands.h"

#include <QDebug>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QSet>
#include <QTimer>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr qint64 smallestFile = 11; // bytes: "[Projects]" and a line end
constexpr quint8 scratchLine = BaseDataImporter::StagingLine;
constexpr quint16 firstObject = 0x1000; // what is below are data types
constexpr quint16 lastObject = 0xFFFF;

/** Whether all indices of an ascending list stay indices when the offset is added. */
bool offsetFits(const QList<quint16> &indices, quint16 offset)
{
    return indices.isEmpty() || indices.last() + offset <= lastObject;
}

} // namespace

ImportHandler::ImportHandler(const QSharedPointer<ObjectDataBase> &store, QObject *parent)
    : QObject(parent), m_store(store)
{
}

bool ImportHandler::setFile(const QString &path)
{
    m_path.clear();
    m_error.clear();
    const QFileInfo info(path);
    if (!info.isFile() || !QFile(path).open(QIODevice::ReadOnly))
        m_error = u"File %1 is not readable."_s.arg(path);
    else if (info.size() < smallestFile)
        m_error = u"File too small"_s;
    else if (!ImportCommands::read(path).hasKeys)
        m_error = u"Invalid file structure"_s;
    if (!m_error.isEmpty())
        return false;
    m_path = info.absoluteFilePath();
    return true;
}

bool ImportHandler::applyImportFile()
{
    if (!m_store || m_path.isEmpty()) {
        if (m_error.isEmpty())
            m_error = m_store ? u"There is no command file."_s : u"There is no project to import into."_s;
        return false;
    }
    m_error.clear();
    m_store->setWriteLock(false);
    qDebug().noquote() << u"Applying "_s + m_path;
    ImportCommands::CommandFile file = ImportCommands::read(m_path);
    qDebug() << file.projects;
    if (file.projects.isEmpty()) {
        m_error = u"No projects found."_s;
        return false;
    }
    m_deleteObjects = file.deleteObjects;
    const QString signature = QString::fromLatin1(Q_FUNC_INFO);
    return std::all_of(file.actions.begin(), file.actions.end(), [&](actionSetting &action) {
        if (processAction(action))
            return true;
        m_error = signature + u' ' + action.text + u" failed"_s;
        qDebug().noquote() << m_error;
        return false;
    });
}

bool ImportHandler::processAction(actionSetting &action)
{
    switch (action.type) {
    case actionSetting::Delete:
        return processDelete(action);
    case actionSetting::Import:
        return processImport(action);
    case actionSetting::Copy:
        return processCopy(action);
    default:
        return false;
    }
}

/** A line that the project's file has; the reserved ones belong to the program. */
bool ImportHandler::isProjectLine(quint8 line)
{
    return line < ObjectDataBase::MaximumLines && m_store->nodeExists(line);
}

bool ImportHandler::processDelete(actionSetting &action)
{
    if (!isProjectLine(action.sourceLine))
        return false;
    const QList<quint16> indices = m_store->getIndexList(action.sourceLine, action.from, action.to);
    return std::all_of(indices.begin(), indices.end(),
                       [&](quint16 index) { return m_store->removeIndex(action.sourceLine, index); });
}

bool ImportHandler::processCopy(actionSetting &action)
{
    if (!isProjectLine(action.sourceLine) || !isProjectLine(action.targetLine))
        return false;
    QList<quint16> indices = m_store->getIndexList(action.sourceLine, action.from, action.to);
    if (!offsetFits(indices, action.offset))
        return false;
    // From the far end, so that a copy within one line never overwrites what is still to be copied.
    std::reverse(indices.begin(), indices.end());
    return std::all_of(indices.begin(), indices.end(), [&](quint16 index) {
        return m_store->copyIndex(action.sourceLine, index, action.targetLine,
                                  quint16(index + action.offset));
    });
}

bool ImportHandler::processImport(actionSetting &action)
{
    if (!isProjectLine(action.targetLine) || action.projectPath.isEmpty())
        return false;
    const auto drop = qScopeGuard([this] { m_store->removeLine(scratchLine); });
    return makeScratchLine() && readIntoScratchLine(action) && takeFromScratchLine(action);
}

bool ImportHandler::makeScratchLine()
{
    if (m_store->nodeExists(scratchLine))
        m_store->removeLine(scratchLine);
    return m_store->addNode(scratchLine, ObjectDataBase::NODE_DATA_T());
}

bool ImportHandler::readIntoScratchLine(const actionSetting &action)
{
    VEXPImporter importer;
    bool success = true;
    bool ended = false; // stays false where the event loop is left because the program ends
    connect(&importer, &BaseDataImporter::importError, this, [&success](const QString &error) {
        qWarning().noquote() << error;
        success = false;
    });
    importer.setDatabase(m_store);
    importer.setLine(scratchLine);
    importer.setSourceLine(action.sourceLine);
    importer.setRange(0, lastObject);
    if (!importer.setFile(action.projectPath)) {
        qWarning().noquote() << u"File %1 is not readable."_s.arg(action.projectPath);
        return false;
    }
    // The time behind the importer's end lets its last queued signals arrive.
    QEventLoop loop;
    QTimer afterEnd;
    afterEnd.setSingleShot(true);
    afterEnd.setInterval(100ms);
    connect(&importer, &BaseDataImporter::finished, &afterEnd, qOverload<>(&QTimer::start));
    connect(&afterEnd, &QTimer::timeout, &loop, [&] {
        ended = true;
        loop.quit();
    });
    if (!importer.startImport())
        return false;
    loop.exec();
    return success && ended;
}

bool ImportHandler::takeFromScratchLine(const actionSetting &action)
{
    const QList<quint16> indices = m_store->getIndexList(scratchLine, firstObject, lastObject);
    if (!offsetFits(indices, action.offset))
        return false;
    m_store->cacheAllSubs(scratchLine, 0);
    QList<quint16> brought;
    for (const quint16 index : indices) {
        const auto target = quint16(index + action.offset);
        if (!m_store->copyIndexFrom(*m_store, scratchLine, index, action.targetLine, target, true))
            return false;
        brought.append(target);
    }
    return !m_deleteObjects || removeOtherObjects(action.targetLine, brought);
}

bool ImportHandler::removeOtherObjects(quint8 line, const QList<quint16> &keptIndices)
{
    const QSet<quint16> kept(keptIndices.begin(), keptIndices.end());
    const QList<quint16> present = m_store->getIndexList(line, firstObject, lastObject);
    return std::all_of(present.begin(), present.end(), [&](quint16 index) {
        return kept.contains(index) || m_store->removeIndex(line, index);
    });
}
