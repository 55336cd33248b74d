// SPDX-License-Identifier: MIT
#include "desk/deskapplication.h"

#include "desk/dialogplacer.h"
#include "desk/errorreport.h"
#include "desk/filedialogdates.h"
#include "desk/letterkeys.h"
#include "desk/screenfitter.h"

#include <QtCore/QLibraryInfo>
#include <QtCore/QLocale>
#include <QtCore/QTranslator>
#include <QtGui/QIcon>
#include <QtGui/QPalette>

#include <cmath>

// The resources are in a static library: nothing but this call makes the linker take them.
// The macro declares a function and wants to stand outside every namespace.
static void registerResources()
{
    Q_INIT_RESOURCE(desk);
}

namespace vexdesk {

namespace {

// As it is written in the user's country, where the language is spoken there.
QLocale localeOf(Language language)
{
    const QLocale::Language spoken =
        language == Language::English ? QLocale::English : QLocale::Russian;
    const QLocale user = QLocale::system();
    return user.language() == spoken ? QLocale(spoken, user.territory()) : QLocale(spoken);
}

QColor over(const QColor& ground, const QColor& color)
{
    const double share = color.alphaF();
    const auto mixed = [share](double below, double above) {
        return static_cast<float>(below + share * (above - below));
    };
    return QColor::fromRgbF(mixed(ground.redF(), color.redF()),
                            mixed(ground.greenF(), color.greenF()),
                            mixed(ground.blueF(), color.blueF()));
}

// A palette of which only some colours were chosen has the hints of another one: black on dark.
QPalette withReadableHints(QPalette palette)
{
    constexpr float leastDistance = 0.2F; // in lightness
    constexpr float seenThrough = 0.62F;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QColor ground = palette.color(group, QPalette::Base);
        const QColor hint = over(ground, palette.color(group, QPalette::PlaceholderText));
        if (std::abs(hint.lightnessF() - ground.lightnessF()) >= leastDistance)
            continue;
        QColor readable = palette.color(group, QPalette::Text);
        readable.setAlphaF(seenThrough);
        palette.setColor(group, QPalette::PlaceholderText, readable);
    }
    return palette;
}

} // namespace

Texts installTexts(Language language)
{
    Texts texts;
    const auto add = [&texts, language](const char* name, const QStringList& directories) {
        if (auto text = loadTranslation(QLatin1String(name), language, directories)) {
            QCoreApplication::installTranslator(text.get());
            texts.push_back(std::move(text));
        }
    };
    // Without a file the texts of the sources are shown: Qt's English, the terminal's Russian.
    add("qtbase", {QLibraryInfo::path(QLibraryInfo::TranslationsPath)});
    add("vexdesk-qt", translationDirectories()); // what Qt's own translation lacks
    add("vexdesk", translationDirectories());
    return texts;
}

QString terminalVersion()
{
    return QStringLiteral(VEXDESK_VERSION);
}

DeskApplication::DeskApplication(int& argc, char** argv)
    : QApplication(argc, argv)
{
    setApplicationVersion(terminalVersion());
    registerResources();
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/desk/vexdesk-%1.png").arg(size));
    setWindowIcon(icon);
    installEventFilter(new DialogPlacer(this));
    installEventFilter(new ScreenFitter(this));
    installEventFilter(new FileDialogDates(this));
    installEventFilter(new LetterKeys(this));

    mendHints();
    setLanguage(Language::Russian);
}

DeskApplication::~DeskApplication() = default;

void DeskApplication::setLanguage(Language language)
{
    m_language = language;
    m_texts.clear();
    m_texts = installTexts(language);
    QLocale::setDefault(localeOf(language));
}

bool DeskApplication::event(QEvent* event)
{
    const bool isTaken = QApplication::event(event);
    if (event->type() == QEvent::ApplicationPaletteChange)
        mendHints();
    return isTaken;
}

void DeskApplication::mendHints()
{
    const QPalette mended = withReadableHints(palette());
    if (mended != palette())
        setPalette(mended);
}

bool DeskApplication::notify(QObject* receiver, QEvent* event)
{
    std::exception_ptr error;
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        error = std::current_exception();
    }
    reportException(error);
    return true;
}

} // namespace vexdesk
