#include "generators/ConsoleOutputHandler.h"
#include "generators/MessageLevel.h"
#include "generators/RecordingOutputHandler.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(MessageLevel)

/** Rich messages as a build log shows them. */
class TestConsoleOutput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTextTellsItsLevel_data();
    void aTextTellsItsLevel();
    void richTextBecomesOnePlainLine_data();
    void richTextBecomesOnePlainLine();
    void errorsGoToStandardErrorAndTheRestToStandardOutput();
    void aMessageIsOneLine();
    void aMessageWithoutTextIsNoLine();
    void aMessageWithItsPlaceIsPrintedToo();
    void textOutsideOfAsciiIsUtf8();
    void theNextHandlerGetsEveryMessage();
    void theLogOfTheNextHandlerCounts();
    void withoutANextHandlerTheLogIsPlainText();
    void theResultIsTheLastLine_data();
    void theResultIsTheLastLine();
    void linesOfBothStreamsKeepTheirOrder();
};

namespace {

/** A handler whose streams are files. */
class Console
{
public:
    explicit Console(OutputHandlerBase *next = nullptr) : handler(next)
    {
        m_out = std::fopen(qPrintable(m_folder.filePath(u"out"_s)), "w");
        m_err = std::fopen(qPrintable(m_folder.filePath(u"err"_s)), "w");
        handler.setStreams(m_out, m_err);
    }
    ~Console()
    {
        std::fclose(m_out);
        std::fclose(m_err);
    }
    Q_DISABLE_COPY_MOVE(Console)

    // Read while the streams are open: what is not flushed is not there.
    QString out() const { return read(u"out"_s); }
    QString err() const { return read(u"err"_s); }

    ConsoleOutputHandler handler;

private:
    QString read(const QString &name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : u"<missing>"_s;
    }

    QTemporaryDir m_folder;
    std::FILE *m_out = nullptr;
    std::FILE *m_err = nullptr;
};

} // namespace

void TestConsoleOutput::aTextTellsItsLevel_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<MessageLevel>("level");
    using Level = MessageLevel;
    const auto row = [](const char *name, const QString &text, Level level) {
        QTest::newRow(name) << text << level;
    };
    row("error", u"<strong>Error: </strong>Object 0x1000: x"_s, Level::Error);
    row("red error", u"<strong><font color='red'>Error: </font></strong>x"_s, Level::Error);
    row("warning", u"Warning: Object 0x1000-0x00: x"_s, Level::Warning);
    row("strong warning", u"<strong>Warning: </strong>Object x"_s, Level::Warning);
    row("strong warning with its text", u"<strong>Warning: Object 0x1018-0x01: x. </strong>"_s,
        Level::Warning);
    row("strong warning without its colon", u"<strong>Warning</strong>: Object 0x1018: x"_s, Level::Warning);
    row("hint", u"<strong>Hint: </strong>x"_s, Level::Hint);
    row("correction", u"<i>Corrected: Object 0x1018</i>: x"_s, Level::Correction);
    row("abort", u"ABORT - Check of model consistency finished: failed (3 errors)"_s, Level::Error);
    row("folder", u"ABORT - The output folder /x is not writeable."_s, Level::Error);
    row("failed generator", u"<b>ERROR - Generation of gen_srdo.c failed. x</b>"_s, Level::Error);
    row("not writable", u"The file gen_define.h in /x is not writable"_s, Level::Error);
    row("two not writable", u"The files a and b in /x are not writable"_s, Level::Error);
    row("no EDS checker", u"Start of EDS Checker failed"_s, Level::Error);
    row("line type", u"Warning line type not set for line 2."_s, Level::Warning);
    row("variants", u"Warning: multiple different EDS files to be generated.\n"_s, Level::Warning);
    row("post generation", u"<b>Warning: Generation completed, but post gen process returned 2.</b>"_s,
        Level::Warning);
    row("start", u"\nCheck of model consistency started"_s, Level::Info);
    row("completed", u"Generation of gen_define.h completed. "_s, Level::Info);
    row("empty", QString(), Level::Info);
    row("the mark counts at the head only", u"About an <strong>Error: </strong>"_s, Level::Info);
    row("a plain word is no mark", u"Error reading"_s, Level::Info);
    row("a line break before the mark", u"\n<strong>Error: </strong>x"_s, Level::Error);
}

