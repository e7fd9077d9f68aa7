#include "forms/output/OutputModel.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView timeFormat{"HH:mm:ss"};
constexpr qsizetype longestToolTip = 2000;

} // namespace

void OutputModel::append(const QList<Message> &messages)
{
    QList<Row> rows;
    for (const Message &message : messages)
        rows.append(rowsOf(message));
    if (rows.isEmpty())
        return;
    beginInsertRows({}, int(m_rows.size()), int(m_rows.size() + rows.size() - 1));
    m_rows.append(std::move(rows));
    endInsertRows();
}

QList<OutputModel::Row> OutputModel::rowsOf(const Message &message)
{
    const MessageText text = MessageText::fromRichText(message.richText);
    const MessageLevel level = messageLevel(message.richText);
    QTime time = message.time;
    bool isFirst = true;
    QList<Row> rows;
    const QList<MessageText> lines = text.lines();
    for (const MessageText &line : lines) {
        const bool isBlank = line.text.trimmed().isEmpty();
        rows.append({.text = line,
                     .place = message.place,
                     .time = isBlank ? QTime() : std::exchange(time, QTime()),
                     .level = level,
                     .startsMessage = std::exchange(isFirst, false)});
    }
    if (!text.text.trimmed().isEmpty())
        ++m_counts.at(size_t(level));
    m_hasPlaces = m_hasPlaces || message.place.kind != ProjectLocation::Kind::None;
    return rows;
}

void OutputModel::clear()
{
    beginResetModel();
    m_rows.clear();
    m_counts = {};
    m_hasPlaces = false;
    endResetModel();
}

QString OutputModel::plainText(bool withTimes) const
{
    QString result;
    bool isLineOpen = false; // something of the present message has been written
    const auto closeLine = [&] {
        if (std::exchange(isLineOpen, false))
            result += u'\n';
    };
    for (const Row &row : m_rows) {
        if (row.startsMessage)
            closeLine();
        const QString text = row.text.text.trimmed();
        if (text.isEmpty())
            continue;
        if (std::exchange(isLineOpen, true))
            result += " | "_L1;
        if (withTimes && row.time.isValid())
            result += row.time.toString(timeFormat) + u' ';
        result += text;
    }
    closeLine();
    return result;
}

QString OutputModel::placeText(const ProjectLocation &place)
{
    using Kind = ProjectLocation::Kind;
    switch (place.kind) {
    case Kind::None:
        return {};
    case Kind::Line:
        return tr("line %1").arg(place.line);
    case Kind::Setting:
        return tr("setting %1").arg(place.setting);
    case Kind::Object:
        return tr("object 0x%1 of line %2").arg(place.index, 4, 16, '0'_L1).arg(place.line);
    case Kind::SubIndex:
        return tr("object 0x%1 sub-index %2 of line %3")
            .arg(place.index, 4, 16, '0'_L1)
            .arg(place.subIndex)
            .arg(place.line);
    case Kind::Pgn:
    case Kind::Spn:
        return tr("PGN %1 of line %2").arg(place.number).arg(place.line);
    case Kind::CanId:
    case Kind::DataElement:
        return tr("CAN-ID 0x%1 of line %2").arg(place.number, 0, 16).arg(place.line);
    }
    return {};
}

QString OutputModel::toolTip(const Row &row) const
{
    QStringList parts;
    if (!row.text.text.trimmed().isEmpty())
        parts.append(row.text.text.left(longestToolTip).trimmed().toHtmlEscaped());
    const QString place = placeText(row.place);
    if (!place.isEmpty())
        parts.append(tr("<i>Double click or Enter opens %1.</i>").arg(place.toHtmlEscaped()));
    return parts.isEmpty() ? QString() : QString("<p>"_L1 + parts.join("</p><p>"_L1) + "</p>"_L1);
}

int OutputModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant OutputModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return row.text.text;
    case Qt::ToolTipRole:
        return toolTip(row);
    case TextRole:
        return QVariant::fromValue(row.text);
    case LevelRole:
        return int(row.level);
    case TimeRole:
        return row.time.isValid() ? QVariant(row.time) : QVariant();
    case PlaceRole:
        return QVariant::fromValue(row.place);
    default:
        return {};
    }
}
