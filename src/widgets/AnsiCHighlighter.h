#pragma once

#include "widgets/AnsiCScanner.h"

#include <QMap>
#include <QSyntaxHighlighter>

class QPalette;

/** Colours C sources for light and dark backgrounds. */
class AnsiCHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    explicit AnsiCHighlighter(QTextDocument *document);

    /** Takes the colours that suit the palette's Base, and colours the document anew where they differ. */
    void setPalette(const QPalette &palette);
    QTextCharFormat format(AnsiCScanner::Kind kind) const { return m_formats.value(kind); }

    /** True for the suffixes of C and C++ files: c, h, hpp, cpp and their like. */
    static bool isSource(const QString &path);

protected:
    void highlightBlock(const QString &text) override;

private:
    void makeFormats(bool dark);

    bool m_dark = false;
    QMap<AnsiCScanner::Kind, QTextCharFormat> m_formats;
};
