// SPDX-License-Identifier: MIT
#include "desk/optionspageview.h"

#include "desk/errorreport.h"

#include <vexdesk/ioptionspage.h>

#include <QtGui/QScreen>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <memory>

namespace vexdesk {

OptionsPageView::OptionsPageView(IOptionsPage* page, const QString& title, QWidget* parent)
    : QScrollArea(parent)
    , m_page(page)
    , m_title(title)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    // The page's own widgets take the focus.
    setFocusPolicy(Qt::NoFocus);
}

OptionsPageView::~OptionsPageView() = default;

void OptionsPageView::showEvent(QShowEvent* event)
{
    QScrollArea::showEvent(event);
    if (m_state == State::NotShown)
        fill();
}

void OptionsPageView::fill()
{
    m_state = State::Made;
    auto content = std::make_unique<QWidget>(this);
    auto* const layout = new QVBoxLayout(content.get());
    layout->setContentsMargins(0, 0, 0, 0);
    if (const Result<QWidget*> widget = makeWidget(content.get())) {
        layout->addWidget(*widget);
        setContent(content.release());
    } else {
        // It may have remembered what it began to make and what goes now.
        finish();
        content.reset();
        setContent(makeNote(widget.message()));
    }
    Q_EMIT filled();
}

Result<QWidget*> OptionsPageView::makeWidget(QWidget* parent)
{
    QWidget* widget = nullptr;
    const Outcome made = outcomeOf([&] { widget = m_page->createPage(parent); });
    if (!made)
        return Failure{tr("Страницу «%1» не удалось открыть: %2").arg(m_title, made.message())};
    if (!widget)
        return Failure{tr("Страницу «%1» не удалось открыть: модуль её не создал.").arg(m_title)};
    return widget;
}

QWidget* OptionsPageView::makeNote(const QString& text)
{
    auto* const note = new QLabel(text);
    note->setObjectName(QStringLiteral("pageFault"));
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    note->setMargin(9); // as a page's own layout has it
    note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    note->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return note;
}

void OptionsPageView::setContent(QWidget* content)
{
    setWidget(content);
    // The background is the tab's or the dialog's.
    content->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    content->show();
    // A page is not to be scrolled sideways, as long as the screen has the room for it.
    const int width = content->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
    setMinimumWidth(std::min(width, screen()->availableSize().width()));
}

bool OptionsPageView::apply()
{
    if (m_state != State::Made)
        return true;
    const Outcome applied = outcomeOf([&] { m_page->apply(); });
    if (applied)
        return true;
    reportError(tr("Настройки страницы «%1» не сохранены: %2").arg(m_title, applied.message()));
    return false;
}

void OptionsPageView::finish()
{
    if (m_state != State::Made)
        return;
    m_state = State::Done;
    if (const Outcome finished = outcomeOf([&] { m_page->finish(); }); !finished) {
        reportError(
            tr("Ошибка страницы «%1» при закрытии настроек: %2").arg(m_title, finished.message()));
    }
}

} // namespace vexdesk
