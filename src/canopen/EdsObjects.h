#pragma once

#include "canopen/CANopenSubindex.h"
#include "canopen/EdsDocument.h"

#include <QMap>

/** The highest sub-index that an array can have; 255 describes the object's structure (CiA 301). */
inline constexpr quint8 edsHighestEntry = 254;

/** Finds the sections that describe objects, and turns them into records. */
class EdsObjects
{
public:
    struct Object
    {
        CANopen::CANopenIndex record;
        QList<CANopenSubindex> subIndices;
    };

    EdsObjects(const EdsDocument &document, EdsFindings &findings);

    /** In ascending order. */
    QList<quint16> indices() const { return m_places.keys(); }
    Object object(quint16 index) const;
    /** Compares the lists of objects with the sections that exist. */
    void checkLists() const;

private:
    using Section = EdsDocument::Section;

    struct Place
    {
        const Section *object = nullptr;
        QMap<quint8, const Section *> subIndices;
    };

    static QString hex(quint16 index);
    void enter(const Section &section);
    void tellUnknownKeys(const Section &section);
    void tellLostValue(const Place &place, CANopen::ObjectCode code) const;
    bool holdsSubIndexZero(const Place &place, CANopen::ObjectCode code) const;
    CANopen::CANopenIndex record(quint16 index, const Place &place) const;
    QString plainValue(const Section &section, const QString &key) const;
    CANopen::ObjectCode objectCode(const Section &section, bool hasSubIndices) const;
    void countSubIndices(const Place &place, CANopen::CANopenIndex &record) const;
    CANopenSubindex subIndex(const Section &section, quint16 index, quint8 sub, bool domain) const;
    void compactSubIndices(const Section &section, Object &object) const;
    QString compactValue(quint16 index, quint8 sub, const QString &text, quint16 dataType) const;
    quint16 dataType(const Section &section, bool domain) const;
    QString accessType(const Section &section, bool domain) const;
    bool pdoMapping(const Section &section) const;
    QString value(const Section &section, const QString &key, quint16 dataType) const;
    void limits(const Section &section, CANopenSubindex &subindex) const;
    quint64 number(const Section &section, const QString &key, quint64 highest) const;
    void checkCompactLists() const;
    void checkCompactList(const Section &section, quint64 entries) const;
    void checkList(const QString &name, QMap<quint16, bool> &listed) const;

    const EdsDocument &m_document;
    EdsFindings &m_findings;
    QMap<quint16, Place> m_places;
    QSet<QString> m_toldKeys; ///< that no section of an object should have
};

/** The entries of [<index>Name], [<index>Value] or [<index>Denotation], by sub-index. */
QMap<quint8, QString> edsCompactEntries(const EdsDocument &document, quint16 index, const QString &kind);
