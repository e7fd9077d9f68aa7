#pragma once

#include "forms/BaseMainForm.h"
#include "forms/RowsModel.h"

#include <memory>
#include <span>

namespace Ui {
class SettingsForm;
}

/** One row of a settings page: a key of a settings table and how its value reads. */
struct SettingRow
{
    enum class Kind {
        Heading, ///< no key: the title of the rows below
        Text,
        Tick, ///< "0" or empty reads as no, "1" as yes
        Choice, ///< the number of one of the choices
    };

    Kind kind = Kind::Text;
    const char *key = "";
    const char *label = "";
    const char *choices = ""; ///< separated by "|", in the order of their numbers
};

/** A page that shows settings and their values, in groups. Nothing is edited here. */
class SettingsForm : public BaseMainForm
{
    Q_OBJECT

public:
    ~SettingsForm() override;

    /** Selects the row of a setting of this page. */
    bool goTo(const ProjectLocation &location) override;

protected:
    explicit SettingsForm(QWidget *parent);

    /** All rows as the open project has them now. */
    virtual QList<RowsModel::Row> readRows(ObjectDataBase &store) const = 0;
    /** The values of a settings table that the page shows have this type of change. */
    virtual int changeType() const = 0;

    using Reader = QString (ObjectDataBase::*)(const QString &key);
    /** The rows of a table; labels are translated in the context of the page's class. */
    QList<RowsModel::Row> readTable(ObjectDataBase &store, std::span<const SettingRow> table,
                                    Reader reader) const;
    static RowsModel::Row headingRow(const QString &title);
    RowsModel::Row settingRow(const QString &key, const QString &label, const QString &value) const;
    /** A stored value as the user reads it. */
    QString valueText(const SettingRow &row, const QString &value) const;
    /** A text of a table in the user's language. */
    QString label(const char *text) const;

    bool isConcernedBy(const ObjectDataBase::ChangeSet &change) const override;
    void refresh() override;

private:
    std::unique_ptr<Ui::SettingsForm> m_ui;
    RowsModel *m_rows;
};
