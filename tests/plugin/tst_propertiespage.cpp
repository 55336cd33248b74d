// SPDX-License-Identifier: MIT
#include "tadatamanagerpropertiesform.h"
#include "tadatamanagerpropertiespage.h"

#include "support/child.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/markingtranslator.h"
#include "support/settingsfile.h"
#include "support/strictlog.h"

#include <vexdesk/appsettings.h>
#include <vexdesk/icore.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QPointer>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSpinBox>

#include <memory>

namespace {

const QString group = QStringLiteral("TADataManager");
const QString deleteSecondsKey = QStringLiteral("deleteSeconds");
const QString storeForDaysKey = QStringLiteral("storeForDays");

} // namespace

class TestPropertiesPage final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theFormIsLaidOut();
    void theFormsTextsAreExact();
    void theFormsTextsAreTranslatable();
    void theFormConnectsItselfByName();
    void theDaysAreBounded();
    void uncheckingDisablesTheDaysAtOnce();
    void halfCheckedIsNotChecked();

    void thePageIntroducesItself();
    void thePagesTextsAreTranslatable();
    void thePageAnswersToItsInterface();
    void thePageDeclaresOneSignal();
    void thePageTakesNoPartInTheSearch_data();
    void thePageTakesNoPartInTheSearch();

    void withoutSettingsTheDefaultsAreShown();
    void storedValuesAreShown_data();
    void storedValuesAreShown();
    void showingStoresNothing();
    void applyStoresWhatIsShown();
    void theDaysAreKeptWhileThePurgeIsOff();
    void daysOutOfBoundsAreStoredWithinThem();
    void changedComesAfterTheValuesAreStored();
    void applyWithoutAFormDoesNothing();
    void applyAfterFinishDoesNothing();
    void applyAfterTheFormIsGoneDoesNothing();
    void finishLeavesTheFormToItsOwner();
    void theFormThatWasMadeLastIsTheOneThatCounts();
    void aPageCanBeShownAnew();

private:
    QWidget* makeForm() { return m_page->createPage(m_dialog.get()); }
    static QCheckBox* deleteSeconds(const QWidget* form)
    {
        return testsupport::child<QCheckBox>(form, qPrintable(deleteSecondsKey));
    }
    static QSpinBox* storeForDays(const QWidget* form)
    {
        return testsupport::child<QSpinBox>(form, qPrintable(storeForDaysKey));
    }
    void show(QWidget* form)
    {
        m_dialog->show();
        form->show();
        m_dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    }
    static void click(QCheckBox* box)
    {
        // In the middle of a wide one there is nothing to click on.
        hands::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    }
    static QVariant stored(const QString& key) { return AppSettings(group).value(key); }
    static bool hasStored(const QString& key) { return AppSettings(group).contains(key); }

    std::unique_ptr<QWidget> m_dialog;
    std::unique_ptr<TADataManagerPropertiesPage> m_page;
};

void TestPropertiesPage::init()
{
    testsupport::failOnStrayWarnings();
    m_dialog = std::make_unique<QWidget>();
    m_page = std::make_unique<TADataManagerPropertiesPage>(nullptr);
}

void TestPropertiesPage::cleanup()
{
    m_page.reset();
    m_dialog.reset();
    QVERIFY(ICore::getDir(QString(), false).removeRecursively());
}

void TestPropertiesPage::theFormIsLaidOut()
{
    const TADataManagerPropertiesForm form(nullptr);
    QCOMPARE(form.objectName(), QStringLiteral("TADataManagerPropertiesForm"));
    QCOMPARE(form.size(), QSize(446, 300));
    auto* const layout = testsupport::child<QGridLayout>(&form, "gridLayout");
    QVERIFY(layout);
    QCOMPARE(form.layout(), layout);
    QCOMPARE(layout->count(), 5);
    QCOMPARE(layout->itemAtPosition(0, 0)->widget(), deleteSeconds(&form));
    QCOMPARE(layout->itemAtPosition(0, 1)->widget(), storeForDays(&form));
    QCOMPARE(layout->itemAtPosition(0, 2)->widget(), testsupport::child<QLabel>(&form, "days"));
    const QSpacerItem* const across = layout->itemAtPosition(0, 3)->spacerItem();
    QVERIFY(across);
    QCOMPARE(across->sizeHint(), QSize(40, 20));
    QCOMPARE(across->expandingDirections(), Qt::Horizontal);
    const QSpacerItem* const down = layout->itemAtPosition(1, 0)->spacerItem();
    QVERIFY(down);
    QCOMPARE(down->sizeHint(), QSize(20, 40));
    QCOMPARE(down->expandingDirections(), Qt::Vertical);
    QVERIFY(deleteSeconds(&form)->isChecked());
    QVERIFY(!deleteSeconds(&form)->isTristate());
    QVERIFY(storeForDays(&form)->isEnabled());
}

