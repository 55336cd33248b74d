// SPDX-License-Identifier: MIT
#include "importoutlook.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QSet>

#include <algorithm>
#include <compare>
#include <map>
#include <optional>
#include <utility>

namespace tadata {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(SafeImport)
};

using Outcome = CheckedDay::Outcome;

// How much there is to think about.
int weightOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Same:
        return 0;
    case Outcome::New:
        return 1;
    case Outcome::Merged:
        return 2;
    case Outcome::Replaced:
        break;
    }
    return 3;
}

Outcome worse(Outcome left, Outcome right)
{
    return weightOf(left) < weightOf(right) ? right : left;
}

using Days = std::map<QDate, OutlookDay>;

QString number(qint64 value)
{
    return QLocale().toString(value);
}

QString firstOf(const QStringList& texts, const QString& separator)
{
    constexpr qsizetype most = 3;
    if (texts.size() <= most)
        return texts.join(separator);
    return texts.first(most).join(separator) + separator +
           Text::tr("и ещё %1").arg(number(texts.size() - most));
}

// A day of a series as one day file has it.
struct DayFile
{
    QDate day;
    int timeframe = 0;

    auto operator<=>(const DayFile& other) const
    {
        return std::pair(day.toJulianDay(), timeframe) <=>
               std::pair(other.day.toJulianDay(), other.timeframe);
    }
};

// What all files would do to one day of a series.
struct SharedDay
{
    OutlookDay day;
    QStringList files;
    qint64 added = 0;
    qint64 wiped = 0;
    qint64 lostOfFile = 0;
    bool replaces = false;
};

// Everything that is added up of one series.
class SeriesDays final
{
public:
    void add(const FileOutlook& file, const std::vector<CheckedDay>& days)
    {
        for (const CheckedDay& checked : days)
            add(file, checked);
    }

    // Minutes that are derived from seconds have a file of their own, beside that of real ones.
    const std::map<DayFile, SharedDay>& days() const { return m_days; }

private:
    void add(const FileOutlook& file, const CheckedDay& checked)
    {
        const auto [place, isNew] = m_days.try_emplace({checked.day, file.timeframe});
        SharedDay& shared = place->second;
        shared.files.append(file.path);
        shared.replaces = file.mode == ImportMode::Replace;
        OutlookDay& day = shared.day;
        day.day = checked.day;
        day.outcome = isNew ? checked.outcome : worse(day.outcome, checked.outcome);
        day.bars += checked.bars;
        shared.added += checked.added;
        shared.wiped += checked.wiped;
        shared.lostOfFile += checked.lostOfFile;
        day.replaced += checked.replaced;
        day.stored = std::max<qint64>(day.stored, checked.stored);
        day.result = std::max<qint64>(day.result, checked.result);
        day.lost = std::max<qint64>(day.lost, checked.lost);
    }

    std::map<DayFile, SharedDay> m_days;
};

void addDay(const OutlookDay& ofSeries, bool isShared, Days& days)
{
    const auto [place, isNew] = days.try_emplace(ofSeries.day);
    OutlookDay& day = place->second;
    day.day = ofSeries.day;
    day.outcome = isNew ? ofSeries.outcome : worse(day.outcome, ofSeries.outcome);
    day.bars += ofSeries.bars;
    day.stored += ofSeries.stored;
    day.result += ofSeries.result;
    day.replaced += ofSeries.replaced;
    day.lost += ofSeries.lost;
    day.isShared = day.isShared || isShared;
}

QStringList namesOf(const QStringList& paths)
{
    QStringList names;
    for (const QString& path : paths)
        names.append(QFileInfo(path).fileName());
    return names.removeDuplicates() == 0 ? names : paths;
}

// A day that files would replace one after the other.
struct Clash
{
    QDate day;
    QString series;
    QStringList files;

    QString text() const
    {
        return Text::tr("День %1 серии %2 есть в нескольких файлах: %3. При замене дней от него "
                        "останется только то, что есть в последнем из них. Выберите «Добавить» "
                        "или импортируйте эти файлы по одному.")
            .arg(QLocale().toString(day, QLocale::ShortFormat), series,
                 firstOf(namesOf(files), QStringLiteral(", ")));
    }
};

