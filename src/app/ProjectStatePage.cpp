#include "app/ProjectStatePage.h"

#include "app/ProjectLinesModel.h"
#include "ui_ProjectStatePage.h"

#include <QDir>
#include <QHeaderView>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

ProjectStatePage::ProjectStatePage(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::ProjectStatePage>()), m_lines(new ProjectLinesModel(this))
{
    m_ui->setupUi(this);
    QFont heading = m_ui->lblName->font();
    heading.setPointSizeF(heading.pointSizeF() * 1.5);
    heading.setBold(true);
    m_ui->lblName->setFont(heading);
    m_ui->tvLines->setModel(m_lines);
    m_ui->tvLines->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    m_ui->tvLines->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_ui->tvLines->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_ui->tvLines->horizontalHeader()->setSectionResizeMode(ProjectLinesModel::ProtocolColumn,
                                                            QHeaderView::Stretch);
    m_refreshTimer.setSingleShot(true);
    m_refreshTimer.setInterval(50ms);
    connect(&m_refreshTimer, &QTimer::timeout, this, &ProjectStatePage::refresh);
}

ProjectStatePage::~ProjectStatePage() = default;

void ProjectStatePage::setDataBase(ObjectDataBase *store)
{
    if (m_store)
        disconnect(m_store, nullptr, this, nullptr);
    m_store = store;
    if (m_store)
        connect(m_store, &ObjectDataBase::updateNotify, this, &ProjectStatePage::updateData);
    refresh();
}

void ProjectStatePage::setProject(const QString &name, const QString &file)
{
    m_hasFile = !file.isEmpty();
    m_ui->lblName->setText(name);
    const QString noFile = isProjectOpen() ? tr("not saved yet") : QString();
    m_ui->lblFile->setText(file.isEmpty() ? noFile : QDir::toNativeSeparators(file));
    refresh();
}

bool ProjectStatePage::isProjectOpen() const
{
    return m_store && m_store->isOpen();
}

void ProjectStatePage::selectLine(quint8 line)
{
    m_line = line;
    for (int row = 0; row < m_lines->rowCount(); ++row)
        if (m_lines->index(row, ProjectLinesModel::LineColumn).data().toInt() == line)
            m_ui->tvLines->selectRow(row);
}

void ProjectStatePage::refresh()
{
    m_refreshTimer.stop();
    m_lines->readFrom(isProjectOpen() ? m_store.get() : nullptr);
    selectLine(m_line);
    if (!isProjectOpen()) {
        m_ui->lblCreated->clear();
        m_ui->lblSaved->clear();
        return;
    }
    const QString created = m_store->getMiscSetting(u"CreateToolVersion"_s);
    m_ui->lblCreated->setText(created.isEmpty() ? tr("unknown") : created);
    const QString tool = m_store->getMiscSetting(u"SaveToolType"_s);
    const QString saved = m_store->getMiscSetting(u"SaveToolVersion"_s);
    const bool isSaved = m_hasFile && !saved.isEmpty(); // a template has been saved, too
    m_ui->lblSaved->setText(isSaved ? tr("%1 %2").arg(tool, saved).trimmed() : tr("not saved yet"));
}

void ProjectStatePage::updateData(const ObjectDataBase::ChangeSet &changes)
{
    Q_UNUSED(changes)
    if (!m_refreshTimer.isActive())
        m_refreshTimer.start();
}
