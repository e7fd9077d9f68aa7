#pragma once

#include <QObject>

/** The steps' way to a progress dialog. This base class shows nothing, as a batch run needs it. */
class PostGenProgressHandler : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void show() { }
    virtual void setLabelText(const QString &) { }
    virtual void setCancelButtonText(const QString &) { }
    virtual void adjustSize() { }
    virtual void hide() { }
    /** Tells the user of a failure; the button that was pressed, 0 without a user. */
    virtual int showMessage(QObject *, const QString & /*title*/, const QString & /*text*/,
                            const QString & /*detail*/)
    {
        return 0;
    }

Q_SIGNALS:
    void cancelProcess();

public Q_SLOTS:
    /** The user wishes to cancel what is under way. */
    void cancelProcessTriggered() { Q_EMIT cancelProcess(); }
};
