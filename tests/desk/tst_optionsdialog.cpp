// SPDX-License-Identifier: MIT
#include "desk/deskapplication.h"
#include "desk/mainwindow.h"
#include "desk/optionsdialog.h"
#include "desk/pluginloader.h"
#include "messageboxes.h"
#include "support/child.h"
#include "support/hands.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/appsettings.h>
#include <vexdesk/ioptionspage.h>
#include <vexdesk/terminal/core.h>

#include <QtCore/QPointer>
#include <QtGui/QCloseEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTabWidget>

#include <functional>
#include <memory>
#include <stdexcept>

using vexdesk::MainWindow;
using vexdesk::OptionsDialog;

namespace {

// A page that writes down what is asked of it. Its widget is a line of text.
class FakePage final : public IOptionsPage
{
public:
    enum class Thrown { Text, Standard, Number };

    QString name;
    QString categoryId;
    QString categoryName;
    QString pageId = QStringLiteral("id");
    QString words; // what matches() finds
    QIcon icon;
    QString throwIn;
    Thrown thrown = Thrown::Text;
    bool givesNoWidget = false;
    int leastHeight = 0;
    int leastWidth = 0;
    QPointer<QLineEdit> widget;
    std::function<void()> store; // what apply() does

    FakePage(QStringList* calls, const QString& title, const QString& category)
        : name(title)
        , categoryId(category)
        , m_calls(calls)
    {}

    QString id() const override { return orThrow("id", pageId); }
    QString displayName() const override { return orThrow("displayName", name); }
    QString category() const override { return orThrow("category", categoryId); }
    QString displayCategory() const override
    {
        return orThrow("displayCategory", categoryName.isNull() ? categoryId : categoryName);
    }
    QIcon categoryIcon() const override { return orThrow("categoryIcon", icon); }
    bool matches(const QString& searchText) const override
    {
        return orThrow("matches", !words.isEmpty() && words.contains(searchText));
    }

    QWidget* createPage(QWidget* parent) override
    {
        m_calls->append(name + QStringLiteral(".createPage"));
        if (givesNoWidget)
            return nullptr;
        widget = new QLineEdit(parent);
        widget->setObjectName(name);
        widget->setMinimumSize(leastWidth, leastHeight);
        return orThrow("createPage", widget.data());
    }
    void apply() override
    {
        m_calls->append(name + QStringLiteral(".apply"));
        if (store)
            store();
        orThrow("apply", 0);
    }
    void finish() override
    {
        m_calls->append(name + (widget ? QStringLiteral(".finish")
                                       : QStringLiteral(".finish without a widget")));
        orThrow("finish", 0);
    }

private:
    template <typename Answer>
    Answer orThrow(const char* call, const Answer& answer) const
    {
        if (throwIn != QLatin1String(call))
            return answer;
        switch (thrown) {
        case Thrown::Text:
            throw QStringLiteral("диск полон");
        case Thrown::Standard:
            throw std::runtime_error("disk full");
        case Thrown::Number:
            throw 7;
        }
        return answer;
    }

    QStringList* m_calls;
};

QIcon colouredIcon(const QColor& colour)
{
    QPixmap picture(24, 24);
    picture.fill(colour);
    return QIcon(picture);
}

} // namespace

class TestOptionsDialog final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void listsCategoriesInTheOrderOfTheirPages();
    void takesIconAndNameFromTheFirstPage();
    void aPageAloneStandsUnderItsTitle();
    void pagesOfOneCategoryStandBehindTabs();
    void makesAPageWhenItIsFirstShown();
    void makesThePageBehindATabWhenItIsChosen();
    void applyStoresWhatWasShown();
    void okStoresAndCloses();
    void enterIsOk();
    void cancelStoresNothing();
    void escapeCancels_data();
    void escapeCancels();
    void pagesFinishBeforeTheirWidgetsGo_data();
    void pagesFinishBeforeTheirWidgetsGo();
    void pagesNotLookedAtHearNothing();
    void canBeShownAgain();

    void searchKeepsWhatFits_data();
    void searchKeepsWhatFits();
    void searchShowsTheFirstThatFits();
    void searchForNothingThatIsThere();
    void afterTheSearchTheChosenCategoryIsBack();
    void theSearchLeadsToTheList_data();
    void theSearchLeadsToTheList();

    void remembersSizeAndCategory_data();
    void remembersSizeAndCategory();
    void aRememberedCategoryThatIsGone();
    void settingsThatMakeNoSense();
    void aSizeFromALargerScreen();

    void withoutPagesItSaysSo();
    void aPageThatGivesNoWidget();
    void aPageThatThrowsWhenItIsMade_data();
    void aPageThatThrowsWhenItIsMade();
    void aPageThatCannotStoreKeepsTheDialogOpen();
    void whatCannotBeKeptIsTold_data();
    void whatCannotBeKeptIsTold();
    void aPageThatThrowsAtTheEnd();
    void aPageThatThrowsWhateverItIsAsked_data();
    void aPageThatThrowsWhateverItIsAsked();
    void pagesThatSayNothingOfThemselves();
    void picturesThatDoNotExist();
    void twoPagesWithOneId();
    void namesThatLookLikeSomethingElse();
    void longNamesAreNotCut();
    void aPageTooLargeForTheDialogIsScrolled();
    void theDialogIsAsWideAsAPageNeeds();
    void tabGoesThroughTheDialog();

    void opensFromTheMenuAndByItsShortcut();
    void showsThePagesOfTheCore();
    void aNewDayCanBeRaisedByHand();

