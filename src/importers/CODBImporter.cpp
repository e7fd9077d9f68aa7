#include "importers/CODBImporter.h"

#include "canopen/CANTypes.h"
#include "importers/ImplementationRules.h"
#include "importers/ImportedRows.h"
#include "importers/TextLineReader.h"

#include <QDebug>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

constexpr int percentForReading = 50;

ObjectDataBase::SUBINDEX_DATA_T valueSub(const CodbLine::Record &record)
{
    ObjectDataBase::SUBINDEX_DATA_T sub = ImportedRows::blank();
    sub.name = record.name;
    sub.datatype = record.dataType;
    sub.accesstype = record.accessType;
    sub.category = record.category;
    sub.pdomapping = PDOMapping(record.mappable);
    ImportedRows::setLimits(sub, record.lowLimit, record.highLimit);
    ImportedRows::setDefaultValue(sub, record.defaultValue);
    return sub;
}

/** Sub-index 0 of an array or record; its value follows when all sub-indices are known. */
ObjectDataBase::SUBINDEX_DATA_T countSub()
{
    ObjectDataBase::SUBINDEX_DATA_T sub = ImportedRows::count(0);
    sub.category = CANopen::Mandatory;
    return sub;
}

} // namespace

CODBImporter::~CODBImporter()
{
    endWorker();
}

void CODBImporter::doImport()
{
    const Session session(*this);
    if (!session.isOpen())
        return;
    m_objects.clear();
    QFile file(fileName());
    if (!file.open(QIODevice::ReadOnly)) {
        Q_EMIT importError(u"File %1 is not readable."_s.arg(fileName()));
        return;
    }
    TextLineReader reader(file);
    readLines(reader, file.size());
    writeObjects();
    writePendingRows();
    m_objects.clear();
    qDebug().noquote() << "Import completeted";
}

void CODBImporter::readLines(TextLineReader &reader, qint64 size)
{
    QByteArray bytes;
    while (!isCancelled() && reader.next(bytes)) {
        const CodbLine::Line line = CodbLine::parse(bytes);
        if (const auto *copy = std::get_if<CodbLine::Copy>(&line))
            takeCopy(*copy);
        else if (const auto *record = std::get_if<CodbLine::Record>(&line))
            record->subIndex ? takeSubIndex(*record) : takeObject(*record);
        reportProgress(reader.position() * percentForReading / 100, size);
    }
}

void CODBImporter::takeObject(const CodbLine::Record &record)
{
    Object &object = m_objects[record.index];
    object.declared = true;
    object.data.name = record.name;
    object.data.category = record.category;
    object.data.objecttype = record.objectCode;
    object.data.datatype = record.dataType;
    object.defaultSub = ImplementationRules::hasCount(record.objectCode) ? countSub() : valueSub(record);
}

void CODBImporter::takeSubIndex(const CodbLine::Record &record)
{
    if (!m_objects.contains(record.index)) {
        CodbLine::Record object = record;
        if (object.objectCode == CANopen::Null)
            object.objectCode = CANopen::Var;
        takeObject(object);
        m_objects[record.index].declared = false;
    }
    Object &object = m_objects[record.index];
    object.subs.insert(*record.subIndex, valueSub(record));
    // CiA 301: a variable has sub-index 0 only.
    if (!object.declared && *record.subIndex > 0 && !ImplementationRules::hasCount(object.data.objecttype)) {
        object.data.objecttype = CANopen::Record;
        object.data.datatype = CAN::NoDataType;
        object.defaultSub = countSub();
    }
}

void CODBImporter::takeCopy(const CodbLine::Copy &copy)
{
    if (!m_includeCopies || copy.target == copy.source)
        return;
    const auto source = m_objects.constFind(copy.source);
    if (source == m_objects.constEnd()) {
        qDebug() << Q_FUNC_INFO << "no object" << Qt::hex << copy.source << "for the copy" << copy.target;
        return;
    }
    m_objects.insert(copy.target, Object(*source));
}

void CODBImporter::writeObjects()
{
    const qint64 total = m_objects.size();
    qint64 done = 0;
    for (auto entry = m_objects.begin(); entry != m_objects.end() && !isCancelled(); ++entry, ++done) {
        if (!isInRange(entry.key()))
            continue;
        if (!writeObject(entry.key(), *entry)) {
            Q_EMIT importError(
                u"Object 0x%1 could not be stored."_s.arg(entry.key(), 4, 16, QLatin1Char('0')));
            return;
        }
        reportProgress(percentForReading * total + (100 - percentForReading) * done, 100 * total);
    }
}

// An array has the type of its elements, which only their rows tell; a count that nothing changes is a
// constant of the generated code.
void CODBImporter::completeObject(Object &object)
{
    for (auto sub = object.subs.upperBound(0); object.data.objecttype == CANopen::Array
         && object.data.datatype == CAN::NoDataType && sub != object.subs.end();
         ++sub)
        object.data.datatype = sub->datatype;
    const auto count = object.subs.find(0);
    if (ImplementationRules::hasCount(object.data.objecttype) && count != object.subs.end()
        && count->accesstype == u"const"_s)
        count->implementation = CANopen::ManagedConst;
}

bool CODBImporter::writeObject(quint16 index, Object &object)
{
    if (!object.subs.contains(0)) {
        if (ImplementationRules::hasCount(object.data.objecttype))
            ImportedRows::setDefaultValue(object.defaultSub,
                                          QString::number(object.subs.isEmpty() ? 0 : object.subs.lastKey()));
        object.subs.insert(0, object.defaultSub);
    }
    for (auto sub = object.subs.begin(); sub != object.subs.end(); ++sub)
        ImportedRows::setManaged(*sub, index, sub.key());
    completeObject(object);
    const bool existed = database().indexExists(line(), index);
    if (!addObject(index, object.data))
        return false;
    for (auto sub = object.subs.begin(); sub != object.subs.end(); ++sub) {
        if (existed)
            keepOwnership(index, sub.key(), *sub);
        addSubIndex(index, sub.key(), *sub);
    }
    return true;
}

// What the user has decided for a sub-index that is there already outlives the import.
void CODBImporter::keepOwnership(quint16 index, quint8 subIndex, ObjectDataBase::SUBINDEX_DATA_T &sub)
{
    ObjectDataBase::SUBINDEX_DATA_T former;
    if (!database().getSubIndex(line(), index, subIndex, former))
        return;
    sub.implementation = former.implementation;
    sub.varname = former.varname;
}