void TestConsoleOutput::aTextTellsItsLevel()
{
    QFETCH(QString, text);
    QTEST(messageLevel(text), "level");
}

void TestConsoleOutput::richTextBecomesOnePlainLine_data()
{
    QTest::addColumn<QString>("rich");
    QTest::addColumn<QString>("plain");
    const auto row = [](const char *name, const QString &rich, const QString &plain) {
        QTest::newRow(name) << rich << plain;
    };
    row("plain", u"Generation finished."_s, u"Generation finished."_s);
    row("tags", u"<strong>Error: </strong>Object <i>0x1000</i>"_s, u"Error: Object 0x1000"_s);
    row("tag with attributes", u"<font color='red'>Error</font> <a href=\"x:1\">here</a>"_s, u"Error here"_s);
    row("upper case", u"<B>bold</B>"_s, u"bold"_s);
    row("line breaks", u"\nfirst\nsecond\r\nthird\rfourth\n"_s, u"first | second | third | fourth"_s);
    row("break tags", u"first<br>second<br/>third<br />fourth<p>fifth</p>"_s,
        u"first | second | third | fourth | fifth"_s);
    row("empty lines", u"a\n\n \nb"_s, u"a | b"_s);
    row("entities", u"a &lt;b&gt; &amp;&quot;&apos;&nbsp;c"_s, u"a <b> &\"' c"_s);
    row("numbers", u"&#65;&#x42;&#X1F600;"_s, u"AB\U0001F600"_s);
    row("entities are decoded once", u"&amp;lt;"_s, u"&lt;"_s);
    row("unknown entity", u"a &unknown; b && c & d;"_s, u"a &unknown; b && c & d;"_s);
    row("bad numbers", u"&#; &#x; &#0; &#1114112; &#99999999;"_s, u"&#; &#x; &#0; &#1114112; &#99999999;"_s);
    row("C include", u"#include <stdlib.h>"_s, u"#include <stdlib.h>"_s);
    row("comparison", u"a < b > c"_s, u"a < b > c"_s);
    row("unknown tag", u"<enum>x</enum>"_s, u"<enum>x</enum>"_s);
    row("open at the end", u"a <b"_s, u"a <b"_s);
    row("only a bracket", u"<"_s, u"<"_s);
    row("only an ampersand", u"&"_s, u"&"_s);
    row("nothing inside", u"<></><!>"_s, u"<></><!>"_s);
    row("tabs and blanks inside stay", u"\ta  b\tc"_s, u"a  b\tc"_s);
    row("empty", QString(), QString());
    row("only tags", u"<b></b><br>"_s, QString());
}

void TestConsoleOutput::richTextBecomesOnePlainLine()
{
    QFETCH(QString, rich);
    QTEST(ConsoleOutput::plainText(rich), "plain");
}

void TestConsoleOutput::errorsGoToStandardErrorAndTheRestToStandardOutput()
{
    Console console;
    console.handler.writeMessage(u"<strong>Error: </strong>broken"_s);
    console.handler.writeMessage(u"<strong>Warning: </strong>odd"_s);
    console.handler.writeRaw(u"<i>Corrected: x</i>"_s);
    console.handler.writeRaw(u"<b>ERROR - Generation of a.c failed. b</b>"_s);
    QCOMPARE(console.out(), u"Warning: odd\nCorrected: x\n"_s);
    QCOMPARE(console.err(), u"Error: broken\nERROR - Generation of a.c failed. b\n"_s);
}

void TestConsoleOutput::aMessageIsOneLine()
{
    Console console;
    console.handler.writeMessage(u"gen_define.h contains user section:\n#define A\n#define B"_s);
    QCOMPARE(console.out(), u"gen_define.h contains user section: | #define A | #define B\n"_s);
}

void TestConsoleOutput::aMessageWithoutTextIsNoLine()
{
    Console console;
    console.handler.writeRaw(QString());
    console.handler.writeMessage(u" \n "_s);
    console.handler.writeMessage({});
    QCOMPARE(console.out(), QString());
    QCOMPARE(console.err(), QString());
}

