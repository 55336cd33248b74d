// SPDX-License-Identifier: MIT
// The window of restore points, by mouse and keys.

#include "changedstore.h"
#include "pointfilesmodel.h"
#include "pointsmodel.h"
#include "pointswindow.h"

#include "support/child.h"
#include "support/eventually.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/hold.h"
#include "support/strictlog.h"
#include "support/textcheck.h"
#include "support/userhands.h"

#include <QtCore/QPointer>
#include <QtCore/QSemaphore>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTreeView>

#include <atomic>
#include <memory>
#include <thread>

using testsupport::changeStore;
using testsupport::child;
using testsupport::click;

namespace {

const QString monday = QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss");
const QString tuesday = QStringLiteral("NORD/MAIN/VEGA/20240116_60.iss");

// Not the button that Return would press.
void clickYes(QMessageBox* box)
{
    const QList<QAbstractButton*> buttons = box->buttons();
    for (QAbstractButton* const one : buttons) {
        if (box->buttonRole(one) == QMessageBox::DestructiveRole) {
            click(one);
            return;
        }
    }
}

} // namespace

class TestPointsWindow final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void saysThatThereIsNothing();
    void showsWhatUndoingWouldDo();
    void putsTheChosenPointBack();
    void putsBackByKeys();
    void asksBeforeItReplacesWhatHasChanged();
    void leavesItWhenTheUserSaysNo();
    void saysWhatWasInterrupted();
    void asksBeforeItPutsBackWhatWasInterrupted();
    void seesACommandDie();
    void saysWhoHoldsASeries();
    void saysThatTheDiskIsFull();
    void saysWhatCannotBeRead();
    void freesSpace();
    void followsOtherPrograms();
    void keepsTheChosenPoint();
    void doesNotCloseWhileItIsAtWork();
    void goesWhileItReads();
    void goesWithoutWaitingForWhatItLooksAt();
    void closesByEscape();
    void showsItsTextsWhole_data();
    void showsItsTextsWhole();

private:
    QDir root() const { return QDir(m_dir->filePath(QStringLiteral("store"))); }
    void open(std::chrono::milliseconds wait = std::chrono::milliseconds(0));
    QTreeView* view(const char* name) const { return child<QTreeView>(m_window.get(), name); }
    QString label(const char* name) const { return child<QLabel>(m_window.get(), name)->text(); }
    QPushButton* button(const char* name) const { return child<QPushButton>(m_window.get(), name); }
    int rows(const char* name) const { return view(name)->model()->rowCount(); }
    bool isChecked() const { return label("effect").startsWith(QStringLiteral("Возврат")); }
    QByteArray stored(const QString& path) const
    {
        return testsupport::readFile(root().filePath(path));
    }
    template <typename Window>
    Window* dialog() const
    {
        return qobject_cast<Window*>(QApplication::activeModalWidget());
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<PointsWindow> m_window;
};

void TestPointsWindow::init()
{
    testsupport::failOnStrayWarnings();
    testsupport::userFolder().removeRecursively();
    m_dir = std::make_unique<QTemporaryDir>();
    testsupport::writeFile(root().filePath(monday), "old");
}

void TestPointsWindow::cleanup()
{
    m_window.reset();
    m_dir.reset();
    testsupport::userFolder().removeRecursively();
}

void TestPointsWindow::open(std::chrono::milliseconds wait)
{
    m_window = std::make_unique<PointsWindow>(root(), wait);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    EVENTUALLY(!label("summary").isEmpty());
}

void TestPointsWindow::saysThatThereIsNothing()
{
    open();
    QVERIFY(label("summary").startsWith(QStringLiteral("Точек восстановления нет")));
    QVERIFY(!button("putBack")->isEnabled());
    QVERIFY(!button("freeSpace")->isEnabled());
    // To look makes nothing.
    QVERIFY(!QFileInfo::exists(m_dir->filePath(QStringLiteral("store-restore"))));
}

