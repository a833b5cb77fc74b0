#include "MainWindow.h"

#include "AgentModel.h"
#include "AgentView.h"
#include "AppDelegate.h"
#include "PeriodicRefresh.h"

#include <QAction>
#include <QKeySequence>

MainWindow::MainWindow(AgentModel &model, PeriodicRefresh &refresh, QWidget *parent)
    : QMainWindow(parent), m_model(model), m_refresh(refresh)
{
    setWindowTitle(QStringLiteral("ZQB Agent"));
    setAttribute(Qt::WA_DeleteOnClose, false);

    auto *quitAction = new QAction(tr("Quit ZQB Agent"), this);
    quitAction->setShortcut(AppDelegate::quitShortcut());
    quitAction->setShortcutContext(Qt::WindowShortcut);
    connect(quitAction, &QAction::triggered, this, &MainWindow::quitRequested);
    addAction(quitAction);
}

void MainWindow::setVisible(bool visible)
{
    if (visible && !centralWidget()) {
        m_refresh.start();
        setCentralWidget(new AgentView(m_model, scheduleIntervals, this));
    }
    QMainWindow::setVisible(visible);
}
