// SPDX-License-Identifier: MIT
// The windows of the terminal and of the history plug-in on a screen of 512x300, which is what a
// small screen has left at a scale factor of 2: nothing in them is cut, and all of it is reached.
#include "desk/commandline.h"
#include "desk/datadirectory.h"
#include "desk/deskapplication.h"
#include "desk/mainwindow.h"
#include "desk/terminal.h"
#include "support/child.h"
#include "support/filetree.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"
#include "support/userhands.h"
#include "support/wizardchoices.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QWizard>

#include <memory>

using testsupport::ModalSteps;

namespace {

bool isPartOfAnother(const QWidget* widget)
{
    // What is in the title of a dock.
    if (widget->objectName().startsWith(QLatin1String("qt_dockwidget_")))
        return true;
    for (const QWidget* at = widget->parentWidget(); at && !at->isWindow(); at = at->parentWidget())
        if (qobject_cast<const QAbstractItemView*>(at) || qobject_cast<const QComboBox*>(at) ||
            qobject_cast<const QAbstractSpinBox*>(at) || qobject_cast<const QLineEdit*>(at))
            return true;
    return false;
}

/// What the user reads or uses in the window, and not the parts of which Qt makes it.
QList<QWidget*> shownWidgets(const QWidget* window)
{
    QList<QWidget*> shown;
    const QList<QWidget*> all = window->findChildren<QWidget*>();
    for (QWidget* const widget : all) {
        const bool isOfUse =
            qobject_cast<QLabel*>(widget) || qobject_cast<QAbstractButton*>(widget) ||
            qobject_cast<QLineEdit*>(widget) || qobject_cast<QComboBox*>(widget) ||
            qobject_cast<QAbstractSpinBox*>(widget) || qobject_cast<QAbstractItemView*>(widget);
        if (isOfUse && widget->isVisible() && widget->window() == window &&
            !isPartOfAnother(widget))
            shown.append(widget);
    }
    return shown;
}

QString nameOf(const QWidget* widget)
{
    return QStringLiteral("%1 %2 %3")
        .arg(QLatin1String(widget->metaObject()->className()), widget->objectName(),
             widget->property("text").toString());
}

/// As a layout takes it.
QSize leastSize(const QWidget& widget)
{
    const QSize hint = widget.minimumSizeHint().boundedTo(widget.maximumSize());
    const QSize own = widget.minimumSize();
    return {own.width() > 0 ? own.width() : hint.width(),
            own.height() > 0 ? own.height() : hint.height()};
}

/// Whether as much of the span as there is room for lies in a room of this length.
bool isInSight(int from, int length, int room)
{
    return from >= 0 && (length >= room || from + length <= room);
}

/// Null when the window is on the screen and everything in it can be read and used, otherwise what
/// cannot.
QString complaint(QWidget* window)
{
    QCoreApplication::processEvents(); // what showing it has brought about
    if (!QTest::qWaitFor([window] {
            return window->screen()->availableGeometry().contains(window->frameGeometry());
        }))
        return QStringLiteral("the window is not on the screen");
    const QList<QWidget*> widgets = shownWidgets(window);
    for (QWidget* const widget : widgets) {
        const QSize least = leastSize(*widget);
        if (least.width() > widget->width() || least.height() > widget->height())
            return QStringLiteral("cut: ") + nameOf(widget);
        if (!widget->isEnabled() || !(widget->focusPolicy() & Qt::TabFocus))
            continue;
        widget->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        const QPoint place = widget->mapTo(window, QPoint());
        if (!isInSight(place.x(), widget->width(), window->width()) ||
            !isInSight(place.y(), widget->height(), window->height()))
            return QStringLiteral("out of reach: ") + nameOf(widget);
    }
    return widgets.isEmpty() ? QStringLiteral("the window is empty") : QString();
}

} // namespace

class TestSmallScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theTerminalsWindowFits();
    void importCanBeUsed();
    void exportCanBeUsed();
    void dialogsCanBeUsed_data();
    void dialogsCanBeUsed();

private:
    static void trigger(const char* command)
    {
        ActionManager::instance()->action(command)->trigger();
    }

    QDir m_user;
    std::unique_ptr<vexdesk::DataDirectory> m_data;
    std::unique_ptr<vexdesk::Terminal> m_terminal;
};

