// SPDX-License-Identifier: MIT
#include "desk/chart/fittedlabel.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QPainter>
#include <QtGui/QTextLayout>
#include <QtWidgets/QToolTip>

#include <algorithm>

namespace vexdesk {

namespace {

const QString partDistance = QStringLiteral("   ");

// A part that is wider than a line, broken between its words.
QStringList brokenPart(const QString& part, const QFont& font, int width)
{
    QTextLayout layout(part, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(1, width));
        lines.append(part.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines;
}

// A name and its number stay together where they can.
QStringList linesOf(const QString& text, const QFont& font, int width)
{
    const QFontMetrics metrics(font);
    const auto isFitting = [&](const QString& line) {
        return metrics.horizontalAdvance(line) <= width;
    };
    QStringList lines;
    for (const QString& part : text.split(partDistance, Qt::SkipEmptyParts)) {
        if (!lines.isEmpty() && isFitting(lines.constLast() + partDistance + part))
            lines.last() += partDistance + part;
        else if (isFitting(part))
            lines.append(part);
        else
            lines.append(brokenPart(part, font, width));
    }
    return lines;
}

} // namespace

FittedLabel::FittedLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    // As much room as there is, and none is asked for.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

FittedLabel::~FittedLabel() = default;

void FittedLabel::setLines(int lines)
{
    if (lines == m_lines)
        return;
    m_lines = lines;
    updateGeometry();
    update();
}

int FittedLabel::linesFor(const QString& text, int width) const
{
    return std::max(1, static_cast<int>(linesOf(text, font(), width).size()));
}

QStringList FittedLabel::shownLines() const
{
    const QStringList all = linesOf(text(), font(), width());
    if (all.size() <= m_lines)
        return all;
    if (m_lines == 1)
        return {fontMetrics().elidedText(text(), Qt::ElideRight, width())};
    QStringList shown = all.first(m_lines);
    // With a word more than has room, or the line would not look cut off.
    const QString cut = shown.constLast() + partDistance + all.at(m_lines);
    shown.last() = fontMetrics().elidedText(cut, Qt::ElideRight, width());
    return shown;
}

bool FittedLabel::isElided() const
{
    return linesFor(text(), width()) > m_lines;
}

int FittedLabel::heightOf(int lines) const
{
    return fontMetrics().height() + (lines - 1) * fontMetrics().lineSpacing();
}

int FittedLabel::heightForWidth(int width) const
{
    return heightOf(linesFor(text(), width));
}

QSize FittedLabel::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()), heightOf(m_lines)};
}

QSize FittedLabel::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

bool FittedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && isElided()) {
        // A tool tip does not break lines by itself: the parts stand below each other.
        const QString all = text().replace(partDistance, QStringLiteral("\n"));
        const QString more = toolTip().isEmpty() ? QString() : QStringLiteral("\n\n") + toolTip();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), all + more, this);
        return true;
    }
    return QLabel::event(event);
}

void FittedLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const QFontMetrics metrics = fontMetrics();
    const QStringList shown = shownLines();
    int top = (height() - sizeHint().height()) / 2;
    for (const QString& line : shown) {
        painter.drawText(QRect(0, top, width(), metrics.height()),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, line);
        top += metrics.lineSpacing();
    }
}

} // namespace vexdesk
