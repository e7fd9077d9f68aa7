#pragma once

#include <QTreeWidget>

/**
 * A tree with a context menu part of its own: collapse all, expand all, keyboard navigation.
 *
 * With keyboard navigation on, an item that is reached by a key is activated at once, as if Enter had
 * been pressed on it. The user's choice is kept under the widget's object name. An owner that shows a
 * context menu of its own (Qt::CustomContextMenu) puts this part into it by addMenuPart().
 */
class KorvelTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    explicit KorvelTreeWidget(QWidget *parent = nullptr);

    /** Appends the tree's own entries to a menu. */
    void addMenuPart(QMenu &menu) const;
    bool isKeyboardNavEnabled() const;

public Q_SLOTS:
    /** Opens the current item if a key has just selected it and keyboard navigation is on. */
    void itemSelectionHasChanged();
    /** Switches keyboard navigation and keeps the choice in the user's settings. */
    void enableKeyboardNav(bool enable);
    /** The parameter is that of QAction::triggered and means nothing here. */
    void collapseTree(bool checked);
    void expandTree(bool checked);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void loadKeyboardNav();
    QString settingsKey() const;

    QAction *m_collapse;
    QAction *m_expand;
    QAction *m_keyboardNav;
    bool m_inKeyPress = false;
};
