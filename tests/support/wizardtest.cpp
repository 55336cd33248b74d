// SPDX-License-Identifier: MIT
#include "support/wizardtest.h"

#include "support/filetree.h"
#include "support/hands.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/appsettings.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtWidgets/QLabel>

#include <algorithm>

namespace testsupport {

namespace {

const QString sizeKey = QStringLiteral("dialog_size");

AppSettings settingsOf(const char* group)
{
    return AppSettings(QLatin1String(group));
}

} // namespace

WizardTest::WizardTest(Expected expected)
    : m_expected(std::move(expected))
{}

WizardTest::~WizardTest() = default;

void WizardTest::init()
{
    failOnStrayWarnings();
    vexdesk::ReferenceData::install(vexdesk::ReferenceData::demonstration());
    m_user = newUserFolder();
    prepare();
}

void WizardTest::cleanup()
{
    m_wizard.reset();
    tidy();
    QVERIFY(m_user.removeRecursively());
}

void WizardTest::open()
{
    m_wizard.reset(); // it keeps its size for the next one
    m_wizard = makeWizard();
    m_wizard->show();
    QVERIFY(QTest::qWaitForWindowActive(m_wizard.get()));
}

QStringList WizardTest::tabNames() const
{
    const QList<std::pair<QWizard::WizardButton, QString>> buttons{
        {QWizard::BackButton, QStringLiteral("Back")},
        {QWizard::NextButton, QStringLiteral("Next")},
        {QWizard::FinishButton, QStringLiteral("Finish")},
        {QWizard::CancelButton, QStringLiteral("Cancel")}};
    QStringList names;
    const QList<QWidget*> order = tabOrder(m_wizard.get());
    for (QWidget* widget : order) {
        const auto found = std::find_if(buttons.begin(), buttons.end(), [&](const auto& known) {
            return button(known.first) == widget;
        });
        names.append(found == buttons.end() ? nameOf(widget) : found->second);
    }
    return names;
}

void WizardTest::typeSeries() const
{
    QCOMPARE(m_wizard->focusWidget(), child<QWidget>("stock"));
    for (const char* text : {"ORIENT", "FX", "GB"}) {
        type(text);
        type(Qt::Key_Tab);
    }
}

void WizardTest::looksAsItShould()
{
    open();
    QCOMPARE(m_wizard->windowTitle(), m_expected.title);
    QVERIFY(!m_wizard->windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
    QVERIFY(!m_wizard->parentWidget());
    QStringList titles;
    const QList<int> ids = m_wizard->pageIds();
    for (const int id : ids)
        titles.append(m_wizard->page(id)->title());
    QCOMPARE(titles, m_expected.pages);
    QCOMPARE(title(), m_expected.pages.first());
}

void WizardTest::keepsItsSize_data()
{
    QTest::addColumn<QString>("how");
    for (const char* how : {"finish", "cancel", "escape", "destroyed"})
        QTest::newRow(how) << QString::fromLatin1(how);
}

void WizardTest::keepsItsSize()
{
    QFETCH(const QString, how);
    const QSize size(711, 433);
    open();
    if (how == u"finish")
        fillAll();
    m_wizard->resize(size);
    QCOMPARE(m_wizard->size(), size);
    if (how == u"finish")
        click(button(QWizard::FinishButton));
    else if (how == u"cancel")
        click(button(QWizard::CancelButton));
    else if (how == u"escape")
        hands::keyClick(m_wizard.get(), Qt::Key_Escape);
    QVERIFY(!settingsOf(m_expected.settings).contains(sizeKey));
    m_wizard.reset();
    QCOMPARE(settingsOf(m_expected.settings).value(sizeKey).toSize(), size);

    open();
    QCOMPARE(m_wizard->size(), size);
}

void WizardTest::hasASizeOfItsOwnAtFirst()
{
    open();
    QVERIFY(!settingsOf(m_expected.settings).contains(sizeKey));
    const QSize minimum = m_wizard->minimumSizeHint();
    QVERIFY(m_wizard->width() >= minimum.width() && m_wizard->height() >= minimum.height());
}

void WizardTest::survivesASizeThatIsNone()
{
    settingsOf(m_expected.settings).setValue(sizeKey, QStringLiteral("large"));
    open();
    QVERIFY(m_wizard->width() >= m_wizard->minimumWidth());
    QVERIFY(m_wizard->height() >= m_wizard->minimumHeight());
    fillAll();
    QVERIFY(enabled(QWizard::FinishButton));
}

void WizardTest::everyLabelHasABuddy()
{
    open();
    fillAll();
    int labels = 0;
    const QList<int> ids = m_wizard->pageIds();
    for (const int id : ids) {
        const QList<QLabel*> all = m_wizard->page(id)->findChildren<QLabel*>();
        for (const QLabel* label : all) {
            // It names nothing, it warns.
            if (label->objectName() == u"warningLabel")
                continue;
            ++labels;
            QVERIFY2(label->buddy(), qPrintable(label->text()));
            QVERIFY2(label->buddy()->focusPolicy() & Qt::TabFocus, qPrintable(label->text()));
            QCOMPARE(label->buddy()->parentWidget(), m_wizard->page(id));
        }
    }
    QCOMPARE(labels, m_expected.labels);
}

} // namespace testsupport
