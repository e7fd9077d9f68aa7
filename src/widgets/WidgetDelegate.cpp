#include "widgets/WidgetDelegate.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

WidgetDelegate::EditorKind WidgetDelegate::editorKind(const QModelIndex &index)
{
    return EditorKind(index.data(EditorKindRole).toInt());
}

QWidget *WidgetDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                                      const QModelIndex &index) const
{
    switch (editorKind(index)) {
    case EditorKind::LineEdit: {
        auto *lineEdit = new QLineEdit(parent);
        lineEdit->setStyleSheet(u"QLineEdit { border: none; }"_s);
        return lineEdit;
    }
    case EditorKind::ComboBox:
        return createComboBox(parent, index);
    case EditorKind::CheckBox:
        return createCheckBox(parent);
    default:
        return QStyledItemDelegate::createEditor(parent, option, index);
    }
}

QWidget *WidgetDelegate::createComboBox(QWidget *parent, const QModelIndex &index) const
{
    auto *comboBox = new QComboBox(parent);
    const auto choices = index.data(ChoicesRole).value<Choices>();
    for (const Choice &choice : choices)
        comboBox->addItem(choice.label, choice.value);
    auto *self = const_cast<WidgetDelegate *>(this);
    connect(comboBox, &QComboBox::currentIndexChanged, self, [self, comboBox] { self->commit(comboBox); });
    return comboBox;
}

QWidget *WidgetDelegate::createCheckBox(QWidget *parent) const
{
    auto *checkBox = new QCheckBox(parent);
    checkBox->setAutoFillBackground(true); // the cell below draws a box, too
    auto *self = const_cast<WidgetDelegate *>(this);
    connect(checkBox, &QCheckBox::toggled, self, [self, checkBox] { self->commit(checkBox); });
    return checkBox;
}

void WidgetDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    const QSignalBlocker blocker(editor); // what comes from the model is no change of the user's
    const QVariant value = index.data(Qt::EditRole);
    switch (editorKind(index)) {
    case EditorKind::LineEdit:
        static_cast<QLineEdit *>(editor)->setText(value.toString());
        break;
    case EditorKind::ComboBox: {
        auto *comboBox = static_cast<QComboBox *>(editor);
        comboBox->setCurrentIndex(comboBox->findText(value.toString()));
        break;
    }
    case EditorKind::CheckBox:
        static_cast<QCheckBox *>(editor)->setChecked(value.toBool());
        break;
    default:
        QStyledItemDelegate::setEditorData(editor, index);
    }
}

void WidgetDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    switch (editorKind(index)) {
    case EditorKind::LineEdit:
        model->setData(index, static_cast<QLineEdit *>(editor)->text());
        break;
    case EditorKind::ComboBox: {
        const auto *comboBox = static_cast<QComboBox *>(editor);
        const QString label = comboBox->currentText(); // the model's answer to the value may change it
        model->setData(index, comboBox->currentData(), ChoiceValueRole);
        model->setData(index, label);
        break;
    }
    case EditorKind::CheckBox: {
        const bool checked = static_cast<QCheckBox *>(editor)->isChecked();
        const bool isText = index.data(Qt::EditRole).typeId() == QMetaType::QString;
        model->setData(index, isText ? QVariant(QString::number(int(checked))) : QVariant(checked));
        break;
    }
    default:
        QStyledItemDelegate::setModelData(editor, model, index);
    }
}

void WidgetDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (editorKind(index) != EditorKind::CheckBox)
        return;
    option->text.clear();
    option->features |= QStyleOptionViewItem::HasCheckIndicator;
    option->checkState = index.data(Qt::EditRole).toBool() ? Qt::Checked : Qt::Unchecked;
}
