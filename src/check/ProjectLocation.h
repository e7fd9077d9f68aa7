#pragma once

#include <QMetaType>
#include <QString>

/** The place in a project that a finding is about, so that a click on the finding can open it. */
struct ProjectLocation
{
    enum class Kind {
        None, ///< the project as a whole
        Line,
        Setting, ///< `setting` holds the key
        Object, ///< `line`, `index`
        SubIndex, ///< `line`, `index`, `subIndex`
        Pgn, ///< `line`, `number`, `direction`
        Spn, ///< as Pgn, and `element`
        CanId, ///< `line`, `number`, `direction`
        DataElement, ///< as CanId, and `element`
    };

    Kind kind = Kind::None;
    quint8 line = 0;
    quint16 index = 0;
    quint8 subIndex = 0;
    quint8 direction = 0;
    quint32 number = 0;
    quint32 element = 0;
    QString setting;

    static ProjectLocation ofLine(quint8 line) { return {.kind = Kind::Line, .line = line}; }
    static ProjectLocation ofSetting(const QString &key) { return {.kind = Kind::Setting, .setting = key}; }
    static ProjectLocation ofObject(quint8 line, quint16 index)
    {
        return {.kind = Kind::Object, .line = line, .index = index};
    }
    static ProjectLocation ofSubIndex(quint8 line, quint16 index, quint8 subIndex)
    {
        return {.kind = Kind::SubIndex, .line = line, .index = index, .subIndex = subIndex};
    }
    static ProjectLocation ofPgn(quint8 line, quint32 number, quint8 direction)
    {
        return {.kind = Kind::Pgn, .line = line, .direction = direction, .number = number};
    }
    static ProjectLocation ofSpn(quint8 line, quint32 number, quint8 direction, quint32 spn)
    {
        return {.kind = Kind::Spn, .line = line, .direction = direction, .number = number, .element = spn};
    }
    static ProjectLocation ofCanId(quint8 line, quint32 canId, quint8 direction)
    {
        return {.kind = Kind::CanId, .line = line, .direction = direction, .number = canId};
    }
    static ProjectLocation ofDataElement(quint8 line, quint32 canId, quint8 direction, quint32 element)
    {
        return {.kind = Kind::DataElement,
                .line = line,
                .direction = direction,
                .number = canId,
                .element = element};
    }

    bool operator==(const ProjectLocation &other) const = default;
};
Q_DECLARE_METATYPE(ProjectLocation)
