// SPDX-License-Identifier: MIT
#include "support/textcheck.h"

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtGui/QKeySequence>
#include <QtGui/QTextDocument>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QStyleOptionButton>
#include <QtWidgets/QStyleOptionComboBox>
#include <QtWidgets/QTabBar>

#include <functional>

namespace testsupport {

namespace {

constexpr int mostCells = 2000; // of one table

QString placeOf(const QWidget* widget)
{
    QString name = widget->objectName();
    if (name.isEmpty() && widget->parentWidget())
        name = placeOf(widget->parentWidget()) + QStringLiteral(" / ?");
    return name + u':' + QLatin1String(widget->metaObject()->className());
}

QString withoutAccessKey(const QString& text)
{
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == u'&' && ++i == text.size())
            break;
        plain.append(text.at(i));
    }
    return plain;
}

/// Where a text comes from: the program's own words, or what a user or a file brought.
enum class Source { Program, Data };

using Visitor = std::function<void(const QString& place, const QString& text, Source source)>;

void visitActions(const QList<QAction*>& actions, const QString& place, const Visitor& visit)
{
    for (const QAction* const action : actions) {
        const QString where = place + QStringLiteral(" > ") + withoutAccessKey(action->text());
        visit(where, withoutAccessKey(action->text()), Source::Program);
        visit(where + QStringLiteral(" (tip)"), action->toolTip(), Source::Program);
        visit(where + QStringLiteral(" (status)"), action->statusTip(), Source::Program);
        if (action->menu())
            visitActions(action->menu()->actions(), where, visit);
    }
}

void visitHeader(const QHeaderView* header, const QString& place, const Visitor& visit)
{
    for (int section = 0; header->model() && section < header->count(); ++section) {
        visit(
            place,
            header->model()->headerData(section, header->orientation(), Qt::DisplayRole).toString(),
            Source::Program);
    }
}

void visitCells(const QAbstractItemModel* model, const QString& place, const Visitor& visit)
{
    const int columns = model->columnCount();
    const int rows = columns == 0 ? 0 : std::min(model->rowCount(), mostCells / columns);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            for (const int role : {int(Qt::DisplayRole), int(Qt::ToolTipRole)})
                visit(place, model->index(row, column).data(role).toString(), Source::Data);
        }
    }
}

void visitOwnTexts(const QWidget* widget, const QString& place, const Visitor& visit)
{
    if (const auto* const label = qobject_cast<const QLabel*>(widget)) {
        QTextDocument text;
        if (Qt::mightBeRichText(label->text()) && label->textFormat() != Qt::PlainText)
            text.setHtml(label->text());
        else
            text.setPlainText(label->text());
        visit(place, text.toPlainText(), Source::Program);
    } else if (const auto* const button = qobject_cast<const QAbstractButton*>(widget)) {
        visit(place, withoutAccessKey(button->text()), Source::Program);
    } else if (const auto* const group = qobject_cast<const QGroupBox*>(widget)) {
        visit(place, withoutAccessKey(group->title()), Source::Program);
    } else if (const auto* const box = qobject_cast<const QComboBox*>(widget)) {
        visit(place + QStringLiteral(" (empty)"), box->placeholderText(), Source::Program);
        for (int index = 0; index < box->count(); ++index)
            visit(place, box->itemText(index), Source::Program);
    } else if (const auto* const line = qobject_cast<const QLineEdit*>(widget)) {
        visit(place + QStringLiteral(" (empty)"), line->placeholderText(), Source::Program);
        visit(place, line->text(), Source::Data);
    } else if (const auto* const spin = qobject_cast<const QSpinBox*>(widget)) {
        visit(place, spin->prefix() + spin->suffix() + spin->specialValueText(), Source::Program);
    } else if (const auto* const bar = qobject_cast<const QTabBar*>(widget)) {
        for (int index = 0; index < bar->count(); ++index)
            visit(place, withoutAccessKey(bar->tabText(index)), Source::Program);
    } else if (const auto* const text = qobject_cast<const QPlainTextEdit*>(widget)) {
        visit(place, text->toPlainText(), Source::Data);
    } else if (const auto* const header = qobject_cast<const QHeaderView*>(widget)) {
        visitHeader(header, place, visit);
    } else if (const auto* const view = qobject_cast<const QAbstractItemView*>(widget)) {
        if (view->model())
            visitCells(view->model(), place, visit);
    } else if (const auto* const menuBar = qobject_cast<const QMenuBar*>(widget)) {
        visitActions(menuBar->actions(), place, visit);
    } else if (const auto* const menu = qobject_cast<const QMenu*>(widget)) {
        visitActions(menu->actions(), place, visit);
    } else if (const auto* const dock = qobject_cast<const QDockWidget*>(widget)) {
        visit(place + QStringLiteral(" (title)"), dock->windowTitle(), Source::Program);
    } else if (const auto* const status = qobject_cast<const QStatusBar*>(widget)) {
        visit(place, status->currentMessage(), Source::Program);
    }
}

