#pragma once

#include "SectionStates.h"

#include <QWidget>

class QLabel;
class VersionCapsule;

// The top of the window: the app icon and name, the subtitle, and the
// running version with its status capsule.
class HeaderSection : public QWidget
{
    Q_OBJECT
public:
    explicit HeaderSection(QWidget *parent = nullptr);

    const HeaderState &state() const { return m_state; }
    void setState(const HeaderState &state);

protected:
    void changeEvent(QEvent *event) override;

private:
    void applyColors();

    HeaderState m_state;
    QLabel *m_appIcon;
    QLabel *m_subtitle;
    QLabel *m_versionLine;
    VersionCapsule *m_capsule;
};
