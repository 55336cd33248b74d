// SPDX-License-Identifier: MIT
#include "desk/chart/charttabs.h"

#include "desk/chart/chartpage.h"
#include "desk/chart/chartview.h"
#include "desk/chart/seriesname.h"

#include <QtCore/QPointer>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTabBar>

namespace vexdesk {

ChartTabs::ChartTabs(QString root, MarkSources& marks, QWidget* parent)
    : QTabWidget(parent)
    , m_root(std::move(root))
    , m_marks(marks)
    , m_memory(ChartMemory::stored())
    , m_follower(m_root)
{
    setObjectName(QStringLiteral("chartTabs"));
    setDocumentMode(true);
    setTabsClosable(true);
    setMovable(true);
    tabBar()->installEventFilter(this);
    constexpr int storeTime = 3000; // ms
    m_storeSoon.setSingleShot(true);
    m_storeSoon.setInterval(storeTime);
    connect(&m_storeSoon, &QTimer::timeout, this, &ChartTabs::store);
    restore();
    connect(this, &QTabWidget::tabCloseRequested, this, &ChartTabs::close);
    connect(this, &QTabWidget::currentChanged, this, &ChartTabs::noteCurrent);
    connect(this, &QTabWidget::currentChanged, this, &ChartTabs::currentChartChanged);
    connect(&m_follower, &StoreFollower::listed, this, &ChartTabs::lookForRecent);
    followRecent();
}

ChartTabs::~ChartTabs()
{
    // The pages would tell of themselves while they go.
    disconnect();
}

// Whoever goes to a tab opens its chart again, as far as the order of the recent ones goes.
void ChartTabs::noteCurrent()
{
    if (m_isClosing || !current())
        return;
    m_memory.open(current()->series());
    storeSoon();
}

// What is offered to be opened should be there, also when it is deleted meanwhile.
void ChartTabs::followRecent()
{
    if (count() > 0) {
        m_follower.stop();
        return;
    }
    lookForRecent();
    m_follower.start();
}

void ChartTabs::lookForRecent()
{
    QList<SeriesName> all;
    for (const ChartState& state : m_memory.recent())
        all.append(state.series);
    m_lookForRecent.run(
        [all, root = m_root] {
            QList<SeriesName> gone = all;
            gone.removeIf([&root](const SeriesName& series) { return isStored(root, series); });
            return gone;
        },
        [this](const QList<SeriesName>& gone) {
            if (gone == m_gone)
                return;
            m_gone = gone;
            Q_EMIT chartsChanged();
        });
}

void ChartTabs::restore()
{
    const QList<SeriesName> open = m_memory.tabs();
    for (const SeriesName& series : open)
        add(series);
    if (const std::optional<SeriesName> current = m_memory.currentTab())
        setCurrentIndex(std::max(0, indexOf(*current)));
}

ChartPage* ChartTabs::page(int index) const
{
    return qobject_cast<ChartPage*>(widget(index));
}

ChartPage* ChartTabs::current() const
{
    return page(currentIndex());
}

int ChartTabs::indexOf(const SeriesName& series) const
{
    for (int i = 0; i < count(); ++i) {
        if (page(i)->series() == series)
            return i;
    }
    return -1;
}

ChartPage& ChartTabs::add(const SeriesName& series)
{
    auto* const added = new ChartPage(m_root, m_memory.stateOf(series), m_marks);
    connect(added, &ChartPage::changed, this, [this, added] {
        if (added == current())
            Q_EMIT currentChartChanged();
    });
    connect(added, &ChartPage::changed, this, &ChartTabs::storeSoon);
    connect(&added->view(), &ChartView::moved, this, &ChartTabs::storeSoon);
    connect(added, &ChartPage::contextMenuWanted, this, &ChartTabs::contextMenuWanted);
    connect(added, &ChartPage::told, this, &ChartTabs::told);
    const int index = addTab(added, series.securityName);
    setTabToolTip(index, seriesDescription(series));
    updateTexts();
    return *added;
}

ChartPage& ChartTabs::open(const SeriesName& series)
{
    m_memory.open(series);
    const int index = indexOf(series);
    ChartPage& opened = index < 0 ? add(series) : *page(index);
    setCurrentWidget(&opened);
    followRecent();
    store();
    Q_EMIT chartsChanged();
    return opened;
}

void ChartTabs::close(int index)
{
    ChartPage* const closed = page(index);
    if (!closed)
        return;
    const bool hadFocus = closed->isAncestorOf(focusWidget());
    closed->giveUpCopying();
    m_memory.remember(closed->state());
    m_isClosing = true;
    removeTab(index);
    m_isClosing = false;
    closed->hide();
    closed->deleteLater(); // its own menu may have closed it
    updateTexts();
    followRecent();
    store();
    if (hadFocus && current())
        current()->setFocus(Qt::OtherFocusReason);
    Q_EMIT chartsChanged();
}

void ChartTabs::closeCurrent()
{
    close(currentIndex());
}

void ChartTabs::closeOthers()
{
    const QWidget* const kept = current();
    for (int i = count() - 1; i >= 0; --i) {
        if (widget(i) != kept)
            close(i);
    }
}

void ChartTabs::showTabMenu(int index, const QPoint& globalPlace)
{
    auto* const menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("tabMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const QPointer<QWidget> tab(widget(index)); // it may be elsewhere when the user has chosen
    connect(menu->addAction(tr("&Закрыть")), &QAction::triggered, this,
            [this, tab] { close(QTabWidget::indexOf(tab)); });
    QAction* const others = menu->addAction(tr("Закрыть &остальные"));
    connect(others, &QAction::triggered, this, [this, tab] {
        if (!tab)
            return;
        setCurrentWidget(tab);
        closeOthers();
    });
    others->setEnabled(count() > 1);
    menu->popup(globalPlace);
}

void ChartTabs::step(int tabs)
{
    if (count() == 0)
        return;
    const bool hadFocus = current()->isAncestorOf(focusWidget());
    setCurrentIndex(((currentIndex() + tabs) % count() + count()) % count());
    if (hadFocus)
        current()->setFocus(Qt::OtherFocusReason);
}

// The security alone, unless another tab has one of the same name.
void ChartTabs::updateTexts()
{
    const auto isAlone = [this](int index) {
        for (int i = 0; i < count(); ++i) {
            if (i != index && page(i)->series().securityName == page(index)->series().securityName)
                return false;
        }
        return true;
    };
    for (int i = 0; i < count(); ++i) {
        const SeriesName& series = page(i)->series();
        QString text =
            isAlone(i)
                ? series.securityName
                : tr("%1 — %2 — %3").arg(series.securityName, series.boardCode, series.stockCode);
        setTabText(i, text.replace(u'&', QStringLiteral("&&")));
    }
}

QList<SeriesName> ChartTabs::recent() const
{
    QList<SeriesName> series;
    for (const ChartState& state : m_memory.recent()) {
        if (!m_gone.contains(state.series))
            series.append(state.series);
    }
    return series;
}

// Not later for each step of a wheel that goes on turning.
void ChartTabs::storeSoon()
{
    if (!m_storeSoon.isActive())
        m_storeSoon.start();
}

void ChartTabs::store()
{
    m_storeSoon.stop();
    QList<SeriesName> tabs;
    for (int i = 0; i < count(); ++i) {
        tabs.append(page(i)->series());
        m_memory.remember(page(i)->state());
    }
    m_memory.setTabs(tabs, current() ? std::optional(current()->series()) : std::nullopt);
    m_memory.store();
}

// As in other programs, the middle button closes a tab. Another click goes to a chart, and so do
// the keys.
bool ChartTabs::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == tabBar() && event->type() == QEvent::MouseButtonRelease) {
        const auto* const mouse = static_cast<QMouseEvent*>(event);
        const int index = tabBar()->tabAt(mouse->pos());
        if (mouse->button() == Qt::MiddleButton && index >= 0) {
            close(index);
            return true;
        }
        if (mouse->button() == Qt::LeftButton && index >= 0 && current())
            current()->setFocus(Qt::MouseFocusReason);
    }
    if (watched == tabBar() && event->type() == QEvent::ContextMenu) {
        const auto* const wanted = static_cast<QContextMenuEvent*>(event);
        const bool isByKey = wanted->reason() == QContextMenuEvent::Keyboard;
        const int index = isByKey ? currentIndex() : tabBar()->tabAt(wanted->pos());
        if (index >= 0)
            showTabMenu(index, isByKey ? tabBar()->mapToGlobal(tabBar()->tabRect(index).center())
                                       : wanted->globalPos());
        return true;
    }
    return QTabWidget::eventFilter(watched, event);
}

} // namespace vexdesk
