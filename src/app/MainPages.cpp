#include "app/MainPages.h"

#include "app/Edition.h"
#include "check/ProjectLocation.h"
#include "forms/CANopenStackSettingsFormV4.h"
#include "forms/DeviceDescriptionForm.h"
#include "forms/GeneralSettingsForm3.h"
#include "forms/ManufacturerSegmentForm.h"
#include "forms/ObjectDictionaryForm.h"
#include "forms/TargetSettingsForm.h"
#include "forms/energybus/EBNodeGuide.h"
#include "forms/j1939/J1939SettingsForm.h"
#include "forms/j1939/J1939SignalForm.h"
#include "forms/output/GeneratorOutputForm.h"
#include "forms/rawcan/CANSignalForm.h"
#include "forms/uds/UDSIndicationForm.h"
#include "forms/uds/UDSServicesForm.h"
#include "widgets/GuiHelper.h"

#include <QAbstractButton>
#include <QToolBox>

#include <algorithm>

using namespace Qt::StringLiterals;

enum class PageEdition { All, NodeSmith, EnergyBus };

/** What makes a page: its form, and for which lines and editions it is there. */
struct MainPages::Page
{
    BaseMainForm *(*make)();
    const char *objectName;
    const char *title;
    const char *iconName;
    PageKind kind;
    PageEdition edition;
    bool ofLine; ///< what it shows belongs to the current line, which the title then names
};

