#pragma once

#include "importers/BaseDataImporter.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QMutex>
#include <QSharedPointer>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

/** What the tests of the importers share. */
namespace ImporterTest {

constexpr quint8 staging = BaseDataImporter::StagingLine;
constexpr int waitMs = 30000;

inline void prepareApplication()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setApplicationName(QStringLiteral("CANopen NodeSmith"));
    QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
}

/** An empty project with a staging line. */
inline QSharedPointer<ObjectDataBase> newStore()
{
    QSharedPointer<ObjectDataBase> store(new ObjectDataBase);
    if (!store->createNewDataBase() || !store->addNode(staging, ObjectDataBase::NODE_DATA_T()))
        qFatal("the store cannot make a new database");
    return store;
}

/** What an importer tells, delivered in the thread of the test. */
class Recorder : public QObject
{
public:
    explicit Recorder(BaseDataImporter &importer)
    {
        connect(&importer, &BaseDataImporter::progress, this,
                [this](quint8 value) { percents.append(value); });
        connect(&importer, &BaseDataImporter::importError, this,
                [this](const QString &text) { errors.append(text); });
        connect(&importer, &BaseDataImporter::newIndex, this,
                [this](const CANopen::CANopenIndex &object) { objects.append(object); });
        connect(&importer, &BaseDataImporter::newSubIndex, this,
                [this](const CANopenSubindex &sub) { subs.append(sub); });
        connect(&importer, &BaseDataImporter::finished, this, [this] { ++ends; });
    }

    QList<int> percents;
    QStringList errors;
    QList<CANopen::CANopenIndex> objects;
    QList<CANopenSubindex> subs;
    int ends = 0;
};

/** Runs a prepared importer to its end; false when it did not start or never ended. */
inline bool run(BaseDataImporter &importer)
{
    return importer.startImport() && QTest::qWaitFor([&] { return importer.isFinished(); }, waitMs)
        && QTest::qWaitFor([&] { return !importer.isBusy(); }, waitMs);
}

inline bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

inline QString subName(const ObjectDataBase::SubAddress &address)
{
    return QStringLiteral("%1:%2")
        .arg(address.first, 4, 16, QLatin1Char('0'))
        .arg(address.second, 2, 16, QLatin1Char('0'));
}

/** "index:sub" of every row of a line, in order. */
inline QStringList rows(ObjectDataBase &store, quint8 line)
{
    QStringList result;
    const QList<quint16> indices = store.getIndexList(line);
    for (const quint16 index : indices) {
        const QList<quint8> subs = store.getSubIndexList(line, index);
        for (const quint8 sub : subs)
            result.append(subName({index, sub}));
    }
    return result;
}

inline ObjectDataBase::SUBINDEX_DATA_T sub(ObjectDataBase &store, quint8 line, quint16 index, quint8 subIndex)
{
    ObjectDataBase::SUBINDEX_DATA_T data;
    if (!store.getSubIndex(line, index, subIndex, data))
        data.name = QStringLiteral("(missing)");
    return data;
}

inline ObjectDataBase::INDEX_DATA_T object(ObjectDataBase &store, quint8 line, quint16 index)
{
    ObjectDataBase::INDEX_DATA_T data;
    if (!store.getIndex(line, index, data))
        data.name = QStringLiteral("(missing)");
    return data;
}

/** Collects the debug lines of its lifetime; the worker's too. */
class DebugLines
{
public:
    DebugLines()
    {
        const QMutexLocker locker(&s_mutex);
        s_lines.clear();
        m_former = qInstallMessageHandler(&DebugLines::take);
    }
    ~DebugLines() { qInstallMessageHandler(m_former); }
    Q_DISABLE_COPY_MOVE(DebugLines)

    static QStringList all()
    {
        const QMutexLocker locker(&s_mutex);
        return s_lines;
    }

private:
    static void take(QtMsgType, const QMessageLogContext &, const QString &text)
    {
        const QMutexLocker locker(&s_mutex);
        s_lines.append(text);
    }

    static inline QMutex s_mutex;
    static inline QStringList s_lines;
    QtMessageHandler m_former = nullptr;
};

} // namespace ImporterTest
