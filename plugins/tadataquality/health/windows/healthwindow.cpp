// SPDX-License-Identifier: MIT
#include "healthwindow.h"

#include "calendarlegend.h"
#include "calendarmodel.h"
#include "calendarview.h"
#include "dayremarks.h"
#include "remarksmodel.h"
#include "seriesmodel.h"
#include "textcolours.h"

#include <vexdesk/dateformat.h>

#include <QtCore/QLocale>
#include <QtCore/QPointer>
#include <QtCore/QSaveFile>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <utility>

using tadata::SeriesDigest;
using tadata::SharedDigest;

namespace {

constexpr QLatin1String group("TADataQuality/Health");

// Leaves room for the mark of the order only where it stands: ten columns are to be seen at once.
class SeriesHeader final : public QHeaderView
{
public:
    SeriesHeader()
        : QHeaderView(Qt::Horizontal)
    {
        setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        setSectionResizeMode(QHeaderView::ResizeToContents);
        setStretchLastSection(true);
    }

protected:
    QSize sectionSizeFromContents(int section) const override
    {
        QSize size = QHeaderView::sectionSizeFromContents(section);
        if (section != sortIndicatorSection())
            size.rwidth() -= style()->pixelMetric(QStyle::PM_HeaderMarkSize, nullptr, this);
        return size;
    }
};

vexdesk::Outcome writeList(const QString& path, const QList<SharedDigest>& series)
{
    QSaveFile file(path);
    const QByteArray list = tadata::brokerList(series);
    if (file.open(QIODevice::WriteOnly) && file.write(list) == list.size() && file.commit())
        return {};
    return vexdesk::Failure{
        HealthWindow::tr("Невозможно записать файл %1: %2").arg(path, file.errorString())};
}

} // namespace

HealthWindow::HealthWindow(tadata::HealthBook* book, ShowInChart showInChart, QWidget* parent)
    : ToolWindow(tr("Здоровье данных"), group, parent)
    , m_book(book)
    , m_showInChart(std::move(showInChart))
    , m_series(new SeriesModel(this))
    , m_calendar(new CalendarModel(this))
    , m_remarks(new RemarksModel(this))
    , m_filter(new QLineEdit)
    , m_seriesView(new QTreeView)
    , m_calendarView(new CalendarView(m_calendar))
    , m_remarksView(new QTreeView)
    , m_summary(plainLabel("summary"))
    , m_day(plainLabel("day"))
    , m_progress(new QProgressBar)
{
    QWidget* const series = makeSeriesPart();
    QWidget* const days = makeDaysPart();
    setParts(series, days, makeButtons());
    constexpr QSize usual(790, 560);
    restoreSizeOr(usual);
    connectParts();
    showProgress(0);
    m_book->followAll(true);
    // What is typed at once is looked for.
    m_filter->setFocus();
}

HealthWindow::~HealthWindow()
{
    m_book->followAll(false);
}

void HealthWindow::keyPressEvent(QKeyEvent* event)
{
    // From what was typed to what was found.
    if (event->key() == Qt::Key_Down && m_filter->hasFocus())
        m_seriesView->setFocus(Qt::OtherFocusReason);
    else
        ToolWindow::keyPressEvent(event);
}

