#pragma once

#include "store/ObjectDataBase.h"

#include <QDialog>
#include <QSharedPointer>

#include <memory>

class UserSettings;
namespace Ui {
class SettingsDialog;
}

/**
 * The user's settings, and with them the post generation command of the open project.
 *
 * All values are read when the dialog is made and written when it is accepted, never in between. Only one
 * of the two post generation commands runs, the project's before the user's; a user's command that merely
 * rests because the project has its own stays enabled for all other projects.
 */
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    /** The J1939 edition does not show what concerns objects of a CANopen object dictionary only. */
    explicit SettingsDialog(QWidget *parent = nullptr, bool isJ1939Edition = false);
    ~SettingsDialog() override;

    /** The project whose post generation command is shown; without an open one that group is disabled. */
    void setDataBase(const QSharedPointer<ObjectDataBase> &dataBase);

public Q_SLOTS:
    void on_gbProjectPostGen_toggled(bool checked);
    void on_gbGlobalPostGen_toggled(bool checked);
    void on_btnFileSelect_clicked();
    void on_btnPathSelect_clicked();
    void on_btnDownload_clicked();
    void on_buttonBox_accepted();
    void on_buttonBox_rejected();

private:
    void setUpPages();
    void hideCanopenOnly();
    void load();
    /** False when the settings file cannot be written. */
    bool save();
    void saveProject();
    QVariant wished(QLatin1StringView widget, QLatin1StringView property) const;
    void loadEdsChecker(const UserSettings &settings);
    void showPreview();
    void showPathHints();

    std::unique_ptr<Ui::SettingsDialog> m_ui;
    QSharedPointer<ObjectDataBase> m_dataBase;
    bool m_isGlobalPostGenWanted = false; ///< while the project's own command is enabled
};
