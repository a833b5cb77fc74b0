#pragma once

#include "SectionStates.h"

#include <QGroupBox>

class QLabel;
class QLineEdit;
class QPushButton;

// "Connect this computer": where a person who has not enrolled yet pastes the
// one-time invitation and enrolls.
class ConnectBox : public QGroupBox
{
    Q_OBJECT
public:
    explicit ConnectBox(QWidget *parent = nullptr);

    const ConnectBoxState &state() const { return m_state; }
    void setState(const ConnectBoxState &state);
    // The model's invitation; kept apart from the state, which is stored.
    void showInvitation(const QString &invitation);

    // Its controls in visual order, for the window's tab order.
    QList<QWidget *> focusChain() const;

signals:
    // Every change of the field's text, however it was made.
    void invitationChanged(const QString &text);
    void enrollRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    void applyColors();

    ConnectBoxState m_state;
    QLabel *m_text;
    QLineEdit *m_invitation;
    QPushButton *m_enroll;
};
