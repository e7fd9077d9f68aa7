#include "app/ProjectLines.h"

#include "app/CANopenBasics.h"
#include "store/ObjectDataBase.h"

using namespace Qt::StringLiterals;

namespace {

// The communication profile area of CiA 301 but for the device type, which every line has of its own.
constexpr quint16 firstCopiedIndex = 0x1001;
constexpr quint16 lastCopiedIndex = 0x2000;
// Behind the type definitions there is nothing that belongs to one line only.
constexpr quint16 firstObject = 0x1000;
constexpr quint16 lastObject = 0xFFFF;
constexpr quint32 highestCanId = 0xFFFFFFFF; // with the mark of extended identifiers in bit 31

QString typeKey(quint8 line)
{
    return u"line%1type"_s.arg(line);
}

} // namespace

QList<quint8> ProjectLines::numbers() const
{
    QList<quint8> lines = m_store.getLines();
    lines.removeIf([](quint8 line) { return line >= ObjectDataBase::ClipboardLine; });
    return lines;
}

bool ProjectLines::isFull() const
{
    return numbers().size() >= ObjectDataBase::MaximumLines;
}

std::optional<quint8> ProjectLines::nextNumber() const
{
    if (isFull())
        return std::nullopt;
    const QList<quint8> lines = numbers();
    quint8 number = 0;
    while (lines.contains(number))
        ++number;
    return number;
}

LineType ProjectLines::type(quint8 line) const
{
    return LineTypes::fromSetting(m_store.getGeneralSetting(typeKey(line)));
}

void ProjectLines::setType(quint8 line, LineType type)
{
    m_store.setGeneralSetting(typeKey(line), LineTypes::toSetting(type));
}

std::optional<quint8> ProjectLines::add(LineType type, ObjectDataBase *reference)
{
    const std::optional<quint8> line = addNode(type);
    if (line && LineTypes::carriesCANopen(type))
        copyBasicObjects(*line, reference);
    return line;
}

std::optional<quint8> ProjectLines::duplicateLast()
{
    const QList<quint8> lines = numbers();
    if (lines.isEmpty())
        return std::nullopt;
    const quint8 last = lines.last();
    const std::optional<quint8> line = addNode(type(last));
    if (!line || !m_store.copyLine(m_store, last, *line, firstObject, lastObject))
        return std::nullopt;
    for (const quint8 direction : {ObjectDataBase::Receive, ObjectDataBase::Transmit})
        if (!m_store.copyCANIDs(m_store, last, *line, 0, highestCanId, direction))
            return std::nullopt;
    return line;
}

std::optional<quint8> ProjectLines::remove(quint8 line)
{
    if (numbers().size() < 2 || !m_store.removeLine(line))
        return std::nullopt;
    return numbers().constFirst();
}

std::optional<quint8> ProjectLines::addNode(LineType type)
{
    const std::optional<quint8> line = nextNumber();
    if (!line)
        return std::nullopt;
    setType(*line, type);
    if (!m_store.addNode(*line, ObjectDataBase::NODE_DATA_T()))
        return std::nullopt;
    return line;
}

void ProjectLines::copyBasicObjects(quint8 line, ObjectDataBase *reference)
{
    const QList<quint16> ownObjects = m_store.getIndexList(0, firstCopiedIndex, lastCopiedIndex);
    for (const quint16 index : ownObjects)
        m_store.copyIndex(0, index, line, index);
    if (!reference || !reference->isOpen())
        return;
    for (const quint16 index : CANopenBasics::objects)
        if (!m_store.indexExists(line, index) && (ownObjects.isEmpty() || index == CANopenBasics::deviceType))
            m_store.copyIndexFrom(*reference, ObjectDataBase::ReferenceLine, index, line, index, true);
}
