#pragma once

#include <QCursor>
#include <QGuiApplication>
#include <QList>

/** Shows the wait cursor for the life of this object; never while somebody is asked something. */
class WaitCursor
{
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(WaitCursor)
};

/** Takes every wait cursor away for the life of this object: now the program waits for the user. */
class NormalCursor
{
public:
    NormalCursor()
    {
        while (const QCursor *cursor = QGuiApplication::overrideCursor()) {
            m_cursors.append(*cursor);
            QGuiApplication::restoreOverrideCursor();
        }
    }
    ~NormalCursor()
    {
        while (!m_cursors.isEmpty())
            QGuiApplication::setOverrideCursor(m_cursors.takeLast());
    }
    Q_DISABLE_COPY_MOVE(NormalCursor)

private:
    QList<QCursor> m_cursors;
};
