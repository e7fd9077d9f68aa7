#include "forms/output/MessageColours.h"
#include "forms/output/MessageText.h"
#include "forms/output/TextSearch.h"
#include "generators/ConsoleOutput.h"
#include "widgets/GuiHelper.h"

#include <QColor>
#include <QPalette>
#include <QTest>

using namespace Qt::StringLiterals;

/** How a message's rich text becomes what the output page draws. */
class tst_MessageText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tagsBecomeStyles_data();
    void tagsBecomeStyles();
    void textReadsAsInTheBuildLog_data() { tagsBecomeStyles_data(); }
    void textReadsAsInTheBuildLog();
    void stylesGoOnInTheNextLine();
    void everyLevelCanBeReadOnItsBackground_data();
    void everyLevelCanBeReadOnItsBackground();
    void aSearchMayWantWholeWordsAndCase();

private:
    static QString styles(const MessageText &text);
};

/** "text|start+length bi ..." */
QString tst_MessageText::styles(const MessageText &text)
{
    QString result = text.text;
    for (const MessageText::Span &span : text.spans) {
        result += u"|%1+%2"_s.arg(span.start).arg(span.length);
        if (span.bold)
            result += u'b';
        if (span.italic)
            result += u'i';
    }
    return result;
}

void tst_MessageText::tagsBecomeStyles_data()
{
    QTest::addColumn<QString>("richText");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << u"Generation finished."_s << u"Generation finished."_s;
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("error") << u"<strong>Error: </strong>Object 0x1000"_s << u"Error: Object 0x1000|0+7b"_s;
    QTest::newRow("font") << u"<strong><font color='red'>Error: </font></strong> CAN-ID"_s
                          << u"Error:  CAN-ID|0+7b"_s;
    QTest::newRow("italic") << u"<i>Corrected: x</i>"_s << u"Corrected: x|0+12i"_s;
    QTest::newRow("both") << u"<b>a<i>b</i></b>c"_s << u"abc|0+1b|1+1bi"_s;
    QTest::newRow("never closed") << u"a<b>b"_s << u"ab|1+1b"_s;
    QTest::newRow("closed twice") << u"<b>a</b></b>b"_s << u"ab|0+1b"_s;
    QTest::newRow("upper case") << u"<B>a</B>"_s << u"a|0+1b"_s;
    QTest::newRow("header file") << u"include <stdlib.h> first"_s << u"include <stdlib.h> first"_s;
    QTest::newRow("less than") << u"1 < 2 > 0"_s << u"1 < 2 > 0"_s;
    QTest::newRow("open bracket at the end") << u"a <"_s << u"a <"_s;
    QTest::newRow("name like a tag") << u"<bold> <index>"_s << u"<bold> <index>"_s;
    QTest::newRow("entities") << u"&lt;b&gt; &amp; &quot;x&quot; &apos;y&apos;"_s << u"<b> & \"x\" 'y'"_s;
    QTest::newRow("unknown entity") << u"a &b; & c"_s << u"a &b; & c"_s;
    QTest::newRow("number entity") << u"&#65;&#x42;"_s << u"AB"_s;
}

void tst_MessageText::tagsBecomeStyles()
{
    QFETCH(QString, richText);
    QTEST(styles(MessageText::fromRichText(richText)), "expected");
}

void tst_MessageText::textReadsAsInTheBuildLog()
{
    QFETCH(QString, richText);
    QCOMPARE(MessageText::fromRichText(richText).text, ConsoleOutput::plainText(richText));
}

void tst_MessageText::stylesGoOnInTheNextLine()
{
    const QList<MessageText> lines = MessageText::fromRichText(u"a<b>b\nc</b>d<br/>e\n"_s).lines();
    QCOMPARE(lines.size(), 4);
    QCOMPARE(styles(lines.at(0)), u"ab|1+1b"_s);
    QCOMPARE(styles(lines.at(1)), u"cd|0+1b"_s);
    QCOMPARE(styles(lines.at(2)), u"e"_s);
    QCOMPARE(styles(lines.at(3)), QString());
}

void tst_MessageText::everyLevelCanBeReadOnItsBackground_data()
{
    QTest::addColumn<QColor>("base");
    QTest::addColumn<QColor>("text");
    QTest::newRow("light") << QColor(Qt::white) << QColor(Qt::black);
    QTest::newRow("light grey") << QColor(0xEF, 0xF0, 0xF1) << QColor(0x23, 0x26, 0x29);
    QTest::newRow("dark") << QColor(0x23, 0x23, 0x23) << QColor(Qt::white);
    QTest::newRow("dark grey") << QColor(0x35, 0x35, 0x35) << QColor(0xEF, 0xF0, 0xF1);
    QTest::newRow("black") << QColor(Qt::black) << QColor(Qt::white);
}

void tst_MessageText::everyLevelCanBeReadOnItsBackground()
{
    constexpr double readable = 4.5; // WCAG 2.1, AA
    QFETCH(QColor, base);
    QFETCH(QColor, text);
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, text);
    QSet<QRgb> colours;
    for (const MessageLevel level : {MessageLevel::Info, MessageLevel::Correction, MessageLevel::Hint,
                                     MessageLevel::Warning, MessageLevel::Error}) {
        const QColor colour = MessageColours::text(level, palette);
        colours.insert(colour.rgb());
        QVERIFY2(GuiHelper::contrast(colour, base) >= readable, qPrintable(colour.name()));
    }
    QCOMPARE(colours.size(), 5);
    QVERIFY(GuiHelper::contrast(MessageColours::dimmedText(palette), base) >= readable);
}

void tst_MessageText::aSearchMayWantWholeWordsAndCase()
{
    const QString where = u"Error in errors, an ERROR"_s;
    QCOMPARE((TextSearch{.text = u"error"_s}).indexIn(where), 0);
    QCOMPARE((TextSearch{.text = u"error"_s, .cases = Qt::CaseSensitive}).indexIn(where), 9);
    QCOMPARE((TextSearch{.text = u"error"_s, .wholeWords = true}).indexIn(where, 1), 20);
    QCOMPARE((TextSearch{.text = u"warning"_s}).indexIn(where), -1);
    QCOMPARE(TextSearch().indexIn(where), -1);
}

QTEST_GUILESS_MAIN(tst_MessageText)

#include "tst_messagetext.moc"
