#include "widgets/TintedIconEngine.h"

#include "widgets/GuiHelper.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <array>

using namespace Qt::StringLiterals;

namespace {

/** A tone that icons are drawn in and what stands for it on light and on dark windows. */
struct Tone
{
    const char *drawn;
    QRgb onLight;
    QRgb onDark;
};

constexpr const char *neutralTone = "#8a8f98";
constexpr std::array tones{
    Tone{"#3d86c6", 0xff2f74b5, 0xff62aeea}, // blue: documents and views
    Tone{"#3f9a63", 0xff2f8553, 0xff62c189}, // green: adds, runs, is well
    Tone{"#c98a24", 0xffa86f0f, 0xffe4ae4e}, // amber: folders, warns
    Tone{"#d0504a", 0xffc23f39, 0xfff07a73}, // red: removes, fails
    Tone{"#8a63b8", 0xff7a52a8, 0xffb491de}, // violet: raw CAN, transforms
};
constexpr qreal neutralStrength = 0.72; // of the text colour over the window colour
constexpr qreal disabledStrength = 0.35;

QByteArray colourName(const QColor &colour)
{
    return colour.name().toLatin1();
}

QColor mixed(const QPalette &palette, qreal strength)
{
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const auto mix = [strength](int over, int under) {
        return qRound(over * strength + under * (1 - strength));
    };
    return {mix(text.red(), window.red()), mix(text.green(), window.green()),
            mix(text.blue(), window.blue())};
}

/** The one colour of an icon that is not drawn in its tones; invalid where it is. */
QColor uniformColour(const QPalette &palette, QIcon::Mode mode)
{
    if (mode == QIcon::Disabled)
        return mixed(palette, disabledStrength);
    if (mode == QIcon::Selected)
        return palette.color(QPalette::Active, QPalette::HighlightedText);
    return {};
}

} // namespace

TintedIconEngine::TintedIconEngine(const QString &path) : m_path(path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        m_svg = file.readAll();
}

QByteArray TintedIconEngine::tinted(QIcon::Mode mode) const
{
    const QPalette palette = QGuiApplication::palette();
    const bool dark = GuiHelper::isDark(palette);
    const QColor uniform = uniformColour(palette, mode);
    QByteArray svg = m_svg;
    svg.replace(neutralTone, colourName(uniform.isValid() ? uniform : mixed(palette, neutralStrength)));
    for (const Tone &tone : tones)
        svg.replace(tone.drawn,
                    colourName(uniform.isValid() ? uniform : QColor(dark ? tone.onDark : tone.onLight)));
    return svg;
}

void TintedIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State)
{
    QSvgRenderer(tinted(mode)).render(painter, rect);
}

QPixmap TintedIconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    return scaledPixmap(size, mode, state, 1.0);
}

QPixmap TintedIconEngine::scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State, qreal)
{
    if (m_svg.isEmpty() || size.isEmpty())
        return {};
    const QByteArray svg = tinted(mode);
    const QString key =
        "%1 %2x%3 %4"_L1.arg(m_path).arg(size.width()).arg(size.height()).arg(qHash(svg), 0, 16);
    QPixmap result;
    if (QPixmapCache::find(key, &result))
        return result;
    result = QPixmap(size);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    QSvgRenderer renderer(svg);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    renderer.render(&painter);
    painter.end();
    QPixmapCache::insert(key, result);
    return result;
}

QIconEngine *TintedIconEngine::clone() const
{
    return new TintedIconEngine(*this);
}

QString TintedIconEngine::key() const
{
    return u"TintedIconEngine"_s;
}

bool TintedIconEngine::isNull()
{
    return m_svg.isEmpty();
}