void TestConsoleOutput::aMessageWithItsPlaceIsPrintedToo()
{
    Console console;
    console.handler.writeMessage(QVariant::fromValue(OutputMessage{
        .text = u"<strong>Error: </strong>x"_s, .location = ProjectLocation::ofObject(0, 0x1000)}));
    QCOMPARE(console.err(), u"Error: x\n"_s);
}

void TestConsoleOutput::textOutsideOfAsciiIsUtf8()
{
    Console console;
    console.handler.writeMessage(u"Größe \U0001F600"_s);
    QCOMPARE(console.out(), u"Größe \U0001F600\n"_s);
}

void TestConsoleOutput::theNextHandlerGetsEveryMessage()
{
    RecordingOutputHandler next;
    Console console(&next);
    const OutputMessage message{.text = u"<b>x</b>"_s, .location = ProjectLocation::ofLine(3)};
    console.handler.writeMessage(QVariant::fromValue(message));
    console.handler.writeRaw(QString());
    QCOMPARE(next.all, QStringList({u"<b>x</b>"_s, u"raw:"_s}));
    QCOMPARE(next.messages.first().location, message.location);
}

void TestConsoleOutput::theLogOfTheNextHandlerCounts()
{
    RecordingOutputHandler next;
    next.writeMessage(u"before"_s);
    Console console(&next);
    console.handler.writeMessage(u"<b>x</b>"_s);
    QCOMPARE(console.handler.getLogging(), u"before\nx"_s);
}

void TestConsoleOutput::withoutANextHandlerTheLogIsPlainText()
{
    Console console;
    console.handler.writeMessage(u"\nstarted"_s);
    console.handler.writeRaw(QString());
    console.handler.writeMessage(u"<strong>Error: </strong>x"_s);
    QCOMPARE(console.handler.getLogging(), u"started\nError: x"_s);
}

void TestConsoleOutput::theResultIsTheLastLine_data()
{
    QTest::addColumn<GeneratorMainHandler::GeneratorResult>("result");
    QTest::addColumn<QString>("line");
    using Result = GeneratorMainHandler::GeneratorResult;
    QTest::newRow("completed") << Result::Completed << u"Result: the generation is complete"_s;
    QTest::newRow("check") << Result::CheckFailed
                           << u"Result: the model check found errors, nothing was generated"_s;
    QTest::newRow("folder") << Result::OutputNotWritable
                            << u"Result: the output folder is not writable, the generation is not complete"_s;
    QTest::newRow("SRDO") << Result::SrdoFailed
                          << u"Result: gen_srdo.c could not be generated, the generation stopped there"_s;
}

void TestConsoleOutput::theResultIsTheLastLine()
{
    QFETCH(GeneratorMainHandler::GeneratorResult, result);
    QFETCH(QString, line);
    Console console;
    GeneratorMainHandler handler;
    handler.setOutputHandler(&console.handler);
    connect(&handler, &GeneratorMainHandler::finished, &console.handler, &ConsoleOutputHandler::writeResult);
    console.handler.writeMessage(u"before"_s);
    Q_EMIT handler.finished(result);
    QCOMPARE(console.out(), u"before\n"_s + line + u'\n');
    QCOMPARE(console.err(), QString());
}

void TestConsoleOutput::linesOfBothStreamsKeepTheirOrder()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"log"_s);
    std::FILE *out = std::fopen(qPrintable(path), "a");
    std::FILE *err = std::fopen(qPrintable(path), "a");
    ConsoleOutputHandler handler;
    handler.setStreams(out, err);
    for (int i = 0; i < 3; ++i) {
        handler.writeMessage(u"info"_s);
        handler.writeMessage(u"<strong>Error: </strong>x"_s);
    }
    std::fclose(out);
    std::fclose(err);
    QFile log(path);
    QVERIFY(log.open(QIODevice::ReadOnly));
    QCOMPARE(log.readAll(), QByteArray("info\nError: x\n").repeated(3));
}

QTEST_GUILESS_MAIN(TestConsoleOutput)
#include "tst_consoleoutput.moc"
