// SPDX-License-Identifier: MIT
#include "tour/optionstour.h"

#include "desk/mainwindow.h"
#include "tour/demonstration.h"
#include "tour/settingsbefore.h"
#include "tour/tour.h"
#include "tour/toursteps.h"
#include "tour/userinput.h"

#include <vexdesk/appsettings.h>
#include <vexdesk/icore.h>

#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

#include <algorithm>
#include <memory>

namespace vexdesk {

namespace {

constexpr int usualDays = 30;
constexpr int mostDays = 99; // that the page offers

const QString pluginGroup = QStringLiteral("TADataManager");
const QString deleteSecondsKey = QStringLiteral("deleteSeconds");
const QString storeForDaysKey = QStringLiteral("storeForDays");

// The settings that the tour changes.
QStringList changedKeys()
{
    const QString dialogGroup = QStringLiteral("Desk/OptionsDialog/");
    return {pluginGroup + u'/' + deleteSecondsKey, pluginGroup + u'/' + storeForDaysKey,
            dialogGroup + QStringLiteral("size"), dialogGroup + QStringLiteral("category")};
}

// The files of the tour, by what the rule of the page says of them. Nobody else has such names.
struct SecondFiles
{
    QStringList old{QStringLiteral("20240110_tour_1"), QStringLiteral("20240111_tour_1")};
    QStringList kept{QDate::currentDate().addDays(-1).toString(QStringLiteral("yyyyMMdd")) +
                         QStringLiteral("_tour_1"),
                     QStringLiteral("20240110_tour_1.iss"), QStringLiteral("20240110_tour_60"),
                     QStringLiteral("tour_1")};

    QStringList all() const { return old + kept; }
};

// What the steps share from the first to the last one.
struct State
{
    SettingsBefore settings{changedKeys()};
    SecondFiles files;
    QSet<QString> before; // the paths of the store, before the new day

    void cleanUp()
    {
        for (const QString& name : files.all())
            QFile::remove(demonstrationFilePath(name));
        settings.restore();
    }
};

QSet<QString> storedPaths()
{
    QSet<QString> paths;
    QDirIterator walk(ICore::getDir(QStringLiteral("tadata"), false).path(),
                      QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (walk.hasNext())
        paths.insert(walk.next());
    return paths;
}

bool writeFiles(const SecondFiles& files)
{
    const QByteArray bars = "100000;120.00;120.00;120.00;120.00;1;0.00;0\n";
    const QStringList names = files.all();
    return QDir().mkpath(QFileInfo(demonstrationFilePath(names.constFirst())).path()) &&
           std::all_of(names.cbegin(), names.cend(), [&bars](const QString& name) {
               QFile file(demonstrationFilePath(name));
               return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                      file.write(bars) == bars.size() && file.flush();
           });
}

// Whether exactly the old files are gone.
Outcome areOldOnesGone(const State& state)
{
    QSet<QString> wanted = state.before;
    for (const QString& name : state.files.old) {
        if (!wanted.remove(demonstrationFilePath(name)))
            return missing(Tour::tr("не было файла %1").arg(name));
    }
    const QSet<QString> now = storedPaths();
    for (const QString& path : now) {
        if (!wanted.contains(path))
            return missing(Tour::tr("не удалён файл %1").arg(path));
    }
    for (const QString& path : std::as_const(wanted)) {
        if (!now.contains(path))
            return missing(Tour::tr("удалён файл %1").arg(path));
    }
    return {};
}

QListWidgetItem* categoryItem()
{
    const auto* const list = inDialog<QListWidget>("categories");
    for (int row = 0; list && row < list->count(); ++row) {
        if (list->item(row)->data(Qt::UserRole).toString() == pluginGroup)
            return list->item(row);
    }
    return nullptr;
}

QSpinBox* daysBox()
{
    auto* const box = inDialog<QSpinBox>("storeForDays");
    return box && box->isVisible() && box->isEnabled() ? box : nullptr;
}

void addFileSteps(Tour& tour, const std::shared_ptr<State>& state)
{
    tour.add({Tour::tr("положить секундные файлы в хранилище"), {}, [state] {
                  if (writeFiles(state->files))
                      state->before = storedPaths();
              }});
    tour.add({Tour::tr("секундные файлы лежат в хранилище"), [state] {
                  return missingUnless(!state->before.isEmpty(), Tour::tr("файлы не записаны"));
              }});
}

void addDialogSteps(Tour& tour, MainWindow& window, int days)
{
    addMenuSteps(tour, window, "Desk.Options");
    tour.add({Tour::tr("выбрать раздел настроек"),
              [] { return missingUnless(categoryItem(), Tour::tr("в настройках нет раздела")); },
              [] {
                  auto* const list = inDialog<QListWidget>("categories");
                  list->window()->activateWindow();
                  click(list->viewport(), list->visualItemRect(categoryItem()).center());
              }});
    tour.add({Tour::tr("страница настроек"),
              [] { return missingUnless(daysBox(), Tour::tr("число дней нельзя ввести")); },
              {},
              QStringLiteral("options")});
    addTyping(tour, Tour::tr("число дней"), &daysBox, QString::number(days));
    addClick(
        tour, Tour::tr("сохранить настройки"),
        [] { return inDialog<QDialogButtonBox>("buttons")->button(QDialogButtonBox::Ok); }, {},
        QStringLiteral("options-days"));
    addLook(tour, Tour::tr("настройки сохранены"), [days] {
        const int stored = AppSettings(pluginGroup).value(storeForDaysKey).toInt();
        return missingUnless(stored == days, Tour::tr("сохранено дней: %1").arg(stored));
    });
}

void addDaySteps(Tour& tour, MainWindow& window, const std::shared_ptr<State>& state)
{
    addMenuSteps(tour, window, "Desk.NewDay", QString(), QStringLiteral("new-day"));
    tour.add({Tour::tr("старые секундные файлы удалены, остальные на месте"),
              [state] { return areOldOnesGone(*state); }, [state] { state->cleanUp(); }});
}

} // namespace

void addOptionsTour(Tour& tour, MainWindow& window)
{
    const AppSettings settings(pluginGroup);
    const int usersDays = settings.value(storeForDaysKey, 0).toInt();
    if (!settings.value(deleteSecondsKey, true).toBool() || usersDays >= mostDays) {
        tour.add({Tour::tr("настройки не показаны: секундная история хранится по желанию "
                           "пользователя")});
        return;
    }
    const auto state = std::make_shared<State>();
    QObject::connect(&tour, &Tour::failed, &tour, [state] { state->cleanUp(); });
    addFileSteps(tour, state);
    addDialogSteps(tour, window, std::max(usualDays, usersDays + 1));
    addDaySteps(tour, window, state);
}

} // namespace vexdesk
