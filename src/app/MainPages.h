#pragma once

#include "app/LineType.h"
#include "app/PageSet.h"
#include "store/ObjectDataBase.h"

#include <QObject>
#include <QSharedPointer>

class BaseMainForm;
class GeneratorOutputForm;
class ObjectDictionaryForm;
class QAbstractButton;
class QToolBox;
struct ProjectLocation;

/** The forms of the main window: one page of its tool box each, made once for all projects. */
class MainPages : public QObject
{
    Q_OBJECT

public:
    /** Adds the pages of the edition to the box, which owns them. */
    explicit MainPages(QToolBox *box);

    void setDataBase(const QSharedPointer<ObjectDataBase> &dataBase);
    /** Shows a line on every page; `force` lets them read again what they show already. */
    void showLine(quint8 line, bool force);
    /** Enables the pages that a line of the type has a use for; with several lines, titles name the line. */
    void setLineType(quint8 line, LineType type, bool multiLine);
    void setExpertMode(bool active);
    /** Lets every page read the project again, now or when it is shown. */
    void readAgain();
    /** The user's settings have changed. */
    void applySettings();

    /** The form on the current page; null on a page that is none. */
    BaseMainForm *current() const;
    /** Writes what the user has entered on the current page. */
    void commitCurrent();
    void show(QWidget *form);
    /** Shows the next page that the line has a use for, or the one before it, and gives it the keyboard. */
    void showNeighbour(bool next);
    /** Opens the first page that shows a place of the current line; false when there is none. */
    bool goTo(const ProjectLocation &location);

    /** Null in an edition that has no such page. */
    ObjectDictionaryForm *objectDictionary() const { return m_objectDictionary; }
    GeneratorOutputForm *output() const { return m_output; }
    QList<BaseMainForm *> forms() const;

Q_SIGNALS:
    /** What the edit menu can do on a page may have changed. */
    void editStateChanged();

private:
    struct Page;
    static const QList<Page> &table();

    void add(const Page &page);
    QList<QAbstractButton *> headers() const;

    QToolBox *m_box;
    QList<QPair<const Page *, BaseMainForm *>> m_pages;
    ObjectDictionaryForm *m_objectDictionary = nullptr;
    GeneratorOutputForm *m_output = nullptr;
};