private:
    FakePage* addPage(const QString& name, const QString& category);
    void open();
    template <typename Widget>
    Widget* child(const char* name) const
    {
        return testsupport::child<Widget>(m_dialog.get(), name);
    }
    QListWidget* list() const { return child<QListWidget>("categories"); }
    QTabWidget* tabs() const;
    QPushButton* button(QDialogButtonBox::StandardButton which) const
    {
        return child<QDialogButtonBox>("buttons")->button(which);
    }
    QString title() const;
    void chooseCategory(int row);
    void chooseTab(int index);
    void search(const QString& text);
    QStringList shownCategories() const;
    QStringList takeCalls() { return std::exchange(m_calls, QStringList()); }

    QStringList m_calls;
    std::vector<std::unique_ptr<FakePage>> m_fakes;
    QList<IOptionsPage*> m_pages;
    std::unique_ptr<OptionsDialog> m_dialog;
};

void TestOptionsDialog::init()
{
    testsupport::failOnStrayWarnings();
    QFile::remove(ICore::getDir(QString(), false).filePath(QStringLiteral("vexdesk.ini")));
    m_calls.clear();
}

void TestOptionsDialog::cleanup()
{
    m_dialog.reset();
    m_pages.clear();
    m_fakes.clear();
}

FakePage* TestOptionsDialog::addPage(const QString& name, const QString& category)
{
    m_fakes.push_back(std::make_unique<FakePage>(&m_calls, name, category));
    m_pages.append(m_fakes.back().get());
    return m_fakes.back().get();
}

void TestOptionsDialog::open()
{
    m_dialog = std::make_unique<OptionsDialog>(m_pages);
    m_dialog->show();
    m_dialog->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
}

QTabWidget* TestOptionsDialog::tabs() const
{
    for (QTabWidget* const tabs : m_dialog->findChildren<QTabWidget*>()) {
        if (tabs->isVisible())
            return tabs;
    }
    return nullptr;
}

// Of the page alone that is shown; null where there is none.
QString TestOptionsDialog::title() const
{
    for (const QLabel* const label : m_dialog->findChildren<QLabel*>(QStringLiteral("pageTitle"))) {
        if (label->isVisible())
            return label->text();
    }
    return QString();
}

void TestOptionsDialog::chooseCategory(int row)
{
    const QRect place = list()->visualItemRect(list()->item(row));
    QVERIFY(place.isValid());
    hands::mouseClick(list()->viewport(), Qt::LeftButton, {}, place.center());
}

void TestOptionsDialog::chooseTab(int index)
{
    QTabBar* const bar = tabs()->tabBar();
    hands::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(index).center());
}

void TestOptionsDialog::search(const QString& text)
{
    auto* const field = child<QLineEdit>("search");
    field->setFocus();
    field->selectAll();
    hands::keyClick(field, Qt::Key_Delete);
    // keyClicks() knows Latin letters only.
    for (const QChar letter : text)
        QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, QString(letter), Qt::NoModifier);
    QCOMPARE(field->text(), text);
}

QStringList TestOptionsDialog::shownCategories() const
{
    QStringList shown;
    for (int row = 0; row < list()->count(); ++row) {
        if (!list()->item(row)->isHidden())
            shown.append(list()->item(row)->text());
    }
    return shown;
}

void TestOptionsDialog::listsCategoriesInTheOrderOfTheirPages()
{
    addPage("Сеть", "Связь");
    addPage("Шрифты", "Вид");
    addPage("Прокси", "Связь");
    addPage("Цвета", "Вид");
    open();
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Настройки"));
    QCOMPARE(shownCategories(), QStringList({"Связь", "Вид"}));
    QCOMPARE(list()->currentRow(), 0);
    QCOMPARE(tabs()->tabText(0), QStringLiteral("Сеть"));
    QCOMPARE(tabs()->tabText(1), QStringLiteral("Прокси"));
    QCOMPARE(tabs()->count(), 2);
    QCOMPARE(button(QDialogButtonBox::Ok)->text(), QStringLiteral("ОК"));
    QCOMPARE(button(QDialogButtonBox::Cancel)->text(), QStringLiteral("Отмена"));
    QCOMPARE(button(QDialogButtonBox::Apply)->text(), QStringLiteral("Применить"));
    QVERIFY(!child<QLabel>("noPages")->isVisible());
    QVERIFY(!child<QLabel>("nothingFound")->isVisible());
}

void TestOptionsDialog::takesIconAndNameFromTheFirstPage()
{
    FakePage* const first = addPage("Сеть", "net");
    first->categoryName = QStringLiteral("Связь");
    first->icon = colouredIcon(Qt::red);
    FakePage* const second = addPage("Прокси", "net");
    second->categoryName = QStringLiteral("Иначе");
    second->icon = colouredIcon(Qt::blue);
    open();
    QCOMPARE(shownCategories(), QStringList{"Связь"});
    const QImage picture = list()->item(0)->icon().pixmap(24).toImage();
    QCOMPARE(picture.pixelColor(picture.width() / 2, picture.height() / 2), QColor(Qt::red));
}

