#include "projects/UndoDesk.h"

#include <functional>

using namespace UndoDesk;

class tst_UndoProjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void anotherStoreBeginsANewHistory();
    void aFormerStoreIsNoLongerWatched();
    void anotherProjectInTheSameStoreBeginsANewHistory_data();
    void anotherProjectInTheSameStoreBeginsANewHistory();
    void aProjectOpenedWhilePausedBeginsItsHistoryAtTheResume();
    void aProjectThatComesUnannouncedBeginsANewHistory();
    void aFailedOpenLeavesNoWayBack();
    void restoringIsNoOtherProject();
    void undoWorksAgainInTheNextProjectAfterAFailedSnapshot();
    void aProjectOpenedWhileAStepIsShownBeginsANewHistory();
    void aHistoryForgottenWhileAStepIsShownStaysForgotten();
};

void tst_UndoProjects::initTestCase()
{
    prepareApplication();
}

void tst_UndoProjects::init()
{
    setDepth(20);
}

void tst_UndoProjects::anotherStoreBeginsANewHistory()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    const auto other = newStore();
    desk.undo.setDataBase(other);
    QCOMPARE(snapshotFiles().size(), 1);
    QVERIFY(!desk.mayUndo());
    desk.undo.undo();
    QCOMPARE(desk.restored.size(), 0);
}

void tst_UndoProjects::aFormerStoreIsNoLongerWatched()
{
    Desk desk;
    const auto other = newStore();
    desk.undo.setDataBase(other);
    desk.edit(QStringLiteral("1"));
    QCOMPARE(snapshotFiles().size(), 1);
    desk.undo.setDataBase({});
    QVERIFY(other->setGeneralSetting(QStringLiteral("co_node_id"), QStringLiteral("2")));
    desk.undo.handleDebounceTimeout();
    QVERIFY(snapshotFiles().isEmpty());
}

namespace {

using Exchange = std::function<bool(ObjectDataBase &)>;

/** A project whose co_node_id is "other". */
QString otherProject(const QTemporaryDir &folder, const QString &name)
{
    const auto store = newStore();
    store->setGeneralSetting(QStringLiteral("line0type"), QStringLiteral("1"));
    store->setGeneralSetting(QStringLiteral("co_node_id"), QStringLiteral("other"));
    const QString path = folder.filePath(name);
    if (!store->saveProject(path))
        qFatal("cannot save %s", qPrintable(path));
    return path;
}

} // namespace

Q_DECLARE_METATYPE(Exchange)

void tst_UndoProjects::anotherProjectInTheSameStoreBeginsANewHistory_data()
{
    QTest::addColumn<Exchange>("exchange");
    QTest::addColumn<QString>("value");
    static const QTemporaryDir folder;
    const QString file = otherProject(folder, QStringLiteral("other.vexp"));
    const QString text = otherProject(folder, QStringLiteral("other.vext"));
    QTest::newRow("openDataBase") << Exchange([=](auto &store) { return store.openDataBase(file); })
                                  << QStringLiteral("other");
    QTest::newRow("createNewDataBase")
        << Exchange([](auto &store) { return store.createNewDataBase(); }) << QString();
    QTest::newRow("loadTextProject") << Exchange([=](auto &store) { return store.loadTextProject(text); })
                                     << QStringLiteral("other");
}

void tst_UndoProjects::anotherProjectInTheSameStoreBeginsANewHistory()
{
    QFETCH(Exchange, exchange);
    QFETCH(QString, value);
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.edit(QStringLiteral("2"));
    desk.undo.undo();
    desk.write(QStringLiteral("open burst"));
    const quint64 generation = desk.store->projectGeneration();
    QVERIFY(exchange(*desk.store));
    QVERIFY(desk.store->projectGeneration() > generation);
    QCOMPARE(desk.value(), value);
    QVERIFY(!desk.mayUndo());
    QVERIFY(!desk.mayRedo());
    QCOMPARE(snapshotFiles().size(), 1);
    desk.undo.undo();
    desk.undo.redo();
    desk.undo.handleDebounceTimeout();
    QCOMPARE(desk.restored.size(), 1);
    QCOMPARE(desk.value(), value);
    QCOMPARE(snapshotFiles().size(), 1);
    desk.edit(QStringLiteral("3"));
    desk.undo.undo();
    QCOMPARE(desk.value(), value);
    desk.undo.undo();
    QCOMPARE(desk.restored.size(), 2);
    desk.undo.redo();
    QCOMPARE(desk.value(), QStringLiteral("3"));
}

