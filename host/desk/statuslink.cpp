// SPDX-License-Identifier: MIT
#include "desk/statuslink.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QStylePainter>

#include <algorithm>

namespace vexdesk {

namespace {

constexpr int margin = 4; // device-independent pixels
constexpr int leastCharacters = 14;
constexpr int mostCharacters = 150;

} // namespace

StatusLink::StatusLink(QWidget* parent)
    : QToolButton(parent)
{
    setAutoRaise(true);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

StatusLink::~StatusLink() = default;

QSize StatusLink::sizeOf(int textWidth) const
{
    const QFontMetrics metrics = fontMetrics();
    return {std::min(textWidth, mostCharacters * metrics.averageCharWidth()) + 2 * margin,
            metrics.height() + margin};
}

QSize StatusLink::sizeHint() const
{
    // What belongs to no text, such as the end of a slanted letter, needs its room too.
    return sizeOf(fontMetrics().size(Qt::TextShowMnemonic, text()).width() + margin);
}

QSize StatusLink::minimumSizeHint() const
{
    const QSize least = sizeOf(leastCharacters * fontMetrics().averageCharWidth());
    return least.boundedTo(sizeHint());
}

void StatusLink::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QToolButton::keyPressEvent(event);
}

void StatusLink::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter(this);
    QFont underlined = font();
    underlined.setUnderline(true);
    painter.setFont(underlined);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Link));
    const QRect inner = rect().adjusted(margin, 0, -margin, 0);
    const QString shown =
        fontMetrics().elidedText(text(), Qt::ElideRight, inner.width(), Qt::TextShowMnemonic);
    painter.drawText(
        inner, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextShowMnemonic, shown);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        // However the focus came here: without a mark nobody knows what Return would open.
        focus.state |= QStyle::State_KeyboardFocusChange;
        focus.backgroundColor = palette().color(QPalette::Window);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

} // namespace vexdesk
