// SPDX-License-Identifier: MIT
#include "desk/deskapplication.h"
#include "desk/pluginmodel.h"
#include "desk/pluginsdialog.h"
#include "support/child.h"
#include "support/hands.h"
#include "support/strictlog.h"

#include <QtGui/QClipboard>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

using testsupport::child;
using vexdesk::PluginModel;
using vexdesk::PluginRecord;
using vexdesk::PluginsDialog;

namespace {

QList<PluginRecord> someRecords()
{
    return {{QStringLiteral("/opt/terminal/plugins/history.so"), PluginRecord::State::Loaded,
             QStringLiteral("HIST"), QStringLiteral("История котировок"),
             QStringLiteral("Мастерская"), QStringLiteral("7.6"),
             QStringLiteral("Импорт, экспорт и правка истории"), QString()},
            {QStringLiteral("/opt/terminal/plugins/old.so"), PluginRecord::State::Refused,
             QString(), QString(), QString(), QString(), QString(),
             QStringLiteral("Модуль собран для Qt 5.15, а терминал работает с Qt 6.4.2.")}};
}

} // namespace

class TestPluginsDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void theModelHoldsWhatIsKnown();
    void theModelOfNothing();
    void showsTheSelectedPlugin();
    void whatQtSaysIsALineOfItsOwn();
    void clickingARowSelectsIt();
    void cutsNoText();
    void needsNoScrollingSideways();
    void summarises();
    void namesDirectoriesWhenThereIsNothing();
    void detailsCanBeCopied();
    void tabGoesThroughTheWindow();
    void theButtonCloses();
    void escapeCloses_data();
    void escapeCloses();

private:
    static void show(PluginsDialog* dialog)
    {
        dialog->show();
        dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog));
    }
};

void TestPluginsDialog::theModelHoldsWhatIsKnown()
{
    PluginModel model(someRecords());
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.columnCount(), int(PluginModel::ColumnCount));
    QStringList headers;
    QStringList first;
    QStringList second;
    for (int column = 0; column < PluginModel::ColumnCount; ++column) {
        headers.append(model.headerData(column, Qt::Horizontal).toString());
        first.append(model.index(0, column).data().toString());
        second.append(model.index(1, column).data().toString());
        QVERIFY(!headers.constLast().isEmpty());
    }
    QCOMPARE(headers.removeDuplicates(), 0);
    QCOMPARE(first, QStringList({"Загружен", "history.so", "HIST", "История котировок", "7.6",
                                 "Мастерская", "Импорт, экспорт и правка истории", ""}));
    QCOMPARE(second, QStringList({"Отклонён", "old.so", "", "", "", "", "",
                                  "Модуль собран для Qt 5.15, а терминал работает с Qt 6.4.2."}));
    QCOMPARE(model.index(1, PluginModel::FileColumn).data(Qt::ToolTipRole).toString(),
             QDir::toNativeSeparators(QStringLiteral("/opt/terminal/plugins/old.so")));
    QCOMPARE(model.index(1, PluginModel::ReasonColumn).data(Qt::ToolTipRole).toString(),
             second.constLast());
}

void TestPluginsDialog::theModelOfNothing()
{
    PluginModel model({});
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(model.rowCount(), 0);
}

void TestPluginsDialog::showsTheSelectedPlugin()
{
    PluginsDialog dialog(someRecords(), {});
    show(&dialog);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Модули"));
    const auto* const details = child<QPlainTextEdit>(&dialog, "details");
    QCOMPARE(details->toPlainText(),
             QStringLiteral("Файл: %1\nСостояние: Загружен\nКод: HIST\n"
                            "Название: История котировок\nВерсия: 7.6\nАвтор: Мастерская\n"
                            "Описание: Импорт, экспорт и правка истории")
                 .arg(QDir::toNativeSeparators(someRecords().at(0).path)));
    hands::keyClick(child<QTableView>(&dialog, "table"), Qt::Key_Down);
    QCOMPARE(
        details->toPlainText(),
        QStringLiteral("Файл: %1\nСостояние: Отклонён\nПричина отказа: %2")
            .arg(QDir::toNativeSeparators(someRecords().at(1).path), someRecords().at(1).reason));
}

void TestPluginsDialog::whatQtSaysIsALineOfItsOwn()
{
    QList<PluginRecord> records = someRecords();
    records[1].details = QStringLiteral("undefined symbol: x");
    PluginsDialog dialog(records, {});
    show(&dialog);
    hands::keyClick(child<QTableView>(&dialog, "table"), Qt::Key_Down);
    QCOMPARE(child<QPlainTextEdit>(&dialog, "details")->toPlainText().section(u'\n', 2),
             QStringLiteral("Причина отказа: %1\nПодробности: undefined symbol: x")
                 .arg(records.at(1).reason));
}

