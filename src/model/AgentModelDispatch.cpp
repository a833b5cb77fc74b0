#include "AgentModel.h"

#include "SecretWipe.h"
#include "TextRules.h"
#include "TranslatedText.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

#include <atomic>

// The dispatch step every operation goes through, and the one rule that
// turns a failed result into text.

namespace {

const TranslatedText couldNotCompleteMessage = {
    "AgentModel", QT_TRANSLATE_NOOP("AgentModel", "ZQB Agent could not complete that operation.")};

// The runner's fixed failure messages are the app's own words: shown
// translated, unlike everything the engine itself writes.
const char *const runnerMessages[] = {
    QT_TRANSLATE_NOOP("AgentRunner", "The ZQB Agent background engine is not installed."),
    QT_TRANSLATE_NOOP("AgentRunner", "ZQB Agent could not start."),
    QT_TRANSLATE_NOOP("AgentRunner", "The ZQB Agent background engine did not answer."),
};

constexpr qsizetype presentableErrorCap = 500;

std::atomic<int> inFlight{0};

// Engine commands get their own pool: the global one is as small as the
// number of cores, so a few hanging engines could starve every other command.
// Never destroyed, so a hanging engine cannot hold up quitting either.
QThreadPool &commandPool()
{
    static QThreadPool *pool = [] {
        auto *p = new QThreadPool;
        p->setMaxThreadCount(64);
        return p;
    }();
    return *pool;
}

} // namespace

int AgentModel::commandsInFlight()
{
    return inFlight.load();
}

void AgentModel::run(const QStringList &arguments, std::shared_ptr<QByteArray> input, bool showBusy,
                     std::function<void(const CommandResult &)> completion)
{
    if (showBusy)
        assignBusy(true);
    setError(std::nullopt);

    ++inFlight;
    QPointer<AgentModel> self(this);
    const AgentRunner runner = m_services.runner;
    commandPool().start([runner, arguments, input = std::move(input), showBusy,
                         self = std::move(self), completion = std::move(completion)]() mutable {
        std::optional<QByteArrayView> view;
        if (input)
            view = QByteArrayView(*input);
        CommandResult result = runner.run(arguments, view);

        QCoreApplication *app = QCoreApplication::instance();
        if (!app) { // shutting down: nobody is left to tell
            if (input)
                SecretWipe::wipe(*input);
            --inFlight;
            return;
        }
        // Everything moves over to the main thread, so the last reference to
        // the input and the completion's captures is released there.
        auto deliver = [input = std::move(input), showBusy, self = std::move(self),
                        completion = std::move(completion), result = std::move(result)] {
            // Standard input may hold a secret: wipe the very buffer the
            // engine was given, also when the model is gone.
            if (input)
                SecretWipe::wipe(*input);
            if (self) {
                if (showBusy)
                    self->assignBusy(false);
                completion(result);
            }
            --inFlight;
            if (self)
                emit self->settled();
        };
        QMetaObject::invokeMethod(app, std::move(deliver), Qt::QueuedConnection);
    });
}

QString AgentModel::presentableError(const CommandResult &result)
{
    const QString &taken = result.error.isEmpty() ? result.output : result.error;
    if (taken.isEmpty())
        return couldNotCompleteMessage;
    for (const char *message : runnerMessages)
        if (taken == QLatin1String(message))
            return QCoreApplication::translate("AgentRunner", message);
    return TextRules::leftGraphemes(taken, presentableErrorCap);
}
