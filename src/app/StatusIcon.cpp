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
    // Trays ask for many sizes; each gets its own rendering of the mark, drawn
    // when the tray first asks for it.
    static const QList<QSize> traySizes{QSize(16, 16), QSize(22, 22), QSize(24, 24),
                                        QSize(32, 32), QSize(48, 48), QSize(64, 64)};
    return Symbols::scalableIcon(Symbol::DriveCheck, statusItemColor(look), traySizes);
}
