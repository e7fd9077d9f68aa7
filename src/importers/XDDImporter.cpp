#include "importers/XDDImporter.h"

#include "canopen/CANTypes.h"
#include "canopen/CANopenTypes.h"
#include "canopen/COHelper.h"
#include "canopen/EdsValue.h"
#include "importers/ImplementationRules.h"
#include "importers/ImportedRows.h"

#include <QDebug>
#include <QFile>
#include <QXmlStreamReader>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 pieceSize = 16 * 1024;
/** A tag or text that is longer belongs to no device description; bounds memory and time. In bytes. */
constexpr qint64 longestToken = 256 * 1024;
/** Of one element; the XML reader compares each with all others. */
constexpr qsizetype mostAttributes = 256;
constexpr int deepestElement = 256;

constexpr int lastIndex = 0xFFFF;
constexpr int lastSubIndex = 0xFF;
constexpr int highestDataType = 0xFFFF;
constexpr int hexadecimal = 16;
constexpr int decimal = 10;

struct PdoAccess
{
    QLatin1StringView word;
    PDOMapping::PDOMappingType mapping;
    QLatin1StringView readWrite; ///< the access type of a value that is read and written
};

constexpr PdoAccess pdoAccesses[] = {
    {"no"_L1, PDOMapping::Forbidden, "rw"_L1},
    {"t"_L1, PDOMapping::TPDO, "rwr"_L1},
    {"r"_L1, PDOMapping::RPDO, "rww"_L1},
    {"tr"_L1, PDOMapping::Allowed, "rw"_L1},
};

const PdoAccess *pdoAccess(const QXmlStreamAttributes &attributes)
{
    const QStringView word = attributes.value("accessPDO"_L1).trimmed();
    for (const PdoAccess &access : pdoAccesses) {
        if (word.compare(access.word, Qt::CaseInsensitive) == 0)
            return &access;
    }
    return nullptr;
}

QString text(const QXmlStreamAttributes &attributes, QLatin1StringView name)
{
    return attributes.value(name).toString();
}

} // namespace

XDDImporter::~XDDImporter()
{
    endWorker();
}

void XDDImporter::read()
{
    m_object = {};
    m_found = m_inProductName = m_hasProductName = false;
    m_known.clear();
    m_depth = 0;
    QFile file(fileName());
    if (!file.open(QIODevice::ReadOnly)) {
        Q_EMIT importError(u"File %1 is not readable."_s.arg(fileName()));
        return;
    }
    QXmlStreamReader xml;
    while (!isCancelled() && !isRefused() && readToken(xml, file))
        takeToken(xml);
    if (xml.hasError())
        Q_EMIT importError(u"%1:%2:%3: %4"_s.arg(fileName(), QString::number(xml.lineNumber()),
                                                 QString::number(xml.columnNumber()), xml.errorString()));
    writeCurrentObject();
    if (m_found && m_hasProductName)
        database().setDescriptionSetting(u"ProductName"_s, m_productName.trimmed());
    if (m_found || isCancelled())
        return;
    Q_EMIT importError(u"%1 has is not in CiA 1311 XDD format."_s.arg(fileName()));
    qDebug().noquote() << "no cia 1311";
}

/** The next token; false at the end of the document or at an error, which the reader then has. */
bool XDDImporter::readToken(QXmlStreamReader &xml, QIODevice &file)
{
    qint64 pending = 0;
    xml.readNext();
    while (xml.error() == QXmlStreamReader::PrematureEndOfDocumentError) {
        const QByteArray piece = file.read(pieceSize);
        if (piece.isEmpty())
            return false;
        pending += piece.size();
        if (pending > longestToken || file.pos() > LargestFile) {
            xml.raiseError(u"The file is too large for a device description."_s);
            return false;
        }
        xml.addData(piece);
        xml.readNext();
        reportProgress(file.pos(), file.size());
    }
    return !xml.hasError() && !xml.atEnd();
}

void XDDImporter::takeToken(QXmlStreamReader &xml)
{
    if (xml.isStartElement()) {
        takeStart(xml);
        if (++m_depth > deepestElement)
            xml.raiseError(u"The elements are nested too deeply for a device description."_s);
        else if (xml.attributes().size() > mostAttributes)
            xml.raiseError(u"The element has too many attributes for a device description."_s);
    } else if (xml.isEndElement()) {
        --m_depth;
        m_inProductName = false;
    } else if (m_inProductName && xml.isCharacters()) {
        m_productName += xml.text();
    }
}

void XDDImporter::takeStart(QXmlStreamReader &xml)
{
    const QStringView name = xml.name();
    if (name == "CANopenFDDataObject"_L1)
        takeObject(xml);
    else if (name == "CANopenFDDataElement"_L1)
        takeElement(xml);
    else if (name == "productName"_L1 || name == "ProductName"_L1) {
        m_inProductName = m_hasProductName = true;
        m_productName.clear();
    }
}

