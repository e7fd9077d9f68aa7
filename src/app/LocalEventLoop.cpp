#include "app/LocalEventLoop.h"

#include <QEventLoop>
#include <QTimer>

void runLocalEventLoop(std::chrono::milliseconds duration)
{
    QEventLoop loop;
    QTimer::singleShot(duration, &loop, &QEventLoop::quit);
    loop.exec();
}
