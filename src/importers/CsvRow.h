#pragma once

#include "canopen/CANopenTypes.h"
#include "importers/CsvHeader.h"
#include "store/ProjectRecords.h"

#include <optional>

/**
 * One data row of a table of objects, in the values that a project holds.
 *
 * A word that is not understood gives the value that an empty field gives, and a remark for the log.
 */
class CsvRow
{
public:
    /**
     * Reads the fields of a row; nothing, with the reason, where the row does not fit the table: its index
     * or sub-index is no such number, or it has more fields than the header. The header must outlive the row.
     */
    static std::optional<CsvRow> read(const CsvHeader &header, const QStringList &fields, QString &obstacle);

    quint16 index() const { return m_index; }
    /** Nothing where the row stands for a whole array or record. */
    std::optional<quint8> subIndex() const { return m_subIndex; }
    CANopen::ObjectCode objectCode() const { return m_objectCode; }
    quint16 dataType() const { return m_dataType; }
    /** The name as it stands in the row. */
    QString name() const { return text(CsvColumn::EdsName); }
    /** The name of an object that this row makes. */
    QString objectName() const;
    QString description() const;
    /** The line of the project that the row names, as it stands; mostly empty. */
    QString line() const { return text(CsvColumn::Line).trimmed(); }
    bool isVirtual() const;
    /** All columns of the sub-index; without one, of sub-index 0. */
    ProjectRecords::SubIndexData sub();

    const QStringList &remarks() const { return m_remarks; }

private:
    CsvRow(const CsvHeader &header, const QStringList &fields) : m_header(&header), m_fields(fields) { }

    QString text(CsvColumn column) const { return m_header->text(m_fields, column); }
    /** For a column of words, of which blanks and case do not matter. */
    QString word(CsvColumn column) const { return text(column).trimmed().toLower(); }
    bool isYes(CsvColumn column) const;
    QString readNumbers();
    void readTypes();
    QString accessType();
    int implementation(const QString &accessType);
    PDOMapping mapping();
    QString number(CsvColumn column) const;
    void readFlags(ProjectRecords::SubIndexData &sub) const;
    void remark(CsvColumn column, const QString &instead);

    const CsvHeader *m_header;
    QStringList m_fields;
    quint16 m_index = 0;
    std::optional<quint8> m_subIndex;
    CANopen::ObjectCode m_objectCode = CANopen::Var;
    quint16 m_dataType = 0;
    QStringList m_remarks;
};
