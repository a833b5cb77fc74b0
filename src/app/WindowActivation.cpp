#include "WindowActivation.h"

#include "AgentRunner.h"
#include "X11Launch.h"

#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <mutex>

namespace {

// How long a window that is being shown may take to be mapped before its
// activation request is given up.
constexpr int mapTimeoutMs = 10000;

void requestActivation(QWidget *window, const QString &token)
{
    if (token.isEmpty()) {
        window->activateWindow();
        return;
    }
    if (X11Launch::isActive()) {
        // Under X11 the token is a startup id: the window manager gives the
        // focus for the launch's time, and the launcher's "starting"
        // feedback ends once the window is up.
        if (const quint32 time = X11Launch::launchTime(token); time != 0)
            X11Launch::requestActivation(window, time);
        else
            window->activateWindow();
        X11Launch::endStartupNotification(token);
        return;
    }
    // The platform reads the variable during the request; engines started on
    // worker threads copy the environment under the same lock, so none ever
    // sees the token.
    const std::lock_guard locked(AgentRunner::environmentLock());
    qputenv(WindowActivation::tokenVariable, token.toUtf8());
    window->activateWindow();
    qunsetenv(WindowActivation::tokenVariable);
}

// Waits for the window's first exposure after a show, then asks for the focus
// once the event loop has let the window draw its first frame.
class ActivateWhenMapped : public QObject
{
public:
    static inline const QString objectNameForWaiting = QStringLiteral("activateWhenMapped");

    ActivateWhenMapped(QWidget *widget, QWindow *window, QString token)
        : QObject(window), m_widget(widget), m_token(std::move(token))
    {
        setObjectName(objectNameForWaiting);
        window->installEventFilter(this);
        QTimer::singleShot(mapTimeoutMs, this, [this] { deleteLater(); });
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *window = static_cast<QWindow *>(watched);
        if (event->type() == QEvent::Expose && window->isExposed() && !m_done) {
            m_done = true;
            QTimer::singleShot(0, this, [this] {
                if (m_widget && m_widget->isVisible())
                    requestActivation(m_widget, m_token);
                deleteLater();
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QPointer<QWidget> m_widget;
    QString m_token;
    bool m_done = false;
};

} // namespace

QString WindowActivation::takeLaunchToken()
{
    const std::lock_guard locked(AgentRunner::environmentLock());
    QString token = qEnvironmentVariable(tokenVariable);
    if (token.isEmpty())
        token = qEnvironmentVariable(startupIdVariable);
    qunsetenv(tokenVariable);
    qunsetenv(startupIdVariable);
    return token;
}

void WindowActivation::bringForward(QWidget *window, const QString &token)
{
    if (window->isMinimized())
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    QWindow *handle = window->windowHandle();
    if (handle && !handle->isExposed() && !token.isEmpty()) {
        // A newer request replaces one still waiting for the window.
        const auto pending = handle->findChildren<QObject *>(
            ActivateWhenMapped::objectNameForWaiting, Qt::FindDirectChildrenOnly);
        qDeleteAll(pending);
        new ActivateWhenMapped(window, handle, token);
        return;
    }
    requestActivation(window, token);
}
