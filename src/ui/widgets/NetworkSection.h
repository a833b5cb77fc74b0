#pragma once

#include "SectionStates.h"

#include <QGroupBox>

class QCheckBox;
class QComboBox;
class QLabel;

// "Network transfer": pausing, the bandwidth limit and the metered-network
// rule ("Allow backup on metered networks" only applies, and is only
// enabled, while the current network counts as metered).
class NetworkSection : public QGroupBox
{
    Q_OBJECT
public:
    explicit NetworkSection(QWidget *parent = nullptr);

    const NetworkState &state() const { return m_state; }
    void setState(const NetworkState &state);

    QList<QWidget *> focusChain() const;

signals:
    // Every change of a control, whatever made it; none while the section
    // shows a new state.
    void pausedChanged(bool paused);
    void bandwidthChanged(qint64 kibPerSecond);
    void currentNetworkMeteredChanged(bool metered);
    void allowMeteredNetworkChanged(bool allowed);

protected:
    void changeEvent(QEvent *event) override;

private:
    NetworkState m_state;
    QCheckBox *m_paused;
    QComboBox *m_bandwidth;
    QCheckBox *m_metered;
    QCheckBox *m_allowMetered;
    QLabel *m_note;
};
