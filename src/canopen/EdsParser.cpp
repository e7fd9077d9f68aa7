#include "canopen/EdsParser.h"

#include "canopen/EdsObjects.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

/** Far more than the largest device description; nobody wants a log file of
 * gigabytes in memory. */
constexpr qsizetype largestFile = 64 * 1024 * 1024;

constexpr qint64 pieceSize = 256 * 1024;

/** All bytes of a device, or a little more than largestFile: a device file such as /dev/zero has no end. */
QByteArray readBounded(QIODevice &device)
{
    QByteArray bytes;
    while (bytes.size() <= largestFile) {
        const QByteArray piece = device.read(pieceSize);
        if (piece.isEmpty())
            break;
        bytes += piece;
    }
    return bytes;
}

} // namespace

EdsParser::EdsParser(QObject *parent) : QObject(parent) { }

EdsParser::~EdsParser() = default;

bool EdsParser::LoadEds(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_document = {};
        m_findings.start(path);
        m_findings.error(0, u"The file cannot be opened: %1"_s.arg(file.errorString()));
        return false;
    }
    return LoadEds(file, path);
}

bool EdsParser::LoadEds(QIODevice &device, const QString &name)
{
    m_document = {};
    m_findings.start(name);
    const QByteArray bytes = readBounded(device);
    if (bytes.size() > largestFile) {
        m_findings.error(0, u"The file is too large for a device description."_s);
        return false;
    }
    if (!m_document.read(bytes, m_findings)) {
        m_document = {};
        return false;
    }
    if (m_document.sections().isEmpty()) {
        m_findings.error(0, u"The file holds no section."_s);
        return false;
    }
    const EdsObjects objects(m_document, m_findings);
    for (const quint16 index : objects.indices()) {
        const EdsObjects::Object object = objects.object(index);
        Q_EMIT newIndex(object.record);
        for (const CANopenSubindex &subindex : object.subIndices)
            Q_EMIT newSubIndex(subindex);
    }
    objects.checkLists();
    return true;
}

QMap<QString, QString> EdsParser::getCompactSubObjNames(quint16 index) const
{
    QMap<QString, QString> names;
    const QMap<quint8, QString> entries = edsCompactEntries(m_document, index, u"Name"_s);
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        names.insert(QString::number(entry.key()), entry.value());
    return names;
}