void TestPointsWindow::showsWhatUndoingWouldDo()
{
    changeStore(root(), QStringLiteral("import"), {{monday, "new"}, {tuesday, "made"}},
                {QStringLiteral("/somewhere/bars.csv")});
    open();
    QCOMPARE(rows("points"), 1);
    EVENTUALLY(isChecked());
    QCOMPARE(label("effect"),
             QStringLiteral("Возврат вернёт прежних файлов: 1, удалит созданных: 1."));
    const QAbstractItemModel* const files = view("files")->model();
    QCOMPARE(files->rowCount(), 2);
    QCOMPARE(files->index(0, PointFilesModel::Since).data().toString(), QStringLiteral("такой же"));
    QCOMPARE(files->index(1, PointFilesModel::WouldBeDone).data().toString(),
             QStringLiteral("будет удалён"));
    QVERIFY(button("putBack")->isEnabled());
}

void TestPointsWindow::putsTheChosenPointBack()
{
    changeStore(root(), QStringLiteral("import"), {{monday, "first"}});
    changeStore(root(), QStringLiteral("edit"), {{tuesday, "made"}});
    open();
    QTreeView* const points = view("points");
    // The older one, by the mouse.
    const QRect row = points->visualRect(points->model()->index(1, 0));
    hands::mouseClick(points->viewport(), Qt::LeftButton, {}, row.center());
    QCOMPARE(points->currentIndex().row(), 1);
    const QSignalSpy changes(m_window.get(), &PointsWindow::storeChanged);
    click(button("putBack"));
    EVENTUALLY_EQUAL(stored(monday), QByteArray("old"));
    EVENTUALLY_EQUAL(label("status"),
                     QStringLiteral("Возвращено файлов: 1, удалено: 0. Чтобы отменить это, верните "
                                    "новую точку."));
    QCOMPARE(changes.size(), 1);
    EVENTUALLY_EQUAL(rows("points"), 3);
    QCOMPARE(stored(tuesday), QByteArray("made"));
}

void TestPointsWindow::putsBackByKeys()
{
    changeStore(root(), QStringLiteral("import"), {{monday, "first"}});
    open();
    EVENTUALLY_EQUAL(rows("points"), 1);
    QCOMPARE(m_window->focusWidget(), view("points"));
    // Return in a list does nothing that cannot be seen.
    hands::keyClick(view("points"), Qt::Key_Return);
    QVERIFY(m_window->isVisible());
    const QList<QWidget*> order = testsupport::tabOrder(m_window.get());
    QVERIFY(order.contains(view("files")));
    QVERIFY(order.contains(button("putBack")));
    button("putBack")->setFocus();
    hands::keyClick(button("putBack"), Qt::Key_Return);
    EVENTUALLY_EQUAL(stored(monday), QByteArray("old"));
}

void TestPointsWindow::asksBeforeItReplacesWhatHasChanged()
{
    changeStore(root(), QStringLiteral("import"), {{monday, "first"}});
    testsupport::writeFile(root().filePath(monday), "by hand");
    open();
    EVENTUALLY(isChecked());
    QVERIFY2(label("effect").contains(QStringLiteral("изменились файлы: 1")),
             qPrintable(label("effect")));
    click(button("putBack"));
    EVENTUALLY(dialog<QMessageBox>());
    auto* const box = dialog<QMessageBox>();
    QVERIFY2(box->text().contains(root().filePath(monday)), qPrintable(box->text()));
    QCOMPARE(stored(monday), QByteArray("by hand"));
    clickYes(box);
    EVENTUALLY_EQUAL(stored(monday), QByteArray("old"));
}

void TestPointsWindow::leavesItWhenTheUserSaysNo()
{
    changeStore(root(), QStringLiteral("import"), {{monday, "first"}});
    testsupport::writeFile(root().filePath(monday), "by hand");
    open();
    EVENTUALLY_EQUAL(rows("points"), 1);
    click(button("putBack"));
    EVENTUALLY(dialog<QMessageBox>());
    hands::keyClick(dialog<QMessageBox>(), Qt::Key_Return);
    EVENTUALLY(!dialog<QMessageBox>());
    EVENTUALLY(button("putBack")->isEnabled());
    QCOMPARE(stored(monday), QByteArray("by hand"));
    QVERIFY(label("status").contains(QStringLiteral("Ничего не тронуто")));
}

