#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

#include <deque>

/**
 * The texts of a project's string pool that are known in memory, by their ids and the other way round.
 *
 * Texts are kept once, in the order they came in, and freed in that order: both look-ups only refer to
 * them. A pool of a hundred thousand texts is cleared and read again at every save.
 */
class StringPool
{
public:
    StringPool() = default;
    Q_DISABLE_COPY_MOVE(StringPool)

    void clear()
    {
        m_ids.clear();
        m_byId.clear();
        m_texts.clear();
    }

    void reserve(qsizetype count)
    {
        m_ids.reserve(count);
        m_byId.reserve(count);
    }

    /** The id of a text, -1 when it is not known; of several rows with the text the first that was added. */
    int stringToId(const QString &text) const { return m_ids.value(text, -1); }

    /** The text of an id, nullptr when it is not known; valid until the next clear(). */
    const QString *idToString(int id) const { return m_byId.value(id, nullptr); }

    /** Enters a text that stringToId is not to find; an id that is known already keeps its text. */
    const QString &addText(int id, const QString &text)
    {
        const QString *&known = m_byId[id];
        if (!known)
            known = &m_texts.emplace_back(text);
        return *known;
    }

    void add(int id, const QString &text)
    {
        const QStringView kept = addText(id, text);
        if (!m_ids.contains(kept))
            m_ids.insert(kept, id);
    }

private:
    std::deque<QString> m_texts;
    QHash<int, const QString *> m_byId;
    QHash<QStringView, int> m_ids;
};
