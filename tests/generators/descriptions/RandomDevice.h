#pragma once

#include "canopen/CANopenTypes.h"
#include "generators/descriptions/DescriptionDesk.h"

#include <QRandomGenerator>

/** Fills a project with a device of random objects, in the form that a device description can carry. */
class RandomDevice
{
public:
    /** The same seed makes the same device. */
    RandomDevice(DescriptionDesk &desk, quint32 seed) : m_desk(desk), m_random(seed) { }

    void make();
    /** Forms of values that only an XML description can hold. */
    void setXmlTexts(bool xml) { m_xml = xml; }

private:
    using Sub = DescriptionDesk::Sub;

    int below(int bound) { return int(m_random.bounded(bound)); }
    bool oneIn(int chances) { return below(chances) == 0; }
    template <typename List>
    auto anyOf(const List &list)
    {
        return list.at(below(int(list.size())));
    }

    void makeSettings();
    void makeObject(quint16 index);
    void makeVariable(quint16 index, int code);
    void makeStructure(quint16 index, int code);
    Sub subIndex(const QString &name);
    Sub count(int value);
    QString text(int longest);
    QString description();
    QString value(int dataType);
    QString number(int bits, bool isSigned);

    DescriptionDesk &m_desk;
    QRandomGenerator m_random;
    bool m_xml = false;
};
