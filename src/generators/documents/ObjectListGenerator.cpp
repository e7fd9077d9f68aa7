#include "generators/documents/ObjectListGenerator.h"

#include "generators/CodeWriter.h"
#include "store/ObjectDataBase.h"

#include <QDebug>

using namespace Qt::StringLiterals;

bool ObjectListGenerator::prepare()
{
    if (!m_database) {
        fail(u"There is no project."_s);
        return false;
    }
    m_view = ObjectListView::read(*m_database, m_line);
    return true;
}

void ObjectListGenerator::write(CodeWriter &out)
{
    writeHead(out);
    QString text; // of one object, as a stream is slow with small pieces
    for (const ListedObject &object : std::as_const(m_view.objects)) {
        if (m_stopRequested) {
            qDebug("Generation aborted");
            return;
        }
        text.resize(0);
        CodeWriter page(text);
        writeObject(page, object);
        out << text;
    }
    writeTail(out);
}

QString ObjectListGenerator::lineFileName(const QString &suffix) const
{
    if (!m_multiLine)
        return m_projectName + suffix;
    return u"%1_%2%3"_s.arg(m_projectName, QString::number(m_line), suffix);
}
