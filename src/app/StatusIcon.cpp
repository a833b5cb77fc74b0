#include "StatusIcon.h"

#include "Symbols.h"

QColor statusItemColor(AppDelegate::Look look)
{
    switch (look) {
    case AppDelegate::Look::Green:
        return QColor(0x34, 0xc7, 0x59);
    case AppDelegate::Look::Orange:
        return QColor(0xff, 0x95, 0x00);
    case AppDelegate::Look::Untinted:
        break;
    }
    // Monochrome, readable on light and dark panels alike.
    return QColor(0x9a, 0x9a, 0x9e);
}

QIcon statusItemIcon(AppDelegate::Look look)
{
    const QColor color = statusItemColor(look);
    QIcon icon;
    // Trays ask for many sizes; each gets its own rendering of the mark.
    for (int size : {16, 22, 24, 32, 48, 64})
        icon.addPixmap(Symbols::pixmap(Symbol::DriveCheck, color, QSize(size, size)));
    return icon;
}