void TestPropertiesPage::theFormsTextsAreExact()
{
    const TADataManagerPropertiesForm form(nullptr);
    QCOMPARE(form.windowTitle(), QStringLiteral("Form"));
    QCOMPARE(deleteSeconds(&form)->text(),
             QStringLiteral("Удалять историю в \"секундах\" по истечении "));
    QCOMPARE(testsupport::child<QLabel>(&form, "days")->text(), QStringLiteral("дн."));
    QVERIFY(storeForDays(&form)->prefix().isEmpty());
    QVERIFY(storeForDays(&form)->suffix().isEmpty());
}

void TestPropertiesPage::theFormsTextsAreTranslatable()
{
    const testsupport::MarkingTranslator translator;
    const TADataManagerPropertiesForm form(nullptr);
    const QString context = QStringLiteral("TADataManagerPropertiesForm|");
    QCOMPARE(form.windowTitle(), context + QStringLiteral("Form"));
    QCOMPARE(deleteSeconds(&form)->text(),
             context + QStringLiteral("Удалять историю в \"секундах\" по истечении "));
    QCOMPARE(testsupport::child<QLabel>(&form, "days")->text(), context + QStringLiteral("дн."));
}

void TestPropertiesPage::theFormConnectsItselfByName()
{
    const QMetaObject& meta = TADataManagerPropertiesForm::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    const QMetaMethod slot = meta.method(meta.methodOffset());
    QCOMPARE(slot.methodSignature(), QByteArray("on_deleteSeconds_stateChanged(int)"));
    QCOMPARE(slot.methodType(), QMetaMethod::Slot);
    TADataManagerPropertiesForm form(nullptr);
    for (const int state : {Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked, Qt::Checked}) {
        QVERIFY(slot.invoke(&form, Q_ARG(int, state)));
        QCOMPARE(storeForDays(&form)->isEnabled(), state == Qt::Checked);
    }
}

void TestPropertiesPage::theDaysAreBounded()
{
    QWidget* const form = makeForm();
    QSpinBox* const days = storeForDays(form);
    QCOMPARE(days->minimum(), 0);
    QCOMPARE(days->maximum(), 99);
    QCOMPARE(days->singleStep(), 1);
    show(form);
    days->setFocus();
    const auto type = [days](const char* text) {
        days->selectAll();
        hands::keyClicks(days, QLatin1String(text));
        return days->value();
    };
    QCOMPARE(type("0"), 0);
    hands::keyClick(days, Qt::Key_Down);
    QCOMPARE(days->value(), 0);
    QCOMPARE(type("99"), 99);
    hands::keyClick(days, Qt::Key_Up);
    QCOMPARE(days->value(), 99);
    QCOMPARE(type("100"), 10); // the third digit is not taken
    QCOMPARE(type("-5"), 5);   // nor is the sign
}

void TestPropertiesPage::uncheckingDisablesTheDaysAtOnce()
{
    QWidget* const form = makeForm();
    show(form);
    click(deleteSeconds(form));
    QVERIFY(!deleteSeconds(form)->isChecked());
    QVERIFY(!storeForDays(form)->isEnabled());
    QCOMPARE(storeForDays(form)->value(), 7);
    click(deleteSeconds(form));
    QVERIFY(deleteSeconds(form)->isChecked());
    QVERIFY(storeForDays(form)->isEnabled());
    QVERIFY(!hasStored(deleteSecondsKey));
}

void TestPropertiesPage::halfCheckedIsNotChecked()
{
    QWidget* const form = makeForm();
    deleteSeconds(form)->setCheckState(Qt::PartiallyChecked);
    QVERIFY(!storeForDays(form)->isEnabled());
    deleteSeconds(form)->setCheckState(Qt::Checked);
    QVERIFY(storeForDays(form)->isEnabled());
}

void TestPropertiesPage::thePageIntroducesItself()
{
    QCOMPARE(m_page->id(), QStringLiteral("TADataManager.General"));
    QCOMPARE(m_page->displayName(), QStringLiteral("Общее"));
    QCOMPARE(m_page->category(), QStringLiteral("TADataManager"));
    QCOMPARE(m_page->displayCategory(), QStringLiteral("Истор. данные ТА"));
}

