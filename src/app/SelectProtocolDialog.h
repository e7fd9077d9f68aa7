#pragma once

#include "app/LineType.h"

#include <QDialog>

#include <memory>

namespace Ui {
class SelectProtocolDialog;
}

/** Asks for the protocols of a CAN line. */
class SelectProtocolDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SelectProtocolDialog(const QString &question, QWidget *parent = nullptr);
    ~SelectProtocolDialog() override;

    /** Preselects a choice. */
    void setLineType(LineType type);
    /** The choice; CANopen when the dialog was not accepted. */
    LineType lineType() const;

private:
    std::unique_ptr<Ui::SelectProtocolDialog> m_ui;
};
