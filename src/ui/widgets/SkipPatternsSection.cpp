#include "SkipPatternsSection.h"

#include "ControlSync.h"
#include "WidgetStyle.h"
#include "WrappedLabel.h"

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QVBoxLayout>

SkipPatternsSection::SkipPatternsSection(QWidget *parent)
    : QGroupBox(tr("Skip patterns"), parent), m_patterns(new QLineEdit),
      m_note(new WrappedLabel(tr("Patterns match file or folder names. ZQB always "
                                 "shows the complete configured list.")))
{
    setObjectName(QStringLiteral("skipBox"));
    auto *column = new QVBoxLayout(this);
    column->setSpacing(8);
    m_patterns->setObjectName(QStringLiteral("exclusionsField"));
    m_patterns->setPlaceholderText(tr("Comma-separated names, such as node_modules, *.tmp"));
    m_patterns->setAccessibleName(tr("Skip patterns"));
    // File names read left to right, also in a mirrored window.
    m_patterns->setLayoutDirection(Qt::LeftToRight);
    column->addWidget(m_patterns);
    m_note->setObjectName(QStringLiteral("exclusionsNote"));
    // Sized from the window's text, not from a group box title's font.
    m_note->setFont(WidgetStyle::captionFont(QApplication::font()));
    column->addWidget(m_note);

    connect(m_patterns, &QLineEdit::textChanged, this, &SkipPatternsSection::textChanged);
    WidgetStyle::setTextColor(m_note, colorForRole(ColorRole::Secondary, palette()));
}

void SkipPatternsSection::setState(const SkipPatternsState &state)
{
    m_state = state;
    ControlSync::text(m_patterns, state.text);
}

QList<QWidget *> SkipPatternsSection::focusChain() const
{
    return {m_patterns};
}

void SkipPatternsSection::changeEvent(QEvent *event)
{
    QGroupBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        WidgetStyle::setTextColor(m_note, colorForRole(ColorRole::Secondary, palette()));
}