void TestPropertiesPage::thePagesTextsAreTranslatable()
{
    const testsupport::MarkingTranslator translator;
    QCOMPARE(m_page->id(), QStringLiteral("TADataManager.General"));
    QCOMPARE(m_page->displayName(), QStringLiteral("TADataManagerPropertiesPage|Общее"));
    QCOMPARE(m_page->category(), QStringLiteral("TADataManager"));
    QCOMPARE(m_page->displayCategory(),
             QStringLiteral("TADataManagerPropertiesPage|Истор. данные ТА"));
}

void TestPropertiesPage::thePageAnswersToItsInterface()
{
    QObject* const object = m_page.get();
    QCOMPARE(qobject_cast<IOptionsPage*>(object), static_cast<IOptionsPage*>(m_page.get()));
    QVERIFY(object->qt_metacast("com.oxa.vexdesk.Plugin.IOptionsPage/1.0"));
    QObject parent;
    QPointer<QObject> owned = new TADataManagerPropertiesPage(&parent);
    QCOMPARE(owned->parent(), &parent);
}

void TestPropertiesPage::thePageDeclaresOneSignal()
{
    const QMetaObject* const meta = m_page->metaObject();
    QCOMPARE(meta->methodCount() - meta->methodOffset(), 1);
    const QMetaMethod method = meta->method(meta->methodOffset());
    QCOMPARE(method.methodSignature(), QByteArray("changed()"));
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
}

void TestPropertiesPage::thePageTakesNoPartInTheSearch_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"", "Общее", "Истор. данные ТА", "секундах", "TADataManager", "дн."})
        QTest::newRow(text) << QString::fromUtf8(text);
}

void TestPropertiesPage::thePageTakesNoPartInTheSearch()
{
    QFETCH(const QString, text);
    QVERIFY(!m_page->matches(text));
    makeForm();
    QVERIFY(!m_page->matches(text));
}

void TestPropertiesPage::withoutSettingsTheDefaultsAreShown()
{
    const QWidget* const form = makeForm();
    QVERIFY(qobject_cast<const TADataManagerPropertiesForm*>(form));
    QCOMPARE(form->parent(), m_dialog.get());
    QVERIFY(deleteSeconds(form)->isChecked());
    QVERIFY(storeForDays(form)->isEnabled());
    QCOMPARE(storeForDays(form)->value(), 7);
}

void TestPropertiesPage::storedValuesAreShown_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<int>("days");
    const auto row = [](const char* title, const char* file, bool checked, int days) {
        QTest::newRow(title) << QByteArray(file) << checked << days;
    };
    row("off", "deleteSeconds=false\nstoreForDays=30", false, 30);
    row("on", "deleteSeconds=true\nstoreForDays=99", true, 99);
    row("nothing kept", "storeForDays=0", true, 0);
    row("days alone", "storeForDays=12", true, 12);
    row("off alone", "deleteSeconds=false", false, 7);
    row("below the bounds", "storeForDays=-3", true, 0);
    row("above the bounds", "storeForDays=365", true, 99);
    row("text for days", "storeForDays=week", true, 0);
    row("a list for days", "storeForDays=3, 4", true, 0);
    row("a fraction of days", "storeForDays=3.5", true, 0);
    row("a number for yes", "deleteSeconds=2", true, 7);
    row("a number for no", "deleteSeconds=0", false, 7);
    row("other text for yes", "deleteSeconds=no", true, 7);
    row("a list for yes", "deleteSeconds=true, true", false, 7);
    row("another group", "\n[Other]\ndeleteSeconds=false\nstoreForDays=1", true, 7);
}

void TestPropertiesPage::storedValuesAreShown()
{
    QFETCH(const QByteArray, file);
    QFETCH(const bool, checked);
    QFETCH(const int, days);
    testsupport::writeSettings(file);
    const QWidget* const form = makeForm();
    QCOMPARE(deleteSeconds(form)->isChecked(), checked);
    QCOMPARE(storeForDays(form)->value(), days);
    QCOMPARE(storeForDays(form)->isEnabled(), checked);
}

void TestPropertiesPage::showingStoresNothing()
{
    const QSignalSpy changes(m_page.get(), &TADataManagerPropertiesPage::changed);
    QWidget* const form = makeForm();
    show(form);
    storeForDays(form)->setValue(20);
    m_page->finish();
    QVERIFY(!hasStored(deleteSecondsKey));
    QVERIFY(!hasStored(storeForDaysKey));
    QVERIFY(changes.isEmpty());
}

