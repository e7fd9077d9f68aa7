#pragma once

#include "check/CheckProject.h"

#include <QHash>
#include <QRandomGenerator>

/** CANopen devices, and J1939 devices with objects, of any shape from a seed: the same seed makes the same
 * device. */
class RandomDictionary
{
public:
    explicit RandomDictionary(quint32 seed) : m_random(seed) { }

    /** One to four lines; settings, services, objects and PDOs as the dice fall. */
    CheckTest::Project make();
    /** A text with everything that means something in C. */
    QString text();

private:
    int below(int bound) { return int(m_random.bounded(bound)); }
    bool chance(int percent) { return below(100) < percent; }
    template <typename List>
    auto oneOf(const List &list)
    {
        return list.at(below(int(list.size())));
    }
    QString bytes();
    QString number(int type);
    CheckTest::Sub any();
    void rememberMappable(quint8 line, quint16 index, quint8 number, const CheckTest::Sub &data);
    void addSettings(const CheckTest::Project &project);
    void addServices(const CheckTest::Project &project);
    void addObjects(const CheckTest::Project &project);
    void addObject(const CheckTest::Project &project, quint16 index);
    void addArray(const CheckTest::Project &project, quint16 index);
    void addPdos(const CheckTest::Project &project);
    QStringList mapped(const QList<quint32> &entries);
    void shareObjects(const CheckTest::Project &project, quint8 line);

    QRandomGenerator m_random;
    QHash<quint8, QList<quint32>> m_received; ///< by line: mapping entries that its receive PDOs may have
    QHash<quint8, QList<quint32>> m_sent;
};
