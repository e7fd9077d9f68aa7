#include "forms/BaseMainForm.h"

#include <QScopedValueRollback>
#include <QShowEvent>

using namespace std::chrono_literals;

namespace {

/** Changes of an import come as many events; those within this time are one re-read. */
constexpr auto refreshDelay = 30ms;
/** A worker has the store: the time after which the page tries again. */
constexpr auto lockedDelay = 100ms;

} // namespace

BaseMainForm::BaseMainForm(QWidget *parent) : QWidget(parent)
{
    m_refreshTimer.setSingleShot(true);
    connect(&m_refreshTimer, &QTimer::timeout, this, &BaseMainForm::refreshIfVisible);
}

BaseMainForm::~BaseMainForm() = default;

void BaseMainForm::setDataBase(const QSharedPointer<ObjectDataBase> &dataBase)
{
    if (m_dataBase)
        disconnect(m_dataBase.get(), nullptr, this, nullptr);
    m_dataBase = dataBase;
    if (m_dataBase)
        connect(m_dataBase.get(), &ObjectDataBase::updateNotify, this, &BaseMainForm::updateData);
    m_isStale = true;
    refreshIfVisible();
}

void BaseMainForm::showLine(quint8 line, bool force)
{
    if (line == m_line && !force)
        return;
    m_line = line;
    m_isStale = true;
    refreshIfVisible();
}

void BaseMainForm::commit() { }

bool BaseMainForm::goTo(const ProjectLocation &location)
{
    Q_UNUSED(location)
    return false;
}

void BaseMainForm::updateData(const ObjectDataBase::ChangeSet &change)
{
    if (change.type == ObjectDataBase::ProjectChanged || isConcernedBy(change))
        requestRefresh();
}

void BaseMainForm::expertModeChanged(bool expertModeActive)
{
    m_expertMode = expertModeActive;
}

ObjectDataBase *BaseMainForm::openStore() const
{
    return m_dataBase && m_dataBase->isOpen() ? m_dataBase.get() : nullptr;
}

bool BaseMainForm::isConcernedBy(const ObjectDataBase::ChangeSet &change) const
{
    Q_UNUSED(change)
    return true;
}

void BaseMainForm::refresh() { }

void BaseMainForm::requestRefresh()
{
    m_isStale = true;
    if (isVisible() && !m_refreshTimer.isActive())
        m_refreshTimer.start(refreshDelay);
}

void BaseMainForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refreshIfVisible();
}

void BaseMainForm::refreshIfVisible()
{
    if (isVisible())
        refreshNow();
}

// To read while a worker holds the store would serve events inside the read, and with them the next one.
void BaseMainForm::refreshNow()
{
    if (!m_isStale || m_isRefreshing)
        return;
    if (m_dataBase && m_dataBase->isWriteLocked()) {
        m_refreshTimer.start(lockedDelay);
        return;
    }
    m_refreshTimer.stop();
    m_isStale = false;
    {
        const QScopedValueRollback refreshing(m_isRefreshing, true);
        const QSharedPointer<ObjectDataBase> keepAlive = m_dataBase;
        refresh();
    }
    if (m_isStale)
        requestRefresh();
}