void tst_UndoProjects::aProjectOpenedWhilePausedBeginsItsHistoryAtTheResume()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.undo.pause();
    QVERIFY(desk.store->createNewDataBase());
    desk.write(QStringLiteral("2"));
    desk.undo.undo();
    QCOMPARE(desk.value(), QStringLiteral("2"));
    desk.undo.resume();
    QCOMPARE(snapshotFiles().size(), 1);
    QVERIFY(!desk.mayUndo());
    desk.edit(QStringLiteral("3"));
    desk.undo.undo();
    QCOMPARE(desk.value(), QStringLiteral("2"));
}

// A caller may have blocked the store's signals while it opened.
void tst_UndoProjects::aProjectThatComesUnannouncedBeginsANewHistory()
{
    const auto createSilently = [](const Desk &desk) {
        const QSignalBlocker blocker(desk.store.data());
        return desk.store->createNewDataBase();
    };
    Desk undone;
    undone.edit(QStringLiteral("1"));
    QVERIFY(createSilently(undone));
    undone.undo.undo();
    QCOMPARE(undone.restored.size(), 0);
    QVERIFY(!undone.mayUndo());
    undone.edit(QStringLiteral("2"));
    undone.undo.undo();
    QVERIFY(createSilently(undone));
    undone.undo.redo();
    QCOMPARE(undone.value(), QString());
    undone.edit(QStringLiteral("3"));
    QVERIFY(createSilently(undone));
    undone.write(QStringLiteral("4"));
    QVERIFY(!undone.mayUndo());
    undone.write(QStringLiteral("5"));
    QVERIFY(createSilently(undone));
    undone.undo.handleDebounceTimeout();
    QVERIFY(!undone.mayUndo());
    QCOMPARE(snapshotFiles().size(), 1);
}

void tst_UndoProjects::aFailedOpenLeavesNoWayBack()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("bad.vexp")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(5000, 'x'));
    file.close();
    Desk desk;
    desk.edit(QStringLiteral("1"));
    QVERIFY(!desk.store->openDataBase(file.fileName()));
    desk.undo.undo();
    QCOMPARE(desk.restored.size(), 0);
    QVERIFY(!desk.store->isOpen());
    QVERIFY(!desk.mayUndo());
    QVERIFY(desk.store->createNewDataBase());
    desk.edit(QStringLiteral("2"));
    desk.undo.undo();
    QCOMPARE(desk.value(), QString());
    QCOMPARE(desk.restored.size(), 1);
}

void tst_UndoProjects::restoringIsNoOtherProject()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    const quint64 generation = desk.store->projectGeneration();
    desk.undo.undo();
    QCOMPARE(desk.restored.size(), 1);
    QCOMPARE(desk.store->projectGeneration(), generation);
}

void tst_UndoProjects::undoWorksAgainInTheNextProjectAfterAFailedSnapshot()
{
    Desk desk;
    QVERIFY(QDir(snapshotFolder()).removeRecursively());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("snapshot failed, undo disabled")));
    desk.edit(QStringLiteral("1"));
    QVERIFY(QDir().mkpath(snapshotFolder()));
    QVERIFY(desk.store->createNewDataBase());
    desk.edit(QStringLiteral("2"));
    desk.undo.undo();
    QCOMPARE(desk.value(), QString());
}

void tst_UndoProjects::aProjectOpenedWhileAStepIsShownBeginsANewHistory()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.edit(QStringLiteral("2"));
    connect(&desk.undo, &UndoManager::restored, desk.store.data(),
            [&desk] { QVERIFY(desk.store->createNewDataBase()); });
    desk.undo.undo();
    QCOMPARE(snapshotFiles().size(), 1);
    QVERIFY(!desk.mayUndo());
    QVERIFY(!desk.mayRedo());
}

void tst_UndoProjects::aHistoryForgottenWhileAStepIsShownStaysForgotten()
{
    Desk desk;
    desk.edit(QStringLiteral("1"));
    desk.edit(QStringLiteral("2"));
    connect(desk.store.data(), &ObjectDataBase::updateNotify, &desk.undo, [&desk] {
        desk.undo.clear();
        desk.undo.resume();
    });
    desk.undo.undo();
    QCOMPARE(desk.value(), QStringLiteral("1"));
    QVERIFY(snapshotFiles().isEmpty());
    QVERIFY(!desk.mayRedo());
    disconnect(desk.store.data(), &ObjectDataBase::updateNotify, &desk.undo, nullptr);
    desk.undo.pause();
    desk.edit(QStringLiteral("paused"));
    QVERIFY(snapshotFiles().isEmpty());
}

QTEST_GUILESS_MAIN(tst_UndoProjects)
#include "tst_undoprojects.moc"
