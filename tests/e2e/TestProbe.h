#pragma once

#include <QObject>
#include <QString>

class QWidget;

// Test-only D-Bus interface of the end-to-end app (never in the shipping
// app): lets a test see the real window's widgets and act on them the way a
// person would, from another process.
class TestProbe : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "local.zqb.agent.Test")
public:
    static inline const QString objectPath = QStringLiteral("/Test");

    explicit TestProbe(QObject *parent = nullptr);
    bool registerOnSessionBus();

public slots:
    // Every visible widget of the visible windows, as a JSON array of
    // {class, name, text, enabled, checked, x, y, width, height, window}.
    Q_SCRIPTABLE QString Widgets();
    // Clicks the visible, enabled button whose accessible name or text is `name`.
    Q_SCRIPTABLE bool Click(const QString &name);
    // Focuses the text field named `name` (accessible name or placeholder) and
    // types `text` into it key by key.
    Q_SCRIPTABLE bool Type(const QString &name, const QString &text);
    // The main window: {visible, minimized, active, title, windows}.
    Q_SCRIPTABLE QString Window();
    // Paint events the main window's widgets have received so far.
    Q_SCRIPTABLE int Paints() const { return m_paints; }
    // Closes the main window as its title bar's close button would.
    Q_SCRIPTABLE bool CloseWindow();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int m_paints = 0;
};
