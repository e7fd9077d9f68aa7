#include "app/NodeSmith.h"

#include "app/Edition.h"
#include "app/VexMainWindow.h"
#include "store/WorkingFiles.h"
#include "widgets/KorvelBaseApplication.h"
#include "widgets/MessageLog.h"
#include "widgets/TerminationSignals.h"

#include <QDebug>
#include <QDir>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QTemporaryDir>
#include <QTimer>
#include <QTranslator>

#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr quint8 settingsGenerations = 3;
constexpr int dragTimeMs = 100;
constexpr int dragDistancePixels = 10;
constexpr int exitCodeWithoutDisplay = 1;

/**
 * The platform of a build machine, which has no display. It must be chosen before the application
 * object exists, and the folder for run-time files must outlive that object.
 */
class OffscreenPlatform
{
public:
    OffscreenPlatform()
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
            return;
        m_runtimeFolder.emplace(QDir::tempPath() + "/nodesmith-runtime-XXXXXX"_L1);
        if (m_runtimeFolder->isValid())
            qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_runtimeFolder->path()));
    }

private:
    std::optional<QTemporaryDir> m_runtimeFolder;
};

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

/** Texts in the user's language where a translation exists, Qt's own included; otherwise they are English. */
void installTranslations()
{
    const QList<QPair<QString, QString>> catalogues{
        {u"qtbase"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)},
        {u"nodesmith"_s, u":/translations"_s},
    };
    for (const auto &[name, folder] : catalogues) {
        auto *translator = new QTranslator(QCoreApplication::instance());
        if (translator->load(QLocale(), name, u"_"_s, folder))
            QCoreApplication::installTranslator(translator);
        else
            delete translator;
    }
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
    // A signal that has ended a box of the first project has found no other event loop to end.
    const int code = TerminationSignals::received() == 0 ? QApplication::exec() : 0;
    // A batch run ends with 0 whatever it met; one that was aborted must not look like it.
    return TerminationSignals::exitCode(code);
}

} // namespace

void setUpApplication(KorvelBaseApplication &application, const QString &name)
{
    QCoreApplication::setApplicationName(name);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QCoreApplication::setOrganizationDomain(u"korvel.invalid"_s);
    application.initSettings(settingsGenerations);
    QApplication::setStartDragTime(dragTimeMs);
    QApplication::setStartDragDistance(dragDistancePixels);
    installTranslations();
    QApplication::setWindowIcon(QIcon(Edition::iconPath()));
    // The window quits when it is closed. A message box of a hidden run is the only window there is,
    // and closing it must not end the run.
    QApplication::setQuitOnLastWindowClosed(false);
}

int runNodeSmith(int argc, char **argv, const char *editionName)
{
    if (CommandLine::lacksDisplay(argc, argv)) {
        MessageLog::install();
        qCritical("no display; start with -hidden for a run without window");
        return exitCodeWithoutDisplay;
    }
    // The order of declaration is the order of destruction, read backwards.
    std::optional<OffscreenPlatform> platform;
    if (CommandLine::needsOffscreenPlatform(argc, argv))
        platform.emplace();
    const QString name = QString::fromLatin1(editionName);
    KorvelBaseApplication application(argc, argv, name, QStringLiteral(NODESMITH_VERSION));
    setUpApplication(application, name);
    const TerminationSignals signalHandling;
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