void TestPointsWindow::saysWhatWasInterrupted()
{
    testsupport::interruptCommand(root(), QStringLiteral("import"), {{monday, "half"}});
    changeStore(root(), QStringLiteral("edit"), {{tuesday, "made"}});
    open();
    QVERIFY2(label("summary").contains(QStringLiteral("Прервано на середине команд: 1.")),
             qPrintable(label("summary")));
    // It is not the newest one, and chosen all the same.
    QCOMPARE(view("points")->currentIndex().row(), 1);
    EVENTUALLY(isChecked());
    QVERIFY2(label("effect").contains(QStringLiteral("Работа была прервана")),
             qPrintable(label("effect")));
}

void TestPointsWindow::asksBeforeItPutsBackWhatWasInterrupted()
{
    testsupport::interruptCommand(root(), QStringLiteral("import"),
                                  {{monday, "half"}, {tuesday, "made"}});
    open();
    EVENTUALLY(isChecked());
    click(button("putBack"));
    EVENTUALLY(dialog<QMessageBox>());
    QVERIFY2(dialog<QMessageBox>()->text().contains(
                 QStringLiteral("Возврат вернёт прежних файлов: 1 и удалит созданных: 1")),
             qPrintable(dialog<QMessageBox>()->text()));
    hands::keyClick(dialog<QMessageBox>(), Qt::Key_Return); // no
    EVENTUALLY(!dialog<QMessageBox>());
    QCOMPARE(stored(monday), QByteArray("half"));
    QVERIFY(button("putBack")->isEnabled());
    click(button("putBack"));
    EVENTUALLY(dialog<QMessageBox>());
    clickYes(dialog<QMessageBox>());
    EVENTUALLY_EQUAL(stored(monday), QByteArray("old"));
    EVENTUALLY(!label("summary").contains(QStringLiteral("Прервано")));
    // Nothing more is offered, until the undo is undone.
    const QModelIndex interrupted = view("points")->model()->index(1, PointsModel::By);
    EVENTUALLY_EQUAL(rows("points"), 2);
    QVERIFY(interrupted.data().toString().contains(QStringLiteral("возвращено")));
    view("points")->setCurrentIndex(view("points")->model()->index(1, 0));
    EVENTUALLY2(label("effect").contains(QStringLiteral("возвращать нечего")),
                qPrintable(label("effect")));
    QVERIFY(!button("putBack")->isEnabled());
    view("points")->setCurrentIndex(view("points")->model()->index(0, 0));
    EVENTUALLY(button("putBack")->isEnabled());
    click(button("putBack"));
    EVENTUALLY(label("summary").contains(QStringLiteral("Прервано")));
}

void TestPointsWindow::seesACommandDie()
{
    auto command = testsupport::beginCommand(root(), QStringLiteral("import"), {{monday, "half"}});
    open();
    const auto maker = [this] {
        return view("points")->model()->index(0, PointsModel::By).data().toString();
    };
    EVENTUALLY_EQUAL(maker(), QStringLiteral("импорт (идёт)"));
    QVERIFY(!label("summary").contains(QStringLiteral("Прервано")));
    command.reset();
    EVENTUALLY_EQUAL(maker(), QStringLiteral("импорт (прервано)"));
    QVERIFY(label("summary").contains(QStringLiteral("Прервано")));
}

void TestPointsWindow::saysWhoHoldsASeries()
{
    changeStore(root(), QStringLiteral("import"), {{monday, "first"}});
    open();
    EVENTUALLY_EQUAL(rows("points"), 1);
    vexdesk::SeriesLocks locks;
    QVERIFY(locks.take(*vexdesk::restorePlace(root()), {QStringLiteral("NORD/MAIN/ALFA")},
                       std::chrono::seconds(0)));
    click(button("putBack"));
    EVENTUALLY2(label("status").contains(QStringLiteral("ALFA.lock")), qPrintable(label("status")));
    QVERIFY(button("putBack")->isEnabled());
    QCOMPARE(stored(monday), QByteArray("first"));
    locks.release();
    click(button("putBack"));
    EVENTUALLY_EQUAL(stored(monday), QByteArray("old"));
}