void TestOptionsDialog::aPageAloneStandsUnderItsTitle()
{
    FakePage* const page = addPage("Общее", "Связь");
    open();
    QCOMPARE(title(), QStringLiteral("Общее"));
    QVERIFY(!tabs());
    QVERIFY(page->widget && page->widget->isVisible());
    QCOMPARE(page->widget->window(), m_dialog.get());
}

void TestOptionsDialog::pagesOfOneCategoryStandBehindTabs()
{
    FakePage* const first = addPage("Сеть", "Связь");
    FakePage* const second = addPage("Прокси", "Связь");
    open();
    QVERIFY(tabs());
    QVERIFY(title().isNull());
    QVERIFY(first->widget->isVisible());
    chooseTab(1);
    QVERIFY(!first->widget->isVisible());
    QVERIFY(second->widget->isVisible());
}

void TestOptionsDialog::makesAPageWhenItIsFirstShown()
{
    addPage("Общее", "Связь");
    FakePage* const second = addPage("Цвета", "Вид");
    addPage("Звук", "Сигналы");
    m_dialog = std::make_unique<OptionsDialog>(m_pages);
    QCOMPARE(takeCalls(), QStringList());
    open();
    QCOMPARE(takeCalls(), QStringList{"Общее.createPage"});
    chooseCategory(1);
    QCOMPARE(takeCalls(), QStringList{"Цвета.createPage"});
    QCOMPARE(title(), QStringLiteral("Цвета"));
    QVERIFY(second->widget->isVisible());
    chooseCategory(0);
    hands::keyClick(list(), Qt::Key_Down);
    QCOMPARE(takeCalls(), QStringList());
    QVERIFY(second->widget->isVisible());
}

void TestOptionsDialog::makesThePageBehindATabWhenItIsChosen()
{
    addPage("Сеть", "Связь");
    addPage("Прокси", "Связь");
    open();
    QCOMPARE(takeCalls(), QStringList{"Сеть.createPage"});
    chooseTab(1);
    QCOMPARE(takeCalls(), QStringList{"Прокси.createPage"});
    chooseTab(0);
    chooseTab(1);
    QCOMPARE(takeCalls(), QStringList());
}

void TestOptionsDialog::applyStoresWhatWasShown()
{
    addPage("Общее", "Связь");
    addPage("Цвета", "Вид");
    addPage("Звук", "Сигналы");
    open();
    chooseCategory(2);
    takeCalls();
    for (int press = 0; press < 2; ++press) {
        testsupport::click(button(QDialogButtonBox::Apply));
        QCOMPARE(takeCalls(), QStringList({"Общее.apply", "Звук.apply"}));
        QVERIFY(m_dialog->isVisible());
    }
}

void TestOptionsDialog::okStoresAndCloses()
{
    addPage("Общее", "Связь");
    open();
    takeCalls();
    testsupport::click(button(QDialogButtonBox::Ok));
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
    QCOMPARE(takeCalls(), QStringList{"Общее.apply"});
    m_dialog.reset();
    QCOMPARE(takeCalls(), QStringList{"Общее.finish"});
}

void TestOptionsDialog::enterIsOk()
{
    FakePage* const page = addPage("Общее", "Связь");
    open();
    page->widget->setFocus();
    takeCalls();
    hands::keyClick(page->widget, Qt::Key_Return);
    QCOMPARE(takeCalls(), QStringList{"Общее.apply"});
    QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
    QVERIFY(!m_dialog->isVisible());
}

void TestOptionsDialog::cancelStoresNothing()
{
    addPage("Общее", "Связь");
    open();
    takeCalls();
    testsupport::click(button(QDialogButtonBox::Cancel));
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    m_dialog.reset();
    QCOMPARE(takeCalls(), QStringList{"Общее.finish"});
}

void TestOptionsDialog::escapeCancels_data()
{
    QTest::addColumn<QString>("focus");
    QTest::newRow("in the list") << "categories";
    QTest::newRow("in the search") << "search";
    QTest::newRow("on the page") << "Общее";
}

void TestOptionsDialog::escapeCancels()
{
    QFETCH(const QString, focus);
    addPage("Общее", "Связь");
    open();
    takeCalls();
    auto* const widget = testsupport::child<QWidget>(m_dialog.get(), qUtf8Printable(focus));
    widget->setFocus();
    hands::keyClick(widget, Qt::Key_Escape);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    QCOMPARE(takeCalls(), QStringList());
}

void TestOptionsDialog::pagesFinishBeforeTheirWidgetsGo_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"ok", "cancel", "escape", "window", "destroyed"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestOptionsDialog::pagesFinishBeforeTheirWidgetsGo()
{
    QFETCH(const QString, way);
    FakePage* const page = addPage("Сеть", "Связь");
    addPage("Прокси", "Связь");
    addPage("Цвета", "Вид");
    open();
    chooseCategory(1);
    chooseCategory(0);
    chooseTab(1);
    takeCalls();
    if (way == "ok")
        testsupport::click(button(QDialogButtonBox::Ok));
    else if (way == "cancel")
        testsupport::click(button(QDialogButtonBox::Cancel));
    else if (way == "escape")
        hands::keyClick(m_dialog.get(), Qt::Key_Escape);
    else if (way == "window")
        QVERIFY(m_dialog->close());
    if (way == "ok")
        QCOMPARE(takeCalls(), QStringList({"Сеть.apply", "Прокси.apply", "Цвета.apply"}));
    m_dialog.reset();
    QCOMPARE(takeCalls(), QStringList({"Сеть.finish", "Прокси.finish", "Цвета.finish"}));
    QVERIFY(!page->widget);
}

