#include "app/MainPages.h"
#include "app/SettingsDialog.h"
#include "app/TestHome.h"
#include "app/WindowTest.h"
#include "widgets/KorvelBaseApplication.h"

#include <QDomDocument>
#include <QMenu>
#include <QToolBox>
#include <QTranslator>

using namespace Qt::StringLiterals;

/** The German translation: that it is used, and that it is complete where it says so. */
class TestTranslation : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void theMainWindowSpeaksGerman();
    void theSettingsSpeakGerman();
    void everyTextOfAFinishedPartIsTranslated_data();
    void everyTextOfAFinishedPartIsTranslated();
    void placeholdersSurviveTheTranslation();

private:
    static QDomDocument source();
    static QString path() { return QStringLiteral(NODESMITH_TRANSLATIONS "/nodesmith_de.ts"); }
};

namespace {

/** A German user's programs, for the life of this object. */
class German
{
public:
    German()
    {
        m_loaded = m_translator.load(u":/translations/nodesmith_de.qm"_s);
        QCoreApplication::installTranslator(&m_translator);
    }
    ~German() { QCoreApplication::removeTranslator(&m_translator); }
    Q_DISABLE_COPY_MOVE(German)

    bool isLoaded() const { return m_loaded; }

private:
    QTranslator m_translator;
    bool m_loaded = false;
};

} // namespace

QDomDocument TestTranslation::source()
{
    QFile file(path());
    QDomDocument document;
    return file.open(QIODevice::ReadOnly) && document.setContent(&file) ? document : QDomDocument();
}

void TestTranslation::theMainWindowSpeaksGerman()
{
    const German german;
    QVERIFY(german.isLoaded());
    const auto window = makeWindow();
    QCOMPARE(window->findChild<QMenu *>(u"menuFile"_s)->title(), u"&Datei"_s);
    QCOMPARE(action(*window, u"actionGenerate_Output"_s)->text(), u"Dateien &generieren"_s);
    QCOMPARE(action(*window, u"actionGenerate_Output"_s)->shortcut().toString(), u"Ctrl+G"_s);
    const auto *pages = window->findChild<QToolBox *>(u"tbMain"_s);
    const int page = pages->indexOf(window->findChild<QWidget *>(u"objectDictionaryForm"_s));
    QCOMPARE(pages->itemText(page), u"CANopen-Objektverzeichnis"_s);
}

void TestTranslation::theSettingsSpeakGerman()
{
    const German german;
    const SettingsDialog dialog;
    QCOMPARE(dialog.windowTitle(), u"Einstellungen - CANopen NodeSmith"_s);
}

void TestTranslation::everyTextOfAFinishedPartIsTranslated_data()
{
    QTest::addColumn<QString>("part");
    for (const char *part :
         {"VexMainWindow", "SettingsDialog", "MainPages", "SelectProtocolDialog", "LineTypes",
          "ProjectStatePage", "VersionNotices", "ProjectLinesModel", "GeneratorOutputForm", "OutputModel"})
        QTest::newRow(part) << QString::fromLatin1(part);
}

void TestTranslation::everyTextOfAFinishedPartIsTranslated()
{
    QFETCH(const QString, part);
    const QDomDocument document = source();
    int texts = 0;
    QDomElement context = document.documentElement().firstChildElement(u"context"_s);
    while (!context.isNull() && context.firstChildElement(u"name"_s).text() != part)
        context = context.nextSiblingElement(u"context"_s);
    QVERIFY(!context.isNull());
    for (QDomElement message = context.firstChildElement(u"message"_s); !message.isNull();
         message = message.nextSiblingElement(u"message"_s)) {
        const QDomElement translation = message.firstChildElement(u"translation"_s);
        QVERIFY2(translation.attribute(u"type"_s).isEmpty() && !translation.text().isEmpty(),
                 qPrintable(message.firstChildElement(u"source"_s).text()));
        ++texts;
    }
    QVERIFY(texts > 0);
}

void TestTranslation::placeholdersSurviveTheTranslation()
{
    static const QRegularExpression placeholder(u"%(\\d|[PDN])"_s);
    const auto placeholders = [](const QString &text) {
        QStringList found;
        for (auto match = placeholder.globalMatch(text); match.hasNext();)
            found.append(match.next().captured());
        found.sort();
        return found;
    };
    const QDomDocument document = source();
    const QDomNodeList messages = document.elementsByTagName(u"message"_s);
    QVERIFY(messages.count() > 300);
    for (int number = 0; number < messages.count(); ++number) {
        const QDomElement message = messages.at(number).toElement();
        const QString text = message.firstChildElement(u"source"_s).text();
        const QString translated = message.firstChildElement(u"translation"_s).text();
        if (!translated.isEmpty())
            QVERIFY2(placeholders(text) == placeholders(translated), qPrintable(text));
    }
}

int main(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, u"CANopen NodeSmith"_s, u"4.3.2"_s);
    QCoreApplication::setOrganizationName(u"korvel"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestTranslation test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_translation.moc"
