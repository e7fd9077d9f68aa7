#include "canopen/EdsFinding.h"

void EdsFindings::start(const QString &file)
{
    m_file = file;
    m_list.clear();
    m_known.clear();
}

void EdsFindings::add(int line, EdsFinding::Severity severity, const QString &text)
{
    if (m_list.size() > limit)
        return;
    const auto known = m_known.size();
    m_known.insert({line, text});
    if (m_known.size() == known)
        return;
    if (m_list.size() < limit)
        m_list.append({m_file, line, severity, text});
    else
        m_list.append(
            {m_file, line, EdsFinding::Severity::Warning, QStringLiteral("More findings are not listed.")});
}
