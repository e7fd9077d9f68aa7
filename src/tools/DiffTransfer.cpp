#include "tools/DiffTransfer.h"

#include "store/ObjectDataBase.h"

DiffTransfer::DiffTransfer(ObjectDataBase &current, ObjectDataBase &other, quint8 line, bool isAfterApply)
    : m_current(current), m_other(other), m_line(line), m_isAfterApply(isAfterApply)
{
}

bool DiffTransfer::importObject(quint16 index)
{
    return m_current.copyIndexFrom(m_other, m_line, index, m_line, index, true);
}

bool DiffTransfer::importSubIndex(quint16 index, quint8 subindex)
{
    return replaceSubIndex(index, subindex, m_isAfterApply);
}

bool DiffTransfer::importSubIndexComplete(quint16 index, quint8 subindex)
{
    return replaceSubIndex(index, subindex, false);
}

bool DiffTransfer::replaceSubIndex(quint16 index, quint8 subindex, bool keepValues)
{
    ObjectDataBase::SUBINDEX_DATA_T data;
    if (!m_other.getSubIndex(m_line, index, subindex, data))
        return false;
    if (ObjectDataBase::SUBINDEX_DATA_T own; m_current.getSubIndex(m_line, index, subindex, own)) {
        if (keepValues) {
            data.currentvalue = own.currentvalue;
            data.defaultvalue = own.defaultvalue;
        }
        if (!m_current.removeSubIndex(m_line, index, subindex))
            return false;
    }
    // A sub-index without its object would be a row that nothing shows.
    if (!m_current.indexExists(m_line, index)
        && !m_current.copyIndexFrom(m_other, m_line, index, m_line, index, false))
        return false;
    return m_current.addSubIndex(m_line, index, subindex, data);
}

bool DiffTransfer::removeObject(quint16 index)
{
    return m_current.removeIndex(m_line, index);
}

bool DiffTransfer::removeSubIndex(quint16 index, quint8 subindex)
{
    return m_current.removeSubIndex(m_line, index, subindex);
}

bool DiffTransfer::takeOverGeneralSetting(const QString &key)
{
    return m_current.setGeneralSetting(key, m_other.getGeneralSetting(key));
}
