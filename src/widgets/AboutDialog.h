#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class AboutDialog;
}

/** Tells the product, its version, what it runs on and under which licences. */
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit AboutDialog(QWidget *parent = nullptr);
    ~AboutDialog() override;

    /** The facts that a request for support needs, one a line: what the copy button copies. */
    static QString facts();

private:
    void copyFacts();

    std::unique_ptr<Ui::AboutDialog> m_ui;
};
