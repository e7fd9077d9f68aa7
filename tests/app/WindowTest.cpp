#include "app/WindowTest.h"

using namespace Qt::StringLiterals;

void WindowTest::init()
{
    QCoreApplication::setApplicationName(u"CANopen NodeSmith"_s);
    UserSettings().clear();
    m_folder = std::make_unique<QTemporaryDir>();
}

void WindowTest::cleanup()
{
    QVERIFY(QDir::setCurrent(m_startFolder));
    m_store.reset();
    m_reference.reset();
}

/** Makes stores and window in the order of the program's start. */
std::unique_ptr<VexMainWindow> WindowTest::makeWindow(const QStringList &arguments)
{
    m_store = QSharedPointer<ObjectDataBase>::create();
    ProjectLifecycle::prepareProjectStore(*m_store);
    m_reference = QSharedPointer<ObjectDataBase>::create();
    ProjectLifecycle::prepareReferenceStore(*m_reference);
    auto window = std::make_unique<VexMainWindow>(QStringList{u"program"_s} + arguments);
    window->setDataBase(m_store);
    window->setReferenceDataBase(m_reference);
    window->updateFormsForLine(0, false);
    return window;
}

/** Opens a project and changes it, as a user does: some time after all signs of the opening have gone. */
void WindowTest::openAndChange(VexMainWindow &window)
{
    const QString file = saveProject();
    window.openProject(file);
    QTest::qWait(20);
    QVERIFY(!window.isModified());
    QVERIFY(m_store->setGeneralSetting(u"co_node_id"_s, u"3"_s));
    QVERIFY(window.isModified());
}

QString WindowTest::saveProject(const QString &name)
{
    return TestProject::save(path(name), u"CANopen NodeSmith"_s, u"1"_s) ? path(name) : QString();
}