void TestOptionsDialog::pagesNotLookedAtHearNothing()
{
    addPage("Сеть", "Связь");
    addPage("Прокси", "Связь");
    addPage("Цвета", "Вид");
    open();
    testsupport::click(button(QDialogButtonBox::Apply));
    testsupport::click(button(QDialogButtonBox::Ok));
    m_dialog.reset();
    QCOMPARE(takeCalls(),
             QStringList({"Сеть.createPage", "Сеть.apply", "Сеть.apply", "Сеть.finish"}));
}

void TestOptionsDialog::canBeShownAgain()
{
    addPage("Общее", "Связь");
    open();
    testsupport::click(button(QDialogButtonBox::Ok));
    m_dialog->show();
    testsupport::click(button(QDialogButtonBox::Ok));
    m_dialog.reset();
    QCOMPARE(takeCalls(),
             QStringList({"Общее.createPage", "Общее.apply", "Общее.apply", "Общее.finish"}));
}

void TestOptionsDialog::searchKeepsWhatFits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("shown");
    QTest::newRow("in a category's name") << "свя" << QStringList{"Связь"};
    QTest::newRow("in whatever case") << "СВЯЗЬ" << QStringList{"Связь"};
    QTest::newRow("in a page's name") << "прок" << QStringList{"Связь"};
    QTest::newRow("in several") << "и" << QStringList({"Связь", "Вид", "Сигналы"});
    QTest::newRow("a page knows it") << "громкость" << QStringList{"Сигналы"};
    QTest::newRow("a page decides about the case") << "Громкость" << QStringList();
    QTest::newRow("blanks around it") << "  вид " << QStringList{"Вид"};
    QTest::newRow("blanks alone") << "   " << QStringList({"Связь", "Вид", "Сигналы"});
    QTest::newRow("not an expression") << "." << QStringList();
    QTest::newRow("nothing") << "нет такого" << QStringList();
}

void TestOptionsDialog::searchKeepsWhatFits()
{
    QFETCH(const QString, text);
    addPage("Сеть", "Связь");
    addPage("Прокси", "Связь");
    addPage("Цвета", "Вид");
    addPage("Звук", "Сигналы")->words = QStringLiteral("громкость");
    open();
    search(text);
    QTEST(shownCategories(), "shown");
    QCOMPARE(list()->isVisible(), !shownCategories().isEmpty());
    QCOMPARE(child<QLabel>("nothingFound")->isVisible(), shownCategories().isEmpty());
    search(QString());
    QCOMPARE(shownCategories(), QStringList({"Связь", "Вид", "Сигналы"}));
    QVERIFY(list()->isVisible());
    QVERIFY(!child<QLabel>("nothingFound")->isVisible());
}

void TestOptionsDialog::searchShowsTheFirstThatFits()
{
    addPage("Сеть", "Связь");
    addPage("Цвета", "Вид");
    addPage("Звук", "Сигналы");
    open();
    takeCalls();
    search(QStringLiteral("зву"));
    QCOMPARE(title(), QStringLiteral("Звук"));
    QCOMPARE(list()->currentItem()->text(), QStringLiteral("Сигналы"));
    QVERIFY(list()->currentItem()->isSelected());
    QCOMPARE(takeCalls(), QStringList{"Звук.createPage"});
}

void TestOptionsDialog::searchForNothingThatIsThere()
{
    FakePage* const page = addPage("Сеть", "Связь");
    open();
    takeCalls();
    search(QStringLiteral("нет такого"));
    QCOMPARE(child<QLabel>("nothingFound")->text(), QStringLiteral("Ничего не найдено"));
    QVERIFY(child<QLabel>("nothingFound")->isVisible());
    QVERIFY(title().isNull());
    QVERIFY(!page->widget->isVisible());
    // What was shown before is stored all the same.
    testsupport::click(button(QDialogButtonBox::Apply));
    QCOMPARE(takeCalls(), QStringList{"Сеть.apply"});
}

void TestOptionsDialog::afterTheSearchTheChosenCategoryIsBack()
{
    addPage("Сеть", "Связь");
    addPage("Цвета", "Вид");
    addPage("Звук", "Сигналы");
    open();
    chooseCategory(1);
    search(QStringLiteral("сигналы"));
    QCOMPARE(title(), QStringLiteral("Звук"));
    search(QString());
    QCOMPARE(title(), QStringLiteral("Цвета"));
    QCOMPARE(list()->currentRow(), 1);
    // Once it is clicked, what was found is chosen.
    search(QStringLiteral("связь"));
    hands::keyClick(child<QLineEdit>("search"), Qt::Key_Return);
    chooseCategory(0);
    search(QString());
    QCOMPARE(list()->currentRow(), 1);
    chooseCategory(0);
    search(QStringLiteral("с"));
    QCOMPARE(title(), QStringLiteral("Сеть"));
}

void TestOptionsDialog::theSearchLeadsToTheList_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
    QTest::newRow("Down") << int(Qt::Key_Down);
}

void TestOptionsDialog::theSearchLeadsToTheList()
{
    QFETCH(const int, key);
    addPage("Сеть", "Связь");
    addPage("Цвета", "Вид");
    open();
    search(QStringLiteral("вид"));
    hands::keyClick(child<QLineEdit>("search"), Qt::Key(key));
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(QApplication::focusWidget(), list());
    QCOMPARE(title(), QStringLiteral("Цвета"));
}

