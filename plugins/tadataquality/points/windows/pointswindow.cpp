// SPDX-License-Identifier: MIT
#include "pointswindow.h"

#include "freespacedialog.h"
#include "pointfilesmodel.h"
#include "pointsmodel.h"
#include "pointwords.h"
#include "restoresettings.h"
#include "textcolours.h"

#include <vexdesk/history/storepaths.h>

#include <QtCore/QEvent>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

using tadata::PointFile;
using tadata::UndoCheck;
using tadata::UndoResult;
using vexdesk::RestorePointRecord;

namespace {

constexpr QLatin1String group("TADataQuality/Points");

} // namespace

PointsWindow::PointsWindow(QWidget* parent)
    : PointsWindow(vexdesk::storePlace(), vexdesk::usualWait, parent)
{}

PointsWindow::PointsWindow(const QDir& root, std::chrono::milliseconds wait, QWidget* parent)
    : ToolWindow(tr("Точки восстановления"), group, parent)
    , m_root(root)
    , m_wait(wait)
    , m_points(new PointsModel(this))
    , m_files(new PointFilesModel(this))
    , m_pointsView(new QTreeView)
    , m_filesView(new QTreeView)
    , m_summary(plainLabel("summary"))
    , m_effect(plainLabel("effect"))
    , m_progress(new QProgressBar)
{
    QWidget* const points = makePointsPart();
    QWidget* const files = makeFilesPart();
    setParts(points, files, makeButtons());
    constexpr QSize usual(760, 520);
    restoreSizeOr(usual);

    constexpr int pause = 200;
    m_later.setSingleShot(true);
    m_later.setInterval(pause);
    connect(&m_later, &QTimer::timeout, this, &PointsWindow::read);
    constexpr int nextLook = 2000;
    m_again.setSingleShot(true);
    m_again.setInterval(nextLook);
    connect(&m_again, &QTimer::timeout, this, &PointsWindow::read);
    connect(m_pointsView->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &PointsWindow::choose);
    m_pointsView->setFocus();
    updateButtons();
    read();
}

PointsWindow::~PointsWindow() = default;

QWidget* PointsWindow::makePointsPart()
{
    prepareTable(m_pointsView, m_points, "points");
    m_pointsView->setAccessibleName(tr("Точки восстановления, новые первыми"));
    QHeaderView* const header = m_pointsView->header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(PointsModel::Series, QHeaderView::Stretch);
    header->setSectionResizeMode(PointsModel::Source, QHeaderView::Stretch);
    auto* const part = new QWidget;
    QVBoxLayout* const layout = layoutOf(part);
    layout->addWidget(m_summary);
    layout->addWidget(m_pointsView);
    return part;
}

QWidget* PointsWindow::makeFilesPart()
{
    prepareTable(m_filesView, m_files, "files");
    m_filesView->setAccessibleName(tr("Файлы выбранной точки"));
    QHeaderView* const header = m_filesView->header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(PointFilesModel::Series, QHeaderView::Stretch);
    auto* const part = new QWidget;
    QVBoxLayout* const layout = layoutOf(part);
    layout->addWidget(m_effect);
    layout->addWidget(m_filesView);
    return part;
}

