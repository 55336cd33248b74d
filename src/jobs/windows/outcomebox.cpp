// SPDX-License-Identifier: MIT
#include "outcomebox.h"

#include <QtCore/QTextBoundaryFinder>
#include <QtGui/QFontMetrics>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QStyle>

namespace {

constexpr qsizetype shownCharacters = 600;
constexpr qsizetype shownLines = 12;
// What has no place for a line break is shown on one line, and a box is never wider than this.
constexpr qsizetype unbrokenCharacters = 100;
constexpr qsizetype detailsCharacters = qsizetype(32) * 1024;

// Where a text may be cut: within it, at this place or just before it.
qsizetype cutBefore(const QString& text, qsizetype at)
{
    return text.at(at).isLowSurrogate() ? at - 1 : at;
}

// The beginning says what went wrong and where, the end names the file or the reason.
QString withoutMiddle(const QString& text, qsizetype most)
{
    if (text.size() <= most)
        return text;
    const qsizetype begin = cutBefore(text, most * 2 / 3);
    const qsizetype end = cutBefore(text, text.size() - (most - begin - 1));
    return text.left(begin) + u'…' + text.mid(end);
}

QString withoutMiddleLines(const QString& text)
{
    const QStringList lines = text.split(u'\n');
    if (lines.size() <= shownLines)
        return text;
    constexpr qsizetype ofEach = shownLines / 2;
    return (lines.first(ofEach) + QStringList{QStringLiteral("…")} + lines.last(ofEach))
        .join(u'\n');
}

QString withoutMiddlesOfRuns(const QString& text)
{
    QString result;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Line, text);
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype next = finder.toNextBoundary();
        const qsizetype end = next < 0 ? text.size() : next;
        result += withoutMiddle(text.mid(begin, end - begin), unbrokenCharacters);
        begin = end;
    }
    return result;
}

} // namespace

OutcomeBox::OutcomeBox(QMessageBox::Icon icon, const QString& title, const QString& text)
    : QMessageBox(icon, title, shown(text), QMessageBox::Ok)
{
    setTextFormat(Qt::PlainText);
    if (this->text() != text)
        setDetailedText(details(text));
    makeRoomForTitle();
}

void OutcomeBox::tell(QMessageBox::Icon icon, const QString& title, const QString& text)
{
    OutcomeBox(icon, title, text).exec();
}

QString OutcomeBox::shown(const QString& text)
{
    return withoutMiddlesOfRuns(withoutMiddleLines(withoutMiddle(text, shownCharacters)));
}

QString OutcomeBox::details(const QString& text)
{
    if (text.size() <= detailsCharacters)
        return text;
    const qsizetype end = cutBefore(text, detailsCharacters);
    return text.left(end) +
           tr("\n\n(показано начало сообщения, не показано символов: %L1)").arg(text.size() - end);
}

void OutcomeBox::makeRoomForTitle()
{
    auto* const grid = qobject_cast<QGridLayout*>(layout());
    if (!grid)
        return;
    // The window manager's font is not known; a title bar often has a bold one.
    QFont titleFont = font();
    titleFont.setBold(true);
    // An icon, three buttons and what is between them, each about as wide as the bar is high.
    const int besideTitle = 6 * style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this);
    const int width = QFontMetrics(titleFont).horizontalAdvance(windowTitle()) + besideTitle;
    grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}
