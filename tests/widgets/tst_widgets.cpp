// SPDX-License-Identifier: MIT
#include "dateeditors.h"
#include "formatboxes.h"
#include "labelmark.h"
#include "textcolours.h"
#include "windowsize.h"

#include "support/eventually.h"
#include "support/strictlog.h"

#include <vexdesk/dateformat.h>

#include <QtCore/QLocale>
#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QLabel>
#include <QtWidgets/QWizard>
#include <QtWidgets/QWizardPage>

using tadata::FormatPage;

namespace {

QPalette onBase(int lightness)
{
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(lightness, lightness, lightness));
    return palette;
}

// A wizard with one page, for which it is widened as it is shown.
class OnePage final : public QWizard
{
public:
    explicit OnePage(int pageWidth)
        : m_pageWidth(pageWidth)
    {
        addPage(page);
    }

    QWizardPage* page = new QWizardPage;

protected:
    void showEvent(QShowEvent* event) override
    {
        tadata::widenForPage(*this, m_pageWidth);
        QWizard::showEvent(event);
    }

private:
    int m_pageWidth;
};

} // namespace

/// What the windows' parts have in common.
class TestWidgets final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void faultsAreRedOnAnyGround();
    void aWrongFieldHasARedLabel();
    void datesAreShownAsTheLanguageWritesThem();
    void calendarsBeginTheWeekAsTheSystemDoes();
    void formatsStandBehindWhatABoxOffers();
    void aWizardIsAsWideAsAPageNeeds();
    void aWizardIsNoWiderThanTheScreen();
    void aWizardWithASizeKeepsIt();
};

void TestWidgets::faultsAreRedOnAnyGround()
{
    QVERIFY(tadata::isDark(onBase(0)));
    QVERIFY(tadata::isDark(onBase(127)));
    QVERIFY(!tadata::isDark(onBase(128)));
    QVERIFY(!tadata::isDark(onBase(255)));
    for (const int ground : {0, 255}) {
        const QColor fault = tadata::faultText(onBase(ground));
        QVERIFY(fault.red() > fault.green() && fault.red() > fault.blue());
        QCOMPARE(fault.alpha(), 255);
        QVERIFY(std::abs(fault.lightness() - ground) > 80);
        QLabel label;
        label.setPalette(onBase(ground));
        tadata::tintLabel(&label, false);
        QCOMPARE(label.palette().color(QPalette::WindowText), fault);
        tadata::tintLabel(&label, true);
        QVERIFY(label.palette().color(QPalette::WindowText) != fault);
    }
}

void TestWidgets::aWrongFieldHasARedLabel()
{
    QLabel label;
    QVERIFY(!tadata::markLabel(&label, false));
    QCOMPARE(label.styleSheet(), QStringLiteral("QLabel {color: red;}"));
    QVERIFY(tadata::markLabel(&label, true));
    QCOMPARE(label.styleSheet(), QString());
}

void TestWidgets::datesAreShownAsTheLanguageWritesThem()
{
    QDateEdit day;
    day.setCalendarPopup(true);
    tadata::setUpDateEditor(day);
    QCOMPARE(day.displayFormat(), vexdesk::shownDateFormat(QLocale()));
    QDateTimeEdit moment;
    moment.setCalendarPopup(true);
    tadata::setUpDateEditor(moment);
    QCOMPARE(moment.displayFormat(), vexdesk::shownMomentFormat(QLocale()));
    QVERIFY(moment.displayFormat() != day.displayFormat());
}

void TestWidgets::calendarsBeginTheWeekAsTheSystemDoes()
{
    QDateEdit day;
    day.setCalendarPopup(true);
    const Qt::DayOfWeek first = QLocale::system().firstDayOfWeek();
    day.calendarWidget()->setFirstDayOfWeek(first == Qt::Monday ? Qt::Tuesday : Qt::Monday);
    tadata::setUpDateEditor(day);
    QCOMPARE(day.calendarWidget()->firstDayOfWeek(), first);
    QVERIFY(day.calendarWidget()->isGridVisible());
}

void TestWidgets::formatsStandBehindWhatABoxOffers()
{
    QComboBox separator;
    QComboBox date;
    QComboBox time;
    date.addItem(QStringLiteral("own"));
    tadata::FormatBoxes{separator, date, time}.fill(FormatPage::Export);
    const auto holds = [](const QComboBox& box, int first, const QList<tadata::TextFormat>& all) {
        bool isRight = box.count() == first + all.size();
        for (int i = first; isRight && i < box.count(); ++i)
            isRight = box.itemText(i) == all[i - first].title &&
                      box.itemData(i).toString() == all[i - first].pattern;
        return isRight;
    };
    QVERIFY(holds(separator, 0, tadata::separators(FormatPage::Export)));
    QVERIFY(holds(date, 1, tadata::dateFormats(FormatPage::Export)));
    QVERIFY(holds(time, 0, tadata::timeFormats(FormatPage::Export)));
}

void TestWidgets::aWizardIsAsWideAsAPageNeeds()
{
    // No page needs less than nothing.
    OnePage usual(0);
    usual.show();
    QVERIFY(QTest::qWaitForWindowExposed(&usual));
    const int wanted = usual.page->width() + 20;
    OnePage wide(wanted);
    wide.show();
    EVENTUALLY_EQUAL(wide.page->width(), wanted);
    QCOMPARE(wide.height(), usual.height());
    // One without a page has nothing to be widened for.
    QWizard empty;
    tadata::widenForPage(empty, wanted);
    QVERIFY(!empty.testAttribute(Qt::WA_Resized));
}

void TestWidgets::aWizardIsNoWiderThanTheScreen()
{
    OnePage wizard(100000);
    wizard.show();
    EVENTUALLY_EQUAL(wizard.width(), wizard.screen()->availableSize().width());
}

void TestWidgets::aWizardWithASizeKeepsIt()
{
    constexpr QSize own(620, 480);
    OnePage wizard(own.width() + 100);
    wizard.resize(own);
    wizard.show();
    QVERIFY(QTest::qWaitForWindowExposed(&wizard));
    QCOMPARE(wizard.size(), own);
}

QTEST_MAIN(TestWidgets)
#include "tst_widgets.moc"