void TestOptionsDialog::remembersSizeAndCategory_data()
{
    QTest::addColumn<int>("button");
    QTest::newRow("ok") << int(QDialogButtonBox::Ok);
    QTest::newRow("cancel") << int(QDialogButtonBox::Cancel);
    QTest::newRow("closed from outside") << int(QDialogButtonBox::NoButton);
}

void TestOptionsDialog::remembersSizeAndCategory()
{
    QFETCH(const int, button);
    addPage("Сеть", "net")->categoryName = QStringLiteral("Связь");
    addPage("Цвета", "view")->categoryName = QStringLiteral("Вид");
    open();
    chooseCategory(1);
    m_dialog->resize(781, 503);
    if (button == QDialogButtonBox::NoButton)
        m_dialog->close();
    else
        testsupport::click(this->button(QDialogButtonBox::StandardButton(button)));
    const AppSettings settings(QStringLiteral("Desk/OptionsDialog"));
    QCOMPARE(settings.value(QStringLiteral("category")).toString(), QStringLiteral("view"));
    takeCalls();
    open();
    QCOMPARE(m_dialog->size(), QSize(781, 503));
    QCOMPARE(title(), QStringLiteral("Цвета"));
    QCOMPARE(list()->currentRow(), 1);
    QCOMPARE(takeCalls(), QStringList({"Сеть.finish", "Цвета.finish", "Цвета.createPage"}));
}

void TestOptionsDialog::aRememberedCategoryThatIsGone()
{
    AppSettings(QStringLiteral("Desk/OptionsDialog"))
        .setValue(QStringLiteral("category"), QStringLiteral("gone"));
    addPage("Сеть", "Связь");
    open();
    QCOMPARE(list()->currentRow(), 0);
    QCOMPARE(title(), QStringLiteral("Сеть"));
}

void TestOptionsDialog::settingsThatMakeNoSense()
{
    {
        AppSettings settings(QStringLiteral("Desk/OptionsDialog"));
        settings.setValue(QStringLiteral("category"), QVariantList({1, 2}));
        settings.setValue(QStringLiteral("size"), QStringLiteral("large"));
    }
    addPage("Сеть", "Связь");
    open();
    QCOMPARE(title(), QStringLiteral("Сеть"));
    QVERIFY(m_dialog->width() > 400 && m_dialog->height() > 250);
}

void TestOptionsDialog::aSizeFromALargerScreen()
{
    AppSettings(QStringLiteral("Desk/OptionsDialog"))
        .setValue(QStringLiteral("size"), QSize(20000, 10000));
    addPage("Сеть", "Связь");
    open();
    const QRect available = m_dialog->screen()->availableGeometry();
    QTRY_VERIFY(available.contains(m_dialog->frameGeometry()));
    QVERIFY(m_dialog->width() > available.width() - 50 &&
            m_dialog->height() > available.height() - 50);
}

void TestOptionsDialog::withoutPagesItSaysSo()
{
    open();
    const auto* const note = child<QLabel>("noPages");
    QVERIFY(note->isVisible());
    QCOMPARE(note->text(), QStringLiteral("Ни один модуль не добавил своих настроек"));
    QVERIFY(!list()->isVisible());
    QVERIFY(!child<QLineEdit>("search")->isVisible());
    QVERIFY(!button(QDialogButtonBox::Apply)->isEnabled());
    hands::keyClick(m_dialog.get(), Qt::Key_Return);
    QVERIFY(!m_dialog->isVisible());
}

void TestOptionsDialog::aPageThatGivesNoWidget()
{
    addPage("Сеть", "Связь")->givesNoWidget = true;
    addPage("Прокси", "Связь");
    open();
    QCOMPARE(child<QLabel>("pageFault")->text(),
             QStringLiteral("Страницу «Сеть» не удалось открыть: модуль её не создал."));
    QVERIFY(child<QLabel>("pageFault")->isVisible());
    chooseTab(1);
    chooseTab(0);
    testsupport::click(button(QDialogButtonBox::Ok));
    QVERIFY(!m_dialog->isVisible());
    m_dialog.reset();
    QCOMPARE(takeCalls(), QStringList({"Сеть.createPage", "Сеть.finish without a widget",
                                       "Прокси.createPage", "Прокси.apply", "Прокси.finish"}));
}

void TestOptionsDialog::aPageThatThrowsWhenItIsMade_data()
{
    QTest::addColumn<int>("thrown");
    QTest::addColumn<QString>("reason");
    QTest::newRow("text") << int(FakePage::Thrown::Text) << "диск полон";
    QTest::newRow("exception") << int(FakePage::Thrown::Standard) << "disk full";
    QTest::newRow("something") << int(FakePage::Thrown::Number) << "Произошла неизвестная ошибка.";
}

