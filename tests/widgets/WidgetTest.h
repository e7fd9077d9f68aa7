#pragma once

#include "app/TestHome.h"
#include "widgets/KorvelBaseApplication.h"
#include "widgets/MessageLog.h"

#include <QPalette>
#include <QTest>

/** Runs a test of the shared GUI library in an application object like the program's own. */
template <class Test>
int runWidgetTest(int argc, char **argv)
{
    const TestHome home;
    KorvelBaseApplication application(argc, argv, QStringLiteral("CANopen NodeSmith"),
                                      QStringLiteral("4.3.2"));
    QCoreApplication::setOrganizationName(QStringLiteral("korvel"));
    MessageLog::uninstall(); // so that expected messages can be ignored
    Test test;
    return QTest::qExec(&test, argc, argv);
}

/** The palette of a dark desktop that leaves links in their default blue. */
inline QPalette darkPalette()
{
    QPalette palette(QColor(0x31, 0x36, 0x3b), QColor(0x31, 0x36, 0x3b));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, QColor(0xef, 0xf0, 0xf1));
    palette.setColor(QPalette::Base, QColor(0x23, 0x26, 0x29));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0xae, 0xe9));
    palette.setColor(QPalette::HighlightedText, QColor(0xfc, 0xfc, 0xfc));
    palette.setColor(QPalette::Link, Qt::blue);
    palette.setColor(QPalette::PlaceholderText, Qt::black);
    return palette;
}
