// The floor: the least any Qt Widgets app costs on this machine. One window of
// the main window's minimum size with one label, nothing else, so the app's
// figures can be read as a difference against it.
//
// With ZQB_BENCH_OUT set (measure.sh sets it), it also writes when its first
// frame was on screen, "first_frame_ns" in CLOCK_MONOTONIC, taken the way the
// app's probe takes its own: after the repaint that drew the label has been
// flushed. The map time says when the window appeared; this says when the
// floor had painted it, the like-for-like partner of the app's "engine state
// on screen".
#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QLabel>
#include <QMetaObject>
#include <QVBoxLayout>
#include <QWidget>

#include <ctime>
#include <memory>

namespace {

qint64 monotonicNs()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
}

class FirstFrameRecorder : public QObject
{
public:
    FirstFrameRecorder(QWidget *watched, const QString &path)
        : m_watched(watched), m_path(path)
    {
        watched->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == m_watched && event->type() == QEvent::Paint) {
            m_watched->removeEventFilter(this);
            // Runs once the repaint under way, flush included, is over.
            QMetaObject::invokeMethod(this, [this] { write(monotonicNs()); },
                                      Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void write(qint64 ns)
    {
        QFile out(m_path);
        if (out.open(QIODevice::WriteOnly | QIODevice::Truncate))
            out.write("first_frame_ns " + QByteArray::number(ns) + '\n');
    }

    QWidget *m_watched;
    QString m_path;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);

    QWidget window;
    window.setWindowTitle(QStringLiteral("ZQB Floor"));
    window.resize(720, 680);
    auto *layout = new QVBoxLayout(&window);
    auto *label = new QLabel(QStringLiteral("Connected"), &window);
    layout->addWidget(label);

    const QString out = qEnvironmentVariable("ZQB_BENCH_OUT");
    std::unique_ptr<FirstFrameRecorder> recorder;
    if (!out.isEmpty())
        recorder = std::make_unique<FirstFrameRecorder>(label, out);
    window.show();

    return app.exec();
}
