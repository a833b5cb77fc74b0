#pragma once

#include "SectionStates.h"

#include <QGroupBox>

class QLabel;
class QLineEdit;

// "Skip patterns": the comma-separated names the engine leaves out.
class SkipPatternsSection : public QGroupBox
{
    Q_OBJECT
public:
    explicit SkipPatternsSection(QWidget *parent = nullptr);

    const SkipPatternsState &state() const { return m_state; }
    void setState(const SkipPatternsState &state);

    QList<QWidget *> focusChain() const;

signals:
    // Every change of the text, typed, pasted or set through accessibility.
    void textChanged(const QString &text);

protected:
    void changeEvent(QEvent *event) override;

private:
    SkipPatternsState m_state;
    QLineEdit *m_patterns;
    QLabel *m_note;
};
