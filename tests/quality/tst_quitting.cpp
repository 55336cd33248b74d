// SPDX-License-Identifier: MIT
// Ctrl+Q in the terminal while the safe import writes into the store: it is taken back, and only
// then the terminal goes, by itself.

#include "desk/mainwindow.h"
#include "support/child.h"
#include "support/eventually.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/hold.h"
#include "support/loadedplugin.h"
#include "support/strictlog.h"
#include "support/terminal.h"
#include "support/userhands.h"

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <memory>

using testsupport::child;
using testsupport::choose;
using testsupport::click;
using testsupport::readTree;
using Tree = QMap<QString, QByteArray>;

namespace {

// As the disk writes the file of the second day, however it does.
const QList<testsupport::SystemCall> writing{testsupport::SystemCall::Write,
                                             testsupport::SystemCall::Rename};
const QString secondDay = QStringLiteral("20240116_60.iss");

// Two days, five minutes each.
QByteArray barFile(const char* price)
{
    QByteArray text = "<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>\n";
    for (const char* day : {"20240115", "20240116"}) {
        for (int minute = 1; minute <= 5; ++minute)
            text += QByteArray(day) + ",100" + QByteArray::number(minute) + "00," + price + ',' +
                    price + ',' + price + ',' + price + ",10\n";
    }
    return text;
}

QWidget* safeImport()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        if (window->isVisible() && window->inherits("SafeImportWindow"))
            return window;
    }
    return nullptr;
}

} // namespace

class TestQuitting final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void anImportIsTakenBackFirst();
    void whoGoesOnWorkingStays();

private:
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }
    QDir store() const
    {
        return QDir(testsupport::userFolder().filePath(QStringLiteral("tadata")));
    }
    QPushButton* button(const char* name) const { return child<QPushButton>(safeImport(), name); }
    QString message() const { return child<QLabel>(safeImport(), "message")->text(); }
    /// Drops a file on the terminal and chooses its series.
    void open(const char* name);
    void import();
    void quitWhileWriting(const testsupport::Hold& hold);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<testsupport::Terminal> m_terminal;
};

void TestQuitting::init()
{
    testsupport::failOnStrayWarnings();
    testsupport::newUserFolder();
    m_dir = std::make_unique<QTemporaryDir>();
    testsupport::writeFile(path("first.csv"), barFile("100.25"));
    testsupport::writeFile(path("second.csv"), barFile("200.50"));
    m_terminal = std::make_unique<testsupport::Terminal>(
        vexdesk::Language::Russian,
        QStringList{QFileInfo(testsupport::qualityPluginFile()).path()});
    testsupport::verifyLoaded(m_terminal->loader());
    open("first.csv");
    import();
    EVENTUALLY(message().contains(QStringLiteral("Импорт закончен")));
    open("second.csv");
}

void TestQuitting::cleanup()
{
    m_terminal.reset();
    m_dir.reset();
    QVERIFY(testsupport::userFolder().removeRecursively());
}

void TestQuitting::open(const char* name)
{
    QVERIFY(testsupport::dropFiles(m_terminal->window(), {path(name)}));
    QVERIFY(safeImport());
    choose(child<QComboBox>(safeImport(), "stock"), QStringLiteral("NORD —"));
    choose(child<QComboBox>(safeImport(), "board"), QStringLiteral("MAIN"));
    choose(child<QComboBox>(safeImport(), "security"), QStringLiteral("VEGA"));
}

void TestQuitting::import()
{
    EVENTUALLY(button("import")->isEnabled());
    click(button("import"));
}

void TestQuitting::quitWhileWriting(const testsupport::Hold& hold)
{
    import();
    EVENTUALLY(hold.isReached());
    hands::keyClick(m_terminal->window(), Qt::Key_Q, Qt::ControlModifier);
}

void TestQuitting::anImportIsTakenBackFirst()
{
    const Tree before = readTree(store());
    testsupport::Hold hold(writing, secondDay);
    quitWhileWriting(hold);
    QVERIFY(m_terminal->window()->isVisible());
    QVERIFY(safeImport());
    hold.letGo();
    EVENTUALLY(!m_terminal->window()->isVisible());
    QVERIFY(!safeImport());
    QCOMPARE(readTree(store()), before);
}

void TestQuitting::whoGoesOnWorkingStays()
{
    const Tree before = readTree(store());
    testsupport::Hold hold(writing, secondDay);
    quitWhileWriting(hold);
    hands::mouseClick(m_terminal->window(), Qt::LeftButton);
    hold.letGo();
    EVENTUALLY(!safeImport());
    QCoreApplication::processEvents();
    QVERIFY(m_terminal->window()->isVisible());
    QCOMPARE(readTree(store()), before);
}

QTEST_MAIN(TestQuitting)
#include "tst_quitting.moc"
