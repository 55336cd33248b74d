// SPDX-License-Identifier: MIT
#include "desk/rowbutton.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionButton>

namespace vexdesk {

namespace {

// Device-independent pixels.
constexpr int pictureSize = 24;
constexpr int margin = 10;
constexpr int gap = 12;

} // namespace

RowButton::RowButton(QWidget* parent)
    : QPushButton(parent)
{
    setIconSize(QSize(pictureSize, pictureSize));
    setFlat(true);
    setAutoDefault(false);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
}

RowButton::~RowButton() = default;

void RowButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QPushButton::keyPressEvent(event);
}

void RowButton::setRemark(const QString& remark)
{
    m_remark = remark;
    setAccessibleDescription(remark);
    updateGeometry();
    update();
}

QSize RowButton::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int remark = m_remark.isEmpty() ? 0 : 2 * gap + metrics.horizontalAdvance(m_remark);
    return {margin + pictureSize + gap + metrics.horizontalAdvance(text()) + remark + margin,
            qMax(pictureSize, metrics.height()) + margin};
}

QSize RowButton::minimumSizeHint() const
{
    return sizeHint();
}

void RowButton::paintLight(QPainter& painter) const
{
    QColor background = palette().color(QPalette::Highlight);
    background.setAlphaF(isDown() ? 0.30F : 0.12F);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(background);
    painter.drawRoundedRect(rect(), 4, 4);
}

void RowButton::paintEvent(QPaintEvent* /*event*/)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    QPainter painter(this);
    if (isEnabled() && (underMouse() || hasFocus()))
        paintLight(painter);

    const QRect inner = rect().adjusted(margin, 0, -margin, 0);
    const auto place = [&](Qt::Alignment alignment, const QSize& size) {
        return QStyle::alignedRect(layoutDirection(), alignment | Qt::AlignVCenter, size, inner);
    };
    icon().paint(&painter, place(Qt::AlignLeft, iconSize()), Qt::AlignCenter,
                 isEnabled() ? QIcon::Normal : QIcon::Disabled);
    const QSize textSize(inner.width() - pictureSize - gap, inner.height());
    const int flags = Qt::AlignVCenter | Qt::TextSingleLine;
    // The option's palette already is the one of the enabled or disabled state.
    const QPalette& colours = option.palette;
    style()->drawItemText(&painter, place(Qt::AlignRight, textSize),
                          flags | QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft),
                          colours, isEnabled(), text(), QPalette::WindowText);
    style()->drawItemText(&painter, inner,
                          flags | QStyle::visualAlignment(layoutDirection(), Qt::AlignRight),
                          colours, isEnabled(), m_remark, QPalette::PlaceholderText);
    if (option.state & QStyle::State_KeyboardFocusChange && hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        focus.rect = rect().adjusted(2, 2, -2, -2);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

} // namespace vexdesk
