#include "generators/GeneratedFile.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

bool GeneratedFile::open()
{
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Text))
        return fail(u"The file %1 in %2 is not writable"_s);
    m_stream.setDevice(&m_file);
    return true;
}

bool GeneratedFile::close()
{
    if (!m_file.isOpen())
        return m_error.isEmpty();
    m_stream.flush();
    const bool complete = m_stream.status() == QTextStream::Ok && m_file.flush();
    if (!complete)
        fail(u"The file %1 in %2 could not be written"_s);
    m_stream.setDevice(nullptr);
    m_file.close();
    if (!complete && QFileInfo(m_file).isFile())
        m_file.remove();
    return complete;
}

bool GeneratedFile::fail(const QString &message)
{
    const QFileInfo info(m_file);
    m_error = message.arg(info.fileName(), QDir::toNativeSeparators(info.absolutePath())) + u" ("_s
        + m_file.errorString() + u')';
    return false;
}
