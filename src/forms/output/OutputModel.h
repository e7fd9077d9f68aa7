#pragma once

#include "check/ProjectLocation.h"
#include "forms/output/MessageText.h"
#include "generators/MessageLevel.h"

#include <QAbstractListModel>
#include <QTime>

#include <array>

/** The messages of the runs so far, one row for each line of a message. */
class OutputModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        TextRole = Qt::UserRole, ///< MessageText
        LevelRole, ///< int of MessageLevel
        TimeRole, ///< QTime, invalid for messages without time stamp and for all lines but the first
        PlaceRole, ///< ProjectLocation of the message
    };

    static constexpr int levelCount = int(MessageLevel::Error) + 1;

    struct Message
    {
        QString richText;
        ProjectLocation place;
        QTime time;
    };

    using QAbstractListModel::QAbstractListModel;

    void append(const QList<Message> &messages);
    void clear();
    /** Number of messages (not of lines) of a level; blank messages do not count. */
    int count(MessageLevel level) const { return m_counts.at(size_t(level)); }
    /** True when a message knows what it is about. */
    bool hasPlaces() const { return m_hasPlaces; }
    /** The messages as a build log shows them: plain text, one per line, none for a blank one. */
    QString plainText(bool withTimes) const;
    /** A text that tells where a message leads to; empty for one that knows no place. */
    static QString placeText(const ProjectLocation &place);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    struct Row
    {
        MessageText text;
        ProjectLocation place;
        QTime time;
        MessageLevel level = MessageLevel::Info;
        bool startsMessage = true;
    };

    QList<Row> rowsOf(const Message &message);
    QString toolTip(const Row &row) const;

    QList<Row> m_rows;
    std::array<int, levelCount> m_counts = {};
    bool m_hasPlaces = false;
};
