#include "app/ProjectLifecycle.h"

#include "app/CANopenBasics.h"
#include "app/Edition.h"
#include "store/ObjectDataBase.h"
#include "store/ProjectConverter.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

bool createStore(ObjectDataBase &store, QLatin1StringView purpose)
{
    if (store.createNewDataBase())
        return true;
    qWarning().noquote() << u"No %1 can be made in the data folder %2: %3"_s.arg(
        purpose, QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation), store.lastError());
    return false;
}

} // namespace

void ProjectLifecycle::prepareProjectStore(ObjectDataBase &store)
{
    if (!createStore(store, "project"_L1))
        return;
    store.addNode(0, ObjectDataBase::NODE_DATA_T());
    const QString lineType = Edition::startLineType();
    if (!lineType.isEmpty())
        store.setGeneralSetting(u"line0type"_s, lineType);
}

void ProjectLifecycle::prepareReferenceStore(ObjectDataBase &store)
{
    if (!createStore(store, "reference project"_L1))
        return;
    store.addNode(0, ObjectDataBase::NODE_DATA_T());
    store.removeUnusedStrings();
}

void ProjectLifecycle::correctProject(const QSharedPointer<ObjectDataBase> &store)
{
    ProjectConverter converter;
    converter.setDataBase(store);
    converter.doGenericCorrection();
    converter.doProjectCorrection();
    if (Edition::isEnergyBus())
        converter.doEnergyBusCorrection();
    if (Edition::nameHoldsCan())
        converter.correctRawCan();
    if (Edition::nameHoldsJ1939() || Edition::nameHoldsCan())
        converter.correctJ1939();
}

bool ProjectLifecycle::newProject(const ProtocolChooser &chooseProtocol)
{
    forgetProject();
    if (!m_store || !openTemplateOrEmpty())
        return false;
    if (Edition::isCan())
        chooseFirstLine(chooseProtocol());
    m_store->setMiscSetting(u"CreateToolVersion"_s, QCoreApplication::applicationVersion());
    m_projectBaseName = u"newproject"_s;
    m_store->setGeneralSetting(u"line0type"_s, lineZeroType());
    markAsCurrent();
    return true;
}

ProjectLifecycle::OpenResult ProjectLifecycle::openProject(const QString &path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    if (!absolute.endsWith("vexp"_L1) && !absolute.endsWith("vext"_L1))
        return OpenResult::UnknownKind;
    const bool opened = m_store && m_store->openDataBase(absolute, true);
    qDebug().noquote() << Q_FUNC_INFO << absolute << opened;
    if (!opened)
        return OpenResult::Failed;
    setProjectFile(absolute);
    markAsCurrent();
    return OpenResult::Opened;
}

bool ProjectLifecycle::save()
{
    return m_store && !m_projectDir.isEmpty() && m_store->saveProject(QString());
}

bool ProjectLifecycle::saveAs(const QString &path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    if (!m_store || !m_store->saveProject(absolute))
        return false;
    setProjectFile(absolute);
    return true;
}

bool ProjectLifecycle::openTemplateOrEmpty()
{
    const QString path = m_template.isEmpty() ? Edition::projectTemplate() : m_template;
    if (QFileInfo::exists(path)) {
        if (m_store->openDataBase(path, true))
            return true;
        qWarning().noquote() << u"The template %1 cannot be used, an empty project is tried instead: %2"_s
                                    .arg(path, m_store->lastError());
    }
    if (m_store->createNewDataBase() && m_store->addNode(0, ObjectDataBase::NODE_DATA_T()))
        return true;
    m_store->closeDataBase(); // a store that found no room for a new project still holds the former one
    return false;
}

void ProjectLifecycle::forgetProject()
{
    m_projectDir.clear();
    m_projectBaseName.clear();
    m_projectFile.clear();
}

void ProjectLifecycle::chooseFirstLine(LineType type)
{
    m_store->setGeneralSetting(u"line0type"_s, LineTypes::toSetting(type));
    if (LineTypes::carriesCANopen(type))
        return;
    for (const quint16 index : CANopenBasics::objects)
        m_store->removeIndex(0, index);
}

/** Tells the generators that the project knows the present order of the stack's initialisation. */
void ProjectLifecycle::markAsCurrent()
{
    m_store->setGeneralSetting(u"new_init_structure"_s, u"1"_s);
}

void ProjectLifecycle::setProjectFile(const QString &path)
{
    const QFileInfo file(path);
    m_projectDir = file.absolutePath();
    m_projectBaseName = file.completeBaseName();
    m_projectFile = file.absoluteFilePath();
}

QString ProjectLifecycle::lineZeroType() const
{
    if (Edition::isJ1939())
        return LineTypes::toSetting(LineType::J1939);
    if (Edition::isCANopen())
        return LineTypes::toSetting(LineType::CANopen);
    return LineTypes::toSetting(LineTypes::fromSetting(m_store->getGeneralSetting(u"line0type"_s)));
}
