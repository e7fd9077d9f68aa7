#include "widgets/GuiHelper.h"
#include "widgets/KorvelAppStyle.h"
#include "widgets/WidgetTest.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QToolBox>

class TestAppStyle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linksAndHintsAreReadableOnADarkDesktop_data();
    void linksAndHintsAreReadableOnADarkDesktop();
    void coloursThatCanBeReadStay();
    void aLightPaletteStays();
    void standardButtonsGoWithoutTheStylesBlackIcons();
    void toolBarIconsHaveTheSizeThatTheyAreDrawnFor();
    void headersOfPagesTurnDarkWithTheDesktop();
};

void TestAppStyle::linksAndHintsAreReadableOnADarkDesktop_data()
{
    QTest::addColumn<QPalette::ColorRole>("role");
    QTest::newRow("link") << QPalette::Link;
    QTest::newRow("visited link") << QPalette::LinkVisited;
    QTest::newRow("placeholder") << QPalette::PlaceholderText;
}

void TestAppStyle::linksAndHintsAreReadableOnADarkDesktop()
{
    QFETCH(const QPalette::ColorRole, role);
    QPalette palette = darkPalette();
    palette.setColor(role, QColor(0x30, 0x00, 0x30));
    KorvelAppStyle().polish(palette);
    QVERIFY(GuiHelper::contrast(palette.color(role), palette.color(QPalette::Base)) > 4.5);
}

void TestAppStyle::coloursThatCanBeReadStay()
{
    QPalette palette = darkPalette();
    palette.setColor(QPalette::Link, Qt::yellow);
    KorvelAppStyle().polish(palette);
    QCOMPARE(palette.color(QPalette::Link), QColor(Qt::yellow));
}

void TestAppStyle::aLightPaletteStays()
{
    const QPalette light(Qt::lightGray, Qt::lightGray);
    QPalette palette = light;
    KorvelAppStyle().polish(palette);
    QCOMPARE(palette, light);
}

void TestAppStyle::standardButtonsGoWithoutTheStylesBlackIcons()
{
    const QDialogButtonBox box(QDialogButtonBox::Close | QDialogButtonBox::Save);
    QVERIFY(box.button(QDialogButtonBox::Close)->icon().isNull());
    QVERIFY(box.button(QDialogButtonBox::Save)->icon().isNull());
}

void TestAppStyle::toolBarIconsHaveTheSizeThatTheyAreDrawnFor()
{
    QCOMPARE(QApplication::style()->pixelMetric(QStyle::PM_ToolBarIconSize), 22);
}

void TestAppStyle::headersOfPagesTurnDarkWithTheDesktop()
{
    const QPalette light = QApplication::palette();
    QToolBox box;
    for (int page = 0; page < 3; ++page)
        box.addItem(new QWidget, QString());
    box.resize(300, 300);
    box.show();
    QTest::qWait(20); // the header behind the open page takes the colour of that page
    QApplication::setPalette(darkPalette());
    QTest::qWait(20);
    const QImage picture = box.grab().toImage();
    const auto headers = box.findChildren<QAbstractButton *>(QStringLiteral("qt_toolbox_toolboxbutton"));
    QCOMPARE(headers.size(), 3);
    for (const QAbstractButton *header : headers) {
        const QPoint middle = header->geometry().center() * picture.devicePixelRatio();
        QVERIFY2(picture.pixelColor(middle).lightness() < 128, qPrintable(picture.pixelColor(middle).name()));
    }
    QApplication::setPalette(light);
}

int main(int argc, char **argv)
{
    return runWidgetTest<TestAppStyle>(argc, argv);
}

#include "tst_appstyle.moc"