// Adds the files up, series by series.
class Sum final
{
public:
    void add(const FileOutlook& file)
    {
        if (file.refusal.isNull()) {
            ++m_outlook.countedFiles;
        } else {
            ++m_outlook.refusedFiles;
            addStop(file.refusal);
        }
        for (const QString& warning : file.warnings)
            m_warned[warning].append(file.path);
        m_outlook.unused += file.unused;
        for (const SeriesOutlook& series : file.series)
            add(file, series);
    }

    ImportOutlook finished()
    {
        for (const auto& [name, days] : m_series)
            addDays(name, days);
        if (m_clash)
            addStop(m_clash->text());
        for (const auto& [date, day] : m_days)
            m_outlook.days.push_back(day);
        for (const auto& [warning, paths] : m_warned)
            m_outlook.warnings.append(
                isOneFile() ? warning : namesIn(paths) + QStringLiteral(": ") + warning);
        m_outlook.unused.removeDuplicates();
        m_outlook.series = m_withBars.size();
        if (m_outlook.stops.isEmpty() && m_outlook.bars == 0 && m_outlook.badLines > 0)
            addStop(Text::tr("Ни одной строки взять нельзя: все ошибочные."));
        m_outlook.wouldImport = m_outlook.stops.isEmpty();
        return std::move(m_outlook);
    }

private:
    void add(const FileOutlook& file, const SeriesOutlook& series)
    {
        const ImportCheck& check = series.check;
        m_outlook.bars += check.bars;
        m_outlook.badLines += check.badLines;
        for (size_t kind = 0; kind < problemKinds; ++kind)
            m_outlook.problems[kind] += check.counts[kind];
        if (check.stop)
            addStop(check.stop->message);
        if (check.bars > 0)
            m_withBars.insert(series.series);
        m_series[series.series].add(file, check.days);
    }

    bool isOneFile() const { return m_outlook.countedFiles + m_outlook.refusedFiles == 1; }

    static QString namesIn(const QStringList& paths)
    {
        return firstOf(namesOf(paths), QStringLiteral(", "));
    }

    void addStop(const QString& message)
    {
        if (m_known.contains(message))
            return;
        m_known.insert(message);
        m_outlook.stops.append(message);
    }

    void addDays(const QString& series, const SeriesDays& days)
    {
        for (const auto& [file, shared] : days.days()) {
            const bool isShared = shared.files.size() > 1;
            ++m_outlook.dayCounts[static_cast<size_t>(shared.day.outcome)];
            m_outlook.added += shared.added;
            m_outlook.replaced += shared.day.replaced;
            m_outlook.replacedDays += shared.day.replaced > 0 ? 1 : 0;
            m_outlook.lost += shared.day.lost;
            m_outlook.wiped += shared.wiped;
            m_outlook.lostOfFile += shared.lostOfFile;
            m_outlook.sharedDays += isShared ? 1 : 0;
            addDay(shared.day, isShared, m_days);
            if (isShared && shared.replaces)
                addClash({file.day, series, shared.files});
        }
    }

    void addClash(const Clash& clash)
    {
        if (!m_clash || clash.day < m_clash->day)
            m_clash = clash;
    }

    ImportOutlook m_outlook;
    std::map<QString, SeriesDays> m_series; ///< by name
    QSet<QString> m_withBars;
    QSet<QString> m_known;                   ///< stops
    std::map<QString, QStringList> m_warned; ///< the files
    std::optional<Clash> m_clash;
    Days m_days;
};

} // namespace

ImportOutlook outlookOf(const std::vector<FileOutlook>& files)
{
    if (files.empty())
        return {};
    Sum sum;
    for (const FileOutlook& file : files)
        sum.add(file);
    return sum.finished();
}

QString whyItStops(const ImportOutlook& outlook)
{
    return firstOf(outlook.stops, QStringLiteral("\n"));
}

QString whatToHeed(const ImportOutlook& outlook)
{
    return firstOf(outlook.warnings, QStringLiteral("\n"));
}

