// SPDX-License-Identifier: MIT
#include "desk/deskapplication.h"

#include "desk/dialogplacer.h"
#include "desk/errorreport.h"
#include "desk/filedialogdates.h"
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

DeskApplication::DeskApplication(int& argc, char** argv)
    : QApplication(argc, argv)
{
    setApplicationVersion(QStringLiteral(VEXDESK_VERSION));
    registerResources();
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/desk/vexdesk-%1.png").arg(size));
    setWindowIcon(icon);
    installEventFilter(new DialogPlacer(this));
    installEventFilter(new ScreenFitter(this));
    installEventFilter(new FileDialogDates(this));

    mendHints();
    setLanguage(Language::Russian);
}

DeskApplication::~DeskApplication() = default;

void DeskApplication::setLanguage(Language language)
{
    m_language = language;
    m_translations.clear();
    // Without a file the texts of the sources are shown: Qt's English, the terminal's Russian.
    addTranslation(QStringLiteral("qtbase"), {QLibraryInfo::path(QLibraryInfo::TranslationsPath)});
    // What Qt's own translation lacks.
    addTranslation(QStringLiteral("vexdesk-qt"), translationDirectories());
    addTranslation(QStringLiteral("vexdesk"), translationDirectories());
    QLocale::setDefault(localeOf(language));
}

void DeskApplication::addTranslation(const QString& name, const QStringList& directories)
{
    if (auto translation = loadTranslation(name, m_language, directories)) {
        installTranslator(translation.get());
        m_translations.push_back(std::move(translation));
    }
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
