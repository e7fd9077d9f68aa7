#include "app/NodeSmith.h"

#include "app/Edition.h"
#include "app/VexMainWindow.h"
#include "store/WorkingFiles.h"
#include "widgets/KorvelBaseApplication.h"

#include <QDebug>
#include <QIcon>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr quint8 settingsGenerations = 3;
constexpr int dragTimeMs = 100;
constexpr int dragDistancePixels = 10;

/** A build machine has no display; the platform must be chosen before the application object exists. */
void choosePlatform(int argc, char **argv)
{
    if (CommandLine::needsOffscreenPlatform(argc, argv))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

void setUpApplication(KorvelBaseApplication &application, const QString &name)
{
    QCoreApplication::setApplicationName(name);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QCoreApplication::setOrganizationDomain(u"korvel.invalid"_s);
    application.initSettings(settingsGenerations);
    QApplication::setStartDragTime(dragTimeMs);
    QApplication::setStartDragDistance(dragDistancePixels);
    QApplication::setWindowIcon(QIcon(Edition::iconPath()));
    // The window quits when it is closed. A message box of a hidden run is the only window there is,
    // and closing it must not end the run.
    QApplication::setQuitOnLastWindowClosed(false);
}

QSharedPointer<ObjectDataBase> makeProjectStore()
{
    auto store = QSharedPointer<ObjectDataBase>::create();
    ProjectLifecycle::prepareProjectStore(*store);
    return store;
}

QSharedPointer<ObjectDataBase> makeReferenceStore()
{
    auto store = QSharedPointer<ObjectDataBase>::create();
    ProjectLifecycle::prepareReferenceStore(*store);
    return store;
}

void showUnlessHidden(VexMainWindow &window)
{
    if (!window.hiddenRun())
        window.show();
}

void loadFirstProject(VexMainWindow &window)
{
    const std::optional<QString> project = window.commandLine().project();
    if (project) {
        window.openProject(*project);
        window.loadReferenceProfile(u":/codb/v301.codb"_s);
    } else {
        window.doThingsAfterStartup();
    }
}

int runEventLoop(KorvelBaseApplication &application, VexMainWindow &window)
{
    qRegisterMetaType<ObjectDataBase::ChangeSet>("ObjectDataBase::ChangeSet");
    QTimer::singleShot(0ms, &window, &VexMainWindow::doThingsAfter1Second);
    QObject::connect(&window, &VexMainWindow::sigInstrumentFunctions, &application,
                     &KorvelBaseApplication::onInstrumentFunctionChanged);
    qDebug() << Q_FUNC_INFO << "Line:" << __LINE__;
    return QApplication::exec();
}

} // namespace

int runNodeSmith(int argc, char **argv, const char *editionName)
{
    choosePlatform(argc, argv);
    const QString name = QString::fromLatin1(editionName);
    // The order of declaration is the order of destruction, read backwards.
    KorvelBaseApplication application(argc, argv, name, QStringLiteral(NODESMITH_VERSION));
    setUpApplication(application, name);
    WorkingFiles::removeStale();
    QSharedPointer<ObjectDataBase> project = makeProjectStore();
    QSharedPointer<ObjectDataBase> reference = makeReferenceStore();
    VexMainWindow window(QCoreApplication::arguments());
    window.setDataBase(project);
    window.setReferenceDataBase(reference);
    window.updateFormsForLine(0, false);
    showUnlessHidden(window);
    loadFirstProject(window);
    return runEventLoop(application, window);
}