void TestPropertiesPage::applyStoresWhatIsShown()
{
    const QSignalSpy changes(m_page.get(), &TADataManagerPropertiesPage::changed);
    QWidget* const form = makeForm();
    m_page->apply();
    QCOMPARE(stored(deleteSecondsKey), QVariant(true));
    QCOMPARE(stored(storeForDaysKey), QVariant(7));
    storeForDays(form)->setValue(33);
    deleteSeconds(form)->setChecked(false);
    m_page->apply();
    QCOMPARE(stored(deleteSecondsKey), QVariant(false));
    QCOMPARE(stored(storeForDaysKey), QVariant(33));
    QCOMPARE(changes.size(), 2);
    const QByteArray file = testsupport::readFile(
        ICore::getDir(QString(), false).filePath(QStringLiteral("vexdesk.ini")));
    QCOMPARE(file, QByteArray("[TADataManager]\ndeleteSeconds=false\nstoreForDays=33\n"));
}

void TestPropertiesPage::theDaysAreKeptWhileThePurgeIsOff()
{
    AppSettings(group).setValue(storeForDaysKey, 21);
    QWidget* const form = makeForm();
    show(form);
    click(deleteSeconds(form));
    m_page->apply();
    QCOMPARE(stored(deleteSecondsKey).toBool(), false);
    QCOMPARE(stored(storeForDaysKey).toInt(), 21);
}

void TestPropertiesPage::daysOutOfBoundsAreStoredWithinThem()
{
    AppSettings(group).setValue(storeForDaysKey, 365);
    makeForm();
    QCOMPARE(stored(storeForDaysKey).toInt(), 365);
    m_page->apply();
    QCOMPARE(stored(storeForDaysKey).toInt(), 99);
}

void TestPropertiesPage::changedComesAfterTheValuesAreStored()
{
    QWidget* const form = makeForm();
    storeForDays(form)->setValue(5);
    int seen = -1;
    connect(m_page.get(), &TADataManagerPropertiesPage::changed, this,
            [&seen] { seen = stored(storeForDaysKey).toInt(); });
    m_page->apply();
    QCOMPARE(seen, 5);
}

void TestPropertiesPage::applyWithoutAFormDoesNothing()
{
    const QSignalSpy changes(m_page.get(), &TADataManagerPropertiesPage::changed);
    m_page->apply();
    QVERIFY(changes.isEmpty());
    QVERIFY(!hasStored(deleteSecondsKey));
    m_page->finish();
}

void TestPropertiesPage::applyAfterFinishDoesNothing()
{
    const QSignalSpy changes(m_page.get(), &TADataManagerPropertiesPage::changed);
    storeForDays(makeForm())->setValue(20);
    m_page->finish();
    m_page->apply();
    QVERIFY(changes.isEmpty());
    QVERIFY(!hasStored(storeForDaysKey));
    QVERIFY(!hasStored(deleteSecondsKey));
}

void TestPropertiesPage::applyAfterTheFormIsGoneDoesNothing()
{
    const QSignalSpy changes(m_page.get(), &TADataManagerPropertiesPage::changed);
    delete makeForm();
    m_page->apply();
    QVERIFY(changes.isEmpty());
    QVERIFY(!hasStored(storeForDaysKey));
}

void TestPropertiesPage::finishLeavesTheFormToItsOwner()
{
    const QPointer<QWidget> form = makeForm();
    m_page->finish();
    QVERIFY(form);
    m_page.reset();
    QVERIFY(form);
    m_dialog.reset();
    QVERIFY(!form);
}

void TestPropertiesPage::theFormThatWasMadeLastIsTheOneThatCounts()
{
    storeForDays(makeForm())->setValue(20);
    storeForDays(makeForm())->setValue(40);
    m_page->apply();
    QCOMPARE(stored(storeForDaysKey).toInt(), 40);
}

void TestPropertiesPage::aPageCanBeShownAnew()
{
    storeForDays(makeForm())->setValue(20);
    m_page->apply();
    m_page->finish();
    m_dialog = std::make_unique<QWidget>();
    QWidget* const form = makeForm();
    QCOMPARE(storeForDays(form)->value(), 20);
    deleteSeconds(form)->setChecked(false);
    m_page->apply();
    QCOMPARE(stored(deleteSecondsKey).toBool(), false);
}

QTEST_MAIN(TestPropertiesPage)
#include "tst_propertiespage.moc"