QWidget* PointsWindow::makeButtons()
{
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setRange(0, 0);
    m_progress->setTextVisible(false);
    m_progress->setVisible(false);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setText(tr("&Закрыть"));
    m_putBack = buttons->addButton(tr("&Вернуть"), QDialogButtonBox::ActionRole);
    m_putBack->setObjectName(QStringLiteral("putBack"));
    m_putBack->setToolTip(tr("Сделать файлы такими, какими они были до этой команды. Это можно "
                             "отменить: возврат сам создаёт точку."));
    m_freeSpace = buttons->addButton(tr("&Освободить место..."), QDialogButtonBox::ActionRole);
    m_freeSpace->setObjectName(QStringLiteral("freeSpace"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    connect(m_putBack, &QPushButton::clicked, this, &PointsWindow::putChosenBack);
    connect(m_freeSpace, &QPushButton::clicked, this, &PointsWindow::freeSpace);
    auto* const part = new QWidget;
    auto* const layout = new QHBoxLayout(part);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_progress, 1);
    layout->addWidget(buttons, 1);
    return part;
}

void PointsWindow::read()
{
    m_reading.start([root = m_root](const std::atomic<bool>&) { return tadata::storePoints(root); },
                    [this](const Points& points) { showPoints(points); });
}

void PointsWindow::showPoints(const Points& points)
{
    if (!points) {
        m_points->setPoints({});
        m_summary->setText(points.message());
        tadata::tintLabel(m_summary, false);
        choose();
        return;
    }
    m_place = points->place;
    m_running = points->running;
    m_putBackPoints = points->putBack;
    m_points->setPoints(points->found.points, m_running, m_putBackPoints);
    watch();
    if (!m_running.isEmpty())
        m_again.start();
    // What was interrupted wants a look first.
    const bool isFirst = m_shownId.isEmpty() && !points->interrupted.isEmpty();
    const int row = m_points->rowOf(isFirst ? points->interrupted.first().id : m_shownId);
    if (m_points->rowCount() > 0)
        m_pointsView->setCurrentIndex(m_points->index(std::max(row, 0), 0));
    showSummary(*points);
    choose();
}

void PointsWindow::showSummary(const tadata::StorePoints& points)
{
    QString summary = m_points->rowCount() == 0
                          ? tr("Точек восстановления нет: команды, которые меняют данные, создают "
                               "их сами.")
                          : tr("Точек: %L1, занимают %2.")
                                .arg(m_points->rowCount())
                                .arg(tadata::sizeText(m_points->bytes()));
    if (!points.interrupted.isEmpty())
        summary += u'\n' + tr("Прервано на середине команд: %L1. Выберите точку с пометкой "
                              "«прервано» и верните данные, какими они были до неё.")
                               .arg(points.interrupted.size());
    for (const QString& problem : points.found.problems)
        summary += u'\n' + problem;
    m_summary->setText(summary);
    tadata::tintLabel(m_summary, points.found.problems.isEmpty() && points.interrupted.isEmpty());
}

void PointsWindow::watch()
{
    QStringList wanted{m_place.path, QFileInfo(m_place.path).path()};
    // The journal in it goes when its command ends.
    for (const RestorePointRecord& point : m_points->points()) {
        if (!point.isComplete)
            wanted.append(m_place.path + u'/' + point.id);
    }
    m_watch.watch(wanted);
}

std::optional<RestorePointRecord> PointsWindow::chosen() const
{
    const QModelIndex current = m_pointsView->currentIndex();
    if (!current.isValid())
        return std::nullopt;
    return m_points->pointAt(current.row());
}

void PointsWindow::choose()
{
    updateButtons();
    const std::optional<RestorePointRecord> point = chosen();
    m_checking.stop();
    if (!point) {
        m_listing.stop();
        m_shownId.clear();
        m_files->setFiles({});
        m_effect->clear();
        return;
    }
    const bool isShown = m_shownId == point->id && !m_listing.isRunning();
    if (isShown && point->kept.size() + point->created.size() == m_files->rowCount()) {
        check();
        return;
    }
    // What was said of another one is not true of this one.
    if (m_shownId != point->id) {
        m_effect->setText(tr("Точка проверяется..."));
        tadata::tintLabel(m_effect, true);
    }
    m_shownId = point->id;
    m_listing.start([record = *point](const std::atomic<bool>&) { return tadata::filesOf(record); },
                    [this](const std::vector<PointFile>& files) { showFiles(files); });
}

void PointsWindow::showFiles(const std::vector<PointFile>& files)
{
    m_files->setFiles(files);
    check();
}

void PointsWindow::check()
{
    const std::optional<RestorePointRecord> point = chosen();
    if (!point)
        return;
    m_checking.start(
        [place = m_place, record = *point](const std::atomic<bool>&) {
            return tadata::checkUndo(place, record);
        },
        [this, isKnown = point->isComplete](const UndoCheck& found) { showCheck(found, isKnown); });
}

void PointsWindow::showCheck(const UndoCheck& check, bool isWorkKnown)
{
    if (!check.outcome) {
        m_effect->setText(check.outcome.message());
        tadata::tintLabel(m_effect, false);
        return;
    }
    m_files->setForbidding(tadata::belowRoot(m_place, check.forbidding), isWorkKnown);
    const std::optional<RestorePointRecord> point = chosen();
    if (point && isSettled(*point)) {
        m_effect->setText(tr("Работа была прервана, и эта точка уже возвращена: возвращать "
                             "нечего."));
        tadata::tintLabel(m_effect, true);
        return;
    }
    const auto& files = m_files->files();
    const auto returned = std::count_if(files.begin(), files.end(),
                                        [](const PointFile& file) { return file.returns(); });
    QString text = tr("Возврат вернёт прежних файлов: %L1, удалит созданных: %L2.")
                       .arg(returned)
                       .arg(static_cast<qint64>(files.size()) - returned);
    if (!check.forbidding.isEmpty())
        text += u' ' + tr("С тех пор изменились файлы: %L1; без особого подтверждения точка не "
                          "возвращается.")
                           .arg(check.forbidding.size());
    if (!isWorkKnown)
        text += u' ' + tr("Работа была прервана: изменились ли файлы с тех пор, неизвестно.");
    m_effect->setText(text);
    tadata::tintLabel(m_effect, check.forbidding.isEmpty() && isWorkKnown);
}

// Of a work that ended by itself it is known what has changed since; here it would be guessed.
bool PointsWindow::isSettled(const RestorePointRecord& point) const
{
    return !point.isComplete && m_putBackPoints.contains(point.id);
}

void PointsWindow::putChosenBack()
{
    const std::optional<RestorePointRecord> point = chosen();
    if (!point)
        return;
    if (point->isComplete || m_running.contains(point->id))
        putBack(point->id, false);
    else
        askForInterrupted(*point);
}

void PointsWindow::putBack(const QString& id, bool isForced)
{
    if (m_isAtWork)
        return;
    setAtWork(true);
    say(tr("Точка %1 возвращается...").arg(id));
    m_undoing.start(
        [root = m_root, wait = m_wait, id, isForced](const std::atomic<bool>& stop) {
            vexdesk::StoreJobSettings settings;
            settings.limits = tadata::restoreLimits();
            settings.wait = wait;
            settings.stop = &stop;
            return tadata::undo(root, id, isForced, settings);
        },
        [this, id](const UndoResult& result) { showPutBack(id, result); });
}

void PointsWindow::showPutBack(const QString& id, const UndoResult& result)
{
    setAtWork(false);
    read();
    if (result.work && result.forbidding.isEmpty())
        Q_EMIT storeChanged();
    if (!result.forbidding.isEmpty()) {
        say(tr("Точка не возвращена: файлы с тех пор изменились. Ничего не тронуто."), true);
        askForForce(id, result.forbidding);
    } else if (!result.work) {
        say(tr("Точка не возвращена. %1").arg(result.work.wholeMessage()), true);
    } else if (!result.end) {
        say(tr("Файлы возвращены, но: %1").arg(result.end.wholeMessage()), true);
    } else {
        say(tr("Возвращено файлов: %L1, удалено: %L2. Чтобы отменить это, верните новую точку.")
                .arg(result.returned)
                .arg(result.removed));
    }
}

QMessageBox* PointsWindow::makeQuestion(const char* name, const QString& title, const QString& text,
                                        const QString& yes, const std::function<void()>& run)
{
    auto* const box = new QMessageBox(QMessageBox::Warning, title, text, QMessageBox::Cancel, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setObjectName(QLatin1String(name));
    box->button(QMessageBox::Cancel)->setText(tr("&Отмена"));
    const QPushButton* const button = box->addButton(yes, QMessageBox::DestructiveRole);
    box->setDefaultButton(QMessageBox::Cancel);
    connect(button, &QPushButton::clicked, this, run);
    return box;
}

// Of a work that was interrupted nobody knows what of its files has changed since.
void PointsWindow::askForInterrupted(const RestorePointRecord& point)
{
    QMessageBox* const box = makeQuestion(
        "interrupted", tr("Вернуть прерванное"),
        tr("Команда была прервана: %1, серии: %2.\n\nВозврат вернёт прежних файлов: %L3 и удалит "
           "созданных: %L4, даже если после неё их меняли. То, что в них сейчас, останется в новой "
           "точке.")
            .arg(tadata::makerOfPoint(point.by), tadata::shortList(point.series, 3))
            .arg(point.kept.size())
            .arg(point.created.size()),
        tr("&Вернуть"), [this, id = point.id] { putBack(id, false); });
    box->open();
}

void PointsWindow::askForForce(const QString& id, const QStringList& forbidding)
{
    constexpr qsizetype shown = 5;
    QMessageBox* const box = makeQuestion(
        "force", tr("Файлы с тех пор изменились"),
        tr("После этой команды изменились файлы: %L1. Возврат заменит и их; то, что в них сейчас, "
           "останется в новой точке.\n\n%2")
            .arg(forbidding.size())
            .arg(forbidding.first(std::min(shown, forbidding.size())).join(u'\n')),
        tr("&Вернуть всё равно"), [this, id] { putBack(id, true); });
    if (forbidding.size() > shown)
        box->setDetailedText(forbidding.join(u'\n'));
    box->open();
}

void PointsWindow::freeSpace()
{
    auto* const dialog =
        new FreeSpaceDialog(m_points->points(), m_running, tadata::restoreLimits(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        setAtWork(true);
        say(tr("Старые точки удаляются..."));
        m_freeing.start(
            [place = m_place, limits = dialog->limits()](const std::atomic<bool>&) {
                return vexdesk::pruneRestorePoints(place, limits);
            },
            [this](const vexdesk::Outcome& outcome) { showFreed(outcome); });
    });
    dialog->open();
}

void PointsWindow::showFreed(const vexdesk::Outcome& outcome)
{
    setAtWork(false);
    read();
    if (outcome)
        say(tr("Старые точки удалены."));
    else
        say(tr("Удалены не все точки. %1").arg(outcome.message()), true);
}

void PointsWindow::setAtWork(bool isAtWork)
{
    m_isAtWork = isAtWork;
    m_progress->setVisible(isAtWork);
    updateButtons();
}

void PointsWindow::updateButtons()
{
    const std::optional<RestorePointRecord> point = chosen();
    const bool hasFiles = point && !(point->kept.isEmpty() && point->created.isEmpty());
    m_putBack->setEnabled(!m_isAtWork && hasFiles && !isSettled(*point));
    m_freeSpace->setEnabled(!m_isAtWork && m_points->rowCount() > 1);
}

void PointsWindow::reject()
{
    // However the window is closed, this is asked.
    if (m_isAtWork)
        say(tr("Подождите: команда ещё идёт. Окно можно будет закрыть, когда она закончится."),
            true);
    else
        ToolWindow::reject();
}

void PointsWindow::changeEvent(QEvent* event)
{
    // Whoever comes back to the window has changed something elsewhere.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && !m_isAtWork)
        m_later.start();
    ToolWindow::changeEvent(event);
}