void TestPluginsDialog::clickingARowSelectsIt()
{
    PluginsDialog dialog(someRecords(), {});
    show(&dialog);
    auto* const table = child<QTableView>(&dialog, "table");
    const QRect cell = table->visualRect(table->model()->index(1, PluginModel::FileColumn));
    hands::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
    QVERIFY(child<QPlainTextEdit>(&dialog, "details")
                ->toPlainText()
                .contains(someRecords().at(1).reason));
    QCOMPARE(table->selectionModel()->selectedRows().size(), 1);
}

void TestPluginsDialog::cutsNoText()
{
    QList<PluginRecord> records = someRecords();
    records[0].description = QString(QStringLiteral("Длинное описание модуля. ")).repeated(10);
    records[1].reason = QString(QStringLiteral("Длинная причина отказа. ")).repeated(20);
    PluginsDialog dialog(records, {});
    show(&dialog);
    const auto* const table = child<QTableView>(&dialog, "table");
    const QFontMetrics metrics = table->fontMetrics();
    for (int row = 0; row < table->model()->rowCount(); ++row) {
        for (int column = 0; column < PluginModel::ColumnCount; ++column) {
            const QString text = table->model()->index(row, column).data().toString();
            const bool isWrapped =
                column == PluginModel::DescriptionColumn || column == PluginModel::ReasonColumn;
            const QRect room(0, 0, table->columnWidth(column), isWrapped ? 1000000 : 1);
            const QRect needed = metrics.boundingRect(room, isWrapped ? Qt::TextWordWrap : 0, text);
            QVERIFY2(needed.width() < room.width(), qPrintable(text));
            QVERIFY2(needed.height() <= table->rowHeight(row), qPrintable(text));
        }
    }
    for (int column = 0; column < PluginModel::ColumnCount; ++column)
        QVERIFY(table->columnWidth(column) >= table->horizontalHeader()->sectionSizeHint(column));
}

void TestPluginsDialog::needsNoScrollingSideways()
{
    QList<PluginRecord> records = someRecords();
    records[1].reason = QString(QStringLiteral("Длинная причина отказа. ")).repeated(20);
    PluginsDialog dialog(records, {});
    show(&dialog);
    const auto* const table = child<QTableView>(&dialog, "table");
    QVERIFY(table->horizontalHeader()->length() <= table->viewport()->width());
}

void TestPluginsDialog::summarises()
{
    const PluginsDialog dialog(someRecords(), {});
    QCOMPARE(child<QLabel>(&dialog, "summary")->text(),
             QStringLiteral("Найдено файлов: 2, загружено модулей: 1, отклонено: 1"));
}

void TestPluginsDialog::namesDirectoriesWhenThereIsNothing()
{
    PluginsDialog dialog({}, {QStringLiteral("/opt/a"), QStringLiteral("/opt/b")});
    show(&dialog);
    QCOMPARE(child<QPlainTextEdit>(&dialog, "details")->toPlainText(),
             QStringLiteral("В этих каталогах модулей нет:\n%1\n%2")
                 .arg(QDir::toNativeSeparators(QStringLiteral("/opt/a")),
                      QDir::toNativeSeparators(QStringLiteral("/opt/b"))));
}

void TestPluginsDialog::detailsCanBeCopied()
{
    PluginsDialog dialog(someRecords(), {});
    show(&dialog);
    auto* const details = child<QPlainTextEdit>(&dialog, "details");
    details->setFocus();
    QGuiApplication::clipboard()->clear();
    hands::keySequence(details, QKeySequence(QKeySequence::SelectAll));
    hands::keySequence(details, QKeySequence(QKeySequence::Copy));
    QCOMPARE(QGuiApplication::clipboard()->text(), details->toPlainText());
    // It is there to be read only.
    const QString before = details->toPlainText();
    hands::keyClick(details, Qt::Key_A);
    QCOMPARE(details->toPlainText(), before);
}

void TestPluginsDialog::tabGoesThroughTheWindow()
{
    PluginsDialog dialog(someRecords(), {});
    show(&dialog);
    QCOMPARE(QApplication::focusWidget(), child<QTableView>(&dialog, "table"));
    hands::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), child<QPlainTextEdit>(&dialog, "details"));
    hands::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), child<QPushButton>(&dialog, "closeButton"));
    hands::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), child<QTableView>(&dialog, "table"));
}

void TestPluginsDialog::theButtonCloses()
{
    PluginsDialog dialog(someRecords(), {});
    show(&dialog);
    hands::mouseClick(child<QPushButton>(&dialog, "closeButton"), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
}

void TestPluginsDialog::escapeCloses_data()
{
    QTest::addColumn<QByteArray>("focus");
    QTest::newRow("in the table") << QByteArray("table");
    QTest::newRow("in the details") << QByteArray("details");
    QTest::newRow("on the button") << QByteArray("closeButton");
}

void TestPluginsDialog::escapeCloses()
{
    QFETCH(QByteArray, focus);
    PluginsDialog dialog(someRecords(), {});
    show(&dialog);
    auto* const widget = child<QWidget>(&dialog, focus.constData());
    widget->setFocus();
    hands::keyClick(widget, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestPluginsDialog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_pluginsdialog.moc"
