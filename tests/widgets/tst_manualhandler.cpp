#include "widgets/ManualHandler.h"
#include "widgets/UrlCatcher.h"
#include "widgets/WidgetTest.h"

#include <QDir>
#include <QFile>
#include <QMenu>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

using namespace Qt::StringLiterals;

class TestManualHandler : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void theMenuHoldsThePdfFilesByName();
    void aFolderWithoutManualsGivesADisabledEntry_data();
    void aFolderWithoutManualsGivesADisabledEntry();
    void theMenuFollowsTheFolder();
    void anEntryOpensItsManual();
    void aManualThatTheDesktopCannotOpenIsTold();
    void theUsualFolderIsBesideTheProgram();

private:
    bool write(const QString &name) const
    {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::WriteOnly);
    }
    static QStringList titles(const QMenu &menu);

    std::unique_ptr<QTemporaryDir> m_folder;
};

QStringList TestManualHandler::titles(const QMenu &menu)
{
    QStringList result;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions)
        result.append(action->text());
    return result;
}

void TestManualHandler::theMenuHoldsThePdfFilesByName()
{
    for (const char *name : {"Chapter_10.pdf", "Chapter_9.PDF", "about.v1.pdf", "R&D.pdf", "readme.txt"})
        QVERIFY(write(QString::fromLatin1(name)));
    QVERIFY(QDir(m_folder->path()).mkdir(u"folder.pdf"_s));
    QMenu menu;
    const ManualHandler manuals(&menu, m_folder->path());
    QCOMPARE(titles(menu), QStringList({u"about.v1"_s, u"Chapter 9"_s, u"Chapter 10"_s, u"R&&D"_s}));
    QCOMPARE(manuals.manuals().constFirst(), m_folder->filePath(u"about.v1.pdf"_s));
}

void TestManualHandler::aFolderWithoutManualsGivesADisabledEntry_data()
{
    QTest::addColumn<QString>("subFolder");
    QTest::newRow("empty") << u"."_s;
    QTest::newRow("missing") << u"nowhere"_s;
}

void TestManualHandler::aFolderWithoutManualsGivesADisabledEntry()
{
    QFETCH(const QString, subFolder);
    QMenu menu;
    const ManualHandler manuals(&menu, m_folder->filePath(subFolder));
    QCOMPARE(titles(menu), QStringList{u"No manuals installed"_s});
    QVERIFY(!menu.actions().constFirst()->isEnabled());
    QVERIFY(manuals.manuals().isEmpty());
}

void TestManualHandler::theMenuFollowsTheFolder()
{
    QMenu menu;
    const ManualHandler manuals(&menu, m_folder->path());
    QVERIFY(write(u"New.pdf"_s));
    Q_EMIT menu.aboutToShow();
    QCOMPARE(titles(menu), QStringList{u"New"_s});
    QVERIFY(QFile::remove(m_folder->filePath(u"New.pdf"_s)));
    Q_EMIT menu.aboutToShow();
    QCOMPARE(titles(menu), QStringList{u"No manuals installed"_s});
}

void TestManualHandler::anEntryOpensItsManual()
{
    QVERIFY(write(u"User Manual.pdf"_s));
    QMenu menu;
    const ManualHandler manuals(&menu, m_folder->path());
    const UrlCatcher desktop;
    menu.popup(QPoint(10, 10));
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
    QCOMPARE(desktop.urls, QList{QUrl::fromLocalFile(m_folder->filePath(u"User Manual.pdf"_s))});
}

/** Without a display there is no desktop that could open anything. */
void TestManualHandler::aManualThatTheDesktopCannotOpenIsTold()
{
    QMenu menu;
    ManualHandler manuals(&menu, m_folder->path());
    const QSignalSpy failed(&manuals, &ManualHandler::openFailed);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"does not support .*'file:///none.pdf'"_s));
    manuals.openManual(u"/none.pdf"_s);
    QCOMPARE(failed.count(), 1);
    QCOMPARE(failed.constFirst().constFirst().toString(), u"/none.pdf"_s);
}

void TestManualHandler::theUsualFolderIsBesideTheProgram()
{
    const QDir folder(QCoreApplication::applicationDirPath() + "/doc"_L1);
    QMenu menu;
    const ManualHandler manuals(&menu);
    QCOMPARE(manuals.manuals().size(), folder.entryList({u"*.pdf"_s}, QDir::Files).size());
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestManualHandler>(argc, argv);
}

#include "tst_manualhandler.moc"
