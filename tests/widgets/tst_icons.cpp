#include "widgets/GuiHelper.h"
#include "widgets/WidgetTest.h"

#include <QDir>
#include <QPixmapCache>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

/** The icons of the program, and that they can be made out on light and dark windows. */
class TestIcons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { QGuiApplication::setPalette(QPalette()); }
    void everyIconIsDrawnInItsTones_data();
    void everyIconIsDrawnInItsTones();
    void everyIconIsSeenInEverySize_data() { addIcons(); }
    void everyIconIsSeenInEverySize();
    void everyIconStandsOutFromTheWindow_data();
    void everyIconStandsOutFromTheWindow();
    void aDisabledIconIsFainterThanAnEnabledOne();
    void aSelectedIconHasTheColourOfSelectedText();
    void anIconFollowsThePaletteThatComesLater();
    void aScreenOfHighResolutionGetsMorePixels();
    void theIconsThatTheWindowNamesExist_data();
    void theIconsThatTheWindowNamesExist();
    void anUnknownIconIsToldAndNull();

private:
    static void addIcons();
    static QStringList lineIcons();
    static QImage image(const QString &name, QIcon::Mode mode = QIcon::Normal, int size = 22);
    static QColor meanColour(const QImage &image);
};

void TestIcons::init()
{
    QPixmapCache::clear();
}

/** The icons of commands and pages; those of the editions are pictures with colours of their own. */
QStringList TestIcons::lineIcons()
{
    QStringList names;
    const QStringList files = QDir(u":/icon/icon"_s).entryList({u"*.svg"_s});
    for (const QString &file : files)
        if (!file.contains("node"_L1))
            names.append(file.chopped(4));
    return names;
}

void TestIcons::addIcons()
{
    QTest::addColumn<QString>("name");
    const QStringList names = lineIcons();
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << name;
}

QImage TestIcons::image(const QString &name, QIcon::Mode mode, int size)
{
    return GuiHelper::icon(name)
        .pixmap(QSize(size, size), 1.0, mode)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

/** The colour of all that is drawn, weighed by its opacity; invalid when nothing is. */
QColor TestIcons::meanColour(const QImage &image)
{
    double weight = 0;
    double red = 0;
    double green = 0;
    double blue = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            weight += qAlpha(pixel);
            red += qAlpha(pixel) * qRed(pixel);
            green += qAlpha(pixel) * qGreen(pixel);
            blue += qAlpha(pixel) * qBlue(pixel);
        }
    }
    return weight == 0 ? QColor() : QColor(int(red / weight), int(green / weight), int(blue / weight));
}

void TestIcons::everyIconIsDrawnInItsTones_data()
{
    addIcons();
    QVERIFY(lineIcons().size() > 50);
}

void TestIcons::everyIconIsDrawnInItsTones()
{
    static const QStringList tones{u"#8a8f98"_s, u"#3d86c6"_s, u"#3f9a63"_s,
                                   u"#c98a24"_s, u"#d0504a"_s, u"#8a63b8"_s};
    static const QRegularExpression colour(u"\"(#[0-9a-zA-Z]+)\""_s);
    QFETCH(const QString, name);
    QFile file(":/icon/icon/"_L1 + name + ".svg"_L1);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QRegularExpressionMatchIterator matches = colour.globalMatch(QString::fromUtf8(file.readAll()));
    QVERIFY(matches.hasNext());
    while (matches.hasNext()) {
        const QString tone = matches.next().captured(1);
        QVERIFY2(tones.contains(tone), qPrintable(tone));
        for (const QColor &window : {QColor(0xef, 0xef, 0xef), QColor(0x31, 0x36, 0x3b)})
            QVERIFY2(GuiHelper::contrast(QColor(tone), window) > 2.4, qPrintable(tone));
    }
}

