// SPDX-License-Identifier: MIT
// The edit command from the menu to the store: the plug-in is loaded from its file, and its window
// is answered with mouse and keys.

#include "support/child.h"
#include "support/commandwindows.h"
#include "support/dayfiles.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/loadedplugin.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QDialog>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>

#include <functional>
#include <memory>

using testsupport::barLines;
using testsupport::click;
using testsupport::dayFile;
using testsupport::editedBarLines;
using testsupport::LoadedPlugin;
using testsupport::ModalSteps;

using Tree = QMap<QString, QByteArray>;

namespace {

const QDate day(2023, 1, 5);

// The history editor as the user has it in front of him.
class Editor final
{
public:
    explicit Editor(QDialog* dialog)
        : m_dialog(dialog)
    {
        QCOMPARE(dialog->metaObject()->className(), "EditorTADataDialog");
        QVERIFY(!dialog->parentWidget());
        QVERIFY(dialog->isModal());
    }

    void type(const char* field, const QDateTime& moment) const
    {
        auto* const edit = child<QDateTimeEdit>(field);
        edit->setFocus();
        edit->setSelectedSection(QDateTimeEdit::DaySection);
        hands::keyClicks(edit, moment.toString(QStringLiteral("ddMMyyyyhhmmss")));
        QCOMPARE(edit->dateTime(), moment);
    }
    void show(const QDateTime& from, const QDateTime& to) const
    {
        type("fromDateTime", from);
        type("toDateTime", to);
        press("loadDataButton");
    }
    void find(const QDateTime& moment) const
    {
        type("findDateTime", moment);
        hands::keyClick(child<QWidget>("findDateTime"), Qt::Key_Return);
    }
    void press(const char* button) const { click(child<QPushButton>(button)); }
    void choose(const char* box, const char* beginning) const
    {
        testsupport::choose(child<QComboBox>(box), QString::fromUtf8(beginning));
    }
    QTreeView* table() const { return child<QTreeView>("dataTable"); }
    int rows() const { return table()->model()->rowCount(); }

    void closeFromOutside() const { testsupport::closeFromOutside(m_dialog); }

private:
    template <typename Widget>
    Widget* child(const char* name) const
    {
        return testsupport::child<Widget>(m_dialog, name);
    }

    QDialog* m_dialog;
};

} // namespace

class TestEditCommand final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void leavesNoTraceWhenItIsOnlyClosed();
    void deletesABarThatWasFound();
    void deletesInSeveralSeries();
    void writesHoweverItIsClosed_data();
    void writesHoweverItIsClosed();
    void beginsAnewEachTime();

private:
    void store(const QString& series, const QByteArray& content, int timeframe = 60) const
    {
        testsupport::writeFile(m_plugin->store().filePath(series + u'/' + dayFile(day, timeframe)),
                               content);
    }
    Tree stored() const { return testsupport::readTree(m_plugin->store()); }
    // Triggers the command from the menu and does something in its window, which closes it.
    void edit(const std::function<void(const Editor&)>& act);

    std::unique_ptr<LoadedPlugin> m_plugin;
};

void TestEditCommand::init()
{
    testsupport::failOnStrayWarnings();
    m_plugin = std::make_unique<LoadedPlugin>();
    m_plugin->start();
}

void TestEditCommand::cleanup()
{
    m_plugin.reset();
}

void TestEditCommand::edit(const std::function<void(const Editor&)>& act)
{
    ModalSteps steps;
    steps.on<QDialog>([&act](QDialog* dialog) { act(Editor(dialog)); });
    testsupport::run(steps, "3_Edit");
}

void TestEditCommand::leavesNoTraceWhenItIsOnlyClosed()
{
    edit([](const Editor& editor) { editor.press("closeButton"); });
    QVERIFY(stored().isEmpty());
    store(QStringLiteral("NORD/MAIN/GRAN"), barLines(QTime(10, 0), 5));
    const Tree before = stored();
    edit([](const Editor& editor) {
        editor.show(QDateTime(day, QTime(10, 1)), QDateTime(day, QTime(10, 2)));
        QCOMPARE(editor.rows(), 2);
        editor.press("closeButton");
    });
    QCOMPARE(stored(), before);
}

