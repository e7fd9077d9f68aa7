#include "widgets/KorvelTreeWidget.h"

#include "widgets/GuiHelper.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QScopedValueRollback>
#include <QSettings>

using namespace Qt::StringLiterals;

KorvelTreeWidget::KorvelTreeWidget(QWidget *parent)
    : QTreeWidget(parent), m_collapse(new QAction(tr("Collapse all"), this)),
      m_expand(new QAction(tr("Expand all"), this)),
      m_keyboardNav(new QAction(tr("Keyboard navigation"), this))
{
    m_collapse->setObjectName(u"actionCollapseAll"_s);
    m_expand->setObjectName(u"actionExpandAll"_s);
    m_keyboardNav->setObjectName(u"actionKeyboardNavigation"_s);
    m_keyboardNav->setCheckable(true);
    m_keyboardNav->setToolTip(tr("Navigate through the object browser with the keyboard."));
    connect(m_collapse, &QAction::triggered, this, &KorvelTreeWidget::collapseTree);
    connect(m_expand, &QAction::triggered, this, &KorvelTreeWidget::expandTree);
    connect(m_keyboardNav, &QAction::triggered, this, &KorvelTreeWidget::enableKeyboardNav);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &KorvelTreeWidget::itemSelectionHasChanged);
    connect(this, &QObject::objectNameChanged, this, &KorvelTreeWidget::loadKeyboardNav);
}

void KorvelTreeWidget::addMenuPart(QMenu &menu) const
{
    menu.setToolTipsVisible(true);
    menu.addActions({m_collapse, m_expand, m_keyboardNav});
}

bool KorvelTreeWidget::isKeyboardNavEnabled() const
{
    return m_keyboardNav->isChecked();
}

void KorvelTreeWidget::itemSelectionHasChanged()
{
    const QTreeWidgetItem *item = currentItem();
    if (!m_inKeyPress || !isKeyboardNavEnabled() || !item || !item->isSelected())
        return;
    Q_EMIT activated(currentIndex()); // brings itemActivated along
}

void KorvelTreeWidget::enableKeyboardNav(bool enable)
{
    m_keyboardNav->setChecked(enable);
    GuiHelper::userSettings()->setValue(settingsKey(), enable);
}

void KorvelTreeWidget::collapseTree(bool)
{
    collapseAll();
}

void KorvelTreeWidget::expandTree(bool)
{
    expandAll();
}

void KorvelTreeWidget::keyPressEvent(QKeyEvent *event)
{
    const QScopedValueRollback guard(m_inKeyPress, true);
    QTreeWidget::keyPressEvent(event);
}

void KorvelTreeWidget::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    menu.setObjectName(u"treeMenu"_s);
    addMenuPart(menu);
    menu.exec(event->globalPos());
}

void KorvelTreeWidget::loadKeyboardNav()
{
    m_keyboardNav->setChecked(GuiHelper::userSettings()->value(settingsKey(), false).toBool());
}

QString KorvelTreeWidget::settingsKey() const
{
    return "Env/"_L1 + objectName() + "_KeyboardNav"_L1;
}
