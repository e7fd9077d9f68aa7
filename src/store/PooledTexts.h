#pragma once

#include "store/ObjectDataBase.h"
#include "store/StringPool.h"

/**
 * Texts of the string pool for someone who holds the store's connection anyway: those that are known in
 * memory come without a further lease.
 */
class PooledTexts
{
public:
    PooledTexts(ObjectDataBase &store, const StringPool &pool) : m_store(store), m_pool(pool) { }

    /** Empty for an unknown id; valid as long as the pool is not cleared. */
    const QString &text(int id) const
    {
        static const QString none;
        const QString *known = m_pool.idToString(id);
        if (!known) {
            m_store.getString(id);
            known = m_pool.idToString(id);
        }
        return known ? *known : none;
    }

private:
    ObjectDataBase &m_store;
    const StringPool &m_pool;
};
