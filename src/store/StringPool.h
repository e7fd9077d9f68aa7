#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

#include <deque>
#include <vector>

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
        m_byFarId.clear();
        m_texts.clear();
    }

    void reserve(qsizetype count)
    {
        m_ids.reserve(count);
        m_byId.reserve(size_t(count));
    }

    /** The id of a text, -1 when it is not known; of several rows with the text the first that was added. */
    int stringToId(const QString &text) const { return m_ids.value(text, -1); }

    /** The text of an id, nullptr when it is not known; valid until the next clear(). */
    const QString *idToString(int id) const
    {
        if (isListed(id))
            return size_t(id) < m_byId.size() ? m_byId[size_t(id)] : nullptr;
        return m_byFarId.value(id, nullptr);
    }

    /** Enters a text that stringToId is not to find; an id that is known already keeps its text. */
    const QString &addText(int id, const QString &text)
    {
        const QString *&known = entry(id);
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
    /** Ids are handed out one by one from 1; a file that has others spends no memory on the gaps. */
    static constexpr int listedIds = 1 << 20;

    static bool isListed(int id) { return id >= 0 && id < listedIds; }

    const QString *&entry(int id)
    {
        if (!isListed(id))
            return m_byFarId[id];
        if (size_t(id) >= m_byId.size())
            m_byId.resize(size_t(id) + 1, nullptr);
        return m_byId[size_t(id)];
    }

    std::deque<QString> m_texts;
    std::vector<const QString *> m_byId;
    QHash<int, const QString *> m_byFarId;
    QHash<QStringView, int> m_ids;
};
