#include "ConnectBox.h"

#include "ControlSync.h"
#include "WidgetStyle.h"
#include "WrappedLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

ConnectBox::ConnectBox(QWidget *parent)
    : QGroupBox(parent), m_text(new WrappedLabel), m_invitation(new QLineEdit),
      m_enroll(new QPushButton)
{
    setObjectName(QStringLiteral("connectBox"));
    auto *column = new QVBoxLayout(this);
    column->setSpacing(10);
    m_text->setObjectName(QStringLiteral("connectText"));
    column->addWidget(m_text);
    m_invitation->setObjectName(QStringLiteral("invitationField"));
    m_invitation->setEchoMode(QLineEdit::Password);
    m_invitation->setPlaceholderText(tr("One-time invitation"));
    m_invitation->setAccessibleName(tr("One-time invitation"));
    // The invitation is a secret: no drag out, no undo history kept around.
    m_invitation->setDragEnabled(false);
    m_invitation->setClearButtonEnabled(false);
    column->addWidget(m_invitation);
    auto *buttons = new QHBoxLayout;
    m_enroll->setObjectName(QStringLiteral("enrollButton"));
    buttons->addWidget(m_enroll);
    buttons->addStretch();
    column->addLayout(buttons);

    // textChanged, not textEdited: a paste through the accessibility
    // interface sets the text without "editing" it.
    connect(m_invitation, &QLineEdit::textChanged, this, &ConnectBox::invitationChanged);
    connect(m_enroll, &QPushButton::clicked, this, &ConnectBox::enrollRequested);
    applyColors();
}

void ConnectBox::setState(const ConnectBoxState &state)
{
    m_state = state;
    setVisible(state.visible);
    if (title() != state.title)
        setTitle(state.title);
    ControlSync::text(m_text, state.text);
    if (m_enroll->text() != state.enrollLabel) {
        m_enroll->setText(state.enrollLabel);
        m_enroll->setAccessibleName(state.enrollLabel);
    }
    ControlSync::enabled(m_enroll, state.enrollEnabled);
}

void ConnectBox::showInvitation(const QString &invitation)
{
    ControlSync::text(m_invitation, invitation);
}

QList<QWidget *> ConnectBox::focusChain() const
{
    return {m_invitation, m_enroll};
}

void ConnectBox::changeEvent(QEvent *event)
{
    QGroupBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
}

void ConnectBox::applyColors()
{
    WidgetStyle::setTextColor(m_text, colorForRole(ColorRole::Secondary, palette()));
    WidgetStyle::makeProminent(m_enroll);
}
