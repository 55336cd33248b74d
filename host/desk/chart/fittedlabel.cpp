// SPDX-License-Identifier: MIT
#include "desk/chart/fittedlabel.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QPainter>
#include <QtGui/QTextLayout>
#include <QtWidgets/QToolTip>

#include <algorithm>

namespace vexdesk {

namespace {

// Where the lines of a text begin that is broken between its words.
QList<int> beginsOfLines(const QString& text, const QFont& font, int width)
{
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QList<int> begins;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(1, width));
        begins.append(line.textStart());
    }
    layout.endLayout();
    return begins;
}

} // namespace

FittedLabel::FittedLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
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
    return static_cast<int>(beginsOfLines(text, font(), width).size());
}

QStringList FittedLabel::shownLines() const
{
    const QString all = text();
    const QList<int> begins = beginsOfLines(all, font(), width());
    QStringList shown;
    for (qsizetype i = 0; i < begins.size() && i < m_lines; ++i) {
        const bool isLast = i + 1 == m_lines || i + 1 == begins.size();
        const QString line =
            all.mid(begins.at(i), isLast ? -1 : begins.at(i + 1) - begins.at(i)).trimmed();
        shown.append(isLast ? fontMetrics().elidedText(line, Qt::ElideRight, width()) : line);
    }
    return shown;
}

bool FittedLabel::isElided() const
{
    return linesFor(text(), width()) > m_lines;
}

QSize FittedLabel::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {metrics.horizontalAdvance(text()),
            metrics.height() + (m_lines - 1) * metrics.lineSpacing()};
}

QSize FittedLabel::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

bool FittedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && isElided()) {
        // A tool tip does not break lines by itself: the parts stand below each other.
        const QString all = text().replace(QStringLiteral("   "), QStringLiteral("\n"));
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