void TestEditCommand::deletesABarThatWasFound()
{
    store(QStringLiteral("NORD/MAIN/GRAN"), barLines(QTime(10, 0), 61));
    edit([this](const Editor& editor) {
        editor.show(QDateTime(day, QTime(10, 0)), QDateTime(day, QTime(10, 59)));
        QCOMPARE(editor.rows(), 60);
        editor.find(QDateTime(day, QTime(10, 30)));
        const QModelIndexList found = editor.table()->selectionModel()->selectedRows(1);
        QCOMPARE(found.size(), 1);
        QCOMPARE(found.first().data().toString(), QStringLiteral("31.10"));
        hands::keyClick(editor.table(), Qt::Key_Delete);
        QCOMPARE(editor.rows(), 59);
        QCOMPARE(stored(), Tree({{QStringLiteral("NORD/MAIN/GRAN/20230105_60.iss"),
                                  barLines(QTime(10, 0), 61)}}));
        editor.press("closeButton");
    });
    QCOMPARE(stored(),
             Tree({{QStringLiteral("NORD/MAIN/GRAN/20230105_60.iss"),
                    editedBarLines(QTime(10, 0), 30) + editedBarLines(QTime(10, 31), 29, 32)}}));
}

void TestEditCommand::deletesInSeveralSeries()
{
    store(QStringLiteral("NORD/MAIN/GRAN"), barLines(QTime(10, 0), 3));
    store(QStringLiteral("NORD/MAIN/Ёлка"), barLines(QTime(10, 0), 3, 11));
    store(QStringLiteral("NORD/MAIN/Ёлка"), barLines(QTime(10, 0), 3, 21), 1);
    edit([](const Editor& editor) {
        editor.choose("security", "GRAN");
        editor.show(QDateTime(day, QTime(0, 0)), QDateTime(day, QTime(23, 59)));
        editor.find(QDateTime(day, QTime(10, 0)));
        editor.press("delButton");
        editor.choose("security", "Ёлка");
        editor.choose("timeFrame", "1 секунда");
        editor.press("loadDataButton");
        editor.find(QDateTime(day, QTime(23, 0)));
        editor.press("delButton");
        editor.press("closeButton");
    });
    QCOMPARE(
        stored(),
        Tree(
            {{QStringLiteral("NORD/MAIN/GRAN/20230105_60.iss"), editedBarLines(QTime(10, 1), 2, 2)},
             {QStringLiteral("NORD/MAIN/Ёлка/20230105_60.iss"), barLines(QTime(10, 0), 3, 11)},
             {QStringLiteral("NORD/MAIN/Ёлка/20230105_1.iss"),
              editedBarLines(QTime(10, 0), 2, 21)}}));
}

void TestEditCommand::writesHoweverItIsClosed_data()
{
    QTest::addColumn<QString>("how");
    for (const char* how : {"button", "escape", "window"})
        QTest::newRow(how) << QString::fromLatin1(how);
}

void TestEditCommand::writesHoweverItIsClosed()
{
    QFETCH(const QString, how);
    store(QStringLiteral("NORD/MAIN/GRAN"), barLines(QTime(10, 0), 3));
    edit([&how](const Editor& editor) {
        editor.show(QDateTime(day, QTime(0, 0)), QDateTime(day, QTime(23, 59)));
        editor.find(QDateTime(day, QTime(10, 1)));
        editor.press("delButton");
        if (how == u"button")
            editor.press("closeButton");
        else if (how == u"escape")
            hands::keyClick(editor.table(), Qt::Key_Escape);
        else
            editor.closeFromOutside();
    });
    QCOMPARE(stored(),
             Tree({{QStringLiteral("NORD/MAIN/GRAN/20230105_60.iss"),
                    editedBarLines(QTime(10, 0), 1) + editedBarLines(QTime(10, 2), 1, 3)}}));
}

void TestEditCommand::beginsAnewEachTime()
{
    store(QStringLiteral("NORD/MAIN/GRAN"), barLines(QTime(10, 0), 3));
    for (int time = 0; time < 2; ++time) {
        edit([time](const Editor& editor) {
            QCOMPARE(editor.rows(), 0);
            editor.show(QDateTime(day, QTime(0, 0)), QDateTime(day, QTime(23, 59)));
            QCOMPARE(editor.rows(), 3 - time);
            editor.find(QDateTime(day, QTime(10, 0)));
            editor.press("delButton");
            editor.press("closeButton");
        });
    }
    // Edited twice, the fields are in their first order again.
    QCOMPARE(stored(), Tree({{QStringLiteral("NORD/MAIN/GRAN/20230105_60.iss"),
                              barLines(QTime(10, 2), 1, 3)}}));
}

QTEST_MAIN(TestEditCommand)
#include "tst_editcommand.moc"