namespace {

template <typename Form>
BaseMainForm *make()
{
    return new Form;
}

/** The first widget of a page that Tab would stop at; null when there is none. */
QWidget *firstField(QWidget *page)
{
    for (QWidget *widget = page->nextInFocusChain(); widget != page; widget = widget->nextInFocusChain())
        if (page->isAncestorOf(widget) && (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isEnabled()
            && widget->isVisibleTo(page))
            return widget;
    return nullptr;
}

} // namespace

const QList<MainPages::Page> &MainPages::table()
{
    using enum PageKind;
    using enum PageEdition;
    static const QList<Page> pages{
        {make<EBNodeGuide>, "energyBusForm", QT_TR_NOOP("EnergyBus Device"), "energybus-nodeguide", Always,
         EnergyBus, false},
        {make<ObjectDictionaryForm>, "objectDictionaryForm", QT_TR_NOOP("CANopen Object Dictionary"),
         "page-object-dictionary", CANopen, All, true},
        {make<ManufacturerSegmentForm>, "manufacturerSegmentForm", QT_TR_NOOP("CANopen Manufacturer Segment"),
         "page-manufacturer-segment", CANopen, All, true},
        {make<DeviceDescriptionForm>, "deviceDescriptionForm", QT_TR_NOOP("CANopen Device Description"),
         "page-device-description", CANopen, NodeSmith, true},
        {make<CANopenStackSettingsFormV4>, "stackSettingsForm", QT_TR_NOOP("CANopen Stack Settings"),
         "page-stack-settings", CANopen, NodeSmith, false},
        {make<J1939SignalForm>, "j1939SignalForm", QT_TR_NOOP("J1939 Signal Definition"),
         "page-j1939-signals", J1939, NodeSmith, true},
        {make<J1939SettingsForm>, "j1939SettingsForm", QT_TR_NOOP("J1939 Configuration"),
         "page-j1939-settings", J1939, NodeSmith, false},
        {make<CANSignalForm>, "rawCanForm", QT_TR_NOOP("Raw CAN Signal Definition"), "page-raw-can", RawCan,
         NodeSmith, true},
        {make<UDSServicesForm>, "udsServicesForm", QT_TR_NOOP("UDS Services"), "page-uds", RawCan, NodeSmith,
         true},
        {make<UDSIndicationForm>, "udsIndicationForm", QT_TR_NOOP("UDS Indications"), "page-uds", RawCan,
         NodeSmith, false},
        {make<GeneralSettingsForm3>, "generalSettingsForm", QT_TR_NOOP("Common Settings"),
         "page-general-settings", Always, NodeSmith, false},
        {make<TargetSettingsForm>, "targetSettingsForm", QT_TR_NOOP("Hardware/Target"), "page-target", Always,
         NodeSmith, false},
        {make<GeneratorOutputForm>, "generatorOutputForm", QT_TR_NOOP("Generator Output"), "page-output",
         Always, All, false},
    };
    return pages;
}

MainPages::MainPages(QToolBox *box) : QObject(box), m_box(box)
{
    const PageEdition edition = Edition::isEnergyBus() ? PageEdition::EnergyBus : PageEdition::NodeSmith;
    for (const Page &page : table())
        if (page.edition == PageEdition::All || page.edition == edition)
            add(page);
    const QList<QAbstractButton *> buttons = headers();
    for (QAbstractButton *button : buttons) // which Qt leaves to the mouse
        button->setFocusPolicy(Qt::TabFocus);
}

QList<QAbstractButton *> MainPages::headers() const
{
    return m_box->findChildren<QAbstractButton *>(u"qt_toolbox_toolboxbutton"_s, Qt::FindDirectChildrenOnly);
}

void MainPages::add(const Page &page)
{
    BaseMainForm *form = page.make();
    form->setObjectName(QString::fromLatin1(page.objectName));
    m_box->addItem(form, GuiHelper::icon(QString::fromLatin1(page.iconName)), tr(page.title));
    m_pages.append({&page, form});
    connect(form, &BaseMainForm::editStateChanged, this, &MainPages::editStateChanged);
    if (auto *dictionary = qobject_cast<ObjectDictionaryForm *>(form))
        m_objectDictionary = dictionary;
    if (auto *output = qobject_cast<GeneratorOutputForm *>(form))
        m_output = output;
}

QList<BaseMainForm *> MainPages::forms() const
{
    QList<BaseMainForm *> result;
    for (const auto &[page, form] : m_pages)
        result.append(form);
    return result;
}

void MainPages::setDataBase(const QSharedPointer<ObjectDataBase> &dataBase)
{
    for (const auto &[page, form] : std::as_const(m_pages))
        form->setDataBase(dataBase);
}

void MainPages::showLine(quint8 line, bool force)
{
    for (const auto &[page, form] : std::as_const(m_pages))
        form->showLine(line, force);
}

void MainPages::setLineType(quint8 line, LineType type, bool multiLine)
{
    const QList<QAbstractButton *> buttons = headers();
    for (const auto &[page, form] : std::as_const(m_pages)) {
        const int index = m_box->indexOf(form);
        const bool enabled = isPageEnabled(page->kind, type);
        m_box->setItemEnabled(index, enabled);
        form->setEnabled(enabled);
        if (index < buttons.size()) // what the line has no use for shall not take the place of what it has
            buttons[index]->setVisible(enabled);
        m_box->setItemText(index,
                           page->ofLine && multiLine ? tr("%1 - line %2").arg(tr(page->title)).arg(line)
                                                     : tr(page->title));
    }
}

void MainPages::setExpertMode(bool active)
{
    for (const auto &[page, form] : std::as_const(m_pages))
        form->expertModeChanged(active);
}

void MainPages::readAgain()
{
    ObjectDataBase::ChangeSet wholeProject;
    wholeProject.type = ObjectDataBase::ProjectChanged;
    for (const auto &[page, form] : std::as_const(m_pages))
        form->updateData(wholeProject);
}

void MainPages::applySettings()
{
    for (const auto &[page, form] : std::as_const(m_pages))
        form->applySettings();
}

BaseMainForm *MainPages::current() const
{
    return qobject_cast<BaseMainForm *>(m_box->currentWidget());
}

void MainPages::commitCurrent()
{
    if (BaseMainForm *form = current())
        form->commit();
}

void MainPages::show(QWidget *form)
{
    m_box->setCurrentWidget(form);
}

void MainPages::showNeighbour(bool next)
{
    const int count = m_box->count();
    int index = m_box->currentIndex();
    do
        index = (index + (next ? 1 : count - 1)) % count;
    while (!m_box->isItemEnabled(index) && index != m_box->currentIndex());
    m_box->setCurrentIndex(index);
    if (QWidget *field = firstField(m_box->currentWidget()))
        field->setFocus(Qt::TabFocusReason);
}

bool MainPages::goTo(const ProjectLocation &location)
{
    const auto page = std::ranges::find_if(std::as_const(m_pages), [&location](const auto &entry) {
        return entry.second->isEnabled() && entry.second->goTo(location);
    });
    if (page == m_pages.cend())
        return false;
    show(page->second);
    return true;
}