void TestIcons::everyIconIsSeenInEverySize()
{
    QFETCH(const QString, name);
    for (const int size : {16, 22, 44, 64}) {
        const QImage drawn = image(name, QIcon::Normal, size);
        QCOMPARE(drawn.size(), QSize(size, size));
        QVERIFY2(meanColour(drawn).isValid(), qPrintable(QString::number(size)));
    }
}

void TestIcons::everyIconStandsOutFromTheWindow_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QPalette>("palette");
    const QPalette light(QColor(0xef, 0xef, 0xef), QColor(0xef, 0xef, 0xef));
    const QStringList names = lineIcons();
    for (const QString &name : names) {
        QTest::newRow(qPrintable(name + u" light"_s)) << name << light;
        QTest::newRow(qPrintable(name + u" dark"_s)) << name << darkPalette();
    }
}

void TestIcons::everyIconStandsOutFromTheWindow()
{
    QFETCH(const QString, name);
    QFETCH(const QPalette, palette);
    QGuiApplication::setPalette(palette);
    QVERIFY(GuiHelper::contrast(meanColour(image(name)), palette.color(QPalette::Window)) >= 3.0);
}

void TestIcons::aDisabledIconIsFainterThanAnEnabledOne()
{
    const QColor window = QGuiApplication::palette().color(QPalette::Window);
    const double enabled = GuiHelper::contrast(meanColour(image(u"file-open"_s)), window);
    const double disabled = GuiHelper::contrast(meanColour(image(u"file-open"_s, QIcon::Disabled)), window);
    QVERIFY(disabled < enabled);
    QVERIFY(disabled > 1.3);
}

void TestIcons::aSelectedIconHasTheColourOfSelectedText()
{
    QPalette palette = QGuiApplication::palette();
    palette.setColor(QPalette::HighlightedText, Qt::white);
    QGuiApplication::setPalette(palette);
    const QColor colour = meanColour(image(u"page-target"_s, QIcon::Selected));
    QVERIFY(GuiHelper::contrast(colour, Qt::white) < 1.05);
}

void TestIcons::anIconFollowsThePaletteThatComesLater()
{
    const QIcon icon = GuiHelper::icon(u"settings"_s);
    const QColor before = meanColour(icon.pixmap(22, 22).toImage());
    QGuiApplication::setPalette(darkPalette());
    const QColor after = meanColour(icon.pixmap(22, 22).toImage());
    QVERIFY(before.lightness() < 128);
    QVERIFY(after.lightness() > 128);
}

void TestIcons::aScreenOfHighResolutionGetsMorePixels()
{
    const QPixmap pixmap = GuiHelper::icon(u"undo"_s).pixmap(QSize(22, 22), 2.0);
    QCOMPARE(pixmap.size(), QSize(44, 44));
    QCOMPARE(pixmap.devicePixelRatio(), 2.0);
}

void TestIcons::theIconsThatTheWindowNamesExist_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");
    for (const char *edition :
         {"canopen-nodesmith", "j1939-nodesmith", "can-nodesmith", "energybus-nodeguide"})
        QTest::newRow(edition) << ":/icon/icon/"_L1 + QLatin1StringView(edition) + ".svg"_L1 << QSize(64, 64);
    QTest::newRow("update button") << u":/icon/icon/update_1.png"_s << QSize(22, 22);
    QTest::newRow("update button at 200 %") << u":/icon/icon/update_1@2x.png"_s << QSize(44, 44);
}

void TestIcons::theIconsThatTheWindowNamesExist()
{
    QFETCH(const QString, path);
    const QImage image(path);
    QTEST(image.size(), "size");
    QVERIFY(meanColour(image.convertToFormat(QImage::Format_ARGB32)).isValid());
}

void TestIcons::anUnknownIconIsToldAndNull()
{
    QTest::ignoreMessage(QtWarningMsg, "There is no icon no-such-thing");
    QVERIFY(GuiHelper::icon(u"no-such-thing"_s).isNull());
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestIcons>(argc, argv);
}

#include "tst_icons.moc"