QList<const QWidget*> shownWidgets(const QWidget* window)
{
    QList<const QWidget*> widgets{window};
    const QList<QWidget*> below = window->findChildren<QWidget*>();
    for (const QWidget* const widget : below) {
        if (widget->isVisible() && widget->window() == window)
            widgets.append(widget);
    }
    return widgets;
}

void visitTexts(const QWidget* window, const Visitor& visit)
{
    visit(placeOf(window) + QStringLiteral(" (title)"), window->windowTitle(), Source::Program);
    const QList<const QWidget*> widgets = shownWidgets(window);
    for (const QWidget* const widget : widgets) {
        const QString place = placeOf(widget);
        visit(place + QStringLiteral(" (tip)"), widget->toolTip(), Source::Program);
        visit(place + QStringLiteral(" (status)"), widget->statusTip(), Source::Program);
        visit(place + QStringLiteral(" (help)"), widget->whatsThis(), Source::Program);
        visit(place + QStringLiteral(" (access)"), widget->accessibleName(), Source::Program);
        visitOwnTexts(widget, place, visit);
    }
}

bool isSameInEveryLanguage(const QString& text)
{
    static const QRegularExpression names(QRegularExpression::anchoredPattern(
        QStringLiteral("Vexdesk|English|\\.(txt|csv)|[A-Z_]+(,[A-Z_]+)*|/.*")));
    return names.match(text).hasMatch();
}

bool isForeign(const QString& text, Source source, Speech speech)
{
    static const QRegularExpression russianLetter(QStringLiteral("[А-Яа-яЁё]"));
    static const QRegularExpression latinWord(QStringLiteral("[A-Za-z]{2}"));
    const bool isRussian = russianLetter.match(text).hasMatch();
    if (speech == Speech::English)
        return isRussian && text != u"Русский"; // the language's own name
    return source == Source::Program && !isRussian && latinWord.match(text).hasMatch() &&
           !isSameInEveryLanguage(text);
}

// --- room -------------------------------------------------------------------------------------

/// What a text has and what it needs, in device-independent pixels.
struct Room
{
    QSize has;
    QSize needs;
    QString text;

    bool isEnough() const { return has.width() >= needs.width() && has.height() >= needs.height(); }
};

Room roomOf(const QLabel& label)
{
    const QString& text = label.text();
    if (label.wordWrap()) {
        const int height = label.heightForWidth(label.width());
        return {label.size(), {label.minimumSizeHint().width(), height}, text};
    }
    if (text.contains(u'\n') || label.textFormat() == Qt::RichText || Qt::mightBeRichText(text))
        return {label.size(), label.sizeHint(), text};
    // Up to the last pixel of the last letter: the gap behind it may be cut.
    const QRect ink =
        label.fontMetrics().boundingRect(label.buddy() ? withoutAccessKey(text) : text);
    return {label.contentsRect().size(), {ink.right() + 1, ink.height()}, text};
}

Room roomOf(const QAbstractButton& button)
{
    // Buttons of a class of their own know best what they need.
    if (button.metaObject() != &QPushButton::staticMetaObject)
        return {button.size(), button.sizeHint(), button.text()};
    QStyleOptionButton option;
    option.initFrom(&button);
    const QRect contents =
        button.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &button);
    QSize needs = button.fontMetrics().size(Qt::TextShowMnemonic, button.text());
    if (!button.icon().isNull())
        needs.rwidth() += button.iconSize().width();
    return {contents.size(), needs, button.text()};
}

