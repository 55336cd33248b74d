// SPDX-License-Identifier: MIT
#include "desk/chart/seriestree.h"

#include "desk/chart/fittedlabel.h"
#include "desk/chart/seriestreemodel.h"

#include <QtCore/QDir>
#include <QtCore/QSortFilterProxyModel>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <utility>

namespace vexdesk {

// The series that have every word of the text somewhere, with their boards and venues.
class SeriesFilter final : public QSortFilterProxyModel
{
public:
    explicit SeriesFilter(QObject* parent)
        : QSortFilterProxyModel(parent)
    {
        setRecursiveFilteringEnabled(true);
    }

    void look(const QString& text)
    {
        m_words = text.simplified().split(u' ', Qt::SkipEmptyParts);
        invalidateFilter();
    }

    QModelIndex firstSeries() const { return firstSeriesBelow(QModelIndex()); }

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override
    {
        if (m_words.isEmpty())
            return true;
        // Empty for a venue or a board, which is there for the sake of its series.
        const QString text =
            sourceModel()->index(row, 0, parent).data(SeriesTreeModel::SearchRole).toString();
        return std::all_of(m_words.begin(), m_words.end(), [&text](const QString& word) {
            return text.contains(word, Qt::CaseInsensitive);
        });
    }

private:
    QModelIndex firstSeriesBelow(const QModelIndex& parent) const
    {
        const QModelIndex first = index(0, 0, parent);
        return first.isValid() && hasChildren(first) ? firstSeriesBelow(first) : first;
    }

    QStringList m_words;
};

SeriesTree::SeriesTree(const QString& root, QWidget* parent)
    : QWidget(parent)
    , m_root(root)
    , m_follower(root)
    , m_model(new SeriesTreeModel(this))
    , m_found(new SeriesFilter(this))
    , m_line(new QLineEdit)
    , m_view(new QTreeView)
    , m_message(new QLabel)
    , m_problem(new FittedLabel)
    , m_pages(new QStackedWidget)
{
    setObjectName(QStringLiteral("seriesTree"));
    m_found->setSourceModel(m_model);
    setUpLine();
    setUpView();
    setUpMessages();
    layOut();
    connectParts();
}

void SeriesTree::setUpLine()
{
    m_line->setObjectName(QStringLiteral("seriesFilter"));
    m_line->setPlaceholderText(tr("Найти серию"));
    m_line->setAccessibleName(m_line->placeholderText());
    m_line->setToolTip(tr("Часть кода или названия инструмента, режима торгов или площадки; Enter "
                          "открывает график"));
    m_line->setClearButtonEnabled(true);
    m_line->installEventFilter(this);
}

void SeriesTree::setUpView()
{
    m_view->setObjectName(QStringLiteral("seriesView"));
    m_view->setAccessibleName(tr("Серии"));
    m_view->setModel(m_found);
    m_view->setUniformRowHeights(true);
    m_view->setAlternatingRowColors(true);
    constexpr int indentation = 14;
    m_view->setIndentation(indentation);
    // The title has the room that the others leave.
    m_view->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_view->header()->setSectionResizeMode(SeriesTreeModel::TitleColumn, QHeaderView::Interactive);
    constexpr int leastTitle = 24;
    m_view->header()->resizeSection(SeriesTreeModel::TitleColumn, leastTitle);
    m_view->header()->setStretchLastSection(true);
    m_view->installEventFilter(this);
}

void SeriesTree::setUpMessages()
{
    m_message->setObjectName(QStringLiteral("seriesMessage"));
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_message->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_problem->setObjectName(QStringLiteral("seriesProblem"));
    m_problem->setBackgroundRole(QPalette::ToolTipBase);
    m_problem->setForegroundRole(QPalette::ToolTipText);
    m_problem->setAutoFillBackground(true);
    m_problem->hide();
}

void SeriesTree::layOut()
{
    m_pages->addWidget(m_view);
    m_pages->addWidget(m_message);
    auto* const layout = new QVBoxLayout(this);
    constexpr int margin = 4;
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(margin);
    layout->addWidget(m_line);
    layout->addWidget(m_problem);
    layout->addWidget(m_pages, 1);
}

void SeriesTree::connectParts()
{
    connect(&m_follower, &StoreFollower::troubled, this, &SeriesTree::showProblems);
    connect(&m_follower, &StoreFollower::missed, this,
            [this](bool isMissing) { m_isRootMissing = isMissing; });
    connect(&m_follower, &StoreFollower::listed, this, &SeriesTree::setStored);
    connect(m_line, &QLineEdit::textChanged, this, &SeriesTree::look);
    connect(m_found, &QAbstractItemModel::rowsInserted, this, &SeriesTree::expandFound);
    connect(m_view, &QAbstractItemView::activated, this, &SeriesTree::open);
}

SeriesTree::~SeriesTree() = default;

QSize SeriesTree::sizeHint() const
{
    constexpr QSize usual(376, 400);
    return usual;
}

void SeriesTree::setCurrent(const SeriesName& series)
{
    const QModelIndex row = m_found->mapFromSource(m_model->indexOf(series));
    if (row.isValid())
        m_view->setCurrentIndex(row);
    m_awaited = row.isValid() ? std::nullopt : std::optional(series);
}

void SeriesTree::setStored(const QList<StoredSeries>& stored)
{
    m_model->setStored(stored);
    showWhatIsFound();
    if (m_awaited)
        setCurrent(SeriesName(*m_awaited));
    m_isListed = true;
    if (std::exchange(m_isOpenAwaited, false))
        openFound();
}

void SeriesTree::showWhatIsFound()
{
    const bool isStoreEmpty = m_model->rowCount() == 0;
    const bool isAnyFound = m_found->rowCount() > 0;
    if (!isAnyFound)
        m_message->setText(isStoreEmpty ? whyNothingIsThere() : tr("Нет такой серии"));
    m_pages->setCurrentWidget(isAnyFound ? static_cast<QWidget*>(m_view) : m_message);
}

// Nothing is said of a store that cannot be read but that.
QString SeriesTree::whyNothingIsThere() const
{
    if (!m_problem->text().isEmpty())
        return QString();
    const QString none = tr("Сохранённых баров пока нет.\n\nЧтобы импортировать их из файла, "
                            "выберите в меню терминала команду импорта загруженного модуля.");
    if (!m_isRootMissing)
        return none;
    return tr("Каталога \"%1\" нет.").arg(QDir::toNativeSeparators(m_root)) +
           QStringLiteral("\n\n") + none;
}

// Above what could be read.
void SeriesTree::showProblems(const QStringList& problems)
{
    QString text = problems.value(0);
    if (problems.size() > 1)
        text += QStringLiteral("   ") + tr("Всего таких мест: %1").arg(problems.size());
    m_problem->setText(text);
    m_problem->setVisible(!text.isEmpty());
    fitProblem();
}

void SeriesTree::fitProblem()
{
    constexpr int mostLines = 4;
    const int lines = m_problem->linesFor(m_problem->text(), std::max(1, m_line->width()));
    m_problem->setLines(std::min(lines, mostLines));
}

void SeriesTree::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fitProblem();
}

