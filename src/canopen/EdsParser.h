#pragma once

#include "canopen/CANopenSubindex.h"
#include "canopen/EdsDocument.h"
#include "canopen/EdsFinding.h"

#include <QMap>
#include <QObject>

class QIODevice;

/**
 * Reads the objects of an EDS or DCF file (CiA 306).
 *
 * Objects come in ascending order, each followed by its sub-indices in ascending order. Vendor files are read
 * as far as they can be understood; what was assumed or left out is told by findings(). The parser tells
 * what the file says and fills nothing in, with one exception: the sub-indices of a compact object
 * (CompactSubObj) are delivered like all others.
 */
class EdsParser : public QObject
{
    Q_OBJECT

public:
    explicit EdsParser(QObject *parent = nullptr);
    ~EdsParser() override;

    /** False where the file cannot be read, or holds no section at all. */
    bool LoadEds(const QString &path);
    /** The same from an open device; the name stands in the findings. */
    bool LoadEds(QIODevice &device, const QString &name);

    /** The section [<index>Name] of a compact object: sub-index in decimal to name. */
    QMap<QString, QString> getCompactSubObjNames(quint16 index) const;

    /** All sections, for the device information and whatever else stands in the file. */
    const EdsDocument &document() const { return m_document; }
    const QList<EdsFinding> &findings() const { return m_findings.list(); }

Q_SIGNALS:
    void newIndex(const CANopen::CANopenIndex &object);
    void newSubIndex(const CANopenSubindex &subindex);

private:
    EdsDocument m_document;
    EdsFindings m_findings;
};
