#pragma once

#include <QObject>
#include <QStringList>

class QMenu;

/**
 * Fills a menu with the PDF manuals of a folder and opens the one that is chosen.
 *
 * The folder is looked at each time the menu comes up. Without any manual the menu holds one disabled
 * entry that says so.
 */
class ManualHandler : public QObject
{
    Q_OBJECT

public:
    /** Manuals lie in the folder "doc" beside the executable. */
    explicit ManualHandler(QMenu *menu, QObject *parent = nullptr);
    ManualHandler(QMenu *menu, const QString &folder, QObject *parent = nullptr);

    /** The whole paths, in the order of the menu: by name, numbers in names by their value. */
    QStringList manuals() const;

public Q_SLOTS:
    /** Opens a manual in the program that the desktop has for it. */
    void openManual(const QString &path);

Q_SIGNALS:
    /** The desktop could not open a manual. */
    void openFailed(const QString &path);

private:
    void fillMenu();

    QMenu *m_menu;
    QString m_folder;
};