void TestPointsWindow::saysThatTheDiskIsFull()
{
    changeStore(root(), QStringLiteral("import"), {{monday, "first"}, {tuesday, "made"}});
    open();
    EVENTUALLY(isChecked());
    {
        const testsupport::Fault full(testsupport::SystemCall::Write,
                                      QStringLiteral("20240115_60.iss"), ENOSPC);
        click(button("putBack"));
        EVENTUALLY(!label("status").isEmpty() && button("putBack")->isEnabled());
        QVERIFY(full.failed() > 0);
    }
    QVERIFY2(label("status").startsWith(QStringLiteral("Точка не возвращена.")),
             qPrintable(label("status")));
    QVERIFY2(label("status").contains(QStringLiteral("20240115_60.iss")),
             qPrintable(label("status")));
    QCOMPARE(stored(monday), QByteArray("first"));
    QCOMPARE(stored(tuesday), QByteArray("made"));
    click(button("putBack"));
    EVENTUALLY_EQUAL(stored(monday), QByteArray("old"));
}

void TestPointsWindow::saysWhatCannotBeRead()
{
    const QString id = changeStore(root(), QStringLiteral("import"), {{monday, "first"}});
    const QString copy = m_dir->filePath(QStringLiteral("store-restore/%1/%2").arg(id, monday));
    QVERIFY(QFile::remove(copy));
    open();
    EVENTUALLY2(label("effect").contains(copy), qPrintable(label("effect")));
    click(button("putBack"));
    EVENTUALLY2(label("status").contains(copy), qPrintable(label("status")));
    QCOMPARE(stored(monday), QByteArray("first"));
    testsupport::writeFile(m_dir->filePath(QStringLiteral("store-restore/%1/point.json").arg(id)),
                           "{");
    changeStore(root(), QStringLiteral("edit"), {{tuesday, "made"}});
    EVENTUALLY2(label("summary").contains(id), qPrintable(label("summary")));
    // The window may look between the two.
    EVENTUALLY_EQUAL(rows("points"), 1);
}

void TestPointsWindow::freesSpace()
{
    for (const char* const content : {"1", "2", "3", "4"})
        changeStore(root(), QStringLiteral("edit"), {{monday, content}});
    open();
    EVENTUALLY_EQUAL(rows("points"), 4);
    click(button("freeSpace"));
    auto* const first = dialog<QDialog>();
    QVERIFY(first);
    auto* const keep = child<QSpinBox>(first, "keep");
    auto* const remove = child<QPushButton>(first, "remove");
    QVERIFY(!remove->isEnabled());
    keep->setFocus();
    keep->selectAll();
    hands::keyClicks(keep, QStringLiteral("2"));
    QVERIFY(remove->isEnabled());
    QVERIFY(child<QLabel>(first, "preview")
                ->text()
                .startsWith(QStringLiteral("Будет удалено точек: 2")));
    hands::keyClick(first, Qt::Key_Escape);
    EVENTUALLY(!dialog<QDialog>());
    QCOMPARE(rows("points"), 4);
    click(button("freeSpace"));
    auto* const again = dialog<QDialog>();
    child<QSpinBox>(again, "keep")->setValue(2);
    click(child<QPushButton>(again, "remove"));
    EVENTUALLY_EQUAL(rows("points"), 2);
    QCOMPARE(label("status"), QStringLiteral("Старые точки удалены."));
}

void TestPointsWindow::followsOtherPrograms()
{
    open();
    QCOMPARE(rows("points"), 0);
    changeStore(root(), QStringLiteral("import"), {{monday, "first"}});
    EVENTUALLY_EQUAL(rows("points"), 1);
    changeStore(root(), QStringLiteral("import"), {{monday, "second"}});
    EVENTUALLY_EQUAL(rows("points"), 2);
}