void TestSmallScreen::init()
{
    testsupport::failOnStrayWarnings();
    QCOMPARE(QGuiApplication::primaryScreen()->size(), QSize(512, 300));
    m_user = QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/user"));
    cleanup(); // of a test that failed before it began
    m_data = std::make_unique<vexdesk::DataDirectory>();
    vexdesk::CommandLine commandLine;
    commandLine.pluginDirectories.append(QFileInfo(QStringLiteral(TADATAMANAGER_FILE)).path());
    m_terminal = std::make_unique<vexdesk::Terminal>(*static_cast<vexdesk::DeskApplication*>(qApp),
                                                     *m_data, commandLine);
    m_terminal->window().show();
    QVERIFY(QTest::qWaitForWindowExposed(&m_terminal->window()));
}

void TestSmallScreen::cleanup()
{
    if (m_terminal)
        m_terminal->end();
    m_terminal.reset();
    m_data.reset();
    m_user.removeRecursively();
}

void TestSmallScreen::theTerminalsWindowFits()
{
    QCOMPARE(complaint(&m_terminal->window()), QString());
}

void TestSmallScreen::importCanBeUsed()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("bars.csv"));
    testsupport::writeFile(path, "20240115;100100;1.00;1.00;1.00;1.00\n");
    ModalSteps steps;
    QStringList complaints;
    steps.on<QFileDialog>([&](QFileDialog* dialog) {
        complaints.append(complaint(dialog));
        testsupport::child<QLineEdit>(dialog, "fileNameEdit")->setText(path);
        testsupport::click(
            testsupport::child<QDialogButtonBox>(dialog)->button(QDialogButtonBox::Open));
    });
    steps.on<QWizard>([&](QWizard* wizard) {
        const testsupport::ImportChoices choices;
        complaints.append(complaint(wizard));
        testsupport::fillSeriesPage(wizard, choices);
        testsupport::click(wizard->button(QWizard::NextButton));
        testsupport::fillFormatPage(wizard, choices);
        complaints.append(complaint(wizard));
        testsupport::click(wizard->button(QWizard::NextButton));
        complaints.append(complaint(wizard));
        testsupport::click(wizard->button(QWizard::CancelButton));
    });
    trigger("1_Import");
    QCOMPARE(steps.complaint(), QString());
    QCOMPARE(complaints, QStringList(4, QString()));
}

void TestSmallScreen::exportCanBeUsed()
{
    testsupport::writeFile(m_user.filePath(QStringLiteral("tadata/NORD/MAIN/GRAN/20240115_60.iss")),
                           "100100;1.00;1.00;1.00;1.00;1;0.00;0\n");
    ModalSteps steps;
    QStringList complaints;
    steps.on<QWizard>([&](QWizard* wizard) {
        complaints.append(complaint(wizard));
        for (const char* box : {"stock", "board", "security"})
            testsupport::choose(testsupport::child<QComboBox>(wizard, box), 0);
        testsupport::child<QLineEdit>(wizard, "outputFile")->setText(QStringLiteral("x"));
        testsupport::click(wizard->button(QWizard::NextButton));
        complaints.append(complaint(wizard));
        testsupport::click(wizard->button(QWizard::CancelButton));
    });
    trigger("2_Export");
    QCOMPARE(steps.complaint(), QString());
    QCOMPARE(complaints, QStringList(2, QString()));
}

void TestSmallScreen::dialogsCanBeUsed_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("editor") << QByteArray("3_Edit");
    QTest::newRow("options") << QByteArray("Desk.Options");
    QTest::newRow("plug-ins") << QByteArray("Desk.Plugins");
}

void TestSmallScreen::dialogsCanBeUsed()
{
    QFETCH(const QByteArray, command);
    ModalSteps steps;
    QString found = QStringLiteral("not looked at");
    steps.on<QDialog>([&found](QDialog* dialog) {
        found = complaint(dialog);
        dialog->reject();
    });
    trigger(command.constData());
    QCOMPARE(steps.complaint(), QString());
    QCOMPARE(found, QString());
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    vexdesk::setApplicationIdentity();
    TestSmallScreen test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_smallscreen.moc"
