// SPDX-License-Identifier: MIT
#pragma once

#include "support/child.h"
#include "support/hands.h"

#include <QtCore/QDir>
#include <QtCore/QLatin1String>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QWizard>

#include <memory>

namespace testsupport {

/// What the tests of the two wizards share: the wizard over the demonstration data and a store of
/// the test's own, what a user presses, and the tests of what every wizard does.
class WizardTest : public QObject
{
    Q_OBJECT

protected:
    struct Expected
    {
        const char* settings; ///< the group in which it keeps its size
        QString title;
        QStringList pages; ///< their titles
        int labels;        ///< how many it has
    };

    explicit WizardTest(Expected expected);
    ~WizardTest() override;

    /// Before and after each test function.
    virtual void prepare() {}
    virtual void tidy() {}
    virtual std::unique_ptr<QWizard> makeWizard() = 0;
    /// Goes through the pages of a new wizard and fills them, so that it can be finished.
    virtual void fillAll() = 0;
    virtual QString nameOf(QWidget* widget) const { return widget->objectName(); }

    /// Another wizard, shown.
    void open();
    QDir user() const { return m_user; }
    QAbstractButton* button(QWizard::WizardButton which) const { return m_wizard->button(which); }
    bool enabled(QWizard::WizardButton which) const { return button(which)->isEnabled(); }
    QString title() const { return m_wizard->currentPage()->title(); }
    template <typename Widget>
    Widget* child(const char* name) const
    {
        return testsupport::child<Widget>(m_wizard->currentPage(), name);
    }
    /// Where Tab goes from the widget that has the focus, by names.
    QStringList tabNames() const;
    void type(Qt::Key key) const { hands::keyClick(m_wizard->focusWidget(), key); }
    void type(const char* text) const
    {
        hands::keyClicks(m_wizard->focusWidget(), QLatin1String(text));
    }
    /// Chooses the series ORIENT, FX, GBPUSD on the first page by the keyboard alone, and goes on.
    void typeSeries() const;

    std::unique_ptr<QWizard> m_wizard;

private Q_SLOTS:
    void init();
    void cleanup();

    void looksAsItShould();
    void keepsItsSize_data();
    void keepsItsSize();
    void hasASizeOfItsOwnAtFirst();
    void survivesASizeThatIsNone();
    void everyLabelHasABuddy();

private:
    const Expected m_expected;
    QDir m_user;
};

} // namespace testsupport
