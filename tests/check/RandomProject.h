#pragma once

#include "check/CheckProject.h"

#include <QRandomGenerator>

namespace CheckTest {

/** Valid projects of any shape from a seed: the same seed makes the same project. */
class RandomProject
{
public:
    explicit RandomProject(quint32 seed) : m_random(seed) { }

    /** One to three lines of any type. */
    Project make();
    /** Makes faults that the check corrects by itself; the number of corrections. */
    int spoilCorrectably(const Project &project);
    /** Makes some of the faults that stay. */
    void spoil(const Project &project);

    int below(int bound) { return int(m_random.bounded(bound)); }
    bool chance(int percent) { return below(100) < percent; }
    template <typename List>
    auto oneOf(const List &list)
    {
        return list.at(below(int(list.size())));
    }

private:
    struct Mappable
    {
        quint32 entry; ///< index, sub-index and length as a PDO maps them
        bool isReceived;
        bool isSent;
        bool isSafe; ///< an application variable
    };

    QString value(int type);
    Sub subIndex(quint16 index, quint8 subIndex);
    void addObjects(const Project &project);
    void addPdos(const Project &project);
    void addPdo(const Project &project, quint16 index, bool isSent, int maximumBits);
    void addSrdos(const Project &project);
    void addGroups(const Project &project);
    void addMessages(const Project &project);

    QRandomGenerator m_random;
    QList<Mappable> m_mappable;
    int m_names = 0;
    int m_cobIds = 0;
};

} // namespace CheckTest