void TestOptionsDialog::aPageThatThrowsWhenItIsMade()
{
    QFETCH(const int, thrown);
    QFETCH(const QString, reason);
    FakePage* const page = addPage("Сеть", "Связь");
    page->throwIn = QStringLiteral("createPage");
    page->thrown = FakePage::Thrown(thrown);
    addPage("Цвета", "Вид");
    open();
    QCOMPARE(child<QLabel>("pageFault")->text(),
             QStringLiteral("Страницу «Сеть» не удалось открыть: %1").arg(reason));
    // It hears of the end while what it began to make is still there, and then that goes.
    QCOMPARE(takeCalls(), QStringList({"Сеть.createPage", "Сеть.finish"}));
    QVERIFY(!page->widget);
    chooseCategory(1);
    chooseCategory(0);
    testsupport::click(button(QDialogButtonBox::Ok));
    QVERIFY(!m_dialog->isVisible());
    m_dialog.reset();
    QCOMPARE(takeCalls(), QStringList({"Цвета.createPage", "Цвета.apply", "Цвета.finish"}));
}

void TestOptionsDialog::aPageThatCannotStoreKeepsTheDialogOpen()
{
    FakePage* const page = addPage("Сеть", "Связь");
    page->throwIn = QStringLiteral("apply");
    addPage("Цвета", "Вид");
    open();
    chooseCategory(1);
    takeCalls();
    const desktest::MessageBoxes boxes;
    testsupport::click(button(QDialogButtonBox::Ok));
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(takeCalls(), QStringList({"Сеть.apply", "Цвета.apply"}));
    const QString text = QStringLiteral("Настройки страницы «Сеть» не сохранены: диск полон");
    QCOMPARE(boxes.texts(), QStringList{text});
    testsupport::click(button(QDialogButtonBox::Apply));
    QCOMPARE(boxes.texts(), QStringList({text, text}));
    page->throwIn.clear();
    testsupport::click(button(QDialogButtonBox::Ok));
    QVERIFY(!m_dialog->isVisible());
}

void TestOptionsDialog::whatCannotBeKeptIsTold_data()
{
    QTest::addColumn<int>("pressed");
    QTest::newRow("apply") << int(QDialogButtonBox::Apply);
    QTest::newRow("OK") << int(QDialogButtonBox::Ok);
}

void TestOptionsDialog::whatCannotBeKeptIsTold()
{
    QFETCH(const int, pressed);
    FakePage* const page = addPage("Сеть", "Связь");
    page->store = [] { AppSettings(QStringLiteral("Net")).setValue(QStringLiteral("port"), 5); };
    open();
    const desktest::MessageBoxes boxes;
    const QDir directory = ICore::getDir(QString(), false);
    const QString file = directory.filePath(QStringLiteral("vexdesk.ini"));
    // In the place of the file it keeps everybody from writing.
    QVERIFY(QDir().mkpath(file + QStringLiteral("/in the way")));
    testsupport::click(button(static_cast<QDialogButtonBox::StandardButton>(pressed)));
    QVERIFY(QDir(file).removeRecursively());
    QCOMPARE(boxes.texts(),
             QStringList{QStringLiteral("Настройки не записаны: каталог %1 или файл vexdesk.ini в "
                                        "нём не принимает запись. Они действуют, пока терминал "
                                        "работает; при следующем запуске будут прежние.")
                             .arg(QDir::toNativeSeparators(directory.path()))});
    QCOMPARE(m_dialog->isVisible(), pressed == QDialogButtonBox::Apply);

    // Nothing is said where they are kept.
    m_dialog.reset();
    open();
    testsupport::click(button(QDialogButtonBox::Apply));
    QCOMPARE(boxes.texts().size(), 1);
}

void TestOptionsDialog::aPageThatThrowsAtTheEnd()
{
    addPage("Сеть", "Связь")->throwIn = QStringLiteral("finish");
    addPage("Цвета", "Вид");
    open();
    chooseCategory(1);
    takeCalls();
    const desktest::MessageBoxes boxes;
    testsupport::click(button(QDialogButtonBox::Cancel));
    m_dialog.reset();
    QCOMPARE(takeCalls(), QStringList({"Сеть.finish", "Цвета.finish"}));
    QCOMPARE(boxes.texts(),
             QStringList{"Ошибка страницы «Сеть» при закрытии настроек: диск полон"});
}

void TestOptionsDialog::aPageThatThrowsWhateverItIsAsked_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("title");
    QTest::newRow("id") << "id"
                        << "Связь"
                        << "Сеть";
    QTest::newRow("displayName") << "displayName"
                                 << "Связь"
                                 << "id";
    QTest::newRow("category") << "category"
                              << "Связь"
                              << "Сеть";
    QTest::newRow("displayCategory") << "displayCategory"
                                     << "Связь"
                                     << "Сеть";
    QTest::newRow("categoryIcon") << "categoryIcon"
                                  << "Связь"
                                  << "Сеть";
    QTest::newRow("matches") << "matches"
                             << "Связь"
                             << "Сеть";
}

void TestOptionsDialog::aPageThatThrowsWhateverItIsAsked()
{
    QFETCH(const QString, call);
    QFETCH(const QString, category);
    addPage("Сеть", "Связь")->throwIn = call;
    addPage("Цвета", "Вид");
    open();
    QTEST(title(), "title");
    QCOMPARE(shownCategories(), QStringList({category, "Вид"}));
    search(QStringLiteral("нет такого"));
    QCOMPARE(shownCategories(), QStringList());
    search(QString());
    testsupport::click(button(QDialogButtonBox::Ok));
    QVERIFY(!m_dialog->isVisible());
}

