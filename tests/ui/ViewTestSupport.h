#pragma once

// A window on a fake engine with a scripted folder chooser, shared by the
// window's widget tests.

#include "AgentDocuments.h"
#include "AgentModel.h"
#include "AgentView.h"
#include "FakeEngine.h"
#include "FolderChooser.h"
#include "Formatting.h"
#include "ScreenStates.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QTest>

namespace ViewTest {

class ScriptedChooser : public FolderChooser
{
public:
    std::optional<QStringList> answer;
    std::optional<QStringList> chooseFolders() override { return answer; }
};

// A window on a fake engine. The engine answers "ui-status" with nothing
// readable until a test gives it a document.
struct Window
{
    FakeEngine engine;
    ScriptedChooser chooser;
    AgentModel model{AgentModel::Services{AgentRunner(engine.path()), nullptr, &chooser}};
    AgentView view{model, scheduleIntervals()};

    Window()
    {
        engine.answer(QStringLiteral("ui-status"), QByteArray(), "no status yet", 1);
        view.resize(view.minimumSize());
    }

    // Shows the window, which starts the model. With `first`, the start's
    // refresh reads that document and the call returns once it is applied,
    // so no refresh is left in flight.
    bool show(const std::optional<AgentUIStatus> &first = std::nullopt)
    {
        if (first)
            engine.answer(QStringLiteral("ui-status"), AgentDocuments::encode(*first));
        view.show();
        if (!QTest::qWaitForWindowExposed(&view))
            return false;
        if (!first)
            return true;
        const bool arrived = QTest::qWaitFor([&] { return model.status() == first; }, 10000);
        QCoreApplication::processEvents();
        return arrived;
    }

    // Puts the model into `status` through a real refresh, then lets the
    // window render it.
    bool apply(const AgentUIStatus &status)
    {
        engine.answer(QStringLiteral("ui-status"), AgentDocuments::encode(status));
        model.refresh(false, false);
        const bool arrived = QTest::qWaitFor([&] { return model.status() == status; }, 10000);
        QCoreApplication::processEvents();
        return arrived;
    }

    int count(const QString &command) const { return int(engine.commands().count(command)); }

    template <typename T> T *find(const char *name) const
    {
        T *found = view.findChild<T *>(QLatin1String(name));
        if (!found)
            qFatal("no widget %s", name);
        return found;
    }

    bool shows(const char *name) const { return find<QWidget>(name)->isVisibleTo(&view); }
};

inline void clickCheckBox(QCheckBox *box)
{
    // On the indicator, whatever the style's label hit area.
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(7, box->height() / 2));
}

inline AgentUIStatus enrolledWith(const QStringList &sources)
{
    AgentUIStatus s = ScreenStates::connectedIdle();
    s.settings.sources = sources;
    return s;
}

} // namespace ViewTest
