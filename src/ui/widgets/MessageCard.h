#pragma once

#include "ColorRole.h"

#include <QFrame>
#include <QString>

#include <optional>

class DotWidget;
class QLabel;
class QToolButton;

// An error or notice: a dot in the card colour, the message (at most three
// lines) and a dismiss button, on the card colour at low opacity.
class MessageCard : public QFrame
{
    Q_OBJECT
public:
    explicit MessageCard(ColorRole role, QWidget *parent = nullptr);

    ColorRole role() const { return m_role; }
    QString text() const { return m_text; }
    void setText(const QString &text);
    // Shows the card with `message`, or hides it when there is none.
    void showMessage(const std::optional<QString> &message);
    // The text as shown, fitted to three lines.
    QString shownText() const;
    QToolButton *dismissButton() const { return m_dismiss; }

signals:
    void dismissed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void applyColors();
    void refit();

    ColorRole m_role;
    QString m_text;
    DotWidget *m_dot;
    QLabel *m_label;
    QToolButton *m_dismiss;
};