/// Every entry: the user may choose any. A box that says that it is shorter than its entries shows
/// the chosen one whole, or in its tool tip.
QList<Room> roomsOf(const QComboBox& box)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    option.editable = box.isEditable();
    option.frame = box.hasFrame();
    const QRect field = box.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                    QStyle::SC_ComboBoxEditField, &box);
    constexpr int margin = 1; // that the styles leave on either side of the text
    const QFontMetrics metrics = box.fontMetrics();
    QList<Room> rooms;
    const bool isCompact =
        box.sizeAdjustPolicy() == QComboBox::AdjustToMinimumContentsLengthWithIcon;
    for (int index = 0; index < box.count(); ++index) {
        const QString text = box.itemText(index);
        if (isCompact && (index != box.currentIndex() || box.toolTip().contains(text)))
            continue;
        rooms.append({{field.width() - 2 * margin, box.height()},
                      {metrics.horizontalAdvance(text), metrics.height()},
                      text});
    }
    return rooms;
}

QList<Room> roomsOf(const QHeaderView& header)
{
    QList<Room> rooms;
    const bool isRow = header.orientation() == Qt::Horizontal;
    for (int section = 0; header.model() && section < header.count(); ++section) {
        if (header.isSectionHidden(section))
            continue;
        const QString text =
            header.model()->headerData(section, header.orientation(), Qt::DisplayRole).toString();
        const QSize needs = header.fontMetrics().size(0, text);
        const int length = header.sectionSize(section);
        rooms.append({isRow ? QSize(length, header.height()) : QSize(header.width(), length),
                      isRow ? QSize(header.sectionSizeHint(section), needs.height()) : needs,
                      text});
    }
    return rooms;
}

QList<Room> roomsOf(const QMenuBar& menuBar)
{
    QList<Room> rooms;
    const QList<QAction*> actions = menuBar.actions();
    for (const QAction* const action : actions) {
        const QRect place = menuBar.actionGeometry(const_cast<QAction*>(action)); // a look only
        rooms.append({place.intersected(menuBar.rect()).size(),
                      menuBar.fontMetrics().size(Qt::TextShowMnemonic, action->text()),
                      action->text()});
    }
    return rooms;
}

QList<Room> roomsOf(const QTabBar& bar)
{
    QList<Room> rooms;
    for (int index = 0; index < bar.count(); ++index) {
        const QString text = bar.tabText(index);
        rooms.append({bar.tabRect(index).intersected(bar.rect()).size(),
                      bar.fontMetrics().size(Qt::TextShowMnemonic, text), text});
    }
    return rooms;
}

QList<Room> roomsOf(const QListWidget& list)
{
    QList<Room> rooms;
    for (int row = 0; row < list.count(); ++row) {
        const QModelIndex index = list.model()->index(row, 0);
        const QSize has(list.viewport()->width(), list.visualRect(index).height());
        rooms.append({has,
                      list.wordWrap() ? QSize(0, list.sizeHintForRow(row))
                                      : QSize(list.sizeHintForColumn(0), list.sizeHintForRow(row)),
                      index.data().toString()});
    }
    return rooms;
}

QList<Room> roomsOf(const QWidget* widget)
{
    if (const auto* const label = qobject_cast<const QLabel*>(widget))
        return label->text().isEmpty() ? QList<Room>() : QList<Room>{roomOf(*label)};
    if (const auto* const button = qobject_cast<const QAbstractButton*>(widget)) {
        if (button->text().isEmpty())
            return {};
        return {roomOf(*button)};
    }
    if (const auto* const group = qobject_cast<const QGroupBox*>(widget))
        return {{group->size(), group->minimumSizeHint(), group->title()}};
    if (const auto* const spin = qobject_cast<const QAbstractSpinBox*>(widget))
        return {{spin->size(), spin->minimumSizeHint(), spin->text()}};
    if (const auto* const line = qobject_cast<const QLineEdit*>(widget)) {
        const QSize needs = line->fontMetrics().size(0, line->placeholderText());
        constexpr int margin = 2; // that the edit leaves on either side of the text
        return {{line->size() - QSize(2 * margin, 0), needs, line->placeholderText()}};
    }
    if (const auto* const box = qobject_cast<const QComboBox*>(widget))
        return roomsOf(*box);
    if (const auto* const header = qobject_cast<const QHeaderView*>(widget))
        return roomsOf(*header);
    if (const auto* const menuBar = qobject_cast<const QMenuBar*>(widget))
        return roomsOf(*menuBar);
    if (const auto* const menu = qobject_cast<const QMenu*>(widget))
        return {{menu->size(), menu->sizeHint(), menu->title()}};
    if (const auto* const bar = qobject_cast<const QTabBar*>(widget))
        return roomsOf(*bar);
    if (const auto* const list = qobject_cast<const QListWidget*>(widget))
        return roomsOf(*list);
    return {};
}

