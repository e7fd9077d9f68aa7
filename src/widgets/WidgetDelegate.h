#pragma once

#include <QList>
#include <QStyledItemDelegate>
#include <QVariant>

/**
 * Edits the cells of a table in place, each by the kind of editor that the model gives it.
 *
 * What is edited is the model's Qt::EditRole: the text, the label of the choice, or whether a box is
 * checked (a model that stores text gets "0" or "1"). A choice and a check box are committed as soon as
 * they are changed.
 */
class WidgetDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    enum Role {
        EditorKindRole = Qt::UserRole + 1, ///< an EditorKind as a number
        ChoicesRole, ///< WidgetDelegate::Choices, for combo boxes
        ChoiceValueRole, ///< receives the value of the choice, beside its label
    };
    enum class EditorKind {
        None = 0, ///< the usual editor of the value's type
        LineEdit = 1,
        ComboBox = 2,
        CheckBox = 3,
    };
    struct Choice
    {
        QString label;
        QVariant value; ///< what is stored for it
    };
    using Choices = QList<Choice>;

    using QStyledItemDelegate::QStyledItemDelegate;

    static EditorKind editorKind(const QModelIndex &index);

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    QWidget *createComboBox(QWidget *parent, const QModelIndex &index) const;
    QWidget *createCheckBox(QWidget *parent) const;
    /** Signals cannot be sent from the const functions of a delegate. */
    void commit(QWidget *editor) { Q_EMIT commitData(editor); }
};
Q_DECLARE_METATYPE(WidgetDelegate::Choices)
