#pragma once

#include <QIconEngine>

/**
 * Draws an SVG icon in tones that stand out from the palette of the moment.
 *
 * The icons are drawn in a handful of mid tones, which can be read on light and on dark windows. This
 * engine exchanges them for lighter or darker ones whenever it draws: greys follow the text colour, a
 * disabled icon is grey, a selected one has the colour of selected text. Other colours stay.
 */
class TintedIconEngine : public QIconEngine
{
public:
    /** A file that does not exist or is no SVG makes an icon that draws nothing. */
    explicit TintedIconEngine(const QString &path);

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    QIconEngine *clone() const override;
    QString key() const override;
    bool isNull() override;

private:
    QByteArray tinted(QIcon::Mode mode) const;

    QString m_path;
    QByteArray m_svg;
};
