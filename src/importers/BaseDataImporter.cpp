#include "importers/BaseDataImporter.h"

#include "canopen/CANTypes.h"

#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/** Rows that one transaction takes; bounds the memory of a read. */
constexpr qsizetype rowsPerTransaction = 2000;
constexpr int percentBeforeEnd = 99;

struct WidthType
{
    int bits;
    quint16 unsignedType;
    quint16 signedType;
};

constexpr WidthType widthTypes[] = {
    {0, CAN::VisStringAsteriks, CAN::VisStringAsteriks},
    {1, CAN::Boolean, CAN::Boolean},
    {2, CAN::Unsigned2, CAN::Unsigned2},
    {3, CAN::Unsigned3, CAN::Unsigned3},
    {4, CAN::Unsigned4, CAN::Unsigned4},
    {5, CAN::Unsigned5, CAN::Unsigned5},
    {6, CAN::Unsigned6, CAN::Unsigned6},
    {7, CAN::Unsigned7, CAN::Unsigned7},
    {8, CAN::Unsigned8, CAN::Integer8},
    {10, CAN::Unsigned10, CAN::Unsigned10},
    {11, CAN::Unsigned11, CAN::Unsigned11},
    {12, CAN::Unsigned12, CAN::Unsigned12},
    {13, CAN::Unsigned13, CAN::Unsigned13},
    {14, CAN::Unsigned14, CAN::Unsigned14},
    {16, CAN::Unsigned16, CAN::Integer16},
    {18, CAN::Unsigned18, CAN::Unsigned18},
    {19, CAN::Unsigned19, CAN::Unsigned19},
    {21, CAN::Unsigned21, CAN::Unsigned21},
    {24, CAN::Unsigned24, CAN::Integer24},
    {29, CAN::Unsigned29, CAN::Unsigned29},
    {32, CAN::Unsigned32, CAN::Integer32},
    {40, CAN::Unsigned40, CAN::Integer40},
    {48, CAN::Unsigned48, CAN::Integer48},
    {56, CAN::Unsigned56, CAN::Integer56},
    {64, CAN::Unsigned64, CAN::Integer64},
};
constexpr int widestNumber = 64;

CANopen::CANopenIndex asDescription(quint16 index, const ObjectDataBase::INDEX_DATA_T &data)
{
    CANopen::CANopenIndex result;
    result.index = index;
    result.objectCode = CANopen::ObjectCode(data.objecttype);
    result.name = data.name;
    result.dataType = quint16(data.datatype);
    return result;
}

CANopenSubindex asDescription(quint16 index, quint8 subIndex, const ObjectDataBase::SUBINDEX_DATA_T &data)
{
    CANopenSubindex result;
    result.index = index;
    result.subIndex = subIndex;
    result.name = data.name;
    result.dataType = quint16(data.datatype);
    result.accessType = data.accesstype;
    result.defaultValue = data.defaultvalue;
    result.denotation = data.denotation;
    result.lowLimit = data.lowlimit;
    result.highLimit = data.uplimit;
    result.pdoMapping = data.pdomapping.toBinary() != 0;
    result.hasLimits = data.limitineds;
    return result;
}

} // namespace

BaseDataImporter::BaseDataImporter() = default;

BaseDataImporter::~BaseDataImporter()
{
    endWorker();
}

bool BaseDataImporter::setLine(quint8 line)
{
    m_line = line;
    return true;
}

bool BaseDataImporter::setDatabase(const QSharedPointer<ObjectDataBase> &database)
{
    if (!database)
        return false;
    m_database = database;
    return true;
}

bool BaseDataImporter::setFile(const QString &fileName)
{
    const QFileInfo info(fileName);
    const bool usable = info.isFile() && info.isReadable();
    m_fileName = usable ? fileName : QString();
    return usable;
}

void BaseDataImporter::setRange(quint32 first, quint32 last)
{
    m_startIndex = first;
    m_endIndex = last;
}

bool BaseDataImporter::startImport()
{
    if (m_busy || parent() || m_started.exchange(true))
        return false;
    if (m_worker)
        joinWorker();
    else
        m_worker.reset(new QThread);
    if (thread() != QThread::currentThread()) {
        m_started = false;
        return false;
    }
    m_home = thread();
    moveToThread(m_worker.get());
    QMetaObject::invokeMethod(
        this, [this] { runOnWorker(); }, Qt::QueuedConnection);
    m_worker->start(QThread::InheritPriority);
    return true;
}

