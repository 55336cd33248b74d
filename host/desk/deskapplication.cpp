#include "desk/deskapplication.h"

#include "desk/errorreport.h"

#include <QtCore/QLibraryInfo>
#include <QtCore/QTranslator>
#include <QtGui/QIcon>

// The resources are in a static library: nothing but this call makes the linker take them.
// The macro declares a function and wants to stand outside every namespace.
static void registerResources()
{
    Q_INIT_RESOURCE(desk);
}

namespace vexdesk {

DeskApplication::DeskApplication(int& argc, char** argv)
    : QApplication(argc, argv)
{
    setApplicationVersion(QStringLiteral(VEXDESK_VERSION));
    registerResources();
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/desk/vexdesk-%1.png").arg(size));
    setWindowIcon(icon);

    auto* const translator = new QTranslator(this);
    if (translator->load(QStringLiteral("qtbase_ru"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        installTranslator(translator);
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
