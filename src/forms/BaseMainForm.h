#pragma once

#include "check/ProjectLocation.h"
#include "store/ObjectDataBase.h"

#include <QSharedPointer>
#include <QTimer>
#include <QWidget>

/**
 * The base of the main window's pages.
 *
 * A form is made once and shows one line of whatever project its store holds. It reads from the store
 * when it is shown or told of a change, and writes what the user entered when its page is left.
 *
 * Reading is put off: however many changes are told, one re-read follows them, and a page that nobody
 * sees reads when it is shown again. While a worker has the store for itself, the page keeps what it shows.
 */
class BaseMainForm : public QWidget
{
    Q_OBJECT

public:
    explicit BaseMainForm(QWidget *parent = nullptr);
    ~BaseMainForm() override;

    /** Hands the store over and connects updateData to its notifications; null takes it away. */
    virtual void setDataBase(const QSharedPointer<ObjectDataBase> &dataBase);
    /** Shows a line; `force` reads everything again even when the line is shown already. */
    virtual void showLine(quint8 line, bool force);
    /** Writes what the user has entered but not yet left; called before a page is left or saved. */
    virtual void commit();
    /** Selects a place of the shown line; false when this page does not show it. */
    virtual bool goTo(const ProjectLocation &location);

    /** Reads the user's settings that matter here; called at the start and when they have changed. */
    virtual void applySettings() { }
    /** What the edit menu offers for the form's own selection; texts in input fields edit themselves. */
    enum class EditCommand { Cut, Copy, Paste, Delete, Duplicate };
    virtual bool canEdit(EditCommand) const { return false; }
    virtual void edit(EditCommand) { }

    quint8 line() const { return m_line; }

public Q_SLOTS:
    /** The project has changed; type 14 means that everything is to be read again. */
    virtual void updateData(const ObjectDataBase::ChangeSet &change);
    /** Unlocks (true) or locks all that is meant for experts. */
    virtual void expertModeChanged(bool expertModeActive);

Q_SIGNALS:
    /** What canEdit tells may have changed. */
    void editStateChanged();

protected:
    ObjectDataBase *store() const { return m_dataBase.get(); }
    /** The store, when it holds an open project; null otherwise. */
    ObjectDataBase *openStore() const;
    bool isExpertMode() const { return m_expertMode; }

    /** Whether the page shows anything that the change may have altered; a change is read when it does. */
    virtual bool isConcernedBy(const ObjectDataBase::ChangeSet &change) const;
    /** Reads all that the page shows; without an open project the page becomes empty. */
    virtual void refresh();
    /** Asks for one refresh, soon or when the page is shown. */
    void requestRefresh();
    /** Does a refresh that is asked for, even while the page is hidden. */
    void refreshNow();

    void showEvent(QShowEvent *event) override;

private:
    void refreshIfVisible();

    QSharedPointer<ObjectDataBase> m_dataBase;
    QTimer m_refreshTimer;
    quint8 m_line = 0;
    bool m_expertMode = true;
    bool m_isStale = true;
    bool m_isRefreshing = false;
};