void TestPointsWindow::keepsTheChosenPoint()
{
    changeStore(root(), QStringLiteral("import"), {{monday, "first"}});
    const QString older = changeStore(root(), QStringLiteral("edit"), {{monday, "second"}});
    open();
    EVENTUALLY_EQUAL(rows("points"), 2);
    hands::keyClick(view("points"), Qt::Key_Down);
    QCOMPARE(view("points")->currentIndex().row(), 1);
    changeStore(root(), QStringLiteral("copy"), {{tuesday, "made"}});
    EVENTUALLY_EQUAL(rows("points"), 3);
    QCOMPARE(view("points")->currentIndex().row(), 2);
}

void TestPointsWindow::doesNotCloseWhileItIsAtWork()
{
    changeStore(root(), QStringLiteral("import"), {{monday, "first"}});
    open(std::chrono::minutes(1));
    EVENTUALLY_EQUAL(rows("points"), 1);
    auto locks = std::make_unique<vexdesk::SeriesLocks>();
    QVERIFY(locks->take(*vexdesk::restorePlace(root()), {QStringLiteral("NORD/MAIN/ALFA")},
                        std::chrono::seconds(0)));
    click(button("putBack"));
    QVERIFY(!button("putBack")->isEnabled());
    hands::keyClick(m_window.get(), Qt::Key_Escape);
    QVERIFY(m_window->isVisible());
    QVERIFY(label("status").startsWith(QStringLiteral("Подождите")));
    locks.reset();
    EVENTUALLY_EQUAL(stored(monday), QByteArray("old"));
    EVENTUALLY(button("putBack")->isEnabled());
    hands::keyClick(m_window.get(), Qt::Key_Escape);
    QVERIFY(!m_window->isVisible());
}

void TestPointsWindow::goesWhileItReads()
{
    changeStore(root(), QStringLiteral("import"), {{monday, "first"}});
    // Nothing may come to a window that is no more.
    for (int i = 0; i < 20; ++i) {
        PointsWindow window(root(), std::chrono::milliseconds(0));
        window.show();
    }
    QCoreApplication::processEvents();
}

void TestPointsWindow::goesWithoutWaitingForWhatItLooksAt()
{
    changeStore(root(), QStringLiteral("import"), {{monday, "first"}});
    // A copy that is read to see whether it is whole.
    testsupport::Hold hold({testsupport::SystemCall::Open}, QStringLiteral("-1/") + monday);
    open();
    EVENTUALLY(hold.isReached());
    QSemaphore gone;
    std::atomic<bool> wasHeld = false;
    std::thread rescuer([&] {
        wasHeld = !gone.tryAcquire(1, testsupport::patience);
        hold.letGo();
    });
    m_window.reset();
    gone.release();
    rescuer.join();
    QVERIFY(!wasHeld);
}

void TestPointsWindow::closesByEscape()
{
    open();
    hands::keyClick(m_window.get(), Qt::Key_Escape);
    QVERIFY(!m_window->isVisible());
}

void TestPointsWindow::showsItsTextsWhole_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("usual") << QSize(760, 520);
    QTest::newRow("small screen") << QSize(640, 440);
}

void TestPointsWindow::showsItsTextsWhole()
{
    QFETCH(QSize, size);
    changeStore(root(), QStringLiteral("import"), {{monday, "first"}, {tuesday, "made"}},
                {QStringLiteral("/somewhere/bars.csv")});
    changeStore(root(), QStringLiteral("undo"), {{monday, "second"}});
    open();
    m_window->resize(size);
    EVENTUALLY(isChecked());
    QCoreApplication::sendPostedEvents();
    QCOMPARE(m_window->size(), size);
    const QStringList cut = testsupport::cutTexts(m_window.get());
    QVERIFY2(cut.isEmpty(), qPrintable(cut.join(u'\n')));
    if (qEnvironmentVariableIsSet("TADATA_PICTURES"))
        m_window->grab().save(qEnvironmentVariable("TADATA_PICTURES") +
                              QStringLiteral("/points-%1.png").arg(size.width()));
}

QTEST_MAIN(TestPointsWindow)
#include "tst_pointswindow.moc"
