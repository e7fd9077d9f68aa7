#pragma once

#include <QList>
#include <QObject>
#include <QSharedPointer>

class ObjectDataBase;

/**
 * Corrections of a project that has just been opened: settings that former versions kept elsewhere, and
 * rows that they left behind.
 *
 * No correction loses anything that a user entered; what cannot be told is logged and left alone. Each
 * gives false when there is no store or a write failed.
 */
class ProjectConverter : public QObject
{
    Q_OBJECT

public:
    explicit ProjectConverter(QObject *parent = nullptr);

    void setDataBase(const QSharedPointer<ObjectDataBase> &store);

    /** Applies to every edition: the old group filter and the UDS server version 5. */
    bool doGenericCorrection();
    /** Stack path, NMT master per line, USDO switches and the implementation of 0x1032. */
    bool doProjectCorrection();
    /** Closes gaps in the list of virtual devices and drops what belongs to none of them. */
    bool doEnergyBusCorrection();
    /** Doubled rows, signals without bit positions and counts of the J1939 tables. */
    bool correctJ1939();
    /** The same for the raw CAN tables. */
    bool correctRawCan();

private:
    bool fillStackPath();
    bool moveMasterSettings();
    bool enableUsdo(const QString &enabledKey, const QString &countKey);
    bool correctEmcyConsumerObject(quint8 line);
    QList<quint8> projectLines() const;

    QSharedPointer<ObjectDataBase> m_store;
};