QWidget* HealthWindow::makeSeriesPart()
{
    m_filter->setObjectName(QStringLiteral("filter"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setPlaceholderText(tr("часть имени, например VEGA"));
    auto* const label = new QLabel(tr("&Найти серию:"));
    label->setBuddy(m_filter);
    m_seriesView->setHeader(new SeriesHeader);
    prepareTable(m_seriesView, m_series, "series");
    m_seriesView->setAccessibleName(tr("Серии хранилища"));
    QHeaderView* const header = m_seriesView->header();
    header->setSortIndicator(SeriesModel::Series, Qt::AscendingOrder);
    m_seriesView->setSortingEnabled(true);
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setAccessibleName(tr("Сколько прочитано"));

    auto* const part = new QWidget;
    QVBoxLayout* const layout = layoutOf(part);
    auto* const top = new QHBoxLayout;
    top->addWidget(label);
    top->addWidget(m_filter, 1);
    top->addWidget(m_progress);
    layout->addLayout(top);
    layout->addWidget(m_seriesView, 1);
    layout->addWidget(m_summary);
    return part;
}

QWidget* HealthWindow::makeDaysPart()
{
    m_calendarView->setObjectName(QStringLiteral("calendar"));
    m_calendarView->setAccessibleName(tr("Календарь покрытия выбранной серии"));
    prepareTable(m_remarksView, m_remarks, "remarks");
    m_remarksView->setHeaderHidden(true);
    m_remarksView->setAccessibleName(tr("Что не так в выбранный день"));
    m_remarksView->header()->setSectionResizeMode(RemarksModel::Kind,
                                                  QHeaderView::ResizeToContents);
    auto* const part = new QWidget;
    QVBoxLayout* const layout = layoutOf(part);
    constexpr int large = 3;
    layout->addWidget(m_calendarView, large);
    layout->addWidget(new CalendarLegend);
    layout->addWidget(m_day);
    layout->addWidget(m_remarksView, 1);
    return part;
}

QWidget* HealthWindow::makeButtons()
{
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setText(tr("&Закрыть"));
    const auto add = [buttons](const QString& text, const char* name) {
        QPushButton* const button = buttons->addButton(text, QDialogButtonBox::ActionRole);
        button->setObjectName(QLatin1String(name));
        return button;
    };
    m_show = add(tr("&Показать на графике"), "show");
    m_fill = add(tr("&Дозаполнить из файла..."), "fill");
    m_list = add(tr("&Список для брокера..."), "list");
    m_list->setToolTip(tr("Дни показанных серий, которых не хватает: с разрывами и без файла"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    connect(m_show, &QPushButton::clicked, this, &HealthWindow::showDay);
    connect(m_fill, &QPushButton::clicked, this, [this] {
        if (const SharedDigest series = chosen())
            Q_EMIT fillRequested(series->series, series->timeframe);
    });
    connect(m_list, &QPushButton::clicked, this, &HealthWindow::askForListFile);
    return buttons;
}

void HealthWindow::connectParts()
{
    connect(m_filter, &QLineEdit::textChanged, m_series, &SeriesModel::setFilter);
    connect(m_series, &QAbstractItemModel::modelReset, this, &HealthWindow::showSeries);
    connect(m_series, &QAbstractItemModel::modelReset, this, &HealthWindow::showSummary);
    connect(m_seriesView->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &HealthWindow::chooseSeries);
    connect(m_seriesView, &QAbstractItemView::activated, this, &HealthWindow::showDay);
    connect(m_calendarView, &CalendarView::dayChanged, this, &HealthWindow::chooseDay);
    connect(m_calendarView, &CalendarView::dayActivated, this, &HealthWindow::showDay);
    connect(m_remarksView, &QAbstractItemView::activated, this,
            [this](const QModelIndex& index) { showPlace(m_remarks->remarkAt(index.row()).to); });
    // Boards come one after the other while a store is read: the list follows now and then.
    constexpr int pause = 100;
    m_later.setSingleShot(true);
    m_later.setInterval(pause);
    const auto takeSeries = [this] { m_series->setSeries(m_book->series()); };
    connect(&m_later, &QTimer::timeout, this, takeSeries);
    connect(m_book, &tadata::HealthBook::changed, &m_later, [this] {
        if (!m_later.isActive())
            m_later.start();
    });
    connect(m_book, &tadata::HealthBook::progressed, this, &HealthWindow::showProgress);
    connect(m_book, &tadata::HealthBook::looked, this, [this, takeSeries] {
        m_progress->hide();
        if (m_later.isActive()) {
            m_later.stop();
            takeSeries();
        }
        showSummary();
    });
    m_series->setSeries(m_book->series());
}

// What was chosen stays chosen, wherever it stands now.
void HealthWindow::showSeries()
{
    int row = m_shown ? m_series->rowOf(m_shown->series, m_shown->timeframe) : 0;
    row = std::max(row, 0);
    if (row < m_series->rowCount())
        m_seriesView->setCurrentIndex(m_series->index(row, 0));
    chooseSeries();
}

void HealthWindow::showSummary()
{
    const QList<SharedDigest> shown = m_series->shown();
    const auto wrong = std::count_if(shown.begin(), shown.end(),
                                     [](const SharedDigest& one) { return one->isWrong; });
    const QStringList problems = m_book->problems();
    QString text;
    if (shown.size() < m_series->allCount())
        text = tr("Показано серий: %L1 из %L2, с замечаниями: %L3.")
                   .arg(shown.size())
                   .arg(m_series->allCount())
                   .arg(wrong);
    else if (!shown.isEmpty())
        text = tr("Серий: %L1, с замечаниями: %L2.").arg(shown.size()).arg(wrong);
    else if (!m_book->isKnown())
        text = tr("Хранилище читается...");
    else if (problems.isEmpty())
        text = tr("В хранилище нет серий.");
    if (!problems.isEmpty() && !text.isEmpty())
        text += u'\n';
    if (!problems.isEmpty())
        text += tr("Не прочитано: %L1. %2").arg(problems.size()).arg(problems.first());
    if (problems.size() > 1)
        text += tr("; остальное названо в подсказке");
    m_summary->setText(text);
    m_summary->setToolTip(problems.join(u'\n'));
    tadata::tintLabel(m_summary, problems.isEmpty());
    m_list->setEnabled(!shown.isEmpty());
}

SharedDigest HealthWindow::chosen() const
{
    const QModelIndex current = m_seriesView->currentIndex();
    return current.isValid() ? m_series->seriesAt(current.row()) : nullptr;
}

QDate HealthWindow::worstDayOf(const SeriesDigest& series)
{
    const auto last = std::find_if(series.remarkable.rbegin(), series.remarkable.rend(),
                                   [](const tadata::DayHealth& day) { return day.isWrong(); });
    const QDate wrong = last == series.remarkable.rend() ? QDate() : last->day;
    const QDate missing = series.missingDays.isEmpty() ? QDate() : series.missingDays.last();
    const QDate worst = std::max(wrong, missing);
    return worst.isValid() ? worst : series.last;
}

void HealthWindow::chooseSeries()
{
    const SharedDigest series = chosen();
    m_show->setEnabled(series != nullptr);
    m_fill->setEnabled(series != nullptr);
    if (series == m_shown && m_calendar->series() == series)
        return;
    const bool isSame = series && m_shown && series->series == m_shown->series &&
                        series->timeframe == m_shown->timeframe;
    const QDate before = m_calendarView->day();
    m_shown = series;
    m_calendar->setSeries(series);
    if (series)
        m_calendarView->setDay(isSame && before.isValid() ? before : worstDayOf(*series));
    chooseDay(m_calendarView->day());
}

void HealthWindow::chooseDay(const QDate& day)
{
    if (!m_shown || !day.isValid()) {
        m_day->clear();
        m_remarks->setRemarks({});
        return;
    }
    const tadata::DayMark* const mark = m_shown->mark(day);
    const QString date = QLocale().toString(day, QStringLiteral("ddd ")) + vexdesk::shownDate(day);
    const QString stored =
        mark ? tadata::storedInWords(*mark, m_shown->timeframe) : tr("нет файла");
    m_day->setText(tr("%1, %2: %3").arg(m_shown->series, date, stored));
    m_remarks->setRemarks(tadata::remarksOn(*m_shown, day));
}

void HealthWindow::showProgress(int percent)
{
    m_progress->setVisible(true);
    m_progress->setValue(percent);
}

void HealthWindow::askForListFile()
{
    const QList<SharedDigest> shown = m_series->shown();
    if (std::none_of(shown.begin(), shown.end(),
                     [](const SharedDigest& one) { return one->lacksBars(); })) {
        say(tr("Запрашивать нечего: в показанных сериях есть все дни, и разрывов нет."));
        return;
    }
    auto* const dialog = new QFileDialog(this, tr("Список для брокера"), QString(),
                                         tr("Текстовые файлы (*.txt);;Все файлы (*)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("txt"));
    connect(dialog, &QFileDialog::fileSelected, this, &HealthWindow::saveBrokerList);
    dialog->open();
}

void HealthWindow::saveBrokerList(const QString& path)
{
    const bool isAll = m_book->isKnown() && m_book->problems().isEmpty();
    m_saving.start(
        [path, series = m_series->shown()](const std::atomic<bool>&) {
            return writeList(path, series);
        },
        [this, path, isAll](const vexdesk::Outcome& outcome) { showSaved(path, outcome, isAll); });
}

void HealthWindow::showSaved(const QString& path, const vexdesk::Outcome& outcome, bool isAll)
{
    if (!outcome)
        say(outcome.message(), true);
    else if (isAll)
        say(tr("Список записан в %1.").arg(path));
    else
        say(tr("Список записан в %1. В нём не всё: хранилище прочитано не полностью.").arg(path),
            true);
}

// Where the first thing is wrong, or the day as a whole.
void HealthWindow::showDay()
{
    showPlace(m_remarks->rowCount() > 0 ? m_remarks->remarkAt(0).to : QTime());
}

void HealthWindow::showPlace(const QTime& time)
{
    const SharedDigest series = chosen();
    if (!series)
        return;
    const tadata::SeriesMoment moment{tadata::seriesNamed(series->series), m_calendarView->day(),
                                      time};
    m_showInChart(moment, [self = QPointer<HealthWindow>(this), moment](Shown shown) {
        if (self)
            self->sayShown(moment, shown);
    });
}

void HealthWindow::sayShown(const tadata::SeriesMoment& moment, Shown shown)
{
    const QString series = tadata::pathOf(moment.series);
    switch (shown) {
    case Shown::Yes:
        say(QString());
        break;
    case Shown::NoDay:
        say(tr("В хранилище нет дня %1 серии %2: график показывает ближайшее место.")
                .arg(vexdesk::shownDate(moment.day), series),
            true);
        break;
    case Shown::NoCharts:
        say(tr("У этого терминала нет графиков: показать место негде."), true);
        break;
    case Shown::NothingThere:
        say(tr("График не показан: от серии %1 ничего не хранится.").arg(series), true);
        break;
    }
}