void BaseDataImporter::runOnWorker()
{
    QThread *const worker = QThread::currentThread();
    doImport();
    m_started = false;
    Q_EMIT finished();
    moveToThread(m_home);
    // The last access of this thread: who starts or deletes the importer waits for the thread first.
    m_handedBack = true;
    worker->quit();
}

bool BaseDataImporter::isFinished() const
{
    return m_worker ? m_worker->isFinished() && !m_busy : !m_busy;
}

bool BaseDataImporter::isCancelled() const
{
    return m_cancelled;
}

void BaseDataImporter::endWorker()
{
    if (!m_worker)
        return;
    m_cancelled = true;
    m_worker->quit();
    joinWorker();
}

void BaseDataImporter::joinWorker()
{
    m_worker->wait();
    // Reading what the worker wrote last orders all its accesses before ours.
    m_handedBack.exchange(false);
}

bool BaseDataImporter::carryOutCommands(quint8)
{
    return true;
}

quint16 BaseDataImporter::dataTypeOfWidth(int bits, bool isSigned)
{
    if (bits > widestNumber)
        return CAN::OctetString;
    for (const WidthType &type : widthTypes) {
        if (type.bits == bits)
            return isSigned ? type.signedType : type.unsignedType;
    }
    return CAN::NoDataType;
}

bool BaseDataImporter::addObject(quint16 index, const ObjectDataBase::INDEX_DATA_T &data)
{
    if (!m_database->addIndex(m_line, index, data))
        return false;
    m_importedObjects.insert(index, data);
    Q_EMIT newIndex(asDescription(index, data));
    return true;
}

void BaseDataImporter::addSubIndex(quint16 index, quint8 subIndex,
                                   const ObjectDataBase::SUBINDEX_DATA_T &data)
{
    m_pendingRows.append({.line = m_line, .index = index, .subindex = subIndex, .data = data});
    Q_EMIT newSubIndex(asDescription(index, subIndex, data));
    if (m_pendingRows.size() >= rowsPerTransaction)
        writePendingRows();
}

void BaseDataImporter::writePendingRows()
{
    const QList<ObjectDataBase::SubEntry> rows = std::exchange(m_pendingRows, {});
    if (!rows.isEmpty() && !m_database->addSubIndices(rows))
        Q_EMIT importError(u"The project could not take all sub-indices."_s);
}

void BaseDataImporter::reportProgress(qint64 done, qint64 total)
{
    const int percent = total > 0 ? int(std::clamp<qint64>(done * 100 / total, 0, percentBeforeEnd)) : 0;
    if (percent <= m_percent)
        return;
    m_percent = percent;
    Q_EMIT progress(quint8(percent));
}

BaseDataImporter::Session::Session(BaseDataImporter &importer) : m_importer(importer)
{
    m_importer.m_busy = true;
    m_importer.m_percent = 0;
    m_importer.m_importedObjects.clear();
    m_importer.m_pendingRows.clear();
    Q_EMIT m_importer.progress(0);
    // A lock that another worker holds is not the importer's to release.
    if (m_importer.m_database && !m_importer.m_database->isWriteLocked()) {
        m_open = true;
        m_importer.m_database->blockUpdates(true);
        // Only after the other threads are held, so that none of their notifications gets lost.
        m_signalsWereBlocked = m_importer.m_database->blockSignals(true);
    }
    const QString error = obstacle();
    if (error.isEmpty())
        return;
    Q_EMIT m_importer.importError(error);
    if (m_open) {
        m_importer.m_database->blockSignals(m_signalsWereBlocked);
        m_importer.m_database->blockUpdates(false);
        m_open = false;
    }
}

BaseDataImporter::Session::~Session()
{
    if (m_open) {
        m_importer.writePendingRows();
        m_importer.m_database->blockSignals(m_signalsWereBlocked);
        m_importer.m_database->blockUpdates(false);
    }
    m_importer.m_busy = false;
    Q_EMIT m_importer.progress(100);
}

QString BaseDataImporter::Session::obstacle() const
{
    if (!m_importer.m_database)
        return u"There is no project to import into."_s;
    if (!m_open)
        return u"The project is locked by another operation."_s;
    if (m_importer.m_fileName.isEmpty())
        return u"There is no file to import."_s;
    if (!m_importer.m_database->nodeExists(m_importer.m_line))
        return u"The project has no line %1 to import into."_s.arg(m_importer.m_line);
    return {};
}