void XDDImporter::takeObject(QXmlStreamReader &xml)
{
    writeCurrentObject();
    m_found = true;
    const QXmlStreamAttributes attributes = xml.attributes();
    const int sourceLine = int(xml.lineNumber());
    const int index = number(attributes, "index"_L1, {hexadecimal, lastIndex, 0}, sourceLine);
    if (index == 0 || !isInRange(quint32(index))) {
        skipObject();
        return;
    }
    if (m_known.contains(quint16(index))) {
        notes().warn(sourceLine,
                     u"The object 0x%1 exists already; this one is left out."_s.arg(index, 4, 16, '0'_L1));
        return;
    }
    m_known.insert(quint16(index));
    m_object.index = quint16(index);
    m_object.line = sourceLine;
    m_object.data.name = text(attributes, "name"_L1);
    if (m_object.data.name.isEmpty())
        m_object.data.name = u"unnamed object"_s;
    m_object.data.objecttype =
        number(attributes, "objectType"_L1, {decimal, CANopen::Record, CANopen::Var}, sourceLine);
    m_object.data.datatype = number(attributes, "dataType"_L1, {hexadecimal, highestDataType, 0}, sourceLine);
    // A variable may carry its value itself.
    if (!ImplementationRules::hasCount(m_object.data.objecttype) && attributes.hasAttribute("accessUSDO"_L1))
        takeRow(attributes, 0, m_object.data.name, sourceLine);
    m_object.own = !m_object.rows.isEmpty();
}

void XDDImporter::takeElement(QXmlStreamReader &xml)
{
    if (m_object.index == 0)
        return;
    const QXmlStreamAttributes attributes = xml.attributes();
    const int sourceLine = int(xml.lineNumber());
    const int subIndex = number(attributes, "subIndex"_L1, {hexadecimal, lastSubIndex, -1}, sourceLine);
    if (subIndex < 0)
        return;
    if (m_object.rows.contains(quint8(subIndex)) && !std::exchange(m_object.own, false)) {
        notes().warn(
            sourceLine,
            u"The sub-index 0x%1 exists already; this one is left out."_s.arg(subIndex, 2, 16, '0'_L1));
        return;
    }
    takeRow(attributes, quint8(subIndex), text(attributes, "name"_L1), sourceLine);
}

void XDDImporter::takeRow(const QXmlStreamAttributes &attributes, quint8 subIndex, const QString &name,
                          int sourceLine)
{
    ObjectDataBase::SUBINDEX_DATA_T row = ImportedRows::blank();
    row.name = name;
    row.datatype = number(attributes, "dataType"_L1, {hexadecimal, highestDataType, 0}, sourceLine);
    if (row.datatype == CAN::NoDataType && attributes.value("dataType"_L1).isEmpty())
        notes().warn(sourceLine, u"The sub-index 0x%1 has no data type."_s.arg(subIndex, 2, 16, '0'_L1));
    const PdoAccess *access = pdoAccess(attributes);
    if (!access && !attributes.value("accessPDO"_L1).isEmpty())
        notes().warn(sourceLine,
                     u"accessPDO is \"%1\"; it is read as \"no\"."_s.arg(text(attributes, "accessPDO"_L1)));
    if (!access)
        access = &pdoAccesses[0];
    row.pdomapping = access->mapping;
    row.accesstype = accessType(attributes, QString(access->readWrite), sourceLine);
    const auto value = [&](QLatin1StringView key) {
        return valueOf(attributes, key, quint16(row.datatype), sourceLine);
    };
    ImportedRows::setDefaultValue(row, value("defaultValue"_L1));
    ImportedRows::setLimits(row, value("lowLimit"_L1), value("highLimit"_L1));
    ImportedRows::setManaged(row, m_object.index, subIndex);
    ImportedRows::keepForeignDataType(row);
    m_object.rows.insert(subIndex, row);
}

/** Of an attribute, in the spelling of the file; only a sum with the node-ID has one form in the project. */
QString XDDImporter::valueOf(const QXmlStreamAttributes &attributes, QLatin1StringView name, quint16 dataType,
                             int sourceLine)
{
    QString word = text(attributes, name);
    if (COHelper::getDataLengthBits(CAN::CANopenDataType(dataType)) == 0
        || !word.contains("nodeid"_L1, Qt::CaseInsensitive))
        return word;
    const EdsValue value = normalizedEdsValue(word.trimmed(), dataType);
    if (!value.remark.isEmpty())
        notes().note(sourceLine, u"%1: %2."_s.arg(name, value.remark));
    return value.text;
}

QString XDDImporter::accessType(const QXmlStreamAttributes &attributes, const QString &readWrite,
                                int sourceLine)
{
    QString word = text(attributes, "accessUSDO"_L1).trimmed().toLower();
    if (word == "ro"_L1 || word == "wo"_L1)
        return word;
    if (word == "rw"_L1)
        return readWrite;
    if (word != "const"_L1)
        notes().warn(sourceLine, u"accessUSDO is \"%1\"; it is read as \"const\"."_s.arg(word));
    return u"const"_s;
}

int XDDImporter::number(const QXmlStreamAttributes &attributes, QLatin1StringView name, NumberForm form,
                        int sourceLine)
{
    const QString word = text(attributes, name).trimmed();
    bool ok = false;
    const uint result = word.toUInt(&ok, form.base);
    if (ok && result <= uint(form.highest))
        return int(result);
    const bool isNeeded = form.otherwise <= 0;
    if (!word.isEmpty() || (isNeeded && name != "dataType"_L1))
        notes().warn(sourceLine, u"%1 is \"%2\", which is no such number."_s.arg(name, word));
    return form.otherwise;
}

void XDDImporter::writeCurrentObject()
{
    const Object object = std::exchange(m_object, {});
    if (object.index != 0)
        storeObject(object.index, object.data, object.rows, 0, object.line);
}