void TestOptionsDialog::pagesThatSayNothingOfThemselves()
{
    for (int i = 0; i < 2; ++i) {
        FakePage* const page = addPage(QString(), QString());
        page->pageId = i == 0 ? QString() : QStringLiteral("  ");
        page->categoryName = QStringLiteral(" ");
    }
    addPage("Цвета", "view")->categoryName = QLatin1String("");
    open();
    QCOMPARE(shownCategories(), QStringList({"Прочее", "view"}));
    QCOMPARE(tabs()->tabText(0), QStringLiteral("Без названия"));
    QCOMPARE(tabs()->tabText(1), QStringLiteral("Без названия"));
}

void TestOptionsDialog::picturesThatDoNotExist()
{
    addPage("Сеть", "Связь");
    addPage("Цвета", "Вид")->icon = QIcon(QStringLiteral(":/nowhere/picture.png"));
    addPage("Звук", "Сигналы")->icon = colouredIcon(Qt::green);
    open();
    // The names stay in line.
    QCOMPARE(list()->iconSize(), QSize(24, 24));
    for (int row = 0; row < list()->count(); ++row) {
        QVERIFY2(!list()->item(row)->icon().pixmap(24).isNull(), qPrintable(QString::number(row)));
        QCOMPARE(list()->visualItemRect(list()->item(row)).height(),
                 list()->visualItemRect(list()->item(0)).height());
    }
}

void TestOptionsDialog::twoPagesWithOneId()
{
    FakePage* const first = addPage("Сеть", "Связь");
    FakePage* const second = addPage("Прокси", "Связь");
    QCOMPARE(first->id(), second->id());
    open();
    chooseTab(1);
    QVERIFY(first->widget && second->widget);
    takeCalls();
    testsupport::click(button(QDialogButtonBox::Apply));
    QCOMPARE(takeCalls(), QStringList({"Сеть.apply", "Прокси.apply"}));
}

void TestOptionsDialog::namesThatLookLikeSomethingElse()
{
    addPage("<b>A</b> & B", "R&D");
    addPage("Q&A", "Tabs");
    addPage("две\nстроки", "Tabs");
    open();
    QCOMPARE(list()->item(0)->text(), QStringLiteral("R&D"));
    QCOMPARE(title(), QStringLiteral("<b>A</b> & B"));
    chooseCategory(1);
    QCOMPARE(tabs()->tabText(0), QStringLiteral("Q&&A")); // "&&" is shown as "&"
    QCOMPARE(tabs()->tabText(1), QStringLiteral("две строки"));
}

void TestOptionsDialog::longNamesAreNotCut()
{
    const QString longName =
        QString(QStringLiteral("Очень длинное название настроек ")).repeated(4).trimmed();
    addPage(longName, longName);
    const QString longTab = QStringLiteral("Название, которому нужна широкая вкладка настроек");
    addPage(longTab, "Вкладки");
    addPage(QStringLiteral("Вторая"), "Вкладки");
    open();
    // Wrapped, where it does not fit into one line.
    const QRect item = list()->visualItemRect(list()->item(0));
    QVERIFY(item.width() <= list()->viewport()->width());
    QVERIFY(item.height() >= 3 * list()->fontMetrics().lineSpacing());
    QCOMPARE(list()->horizontalScrollBar()->maximum(), 0);
    for (const QLabel* const label : m_dialog->findChildren<QLabel*>()) {
        if (label->isVisible())
            QVERIFY(label->height() >= label->heightForWidth(label->width()));
    }
    chooseCategory(1);
    const QTabBar* const bar = tabs()->tabBar();
    QCOMPARE(bar->elideMode(), Qt::ElideNone);
    QVERIFY(bar->tabRect(0).width() > bar->fontMetrics().horizontalAdvance(longTab));
    QVERIFY(tabs()->width() >= bar->tabRect(0).width());
}

void TestOptionsDialog::aPageTooLargeForTheDialogIsScrolled()
{
    FakePage* const page = addPage("Сеть", "Связь");
    page->leastHeight = 4000;
    open();
    QVERIFY(m_dialog->height() < 2000);
    QCOMPARE(page->widget->height(), 4000);
    QScrollArea* area = nullptr;
    for (QWidget* above = page->widget; above && !area; above = above->parentWidget())
        area = qobject_cast<QScrollArea*>(above);
    QVERIFY(area);
    QVERIFY(area->verticalScrollBar()->maximum() > 0);
    QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
}

void TestOptionsDialog::theDialogIsAsWideAsAPageNeeds()
{
    AppSettings(QStringLiteral("Desk/OptionsDialog"))
        .setValue(QStringLiteral("size"), QSize(10, 10));
    addPage("Сеть", "Связь");
    FakePage* const wide = addPage("Цвета", "Вид");
    wide->leastWidth = 600;
    open();
    QVERIFY(m_dialog->width() < 600);
    chooseCategory(1);
    QTRY_COMPARE(wide->widget->visibleRegion().boundingRect().width(), wide->widget->width());
    QVERIFY(wide->widget->width() >= 600);
}

