// SPDX-License-Identifier: MIT
#include "safeimportwindow.h"

#include "compactbox.h"
#include "filedrop.h"
#include "filespicker.h"
#include "importpreparation.h"
#include "importrunner.h"
#include "importwatch.h"
#include "layoutpicker.h"
#include "outlookpanel.h"
#include "previewview.h"
#include "problemsmodel.h"
#include "profiles.h"
#include "recentfiles.h"
#include "restoresettings.h"
#include "rolesheader.h"
#include "seriesguess.h"
#include "seriespicker.h"
#include "textcolours.h"
#include "windowsize.h"

#include <vexdesk/appsettings.h>
#include <vexdesk/history/storepaths.h>

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QSignalBlocker>
#include <QtGui/QAction>
#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTableView>

#include <algorithm>
#include <utility>

using tadata::ImportPreparation;
using tadata::ImportRunner;
using tadata::LaidOutFile;
using tadata::SafeImportResult;

namespace {

constexpr QLatin1String settingsGroup("TADataQuality/SafeImport");
const QString boardKey = QStringLiteral("board");

QString countsOf(const SafeImportResult& result)
{
    const auto number = [](qint64 value) { return QLocale().toString(value); };
    QString text =
        SafeImportWindow::tr("Новых баров: %1, заменены значения баров: %2, записано "
                             "дней: %3, осталось прежними дней: %4; баров файла, "
                             "которые ничего не изменили: %5, ошибочных строк: %6.")
            .arg(number(result.added), number(result.replaced), number(result.days),
                 number(result.sameDays), number(result.idle()), number(result.badLines));
    if (result.lost > 0)
        text += u' ' + SafeImportWindow::tr("Пропало баров: %1.").arg(number(result.lost));
    if (result.wiped > 0)
        text += u' ' + tadata::wordsOfWiped(result.wiped) + u'.';
    return text;
}

// Where no restore points are to be kept.
QString withoutUndo(const SafeImportResult& result)
{
    if (result.days == 0 || !result.point.isNull())
        return {};
    return u' ' + SafeImportWindow::tr("Отменить его нельзя: точки возврата выключены в "
                                       "настройках.");
}

} // namespace

SafeImportWindow::SafeImportWindow(QWidget* parent)
    : SafeImportWindow(vexdesk::storePlace(), parent)
{}

