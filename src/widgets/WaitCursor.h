#pragma once

#include <QCursor>
#include <QGuiApplication>

/** Shows the wait cursor for the life of this object; never while somebody is asked something. */
class WaitCursor
{
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(WaitCursor)
};
