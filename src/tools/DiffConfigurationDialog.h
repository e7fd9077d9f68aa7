#pragma once

#include "tools/DiffFields.h"

#include <QDialog>

#include <array>
#include <memory>

class QCheckBox;
namespace Ui {
class DiffConfigurationDialog;
}

/** Chooses the fields that count as a difference: one tick box each. */
class DiffConfigurationDialog : public QDialog
{
    Q_OBJECT

public:
    explicit DiffConfigurationDialog(QWidget *parent = nullptr);
    ~DiffConfigurationDialog() override;

    void setSelection(const DiffSelection &selection);
    DiffSelection selection() const;

private:
    void addFields(DiffLevel level);
    void setUpTabOrder();
    QWidget *box(DiffLevel level) const;

    std::unique_ptr<Ui::DiffConfigurationDialog> m_ui;
    std::array<QList<QCheckBox *>, diffLevels.size()> m_fields; ///< by level, in the order of the fields
};