SafeImportWindow::SafeImportWindow(const QDir& root, QWidget* parent)
    : QDialog(parent)
    , m_root(root)
    , m_preparation(new ImportPreparation(root, this))
    , m_runner(new ImportRunner(this))
    , m_watch(new tadata::ImportWatch(this))
{
    setWindowTitle(tr("Безопасный импорт"));
    setWindowFlags((windowFlags() & ~Qt::WindowContextHelpButtonHint) |
                   Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
    constexpr int calm = 200; // milliseconds: who writes a file writes it in pieces
    m_change.setInterval(calm);
    m_change.setSingleShot(true);
    makeWidgets();
    m_series->chooseVenue(AppSettings(settingsGroup).value(boardKey).toString());
    connectChoices();
    connectPreparation();
    connectRunner();
    fillProfiles();
    begin();
    constexpr QSize usual(780, 560);
    resize(usual);
    tadata::restoreSize(*this, settingsGroup);
}

SafeImportWindow::~SafeImportWindow()
{
    tadata::saveSize(*this, settingsGroup);
    // Until an import is taken back it answers nobody.
    hide();
}

void SafeImportWindow::makeWidgets()
{
    m_series = new SeriesPicker;
    m_layout = new LayoutPicker;
    m_preview = new PreviewView;
    m_outlook = new OutlookPanel;
    auto* const parts = new QSplitter(Qt::Vertical);
    parts->addWidget(m_preview);
    parts->addWidget(m_outlook);
    parts->setStretchFactor(0, 3);
    parts->setStretchFactor(1, 2);
    parts->setChildrenCollapsible(false);

    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(filesRow());
    layout->addWidget(m_series);
    layout->addWidget(m_layout);
    layout->addWidget(parts, 1);
    layout->addLayout(waysRow());
    layout->addLayout(buttonsRow());
}

QLayout* SafeImportWindow::filesRow()
{
    m_files = new FilesPicker;
    m_profile = new QComboBox;
    m_profile->setObjectName(QStringLiteral("profile"));
    m_profile->setToolTip(tr("Параметры, сохранённые командой tadata profile save"));
    constexpr int shortest = 10;
    tadata::makeCompact(m_profile, shortest);
    auto* const label = new QLabel(tr("&Профиль:"));
    label->setBuddy(m_profile);
    auto* const row = new QHBoxLayout;
    row->addWidget(m_files, 1);
    row->addWidget(label);
    row->addWidget(m_profile);
    return row;
}

QLayout* SafeImportWindow::waysRow()
{
    struct Mode
    {
        ImportMode mode;
        QString text;
        QString meaning;
    };
    const QList<Mode> modes{
        {ImportMode::Merge, tr("Доб&авить"),
         tr("Бары файла добавляются к хранимым и заменяют бары с тем же временем")},
        {ImportMode::Fill, tr("Дозапо&лнить"),
         tr("Добавляются только бары, времени которых в хранилище нет")},
        {ImportMode::Replace, tr("За&менить дни"),
         tr("Дни, которые есть в файле, заменяются целиком")}};
    m_mode = new QButtonGroup(this);
    auto* const row = new QHBoxLayout;
    for (const Mode& mode : modes) {
        auto* const button = new QRadioButton(mode.text);
        button->setToolTip(mode.meaning);
        m_mode->addButton(button, static_cast<int>(mode.mode));
        row->addWidget(button);
    }
    m_mode->button(static_cast<int>(m_choices.ways.mode))->setChecked(true);
    m_skipBad = new QCheckBox(tr("Пропускать о&шибочные строки"));
    m_skipBad->setObjectName(QStringLiteral("skipBad"));
    row->addStretch(1);
    row->addWidget(m_skipBad);
    return row;
}

QLayout* SafeImportWindow::buttonsRow()
{
    m_message = new QLabel;
    m_message->setObjectName(QStringLiteral("message"));
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_progress = new QProgressBar;
    m_progress->setRange(0, 100);
    m_import = new QPushButton(tr("&Импортировать"));
    m_import->setObjectName(QStringLiteral("import"));
    m_import->setDefault(true);
    m_undo = new QPushButton(tr("Отм&енить импорт"));
    m_undo->setObjectName(QStringLiteral("undo"));
    m_undo->setAutoDefault(false);
    m_close = new QPushButton;
    m_close->setObjectName(QStringLiteral("close"));
    m_close->setAutoDefault(false);
    auto* const row = new QHBoxLayout;
    row->addWidget(m_message, 1);
    row->addWidget(m_progress, 1);
    row->addWidget(m_undo);
    row->addWidget(m_import);
    row->addWidget(m_close);
    return row;
}

void SafeImportWindow::connectChoices()
{
    auto* const drop = new FileDrop(this, this);
    connect(drop, &FileDrop::dropped, this,
            [this](const QStringList& files) { take({.files = files}); });
    connect(m_files, &FilesPicker::filesChosen, this, &SafeImportWindow::openFiles);
    connect(m_files, &FilesPicker::currentChanged, this, &SafeImportWindow::showCurrentFile);
    connect(m_profile, &QComboBox::activated, this, &SafeImportWindow::takeProfile);
    connect(m_series, &SeriesPicker::seriesChanged, this, &SafeImportWindow::begin);
    connect(m_layout, &LayoutPicker::layoutChosen, this, [this] {
        m_choices.given = m_layout->given(m_choices.given);
        begin();
    });
    connect(&m_preview->roles(), &RolesHeader::roleChosen, this, &SafeImportWindow::takeRole);
    connect(&m_preview->model(), &tadata::PreviewModel::failed, this, [this] {
        const LaidOutFile* const file = currentFile();
        // That it cannot be read is told already, and when it can be is watched.
        if (file && !file->refusal.isNull())
            return;
        m_shown.state.reset();
        if (file) // else it is looked at just now
            m_change.start();
    });
    connect(m_outlook, &OutlookPanel::lineChosen, this, &SafeImportWindow::showLine);
    connect(m_mode, &QButtonGroup::idClicked, this, &SafeImportWindow::takeWays);
    connect(m_skipBad, &QCheckBox::clicked, this, &SafeImportWindow::takeWays);
}

void SafeImportWindow::connectPreparation()
{
    connect(m_preparation, &ImportPreparation::layoutsFound, this, &SafeImportWindow::takeLayouts);
    connect(m_preparation, &ImportPreparation::progressed, m_outlook, &OutlookPanel::showWaiting);
    connect(m_preparation, &ImportPreparation::checked, this, &SafeImportWindow::watch);
    connect(m_preparation, &ImportPreparation::checked, this, &SafeImportWindow::showOutlook);
    connect(m_preparation, &ImportPreparation::failed, m_outlook, &OutlookPanel::showNothing);

    connect(m_watch, &tadata::ImportWatch::filesChanged, this, [this] { m_change.start(); });
    connect(&m_change, &QTimer::timeout, this, &SafeImportWindow::readAnew);
    auto* const again = new QAction(tr("Посмотреть заново"), this);
    again->setShortcut(QKeySequence::Refresh);
    connect(again, &QAction::triggered, this, &SafeImportWindow::lookAgain);
    m_outlook->addAction(again);
    m_outlook->setContextMenuPolicy(Qt::ActionsContextMenu);
    // Somebody else has imported, or put back.
    connect(m_watch, &tadata::ImportWatch::storeChanged, this, &SafeImportWindow::begin);
}

void SafeImportWindow::connectRunner()
{
    connect(m_import, &QPushButton::clicked, this, &SafeImportWindow::startImport);
    connect(m_close, &QPushButton::clicked, this, &SafeImportWindow::reject);
    connect(m_undo, &QPushButton::clicked, this, &SafeImportWindow::startUndo);
    connect(m_runner, &ImportRunner::progressed, this, [this](int percent) {
        m_progress->setValue(percent);
        if (std::exchange(m_waits, false))
            say(QString(), true);
    });
    connect(m_runner, &ImportRunner::waiting, this, [this](const QString& sentence) {
        m_waits = true;
        say(sentence, true);
    });
    connect(m_runner, &ImportRunner::finished, this, &SafeImportWindow::showResult);
    connect(m_runner, &ImportRunner::undone, this, [this](const vexdesk::Outcome& outcome) {
        say(outcome ? tr("Импорт отменён: всё стало, как было до него.") : outcome.wholeMessage(),
            bool(outcome));
        m_closesThen = false;
        lookAgain();
    });
}

void SafeImportWindow::take(const tadata::SafeImportRequest& request)
{
    if (request.isEmpty())
        return;
    if (m_runner->isRunning()) {
        say(tr("Пока импорт не закончен, другие файлы и серии не берутся. Повторите это, когда он "
               "закончится."),
            false);
        return;
    }
    if (!request.series.isEmpty()) {
        forgetRequest();
        m_beforeRequest = {m_series->series(), m_choices.given.timeframe, m_choices.ways.mode};
        m_isSeriesWanted = true;
        m_series->choose(request.series);
        if (request.timeframe != 0)
            m_choices.given.timeframe = m_wantedTimeframe = request.timeframe;
        if (request.isFill)
            m_choices.ways.mode = ImportMode::Fill;
        setWays(m_choices.ways);
    }
    if (request.files.isEmpty())
        begin();
    else
        openFiles(request.files);
}

void SafeImportWindow::openFiles(const QStringList& files)
{
    QStringList paths;
    for (const QString& file : files)
        paths.append(QFileInfo(file).absoluteFilePath());
    paths.removeDuplicates();
    say(QString(), true);
    const bool hasProfile = m_profile->currentIndex() > 0;
    const bool isRequested = std::exchange(m_isSeriesWanted, false);
    if (!isRequested)
        forgetRequest();
    const bool isWanted = isRequested || hasProfile;
    const bool areOthers = !m_choices.files.isEmpty() && m_choices.files != paths;
    m_choices.files = paths;
    // What was said of the series and the columns of other files is not true of these.
    m_guessesSeries = !isWanted;
    if (!isWanted && areOthers && !m_series->isByFileName() && m_series->forgetSecurity())
        say(tr("Инструмент прежнего файла снят: выберите инструмент для нового."), true);
    if (!hasProfile)
        m_choices.given = {.timeframe = m_wantedTimeframe};
    m_files->setFiles(paths);
    begin();
    showCurrentFile();
}

// What was asked for was meant for the files that came next, or for none where none came.
void SafeImportWindow::forgetRequest()
{
    const bool hadFiles = !std::exchange(m_isSeriesWanted, false);
    m_wantedTimeframe.reset();
    if (!m_beforeRequest)
        return;
    const BeforeRequest before = *std::exchange(m_beforeRequest, std::nullopt);
    m_choices.given.timeframe = before.timeframe;
    m_choices.ways.mode = before.mode;
    setWays(m_choices.ways);
    if (!hadFiles)
        chooseSeries(before.series);
}

void SafeImportWindow::setWays(const ImportWays& ways)
{
    m_mode->button(static_cast<int>(ways.mode))->setChecked(true);
    m_skipBad->setChecked(ways.skipsBad);
}

void SafeImportWindow::chooseSeries(const QString& series)
{
    if (series.isEmpty())
        m_series->forgetSecurity();
    else
        m_series->choose(series);
}

// At the files and at the store.
void SafeImportWindow::lookAgain()
{
    if (!m_runner->isRunning())
        begin();
}

// The file that is shown, or another one, is not what it was. What runs finds it out by itself.
void SafeImportWindow::readAnew()
{
    if (m_runner->isRunning())
        return;
    begin();
    // What came of an import, and whether anything did, is more to know.
    if (!m_tellsResult)
        say(tr("Файл изменился и прочитан заново."), true);
}

// What the new files tell of it themselves: the column of their tickers, or their names.
void SafeImportWindow::guessSeries()
{
    const std::vector<LaidOutFile>& files = m_preparation->files();
    if (m_series->isByFileName() || files.empty())
        return;
    const bool haveTickers = std::all_of(files.begin(), files.end(), [](const LaidOutFile& file) {
        return file.layout.hasTicker();
    });
    if (haveTickers) {
        m_series->chooseTickers();
        say(tr("Инструменты берутся из столбца с тикером."), true);
        return;
    }
    const QString series = tadata::seriesOfFileName(files.front().path, m_series->board());
    const bool isOne = std::all_of(files.begin(), files.end(), [&](const LaidOutFile& file) {
        return tadata::seriesOfFileName(file.path, m_series->board()) == series;
    });
    if (m_series->series().isEmpty() && isOne && !series.isEmpty()) {
        m_series->choose(series);
        // A board of which nothing is traded cannot be chosen.
        if (m_series->series() == series)
            say(tr("Инструмент выбран по имени файла: %1.").arg(series), true);
    }
}

void SafeImportWindow::fillProfiles()
{
    const QString chosen = m_profile->currentText();
    m_profile->clear();
    m_profile->addItem(tr("без профиля"));
    m_profile->addItems(tadata::profileNames());
    m_profile->setCurrentIndex(std::max(0, m_profile->findText(chosen)));
    m_profile->setEnabled(m_profile->count() > 1);
}

void SafeImportWindow::takeProfile(int index)
{
    const QString name = index > 0 ? m_profile->itemText(index) : QString();
    const auto profile = tadata::profileOptions(name);
    if (m_withoutProfile) {
        m_choices.ways = m_withoutProfile->ways;
        if (m_choices.series == m_withoutProfile->profiles)
            m_choices.series = m_withoutProfile->series;
    }
    if (index > 0)
        m_withoutProfile = {m_choices.ways, m_choices.series, {}};
    else
        m_withoutProfile.reset();
    tadata::ChoicesOfProfile taken =
        tadata::withProfile(m_choices, profile.value_or(tadata::ProfileOptions()));
    m_choices = taken.choices;
    setWays(m_choices.ways);
    chooseSeries(m_choices.series);
    if (m_series->series() != m_choices.series)
        taken.passedOver.append(QStringLiteral("series"));
    if (m_withoutProfile)
        m_withoutProfile->profiles = m_series->series();
    say(taken.passedOver.isEmpty() ? QString()
                                   : tr("Параметры профиля, которые здесь не действуют: %1")
                                         .arg(taken.passedOver.join(QStringLiteral(", "))),
        true);
    begin();
}

// A role has one column at most, and a column one role.
void SafeImportWindow::takeRole(int column, ColumnRole role)
{
    // What was chosen just now may not be looked at yet.
    const LaidOutFile* const file = currentFile();
    if (!file && !m_choices.given.columns)
        return;
    QMap<qint32, qint32> columns =
        m_choices.given.columns ? *m_choices.given.columns : file->layout.details.columns;
    columns.removeIf([column](auto one) { return one.value() == column; });
    if (role != ColumnRole::None)
        columns.insert(static_cast<qint32>(role), column);
    m_choices.given.columns = columns;
    begin();
}

void SafeImportWindow::takeWays()
{
    m_choices.ways.mode = static_cast<ImportMode>(m_mode->checkedId());
    m_choices.ways.skipsBad = m_skipBad->isChecked();
    begin();
}

// Whatever was chosen: what it means is found out from the beginning.
void SafeImportWindow::begin()
{
    m_watch->stop();
    m_choices.series = m_series->series();
    m_preparation->setChoices(m_choices);
    if (m_choices.files.isEmpty())
        m_outlook->showNothing(tr("Откройте файл или перетащите его в это окно: ещё до импорта "
                                  "здесь будет видно, что он сделает."));
    enable();
}

// What was looked at, for as long as somebody sees it.
void SafeImportWindow::watch()
{
    if (isVisible() && !m_runner->isRunning())
        m_watch->follow(m_preparation->files(), m_preparation->stamps());
}

// What this window does itself is looked at when it is done.
void SafeImportWindow::stopWatching()
{
    m_watch->stop();
    m_change.stop();
}

void SafeImportWindow::takeLayouts()
{
    // Which begins anew where it finds one.
    if (std::exchange(m_guessesSeries, false))
        guessSeries();
    watch();
    const LaidOutFile* const file = currentFile();
    if (file && file->path == m_shown.path && !file->isUnchanged(m_shown))
        m_preview->model().setFile(file->path);
    if (file)
        m_shown = *file;
    showLayout();
}

const LaidOutFile* SafeImportWindow::currentFile() const
{
    const QString path = m_files->current();
    for (const LaidOutFile& file : m_preparation->files()) {
        if (file.path == path)
            return &file;
    }
    return nullptr;
}

void SafeImportWindow::showCurrentFile()
{
    m_preview->model().setFile(m_files->current());
    showLayout();
    showOutlook();
}

void SafeImportWindow::showLayout()
{
    const LaidOutFile* const file = currentFile();
    if (!file)
        return;
    m_layout->show(file->layout);
    m_preview->roles().setColumns(file->layout.details.columns);
    m_preview->model().setLayout(
        {tadata::detailsFor(*file, m_choices), m_choices.ways.clock,
         file->refusal.isNull() && file->layout.lacks().isEmpty() && !m_choices.series.isEmpty(),
         [choices = m_choices, path = file->path](const QString& ticker) {
             return tadata::faultOfTicker(choices, path, ticker);
         }});
}

void SafeImportWindow::showOutlook()
{
    if (!m_preparation->isChecked())
        return;
    if (!m_choices.files.isEmpty())
        m_outlook->showOutlook(m_preparation->outlook(), m_preparation->outlooks());
    m_preview->model().setNotices(m_outlook->problems().noticesOf(m_files->current()));
    enable();
}

void SafeImportWindow::showLine(const QString& file, qint64 line)
{
    m_files->setCurrent(file);
    m_preview->showLine(line);
}

void SafeImportWindow::startImport()
{
    stopWatching();
    m_runner->start({.choices = m_choices,
                     .files = m_preparation->files(),
                     .root = m_root,
                     .stamps = m_preparation->stamps(),
                     .wiped = m_preparation->outlook().wiped,
                     .lostOfFile = m_preparation->outlook().lostOfFile,
                     .limits = tadata::restoreLimits()});
    showRunning(tr("Импортирую..."));
}

void SafeImportWindow::startUndo()
{
    stopWatching();
    m_runner->undo();
    showRunning(tr("Отменяю импорт..."));
}

void SafeImportWindow::showRunning(const QString& what)
{
    m_waits = false;
    say(QString(), true);
    m_progress->setFormat(what + QStringLiteral(" %p %"));
    m_progress->setValue(0);
    enable();
    m_close->setFocus();
}

void SafeImportWindow::showResult(const SafeImportResult& result)
{
    switch (result.end) {
    case SafeImportResult::End::Done:
        tadata::addRecentFiles(m_choices.files);
        m_files->fillRecent();
        say(tr("Импорт закончен. %1").arg(countsOf(result)) + withoutUndo(result) +
                (result.message.isEmpty() ? QString() : u'\n' + result.message),
            result.message.isEmpty());
        break;
    case SafeImportResult::End::TakenBack:
        say(result.isCancelled
                ? tr("Импорт прерван: всё, что он изменил, возвращено.")
                : tr("Импорт не удался, всё, что он изменил, возвращено. %1").arg(result.message),
            result.isCancelled);
        break;
    case SafeImportResult::End::Failed:
        say(result.message, false);
        break;
    }
    m_tellsResult = true;
    // The store is another one now, or a file is.
    lookAgain();
    // Whatever else came of it has to be read.
    const bool isAsWished = result.isCancelled && result.end == SafeImportResult::End::TakenBack;
    if (std::exchange(m_closesThen, false) && isAsWished)
        close();
}

void SafeImportWindow::say(const QString& text, bool isGood)
{
    m_tellsResult = false;
    tadata::tintLabel(m_message, isGood);
    m_message->setText(text);
    // While an import runs its place is the progress bar's.
    m_message->setVisible(!text.isEmpty() || !m_runner->isRunning());
}

void SafeImportWindow::enable()
{
    const bool isRunning = m_runner->isRunning();
    for (QWidget* const widget : std::initializer_list<QWidget*>{m_files, m_series, m_skipBad})
        widget->setEnabled(!isRunning);
    m_layout->setEnabled(!isRunning && !m_choices.files.isEmpty());
    m_profile->setEnabled(!isRunning && m_profile->count() > 1);
    m_preview->roles().setBoxesEnabled(!isRunning);
    const QList<QAbstractButton*> modes = m_mode->buttons();
    for (QAbstractButton* const mode : modes)
        mode->setEnabled(!isRunning);
    m_progress->setVisible(isRunning);
    m_import->setEnabled(!isRunning && m_preparation->isChecked() && m_outlook->isGood());
    m_undo->setVisible(m_runner->canUndo());
    m_close->setText(isRunning ? tr("Прервать") : tr("Закр&ыть"));
    m_close->setEnabled(true);
}

void SafeImportWindow::reject()
{
    if (!m_runner->isRunning()) {
        QDialog::reject();
        return;
    }
    m_runner->cancel();
    m_progress->setFormat(tr("Возвращаю всё, как было..."));
    m_close->setEnabled(false);
}

void SafeImportWindow::closeEvent(QCloseEvent* event)
{
    if (m_runner->isRunning()) {
        reject();
        m_closesThen = true;
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

// For the next time. What somebody else has asked for is not the user's choice.
void SafeImportWindow::keepVenue() const
{
    const QStringList codes = m_series->board().split(u'/');
    if (!m_beforeRequest && !codes.contains(QString()))
        AppSettings(settingsGroup).setValue(boardKey, m_series->board());
}

void SafeImportWindow::changeEvent(QEvent* event)
{
    // Colours that are mixed for the background.
    if (event->type() == QEvent::PaletteChange && m_preparation->isChecked())
        showOutlook();
    QDialog::changeEvent(event);
}

// In a box it ends a choice, and whoever chooses has not seen yet what will happen.
void SafeImportWindow::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isReturn || !qobject_cast<QComboBox*>(focusWidget()))
        QDialog::keyPressEvent(event);
}

void SafeImportWindow::showEvent(QShowEvent* event)
{
    fillProfiles();
    watch();
    QDialog::showEvent(event);
}

void SafeImportWindow::hideEvent(QHideEvent* event)
{
    m_watch->stop();
    if (m_isSeriesWanted && !event->spontaneous())
        forgetRequest();
    if (!event->spontaneous())
        keepVenue();
    QDialog::hideEvent(event);
}
