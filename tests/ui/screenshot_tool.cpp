// Renders the main window content in its typical states, in a light and a
// dark palette, to PNG files:
//   zqb-ui-screenshots <output folder>
// With --compositor, the window is shown on a real display instead and the
// compositor takes each picture (grim, on a wlroots compositor that places
// windows at the top left without decorations):
//   zqb-ui-screenshots --compositor [--prefix P] [--light] [--only a,b] <folder>

#include "AgentModel.h"
#include "AgentView.h"
#include "FakeEngine.h"
#include "Formatting.h"
#include "ScreenStates.h"
#include "UiTestSupport.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QPalette>
#include <QProcess>
#include <QStyle>
#include <QStyleFactory>
#include <QThread>
#include <QWindow>

#include <cstdio>
#include <functional>

namespace {

QPalette darkPalette()
{
    QPalette p;
    const QColor window(0x2b, 0x2d, 0x30);
    const QColor base(0x1f, 0x21, 0x23);
    const QColor text(0xe8, 0xe8, 0xea);
    p.setColor(QPalette::Window, window);
    p.setColor(QPalette::WindowText, text);
    p.setColor(QPalette::Base, base);
    p.setColor(QPalette::AlternateBase, window);
    p.setColor(QPalette::Text, text);
    p.setColor(QPalette::Button, QColor(0x3a, 0x3d, 0x41));
    p.setColor(QPalette::ButtonText, text);
    p.setColor(QPalette::Highlight, QColor(0x35, 0x84, 0xe4));
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::ToolTipBase, window);
    p.setColor(QPalette::ToolTipText, text);
    p.setColor(QPalette::PlaceholderText, QColor(0x8a, 0x8d, 0x91));
    p.setColor(QPalette::Light, QColor(0x4a, 0x4d, 0x52));
    p.setColor(QPalette::Midlight, QColor(0x40, 0x43, 0x47));
    p.setColor(QPalette::Mid, QColor(0x33, 0x35, 0x38));
    p.setColor(QPalette::Dark, QColor(0x18, 0x19, 0x1b));
    p.setColor(QPalette::Shadow, Qt::black);
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, QColor(0x7a, 0x7d, 0x82));
    p.setColor(QPalette::Disabled, QPalette::Button, QColor(0x33, 0x35, 0x38));
    return p;
}

bool waitFor(const std::function<bool()> &condition)
{
    QDeadlineTimer deadline(10000);
    while (!condition() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(5);
    }
    return condition();
}

struct Shot
{
    QString name;
    std::optional<AgentUIStatus> status;
    std::function<void(AgentModel &)> edit;
};

struct Options
{
    QString folder = QStringLiteral(".");
    QString prefix;
    bool compositor = false;
    bool lightOnly = false;
    QStringList only;
};

// The window as the compositor shows it: once it is mapped and has drawn, a
// picture of its area of the screen, in the output's own pixels.
bool compositorPicture(QWidget &window, const QString &file)
{
    if (!waitFor([&] { return window.windowHandle() && window.windowHandle()->isExposed(); }))
        return false;
    // A few frames for the compositor to show the latest buffer.
    for (int i = 0; i < 10; ++i) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(30);
    }
    const QString geometry = QStringLiteral("0,0 %1x%2")
                                 .arg(window.frameGeometry().width())
                                 .arg(window.frameGeometry().height());
    return QProcess::execute(QStringLiteral("grim"), {QStringLiteral("-g"), geometry, file}) == 0;
}

bool save(QWidget &window, const QString &file, const Options &options)
{
    return options.compositor ? compositorPicture(window, file) : window.grab().save(file);
}

bool render(const Shot &shot, const Options &options, const QString &variant)
{
    const QString &folder = options.folder;
    FakeEngine engine;
    if (shot.status)
        engine.answer(QStringLiteral("ui-status"), AgentDocuments::encode(*shot.status));
    else
        engine.answer(QStringLiteral("ui-status"), QByteArray(), "not yet", 1);
    AgentModel model(AgentModel::Services{AgentRunner(engine.path()), nullptr, nullptr});
    AgentView view(model, scheduleIntervals());
    view.resize(view.minimumSize());
    view.show(); // starts the model: one refresh
    if (shot.status && !waitFor([&] { return model.status().has_value(); })) {
        std::fprintf(stderr, "%s: no status\n", qPrintable(shot.name));
        return false;
    }
    waitFor([&] { return engine.startedCount() >= 1 && !model.busy(); });
    if (shot.edit)
        shot.edit(model);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    const QString stem = options.prefix + shot.name + QLatin1Char('-') + variant;
    const QString file = QDir(folder).filePath(stem + ".png");
    if (!save(view, file, options)) {
        std::fprintf(stderr, "could not write %s\n", qPrintable(file));
        return false;
    }
    std::printf("%s\n", qPrintable(file));
    if (options.compositor)
        return true; // the window as shown is the point there
    // The whole column too, for reviewing the lower sections.
    QWidget *content = view.findChild<QWidget *>(QStringLiteral("agentContent"));
    view.resize(view.width(), qMax(view.minimumHeight(), content->sizeHint().height()));
    QCoreApplication::processEvents();
    const QString full = QDir(folder).filePath(stem + "-full.png");
    if (!content->grab().save(full))
        return false;
    std::printf("%s\n", qPrintable(full));
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    UiTest::pinLocaleAndZone();
    QApplication app(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setApplicationVersion(QStringLiteral("1.0.0"));
    Options options;
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        if (argument == QStringLiteral("--compositor"))
            options.compositor = true;
        else if (argument == QStringLiteral("--light"))
            options.lightOnly = true;
        else if (argument == QStringLiteral("--prefix") && i + 1 < arguments.size())
            options.prefix = arguments.at(++i);
        else if (argument == QStringLiteral("--only") && i + 1 < arguments.size())
            options.only = arguments.at(++i).split(QLatin1Char(','));
        else
            options.folder = argument;
    }
    QDir().mkpath(options.folder);

    const QList<Shot> shots = {
        {QStringLiteral("1-no-status"), std::nullopt, nullptr},
        {QStringLiteral("2-setup-required"), ScreenStates::setupRequired(),
         [](AgentModel &m) { m.setInvitation(QStringLiteral("zqbinv1-7Hq2mX9pLr4")); }},
        {QStringLiteral("3-connected-idle"), ScreenStates::connectedIdle(), nullptr},
        {QStringLiteral("4-uploading"), ScreenStates::uploading(), nullptr},
        {QStringLiteral("5-update-error-notice"), ScreenStates::updateAvailable(),
         [](AgentModel &m) {
             m.setError(QStringLiteral(
                 "The engine could not read /home/ann/Pictures/Family archive/2009-2024 "
                 "scanned negatives and slides from the attic boxes/IMG_0042.tif: permission "
                 "denied. Give the engine read access to this folder or remove it from the list, "
                 "then try again. The rest of the backup was not affected by this error."));
             m.setNotice(QStringLiteral("Folders, schedule, and network policy saved."));
         }},
    };

    const QPalette light = QApplication::style()->standardPalette();
    bool ok = true;
    for (const auto &[variant, palette] : {std::pair{QStringLiteral("light"), light},
                                           std::pair{QStringLiteral("dark"), darkPalette()}}) {
        if (options.lightOnly && variant != QStringLiteral("light"))
            continue;
        QApplication::setPalette(palette);
        for (const Shot &shot : shots)
            if (options.only.isEmpty() || options.only.contains(shot.name))
                ok = render(shot, options, variant) && ok;
    }
    return ok ? 0 : 1;
}
