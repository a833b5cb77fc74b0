#pragma once

#include <QColor>
#include <QIconEngine>
#include <QList>
#include <QPixmap>
#include <QSize>
#include <QString>

#include <optional>

// An icon drawn from an SVG, optionally filled with one colour, at the size it
// is asked for (and kept in the pixmap cache, see Symbols::svgPixmap). Nothing is drawn up front: a
// window icon or a tray icon is asked for in many sizes, and drawing them all at start-up cost the
// first window several milliseconds. `availableSizes()` reports only the sizes given here, which is
// what the window system receives for a window icon; any other size is still drawn crisply on
// request.
class SvgIconEngine : public QIconEngine
{
public:
    SvgIconEngine(QString path, std::optional<QColor> tint, QList<QSize> advertisedSizes);

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override;
    QIconEngine *clone() const override;
    QString key() const override;

private:
    QString m_path;
    std::optional<QColor> m_tint;
    QList<QSize> m_advertisedSizes;
};