// Few series are seen at once; of many, the venues.
void SeriesTree::expandFound(const QModelIndex& parent, int first, int last)
{
    constexpr int few = 200;
    for (int row = first; row <= last; ++row) {
        const QModelIndex come = m_found->index(row, 0, parent);
        if (!m_line->text().isEmpty() || m_found->rowCount(come) <= few)
            m_view->expandRecursively(come);
    }
}

void SeriesTree::look()
{
    m_isOpenAwaited = false;
    m_found->look(m_line->text());
    if (m_model->rowCount() > 0) // else it is said why there is nothing to look for
        showWhatIsFound();
    if (m_line->text().isEmpty())
        return;
    m_view->expandAll();
    m_view->setCurrentIndex(m_found->firstSeries());
}

void SeriesTree::open(const QModelIndex& index)
{
    if (const auto series = m_model->seriesAt(m_found->mapToSource(index)))
        Q_EMIT opened(*series);
}

void SeriesTree::openFound()
{
    m_isOpenAwaited = !m_isListed; // whoever types fast need not wait for the store
    const QModelIndex current = m_view->currentIndex();
    const bool isSeries = m_model->seriesAt(m_found->mapToSource(current)).has_value();
    open(isSeries ? current : m_found->firstSeries());
}

bool SeriesTree::eventFilter(QObject* watched, QEvent* event)
{
    // To do something again is worth less in a line of a few letters than a command of the menu.
    if (watched == m_line && event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Redo)) {
        event->ignore();
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    auto& key = *static_cast<QKeyEvent*>(event);
    return watched == m_line ? takeLineKey(key) : takeTreeKey(key);
}

// Whoever has looked for a series wants none of the rows above it. Before the tree has the focus,
// with which it would take its first row.
void SeriesTree::goToFound()
{
    const QModelIndex current = m_view->currentIndex();
    const bool isWanted = m_line->text().isEmpty()
                              ? current.isValid()
                              : m_model->seriesAt(m_found->mapToSource(current)).has_value();
    if (!isWanted)
        m_view->setCurrentIndex(m_found->firstSeries());
    if (m_view->isVisible())
        m_view->setFocus(Qt::OtherFocusReason);
}

bool SeriesTree::takeLineKey(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Down:
        goToFound();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        openFound();
        return true;
    case Qt::Key_Escape:
        if (m_line->text().isEmpty())
            Q_EMIT left();
        else
            m_line->clear();
        return true;
    default:
        return false;
    }
}

// Letters go on with the search; the blank and the keys of the tree are its own.
bool SeriesTree::takeTreeKey(QKeyEvent& event)
{
    const QString text = event.text();
    const bool isLetter = !text.isEmpty() && (text.front().isLetterOrNumber());
    const bool isErasing = event.key() == Qt::Key_Backspace && !m_line->text().isEmpty();
    if (!isErasing && (!isLetter || event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)))
        return false;
    m_line->setFocus(Qt::OtherFocusReason);
    m_line->end(false);
    QCoreApplication::sendEvent(m_line, &event);
    return true;
}

void SeriesTree::focusInEvent(QFocusEvent* event)
{
    m_line->setFocus(event->reason());
}

void SeriesTree::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous()) // else the window was only out of sight
        m_follower.start();
}

void SeriesTree::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous())
        m_follower.stop();
}

} // namespace vexdesk