void TestOptionsDialog::tabGoesThroughTheDialog()
{
    FakePage* const first = addPage("Сеть", "Связь");
    addPage("Прокси", "Связь");
    FakePage* const third = addPage("Цвета", "Вид");
    open();
    QCOMPARE(QApplication::focusWidget(), list());
    chooseCategory(1); // made after the one that stands above
    chooseCategory(0);
    const QList<QWidget*> buttons{button(QDialogButtonBox::Ok), button(QDialogButtonBox::Cancel),
                                  button(QDialogButtonBox::Apply)};
    QList<QWidget*> order = testsupport::tabOrder(m_dialog.get());
    QCOMPARE(order.mid(0, 3), QList<QWidget*>({list(), tabs()->tabBar(), first->widget.data()}));
    QCOMPARE(order.constLast(), child<QLineEdit>("search"));
    QCOMPARE(order.size(), 7);
    for (QWidget* const one : buttons)
        QVERIFY(order.mid(3, 3).contains(one));
    // From left to right, whatever order the desktop has.
    for (int i = 3; i < 5; ++i)
        QVERIFY(order.at(i)->x() < order.at(i + 1)->x());
    chooseCategory(1);
    order = testsupport::tabOrder(m_dialog.get());
    QCOMPARE(order.mid(0, 2), QList<QWidget*>({list(), third->widget.data()}));
    QCOMPARE(order.size(), 6);
}

namespace {

// A terminal's window, and what its menus hold.
struct Terminal
{
    vexdesk::Core core;
    vexdesk::PluginLoader loader;
    MainWindow window{loader};

    Terminal()
    {
        window.show();
        activate();
    }
    void activate()
    {
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
    // Opens the menus on the way by clicks and clicks the last item.
    void choose(const QStringList& path)
    {
        QWidget* level = window.menuBar();
        for (const QString& text : path) {
            const QList<QAction*> items = level->actions();
            const auto found = std::find_if(items.cbegin(), items.cend(), [&](const QAction* item) {
                return item->text() == text;
            });
            QVERIFY2(found != items.cend(), qPrintable(text));
            auto* const bar = qobject_cast<QMenuBar*>(level);
            const QRect place = bar ? bar->actionGeometry(*found)
                                    : qobject_cast<QMenu*>(level)->actionGeometry(*found);
            hands::mouseMove(level, place.center());
            hands::mouseClick(level, Qt::LeftButton, {}, place.center());
            if (!(*found)->menu())
                return;
            level = (*found)->menu();
            QTRY_VERIFY(level->isVisible());
        }
    }
    QAction* item(const QString& text) const
    {
        for (const QMenu* const menu : window.menuBar()->findChildren<QMenu*>()) {
            for (QAction* const action : menu->actions()) {
                if (action->text() == text)
                    return action;
            }
        }
        return nullptr;
    }
};

} // namespace

void TestOptionsDialog::opensFromTheMenuAndByItsShortcut()
{
    Terminal terminal;
    const QAction* const item = terminal.item(QStringLiteral("&Настройки..."));
    QVERIFY(item);
    QVERIFY(!item->shortcut().isEmpty());
    int opened = 0;
    const auto close = [&opened](OptionsDialog* dialog) {
        ++opened;
        hands::keyClick(dialog, Qt::Key_Escape);
    };
    testsupport::ModalSteps steps;
    steps.on<OptionsDialog>(close);
    terminal.choose({QStringLiteral("&Сервис"), QStringLiteral("&Настройки...")});
    QTRY_COMPARE(opened, 1);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    terminal.activate();
    steps.on<OptionsDialog>(close);
    hands::keySequence(&terminal.window, item->shortcut());
    QTRY_COMPARE(opened, 2);
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
}

void TestOptionsDialog::showsThePagesOfTheCore()
{
    Terminal terminal;
    terminal.core.addOptionsPage(addPage("Сеть", "Связь"));
    terminal.core.addOptionsPage(addPage("Цвета", "Вид"));
    testsupport::ModalSteps steps;
    QStringList titles;
    steps.on<OptionsDialog>([&titles](OptionsDialog* dialog) {
        const auto* const categories = testsupport::child<QListWidget>(dialog, "categories");
        for (int row = 0; row < categories->count(); ++row)
            titles.append(categories->item(row)->text());
        hands::keyClick(dialog, Qt::Key_Return);
    });
    terminal.choose({QStringLiteral("&Сервис"), QStringLiteral("&Настройки...")});
    QTRY_COMPARE(titles, QStringList({"Связь", "Вид"}));
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QCOMPARE(takeCalls(), QStringList({"Сеть.createPage", "Сеть.apply", "Сеть.finish"}));
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
}

void TestOptionsDialog::aNewDayCanBeRaisedByHand()
{
    Terminal terminal;
    const QSignalSpy days(terminal.core.notifier(), &vexdesk::Notifier::aNewDay);
    const QStringList path{QStringLiteral("&Сервис"), QStringLiteral("&Для разработчиков"),
                           QStringLiteral("&Новый торговый день")};
    for (int day = 1; day <= 2; ++day) {
        terminal.choose(path);
        QTRY_COMPARE(days.size(), day);
        QVERIFY(!terminal.window.statusBar()->currentMessage().isEmpty());
    }
    QVERIFY(terminal.item(path.constLast())->shortcut().isEmpty());
    QVERIFY(terminal.item(path.constLast())->statusTip().contains(QStringLiteral("торгового дня")));
    // What goes wrong then is shown as the error of any command is.
    connect(terminal.core.notifier(), &vexdesk::Notifier::aNewDay, this,
            [] { throw QStringLiteral("день не начат"); });
    const desktest::MessageBoxes boxes;
    terminal.activate();
    terminal.choose(path);
    QTRY_COMPARE(boxes.texts(), QStringList{QStringLiteral("день не начат")});
    QTRY_VERIFY(!QApplication::activeModalWidget());
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestOptionsDialog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_optionsdialog.moc"