/// Whether something around the widget covers a part of it. What can be scrolled into sight is not
/// covered.
bool isClipped(const QWidget* widget)
{
    QRect place = widget->rect();
    for (const QWidget* inner = widget; !inner->isWindow(); inner = inner->parentWidget()) {
        const QWidget* const outer = inner->parentWidget();
        const auto* const area = qobject_cast<const QAbstractScrollArea*>(outer->parentWidget());
        // A header of a table moves with what it heads.
        if ((area && area->viewport() == outer) || qobject_cast<const QHeaderView*>(outer))
            return false;
        place.translate(inner->pos());
        if (!outer->rect().contains(place))
            return true;
    }
    return false;
}

bool showsText(const QWidget* widget)
{
    const auto* const button = qobject_cast<const QAbstractButton*>(widget);
    const auto* const label = qobject_cast<const QLabel*>(widget);
    return (button && !button->text().isEmpty()) || (label && !label->text().isEmpty()) ||
           qobject_cast<const QGroupBox*>(widget) || qobject_cast<const QComboBox*>(widget) ||
           qobject_cast<const QAbstractSpinBox*>(widget);
}

QString sizeText(const QSize& size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

void addSharedKeys(const QList<QAction*>& actions, const QString& place, QStringList* shared)
{
    static const QRegularExpression mark(QStringLiteral("(?<!&)&([^&])"));
    QSet<QString> keys;
    for (const QAction* const action : actions) {
        const QString key = mark.match(action->text()).captured(1).toLower();
        if (!key.isEmpty() && keys.contains(key))
            shared->append(place + QStringLiteral(": ") + action->text());
        keys.insert(key);
        if (action->menu())
            addSharedKeys(action->menu()->actions(),
                          place + QStringLiteral(" > ") + withoutAccessKey(action->text()), shared);
    }
}

} // namespace

QStringList foreignTexts(const QWidget* window, Speech speech)
{
    QStringList found;
    visitTexts(window, [&](const QString& place, const QString& text, Source source) {
        if (isForeign(text, source, speech))
            found.append(QStringLiteral("%1: \"%2\"").arg(place, text));
    });
    return found;
}

QStringList cutTexts(const QWidget* window)
{
    QStringList found;
    const QList<const QWidget*> widgets = shownWidgets(window);
    for (const QWidget* const widget : widgets) {
        const QList<Room> rooms = roomsOf(widget);
        for (const Room& room : rooms) {
            if (!room.isEnough())
                found.append(
                    QStringLiteral("%1: \"%2\" has %3, needs %4")
                        .arg(placeOf(widget), room.text, sizeText(room.has), sizeText(room.needs)));
        }
        if (showsText(widget) && isClipped(widget))
            found.append(QStringLiteral("%1 is clipped").arg(placeOf(widget)));
    }
    return found;
}

QStringList sharedAccessKeys(const QWidget* window)
{
    QStringList shared;
    QHash<QString, QString> byKey;
    const QList<QWidget*> widgets = window->findChildren<QWidget*>();
    for (const QWidget* const widget : widgets) {
        const auto* const label = qobject_cast<const QLabel*>(widget);
        if (!widget->isVisible() || widget->window() != window ||
            !((label && label->buddy()) || qobject_cast<const QAbstractButton*>(widget)))
            continue;
        const QString text = widget->property("text").toString();
        const QString key = QKeySequence::mnemonic(text).toString();
        if (!key.isEmpty() && byKey.contains(key))
            shared.append(QStringLiteral("%1: \"%2\", \"%3\"").arg(key, byKey.value(key), text));
        byKey.insert(key, text);
    }
    const QList<QMenuBar*> bars = window->findChildren<QMenuBar*>();
    for (const QMenuBar* const bar : bars)
        addSharedKeys(bar->actions(), QStringLiteral("menu bar"), &shared);
    return shared;
}

} // namespace testsupport
