#include "MainWindow.h"

#include "AgentView.h"
#include "AppDelegate.h"

#include <QAction>
#include <QKeySequence>

MainWindow::MainWindow(AgentModel &model, QWidget *parent) : QMainWindow(parent)
{
    setWindowTitle(QStringLiteral("ZQB Agent"));
    setAttribute(Qt::WA_DeleteOnClose, false);
    setCentralWidget(new AgentView(model, scheduleIntervals, this));

    auto *quitAction = new QAction(QStringLiteral("Quit ZQB Agent"), this);
    quitAction->setShortcut(AppDelegate::quitShortcut());
    quitAction->setShortcutContext(Qt::WindowShortcut);
    connect(quitAction, &QAction::triggered, this, &MainWindow::quitRequested);
    addAction(quitAction);
}
