#include "TestProbe.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDBusConnection>
#include <QGroupBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QWidget>

namespace {

const QString mainTitle = QStringLiteral("ZQB Agent");

QWidget *mainWindow()
{
    for (QWidget *window : QApplication::topLevelWidgets())
        if (window->windowType() == Qt::Window && window->windowTitle() == mainTitle)
            return window;
    return nullptr;
}

QString plainText(QString text)
{
    return text.remove(QLatin1Char('&'));
}

QString widgetText(QWidget *widget)
{
    if (auto *button = qobject_cast<QAbstractButton *>(widget))
        return plainText(button->text());
    if (auto *label = qobject_cast<QLabel *>(widget))
        return label->text();
    if (auto *box = qobject_cast<QGroupBox *>(widget))
        return plainText(box->title());
    if (auto *edit = qobject_cast<QLineEdit *>(widget))
        return edit->displayText();
    if (auto *combo = qobject_cast<QComboBox *>(widget))
        return combo->currentText();
    return {};
}

bool reallyVisible(QWidget *widget)
{
    return widget->isVisible() && widget->window()->isVisible();
}

QList<QWidget *> visibleWidgets()
{
    QList<QWidget *> result;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->windowType() == Qt::ToolTip)
            continue;
        result << window;
        for (QWidget *child : window->findChildren<QWidget *>())
            if (reallyVisible(child))
                result << child;
    }
    return result;
}

} // namespace

TestProbe::TestProbe(QObject *parent) : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool TestProbe::registerOnSessionBus()
{
    return QDBusConnection::sessionBus().registerObject(objectPath, this,
                                                        QDBusConnection::ExportScriptableSlots);
}

bool TestProbe::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint && watched->isWidgetType()) {
        auto *widget = static_cast<QWidget *>(watched);
        if (widget->window()->windowTitle() == mainTitle)
            ++m_paints;
    }
    return QObject::eventFilter(watched, event);
}

QString TestProbe::Widgets()
{
    QJsonArray widgets;
    for (QWidget *widget : visibleWidgets()) {
        const QPoint origin = widget->mapToGlobal(QPoint(0, 0));
        QJsonObject entry{
            {"class", QString::fromLatin1(widget->metaObject()->className())},
            {"name", widget->accessibleName()},
            {"text", widgetText(widget)},
            {"enabled", widget->isEnabled()},
            {"x", origin.x()},
            {"y", origin.y()},
            {"width", widget->width()},
            {"height", widget->height()},
            {"window", widget->window()->windowTitle()},
        };
        if (auto *button = qobject_cast<QAbstractButton *>(widget); button && button->isCheckable())
            entry.insert(QStringLiteral("checked"), button->isChecked());
        if (auto *edit = qobject_cast<QLineEdit *>(widget))
            entry.insert(QStringLiteral("placeholder"), edit->placeholderText());
        widgets.append(entry);
    }
    return QString::fromUtf8(QJsonDocument(widgets).toJson(QJsonDocument::Compact));
}

bool TestProbe::Click(const QString &name)
{
    for (QWidget *widget : visibleWidgets()) {
        auto *button = qobject_cast<QAbstractButton *>(widget);
        if (!button || !button->isEnabled())
            continue;
        if (button->accessibleName() != name && plainText(button->text()) != name)
            continue;
        // After the reply: a click may start work that should not delay it.
        QTimer::singleShot(0, button, [button] { button->click(); });
        return true;
    }
    return false;
}

bool TestProbe::Type(const QString &name, const QString &text)
{
    for (QWidget *widget : visibleWidgets()) {
        auto *edit = qobject_cast<QLineEdit *>(widget);
        if (!edit || !edit->isEnabled())
            continue;
        if (edit->accessibleName() != name && edit->placeholderText() != name)
            continue;
        edit->setFocus(Qt::OtherFocusReason);
        for (const QChar c : text) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
            QKeyEvent release(QEvent::KeyRelease, 0, Qt::NoModifier, QString(c));
            QCoreApplication::sendEvent(edit, &press);
            QCoreApplication::sendEvent(edit, &release);
        }
        return true;
    }
    return false;
}

QString TestProbe::Window()
{
    int windows = 0;
    for (QWidget *window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowType() == Qt::Window)
            ++windows;
    QWidget *window = mainWindow();
    QJsonObject state{
        {"exists", window != nullptr},
        {"visible", window && window->isVisible()},
        {"minimized", window && window->isMinimized()},
        {"active", window && window->isActiveWindow()},
        {"title", window ? window->windowTitle() : QString()},
        {"windows", windows},
    };
    return QString::fromUtf8(QJsonDocument(state).toJson(QJsonDocument::Compact));
}

bool TestProbe::CloseWindow()
{
    QWidget *window = mainWindow();
    if (!window)
        return false;
    QTimer::singleShot(0, window, [window] { window->close(); });
    return true;
}
