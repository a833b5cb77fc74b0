#pragma once

#include "ConnectionState.h"

#include <QGroupBox>

class QGridLayout;
class QLabel;
class QPushButton;

// "Connection and compatibility": one row per fact, the update card while an
// update is really available, and the connection check button.
class ConnectionSection : public QGroupBox
{
    Q_OBJECT
public:
    explicit ConnectionSection(QWidget *parent = nullptr);

    const ConnectionState &state() const { return m_state; }
    void setState(const ConnectionState &state);

    // Texts as shown, for tests and accessibility checks.
    QList<DetailRow> shownRows() const;
    QWidget *updateCard() const { return m_updateCard; }
    QPushButton *installButton() const { return m_install; }
    QPushButton *checkButton() const { return m_check; }

signals:
    void installRequested();
    void checkRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    void applyColors();

    ConnectionState m_state;
    bool m_initialized = false;
    QGridLayout *m_grid;
    QList<QLabel *> m_labels;
    QList<QLabel *> m_values;
    QWidget *m_updateCard;
    QLabel *m_updateIcon;
    QPushButton *m_install;
    QPushButton *m_check;
};
