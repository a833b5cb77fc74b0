#include "SvgIconEngine.h"

#include "Symbols.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

SvgIconEngine::SvgIconEngine(QString path, std::optional<QColor> tint, QList<QSize> advertisedSizes)
    : m_path(std::move(path)), m_tint(tint), m_advertisedSizes(std::move(advertisedSizes))
{
}

void SvgIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode,
                          QIcon::State state)
{
    const qreal ratio = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
    const QSize pixels(qRound(rect.width() * ratio), qRound(rect.height() * ratio));
    painter->drawPixmap(rect, pixmap(pixels, mode, state));
}

QPixmap SvgIconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State)
{
    if (size.isEmpty())
        return {};
    QPixmap result = Symbols::svgPixmap(m_path, m_tint, size);
    if (mode == QIcon::Disabled && qobject_cast<QApplication *>(QCoreApplication::instance())) {
        QStyleOption option;
        option.palette = QApplication::palette();
        result = QApplication::style()->generatedIconPixmap(mode, result, &option);
    }
    return result;
}

QSize SvgIconEngine::actualSize(const QSize &size, QIcon::Mode, QIcon::State)
{
    return size; // scalable: every size is exact
}

QList<QSize> SvgIconEngine::availableSizes(QIcon::Mode, QIcon::State)
{
    return m_advertisedSizes;
}

QIconEngine *SvgIconEngine::clone() const
{
    return new SvgIconEngine(*this);
}

QString SvgIconEngine::key() const
{
    return QStringLiteral("zqb-svg");
}
