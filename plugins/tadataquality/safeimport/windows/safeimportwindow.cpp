// SPDX-License-Identifier: MIT
#include "safeimportwindow.h"

#include "compactbox.h"
#include "filedrop.h"
#include "filespicker.h"
#include "importpreparation.h"
#include "importrunner.h"
#include "layoutpicker.h"
#include "outlookpanel.h"
#include "previewview.h"
#include "problemsmodel.h"
#include "profiles.h"
#include "recentfiles.h"
#include "restoresettings.h"
#include "rolesheader.h"
#include "seriespicker.h"
#include "serieswatch.h"
#include "textcolours.h"
#include "windowsize.h"

#include <vexdesk/history/storepaths.h>

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QSignalBlocker>
#include <QtGui/QCloseEvent>
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

using tadata::ImportPreparation;
using tadata::ImportRunner;
using tadata::LaidOutFile;
using tadata::SafeImportResult;

namespace {

constexpr QLatin1String settingsGroup("TADataQuality/SafeImport");

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
    , m_store(new tadata::SeriesWatch(this))
{
    setWindowTitle(tr("Безопасный импорт"));
    setWindowFlags((windowFlags() & ~Qt::WindowContextHelpButtonHint) |
                   Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
    constexpr int calm = 200; // milliseconds: who writes a file writes it in pieces
    m_change.setInterval(calm);
    m_change.setSingleShot(true);
    makeWidgets();
    connectAll();
    fillProfiles();
    begin();
    constexpr QSize usual(780, 560);
    resize(usual);
    tadata::restoreSize(*this, settingsGroup);
}

SafeImportWindow::~SafeImportWindow()
{
    tadata::saveSize(*this, settingsGroup);
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

void SafeImportWindow::connectAll()
{
    auto* const drop = new FileDrop(this, this);
    connect(drop, &FileDrop::dropped, this, [this](const QStringList& files) {
        if (!m_runner->isRunning())
            openFiles(files);
    });
    connect(m_files, &FilesPicker::filesChosen, this, &SafeImportWindow::openFiles);
    connect(m_files, &FilesPicker::currentChanged, this, &SafeImportWindow::showCurrentFile);
    connect(m_profile, &QComboBox::activated, this, &SafeImportWindow::takeProfile);
    connect(m_series, &SeriesPicker::seriesChanged, this, &SafeImportWindow::begin);
    connect(m_layout, &LayoutPicker::layoutChosen, this, [this] {
        m_choices.given = m_layout->given(m_choices.given);
        begin();
    });
    connect(&m_preview->roles(), &RolesHeader::roleChosen, this, &SafeImportWindow::takeRole);
    connect(&m_preview->model(), &tadata::PreviewModel::failed, this, [this] { m_change.start(); });
    connect(m_outlook, &OutlookPanel::lineChosen, this, &SafeImportWindow::showLine);
    connect(m_mode, &QButtonGroup::idClicked, this, &SafeImportWindow::takeWays);
    connect(m_skipBad, &QCheckBox::clicked, this, &SafeImportWindow::takeWays);

    connect(m_preparation, &ImportPreparation::layoutsFound, this, &SafeImportWindow::showLayout);
    connect(m_preparation, &ImportPreparation::progressed, m_outlook, &OutlookPanel::showWaiting);
    connect(m_preparation, &ImportPreparation::checked, this, &SafeImportWindow::showOutlook);
    connect(m_preparation, &ImportPreparation::failed, m_outlook, &OutlookPanel::showNothing);

    connect(m_import, &QPushButton::clicked, this, &SafeImportWindow::startImport);
    connect(m_close, &QPushButton::clicked, this, &SafeImportWindow::reject);
    connect(m_undo, &QPushButton::clicked, this, &SafeImportWindow::startUndo);
    connect(m_runner, &ImportRunner::progressed, m_progress, &QProgressBar::setValue);
    connect(m_runner, &ImportRunner::finished, this, &SafeImportWindow::showResult);
    connect(m_runner, &ImportRunner::undone, this, [this](const vexdesk::Outcome& outcome) {
        say(outcome ? tr("Импорт отменён: всё стало, как было до него.") : outcome.message(),
            bool(outcome));
        m_store->resume();
        begin();
    });

    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, [this] { m_change.start(); });
    connect(&m_change, &QTimer::timeout, this, &SafeImportWindow::readAnew);
    // Somebody else has imported, or put back.
    connect(m_store, &tadata::SeriesWatch::changed, this, &SafeImportWindow::begin);
}

void SafeImportWindow::take(const tadata::SafeImportRequest& request)
{
    if (request.isEmpty() || m_runner->isRunning())
        return;
    if (!request.series.isEmpty())
        m_series->choose(request.series);
    if (request.timeframe != 0)
        m_choices.given.timeframe = m_wantedTimeframe = request.timeframe;
    if (request.isFill) {
        m_choices.ways.mode = ImportMode::Fill;
        m_mode->button(static_cast<int>(ImportMode::Fill))->setChecked(true);
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
    m_choices.files = paths;
    // What was said of the columns of other files is not true of these.
    if (m_profile->currentIndex() <= 0)
        m_choices.given = {.timeframe = m_wantedTimeframe};
    m_files->setFiles(paths);
    say(QString(), true);
    watchFiles();
    begin();
    showCurrentFile();
}

void SafeImportWindow::watchFiles()
{
    const QStringList before = m_watcher.files();
    if (!before.isEmpty())
        m_watcher.removePaths(before);
    for (const QString& file : std::as_const(m_choices.files)) {
        if (QFileInfo::exists(file))
            m_watcher.addPath(file);
    }
}

void SafeImportWindow::watchStore()
{
    QStringList series;
    for (const tadata::FileOutlook& file : m_preparation->outlooks()) {
        for (const tadata::SeriesOutlook& one : file.series)
            series.append(one.series);
    }
    m_store->follow(m_root, series);
}

// The file that is shown, or another one, is not what it was.
void SafeImportWindow::readAnew()
{
    // What runs finds it out by itself.
    if (m_runner->isRunning()) {
        m_change.start();
        return;
    }
    watchFiles();
    const qint64 line = m_preview->model().firstLine();
    begin();
    showCurrentFile();
    m_preview->model().showFrom(line);
    say(tr("Файл изменился и прочитан заново."), true);
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
    const tadata::ChoicesOfProfile taken =
        tadata::withProfile(m_choices, profile.value_or(tadata::ProfileOptions()));
    m_choices = taken.choices;
    say(taken.passedOver.isEmpty() ? QString()
                                   : tr("Параметры профиля, которые здесь не действуют: %1")
                                         .arg(taken.passedOver.join(QStringLiteral(", "))),
        true);
    m_mode->button(static_cast<int>(m_choices.ways.mode))->setChecked(true);
    m_skipBad->setChecked(m_choices.ways.skipsBad);
    if (!m_choices.series.isEmpty())
        m_series->choose(m_choices.series);
    begin();
}

// A role has one column at most, and a column one role.
void SafeImportWindow::takeRole(int column, ColumnRole role)
{
    const LaidOutFile* const file = currentFile();
    if (!file)
        return;
    QMap<qint32, qint32> columns = file->layout.details.columns;
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
    m_choices.series = m_series->series();
    m_preparation->setChoices(m_choices);
    if (m_choices.files.isEmpty())
        m_outlook->showNothing(tr("Откройте файл или перетащите его в это окно: ещё до импорта "
                                  "здесь будет видно, что он сделает."));
    enable();
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
         file->refusal.isNull() && file->layout.lacks().isEmpty() && !m_choices.series.isEmpty()});
}

void SafeImportWindow::showOutlook()
{
    if (!m_preparation->isChecked())
        return;
    if (!m_choices.files.isEmpty())
        m_outlook->showOutlook(m_preparation->outlook(), m_preparation->outlooks());
    m_preview->model().setNotices(m_outlook->problems().noticesOf(m_files->current()));
    watchStore();
    enable();
}

void SafeImportWindow::showLine(const QString& file, qint64 line)
{
    m_files->setCurrent(file);
    m_preview->showLine(line);
}

void SafeImportWindow::startImport()
{
    // What this window does itself is looked at when it is done.
    m_store->pause();
    m_runner->start({.choices = m_choices,
                     .files = m_preparation->files(),
                     .root = m_root,
                     .stamps = m_preparation->stamps(),
                     .limits = tadata::restoreLimits()});
    showRunning(tr("Импортирую..."));
}

void SafeImportWindow::startUndo()
{
    m_store->pause();
    m_runner->undo();
    showRunning(tr("Отменяю импорт..."));
}

void SafeImportWindow::showRunning(const QString& what)
{
    say(QString(), true);
    m_progress->setFormat(what + QStringLiteral(" %p %"));
    m_progress->setValue(0);
    enable();
    m_close->setFocus();
}

void SafeImportWindow::showResult(const SafeImportResult& result)
{
    const QLocale locale;
    const QString counts = tr("Баров: %1, дней: %2, ошибочных строк: %3.")
                               .arg(locale.toString(result.bars), locale.toString(result.days),
                                    locale.toString(result.badLines));
    switch (result.end) {
    case SafeImportResult::End::Done:
        tadata::addRecentFiles(m_choices.files);
        say(tr("Импорт закончен. %1").arg(counts) + withoutUndo(result) +
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
    // The store is another one now, or a file is.
    m_store->resume();
    begin();
}

void SafeImportWindow::say(const QString& text, bool isGood)
{
    tadata::tintLabel(m_message, isGood);
    m_message->setText(text);
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
    m_message->setVisible(!isRunning);
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
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

void SafeImportWindow::changeEvent(QEvent* event)
{
    // Colours that are mixed for the background.
    if (event->type() == QEvent::PaletteChange && m_preparation->isChecked())
        showOutlook();
    QDialog::changeEvent(event);
}

void SafeImportWindow::showEvent(QShowEvent* event)
{
    fillProfiles();
    QDialog::showEvent(event);
}
