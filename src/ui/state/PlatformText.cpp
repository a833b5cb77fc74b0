#include "PlatformText.h"

#include <QCoreApplication>
#include <QtGlobal>

namespace {
#ifdef Q_OS_MACOS
constexpr bool runningOnMacOS = true;
#else
constexpr bool runningOnMacOS = false;
#endif

// The texts that name the local machine, as they read off macOS: these are
// what the app looks up there, so the translation tools must see them.
[[maybe_unused]] const char *const offMacOSTexts[] = {
    QT_TRANSLATE_NOOP("WindowState", "Simple, encrypted protection for this computer"),
    QT_TRANSLATE_NOOP("WindowState", "Connect this computer"),
    QT_TRANSLATE_NOOP("WindowState", "Enroll this computer"),
    QT_TRANSLATE_NOOP("WindowState", "Reading this computer's existing ZQB enrollment…"),
};

// Qt mirrors its widgets when the translation of this entry is "RTL".
struct
{
    const char *source;
    const char *comment;
} const layoutDirectionEntry = QT_TRANSLATE_NOOP3(
    "QGuiApplication", "QT_LAYOUT_DIRECTION",
    "Translate this string to the string 'LTR' in left-to-right languages or to 'RTL' in "
    "right-to-left languages (such as Hebrew and Arabic) to get proper widget layout.");
} // namespace

QString localMachineText(const QString &macText, bool onMacOS)
{
    if (onMacOS)
        return macText;
    QString text = macText;
    text.replace(QStringLiteral("this Mac"), QStringLiteral("this computer"));
    return text;
}

QString localMachineText(const QString &macText)
{
    return localMachineText(macText, runningOnMacOS);
}

bool platformOffersFullDiskAccess()
{
    return runningOnMacOS;
}

QString localMachineTranslation(const char *context, const QString &macText)
{
    return QCoreApplication::translate(context, localMachineText(macText).toUtf8().constData());
}

bool translationIsRightToLeft()
{
    return QCoreApplication::translate("QGuiApplication", layoutDirectionEntry.source,
                                       layoutDirectionEntry.comment) == QLatin1String("RTL");
}

QString leftToRightIsolated(const QString &text)
{
    if (text.isEmpty() || !translationIsRightToLeft())
        return text;
    // A right-to-left mark first: Qt aligns a label by its text's first
    // strong letter, and the line starts on the right in a right-to-left
    // window. Left-to-right marks around the text then hold its leading and
    // trailing punctuation ("/srv", "done.") on its own side; they hold in
    // every layout of Qt's, where isolates and embeddings do not.
    return QChar(0x200F) + (QChar(0x200E) + text + QChar(0x200E));
}

QString firstStrongIsolated(const QString &text)
{
    if (text.isEmpty() || !translationIsRightToLeft())
        return text;
    // Marks of the text's own direction, as leftToRightIsolated does.
    const QChar mark = text.isRightToLeft() ? QChar(0x200F) : QChar(0x200E);
    return QChar(0x200F) + (mark + text + mark);
}
