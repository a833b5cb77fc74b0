#include "MainWindow.h"

#include "AgentModel.h"
#include "AgentView.h"
#include "AppDelegate.h"

#include <QAction>
#include <QKeySequence>

MainWindow::MainWindow(AgentModel &model, QWidget *parent)
    : QMainWindow(parent), m_model(model)
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
    if (visible && !centralWidget())
        setCentralWidget(new AgentView(m_model, scheduleIntervals, this));
    QMainWindow::setVisible(visible);
}
