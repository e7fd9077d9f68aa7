#include "widgets/FindBar.h"

#include "ui_FindBar.h"
#include "widgets/GuiHelper.h"

#include <QKeyEvent>

FindBar::FindBar(QWidget *parent) : QWidget(parent), m_ui(std::make_unique<Ui::FindBar>())
{
    m_ui->setupUi(this);
    GuiHelper::setIcons(*this);
    setFocusProxy(m_ui->leFind);
    const auto search = [this] { Q_EMIT findRequested(false, true); };
    connect(m_ui->leFind, &QLineEdit::textChanged, this, search);
    connect(m_ui->cbCase, &QCheckBox::toggled, this, search);
    connect(m_ui->cbWords, &QCheckBox::toggled, this, search);
    connect(m_ui->btnNext, &QToolButton::clicked, this, [this] { Q_EMIT findRequested(false, false); });
    connect(m_ui->btnPrevious, &QToolButton::clicked, this, [this] { Q_EMIT findRequested(true, false); });
    connect(m_ui->btnClose, &QToolButton::clicked, this, &FindBar::closed);
}

FindBar::~FindBar() = default;

void FindBar::activate(const QString &selectedText)
{
    show();
    if (!selectedText.isEmpty() && !selectedText.contains(QChar::ParagraphSeparator))
        m_ui->leFind->setText(selectedText);
    m_ui->leFind->setFocus(Qt::ShortcutFocusReason);
    m_ui->leFind->selectAll();
}

void FindBar::setText(const QString &text)
{
    m_ui->leFind->setText(text);
}

QString FindBar::text() const
{
    return m_ui->leFind->text();
}

QTextDocument::FindFlags FindBar::flags() const
{
    QTextDocument::FindFlags flags;
    flags.setFlag(QTextDocument::FindCaseSensitively, m_ui->cbCase->isChecked());
    flags.setFlag(QTextDocument::FindWholeWords, m_ui->cbWords->isChecked());
    return flags;
}

void FindBar::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT findRequested(event->modifiers().testFlag(Qt::ShiftModifier), false);
        break;
    case Qt::Key_Escape:
        Q_EMIT closed();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void FindBar::showResult(Result result)
{
    switch (result) {
    case Result::Nothing:
    case Result::Found:
        m_ui->lblResult->clear();
        break;
    case Result::FoundFromOtherEnd:
        m_ui->lblResult->setText(tr("Continued at the other end"));
        break;
    case Result::NotFound:
        m_ui->lblResult->setText(tr("Not found"));
        break;
    }
}
