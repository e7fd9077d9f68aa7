#include "importers/EDSImporter.h"

#include "canopen/EdsParser.h"
#include "importers/EdsDeviceInformation.h"
#include "importers/ImportedRows.h"
#include "importers/PdoTemplates.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int indexCount = 0x10000;

// Bits of ObjFlags, as this system's EDS files have them.
constexpr quint32 refuseRead = 0x1;
constexpr quint32 refuseWrite = 0x2;

PDOMapping mapping(const CANopenSubindex &sub)
{
    if (!sub.pdoMapping)
        return PDOMapping::Forbidden;
    if (sub.accessType == "ro"_L1 || sub.accessType == "rwr"_L1)
        return PDOMapping::TPDO;
    if (sub.accessType == "wo"_L1 || sub.accessType == "rww"_L1)
        return PDOMapping::RPDO;
    return PDOMapping::Allowed;
}

/** Indices of one kind of PDO object. */
qsizetype count(const QSet<quint16> &indices, quint16 first)
{
    return std::count_if(indices.begin(), indices.end(), [first](quint16 index) {
        return index >= first && index < first + PdoTemplates::mostPdos;
    });
}

} // namespace

EDSImporter::~EDSImporter()
{
    endWorker();
}

void EDSImporter::read()
{
    EdsParser parser;
    connect(&parser, &EdsParser::newIndex, &parser,
            [this](const CANopen::CANopenIndex &record) { takeObject(record); });
    connect(&parser, &EdsParser::newSubIndex, &parser,
            [this](const CANopenSubindex &sub) { takeSubIndex(sub); });
    m_described.clear();
    m_hasObject = false;
    const bool loaded = parser.LoadEds(fileName());
    tell(parser.findings());
    if (!loaded) {
        Q_EMIT importError(fileName() + u": " + findings().constLast().text);
        return;
    }
    writeCurrentObject();
    if (m_described.isEmpty())
        Q_EMIT importError(u"File %1 describes no object."_s.arg(fileName()));
    else if (m_importFileInfo)
        EdsDeviceInformation::store(parser.document(), database(), notes());
    completePdos(parser);
}

void EDSImporter::takeObject(const CANopen::CANopenIndex &record)
{
    writeCurrentObject();
    m_described.insert(record.index);
    if (!isInRange(record.index)) {
        skipObject();
        return;
    }
    m_object = {record, {}};
    m_hasObject = true;
    reportProgress(record.index, indexCount);
}

void EDSImporter::takeSubIndex(const CANopenSubindex &sub)
{
    if (m_hasObject && sub.index == m_object.record.index)
        m_object.subs.append(sub);
}

void EDSImporter::writeCurrentObject()
{
    if (!m_hasObject)
        return;
    m_hasObject = false;
    const CANopen::CANopenIndex &record = m_object.record;
    ObjectDataBase::INDEX_DATA_T object;
    object.name = record.name;
    object.objecttype = record.objectCode;
    object.datatype = record.dataType;
    object.description = record.description;
    Rows rows;
    for (const CANopenSubindex &sub : std::as_const(m_object.subs))
        rows.insert(sub.subIndex, row(sub));
    storeObject(record.index, object, rows, record.subIndexCount, record.line);
}

ObjectDataBase::SUBINDEX_DATA_T EDSImporter::row(const CANopenSubindex &sub)
{
    ObjectDataBase::SUBINDEX_DATA_T data = ImportedRows::blank();
    data.name = sub.name;
    data.datatype = sub.dataType;
    data.accesstype = sub.accessType;
    data.pdomapping = mapping(sub);
    data.denotation = sub.denotation;
    data.description = sub.description;
    data.refuseread = sub.objFlags & refuseRead;
    data.refusewrite = sub.objFlags & refuseWrite;
    const bool configured = m_dcfMode && !sub.parameterValue.isEmpty();
    ImportedRows::setDefaultValue(data, configured ? sub.parameterValue : sub.defaultValue);
    ImportedRows::setLimits(data, sub.hasLimits ? sub.lowLimit : QString(),
                            sub.hasLimits ? sub.highLimit : QString());
    ImportedRows::setManaged(data, sub.index, sub.subIndex);
    ImportedRows::keepForeignDataType(data);
    noteWhatIsLost(sub);
    return data;
}

void EDSImporter::noteWhatIsLost(const CANopenSubindex &sub)
{
    if (sub.objFlags & ~(refuseRead | refuseWrite))
        notes().note(sub.line,
                     u"Of ObjFlags 0x%1 only the lowest two bits are kept."_s.arg(sub.objFlags, 0, 16));
    if (!m_dcfMode && !sub.parameterValue.isEmpty())
        notes().note(sub.line, u"The ParameterValue is left out, as the file is no DCF."_s);
}

void EDSImporter::completePdos(const EdsParser &parser)
{
    QSet<quint16> known = m_described + existing();
    const auto write = [&](int index, const PdoTemplates::Object &object) {
        if (known.contains(quint16(index)) || !isInRange(quint32(index)))
            return;
        known.insert(quint16(index));
        storeObject(quint16(index), object.data, object.subs);
        notes().note(
            0,
            u"The object 0x%1 is declared, but not described; it is made as that of an unused PDO."_s.arg(
                index, 4, 16, '0'_L1));
    };
    for (const PdoTemplates::Kind &kind : PdoTemplates::kinds) {
        const int wanted = EdsDeviceInformation::pdoCount(parser.document(), database(), kind.setting);
        for (int pdo = 0; pdo < wanted && count(known, kind.communication) < wanted; ++pdo) {
            write(kind.communication + pdo, kind.parameter(pdo + 1));
            write(kind.mapping + pdo, PdoTemplates::mapping());
        }
        for (int pdo = 0; pdo < wanted && count(known, kind.mapping) < wanted; ++pdo)
            write(kind.mapping + pdo, PdoTemplates::mapping());
    }
}
