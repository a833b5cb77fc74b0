// The floor: the least any Qt Widgets app costs on this machine. One window of
// the main window's minimum size with one label, nothing else, so the app's
// figures can be read as a difference against it.
#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);

    QWidget window;
    window.setWindowTitle(QStringLiteral("ZQB Floor"));
    window.resize(720, 680);
    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(new QLabel(QStringLiteral("Connected"), &window));
    window.show();

    return app.exec();
}
