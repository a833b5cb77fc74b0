#include "MessageCard.h"

#include "DotWidget.h"
#include "PlainText.h"
#include "Symbols.h"
#include "TextFit.h"
#include "WidgetStyle.h"
#include "WrappedLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

namespace {
constexpr int maxLines = 3;
}

MessageCard::MessageCard(ColorRole role, QWidget *parent)
    : QFrame(parent), m_role(role), m_dot(new DotWidget(9)), m_label(new WrappedLabel),
      m_dismiss(new QToolButton)
{
    setObjectName(role == ColorRole::Red ? QStringLiteral("errorCard")
                                         : QStringLiteral("noticeCard"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(12, 12, 12, 12);
    row->setSpacing(10);

    // The dot sits on the first line of text.
    auto *dotColumn = new QVBoxLayout;
    dotColumn->setContentsMargins(0, 0, 0, 0);
    dotColumn->addSpacing(qMax(0, (fontMetrics().height() - 9) / 2));
    dotColumn->addWidget(m_dot);
    dotColumn->addStretch();
    row->addLayout(dotColumn);

    m_label->setObjectName(QStringLiteral("cardText"));
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_label->installEventFilter(this);
    row->addWidget(m_label, 1);

    m_dismiss->setObjectName(QStringLiteral("dismissButton"));
    m_dismiss->setAutoRaise(true);
    m_dismiss->setToolTip(tr("Dismiss"));
    m_dismiss->setAccessibleName(tr("Dismiss"));
    m_dismiss->setFocusPolicy(Qt::StrongFocus);
    m_dismiss->setIconSize(QSize(12, 12));
    row->addWidget(m_dismiss, 0, Qt::AlignTop);
    connect(m_dismiss, &QToolButton::clicked, this, &MessageCard::dismissed);

    applyColors();
}

void MessageCard::setText(const QString &text)
{
    if (text == m_text && !m_label->text().isEmpty())
        return;
    m_text = text;
    m_label->setAccessibleName(text);
    m_label->setToolTip(PlainText::toolTip(text));
    refit();
}

void MessageCard::showMessage(const std::optional<QString> &message)
{
    setVisible(message.has_value());
    if (message)
        setText(*message);
}

QString MessageCard::shownText() const
{
    return m_label->text();
}

void MessageCard::refit()
{
    const QString fitted = fitToLines(m_text, m_label->font(), m_label->width() - 2, maxLines);
    if (fitted != m_label->text())
        m_label->setText(fitted);
}

bool MessageCard::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_label && event->type() == QEvent::Resize)
        refit();
    return QFrame::eventFilter(watched, event);
}

void MessageCard::applyColors()
{
    const QColor color = colorForRole(m_role, palette());
    m_dot->setColor(color);
    m_dismiss->setIcon(
        Symbols::icon(Symbol::XMark, colorForRole(ColorRole::Secondary, palette()), QSize(12, 12)));
}

void MessageCard::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
    else if (event->type() == QEvent::FontChange)
        refit();
}

void MessageCard::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = colorForRole(m_role, palette());
    painter.setPen(QPen(withOpacity(color, 0.22), 1));
    painter.setBrush(withOpacity(color, 0.08));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
}