std::vector<OutlookCell> cellsOf(const std::vector<OutlookDay>& days, size_t mostCells)
{
    std::vector<OutlookCell> cells;
    const size_t count = std::min(days.size(), mostCells);
    for (size_t cell = 0; cell < count; ++cell) {
        const size_t first = cell * days.size() / count;
        const size_t last = (cell + 1) * days.size() / count - 1;
        OutlookCell one{first, last, days[first].outcome, false};
        for (size_t day = first; day <= last; ++day) {
            one.outcome = worse(one.outcome, days[day].outcome);
            one.loses = one.loses || days[day].lost > 0;
        }
        cells.push_back(one);
    }
    return cells;
}

QString titleOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::New:
        return Text::tr("новый");
    case Outcome::Same:
        return Text::tr("без изменений");
    case Outcome::Replaced:
        return Text::tr("заменяется");
    case Outcome::Merged:
        break;
    }
    return Text::tr("дополняется");
}

QString wordsOfLost(qint64 bars)
{
    return Text::tr("Пропадёт баров: %1").arg(number(bars));
}

QString wordsOfWiped(qint64 bars)
{
    return Text::tr("Баров, которые файл заменяет сам, потому что возвращается к их дню: %1")
        .arg(number(bars));
}

QStringList sentencesOf(const ImportOutlook& outlook)
{
    if (outlook.countedFiles == 0)
        return {};
    QStringList sentences{
        Text::tr("Дней новых: %1, без изменений: %2, заменяемых: %3, "
                 "дополняемых: %4")
            .arg(number(outlook.count(Outcome::New)), number(outlook.count(Outcome::Same)),
                 number(outlook.count(Outcome::Replaced)), number(outlook.count(Outcome::Merged)))};
    QString bars = Text::tr("Новых баров: %1, заменит значения баров: %2")
                       .arg(number(outlook.added), number(outlook.replaced));
    if (outlook.replacedDays > 0)
        bars += Text::tr(" (дней: %1)").arg(number(outlook.replacedDays));
    sentences.append(bars);
    if (outlook.lost > 0)
        sentences.append(wordsOfLost(outlook.lost));
    else if (outlook.wouldImport)
        sentences.append(Text::tr("Ни один бар не пропадёт"));
    if (outlook.wiped > 0)
        sentences.append(wordsOfWiped(outlook.wiped));
    if (outlook.sharedDays > 0)
        sentences.append(Text::tr("Дней, которые есть в нескольких файлах: %1; сказанное о них "
                                  "верно для каждого файла по отдельности")
                             .arg(number(outlook.sharedDays)));
    sentences.append(
        outlook.wouldImport
            ? Text::tr("Баров в файле: %1, из них ничего не изменят: %2; ошибочных строк: %3")
                  .arg(number(outlook.bars), number(outlook.idle()), number(outlook.badLines))
            : Text::tr("Баров в файле: %1; ошибочных строк: %2")
                  .arg(number(outlook.bars), number(outlook.badLines)));
    if (!outlook.unused.isEmpty())
        sentences.append(Text::tr("Столбцы, которые не взяты: %1")
                             .arg(firstOf(outlook.unused, QStringLiteral(", "))));
    if (outlook.refusedFiles > 0)
        sentences.append(Text::tr("Файлов, в которых ничего не сосчитано: %1")
                             .arg(number(outlook.refusedFiles)));
    if (outlook.series > 1)
        sentences.append(Text::tr("Серий: %1").arg(number(outlook.series)));
    return sentences;
}

QString sentenceOf(const OutlookDay& day)
{
    QString text = Text::tr("%1: %2; баров в файле: %3, хранится: %4, станет: %5")
                       .arg(QLocale().toString(day.day, QLocale::ShortFormat), titleOf(day.outcome),
                            number(day.bars), number(day.stored), number(day.result));
    if (day.replaced > 0)
        text += Text::tr(", заменит значения: %1").arg(number(day.replaced));
    if (day.lost > 0)
        text += Text::tr(", пропадёт: %1").arg(number(day.lost));
    if (day.isShared)
        text += Text::tr("; день есть в нескольких файлах");
    return text;
}

} // namespace tadata
