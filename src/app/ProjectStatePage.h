#pragma once

#include "store/ObjectDataBase.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <memory>

class ProjectLinesModel;
namespace Ui {
class ProjectStatePage;
}

/** What the project is and what its lines hold. It only shows; nothing is edited here. */
class ProjectStatePage : public QWidget
{
    Q_OBJECT

public:
    explicit ProjectStatePage(QWidget *parent = nullptr);
    ~ProjectStatePage() override;

    void setDataBase(ObjectDataBase *store);
    /** The name shown as heading and the file below it; an empty file means never saved, or no project. */
    void setProject(const QString &name, const QString &file);
    void selectLine(quint8 line);
    /** Reads everything again. */
    void refresh();

public Q_SLOTS:
    /** Bursts of changes, as an import sends them, end in one refresh. */
    void updateData(const ObjectDataBase::ChangeSet &changes);

private:
    bool isProjectOpen() const;

    std::unique_ptr<Ui::ProjectStatePage> m_ui;
    ProjectLinesModel *m_lines;
    QPointer<ObjectDataBase> m_store;
    QTimer m_refreshTimer;
    quint8 m_line = 0;
    bool m_hasFile = false;
};
