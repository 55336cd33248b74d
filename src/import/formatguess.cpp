// SPDX-License-Identifier: MIT
#include "formatguess.h"

#include "columnroles.h"
#include "fieldforms.h"
#include "pricecolumns.h"
#include "samplecolumns.h"
#include "windows1251.h"

#include <vexdesk/history/utf8.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <utility>

namespace tadata {

using vexdesk::Result;

namespace {

const QString dateMissing = QStringLiteral("date");
const QString openInterestMissing = QStringLiteral("oi");
const QString pricesMissing = QStringLiteral("prices");
const QString separatorMissing = QStringLiteral("separator");
const QString timeMissing = QStringLiteral("time");
const QString volumeMissing = QStringLiteral("volume");

constexpr std::array priceRoles{ColumnRole::Open, ColumnRole::High, ColumnRole::Low,
                                ColumnRole::Close};

// The forms that are tried.
template <typename Form>
std::vector<Form> formsOf(const QStringList& known, const std::optional<QString>& given)
{
    std::vector<Form> forms;
    for (const QString& pattern : given ? QStringList{*given} : known)
        forms.emplace_back(pattern);
    return forms;
}

template <typename Form>
bool isInAny(const std::vector<Form>& forms, QByteArrayView field)
{
    return std::any_of(forms.begin(), forms.end(),
                       [field](const Form& form) { return form.read(field).has_value(); });
}

template <typename Form>
std::vector<Form> formsThatHold(const SampleBody& body, const Column& column,
                                const std::vector<Form>& forms)
{
    std::vector<Form> held;
    for (const Form& form : forms) {
        if (body.holds(column, [&form](QByteArrayView field) { return bool(form.read(field)); }))
            held.push_back(form);
    }
    return held;
}

// The same for a column or its beginning, whether there are any.
template <typename Form>
bool holdsAny(const SampleBody& body, const Column& column, const std::vector<Form>& forms)
{
    return std::any_of(forms.begin(), forms.end(), [&](const Form& form) {
        return body.holds(column, [&form](QByteArrayView field) { return bool(form.read(field)); });
    });
}

// The numbers of the last four columns that were read.
class NumberWindow final
{
public:
    void clear() { m_count = 0; }
    void add(int index, const Column& column)
    {
        ++m_count;
        m_next = index + 1;
        std::rotate(m_numbers.begin(), m_numbers.begin() + 1, m_numbers.end());
        m_numbers.back() = numbersOf(column);
    }

    bool isFull() const { return m_count >= int(m_numbers.size()); }
    // What has to be added so that this is the last of four.
    int firstMissing(int index) const
    {
        return std::max(index - int(m_numbers.size()) + 1, m_next);
    }
    PriceColumns columns() const
    {
        return {&m_numbers[0], &m_numbers[1], &m_numbers[2], &m_numbers[3]};
    }

private:
    std::array<Numbers, priceRoles.size()> m_numbers;
    int m_count = 0; // of columns since it was cleared
    int m_next = 0;  // behind the column that was read last
};

// Which fits into every integer and needs no Qt to be read.
bool isShortNumber(QByteArrayView field)
{
    constexpr qsizetype longest = 9;
    return !field.isEmpty() && field.size() <= longest &&
           std::all_of(field.begin(), field.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// Integers as the parser takes them: with blanks around, too.
bool isVolume(QByteArrayView field)
{
    bool isNumber = isShortNumber(field);
    if (!isNumber)
        vexdesk::textFromUtf8(field).toLongLong(&isNumber);
    return isNumber;
}

bool isOpenInterest(QByteArrayView field)
{
    bool isNumber = isShortNumber(field);
    if (!isNumber)
        vexdesk::textFromUtf8(field).toInt(&isNumber);
    return isNumber;
}

// Whether no two dates in this form that stand one after the other lie far apart.
bool isGapless(const SampleBody& body, const Column& column, const DateForm& form)
{
    constexpr qint64 largestStep = 14; // days: the longest time for which markets are closed
    std::optional<QDate> before;
    for (size_t line = 0; line < column.size(); ++line) {
        if (body.beginsHalf(line))
            before.reset();
        const std::optional<QDate> date = form.read(column[line]);
        if (!date)
            continue;
        if (before && std::abs(before->daysTo(*date)) > largestStep)
            return false;
        before = date;
    }
    return true;
}

// The one guess that is made from a sample.
class Guessing final
{
public:
    Guessing(const FileSample& sample, const GuessHints& hints)
        : m_sample(sample)
        , m_hints(hints)
        , m_dateForms(formsOf<DateForm>(knownDateForms(), hints.dateFormat))
        , m_timeForms(formsOf<TimeForm>(knownTimeForms(), hints.timeFormat))
    {}

    FormatGuess run();

private:
    // The sample as one separator divides it.
    struct Layout
    {
        QByteArray separator;
        bool hasHeader = false;
        qsizetype fields = 0;
    };
    using ByRole = QMap<ColumnRole, int>;
    // When a bar is. Between several forms only equal texts are known to be one day.
    struct Stamp
    {
        bool isOfDay(const Stamp& other) const { return date == other.date && text == other.text; }

        QDate date;          ///< where there is one form
        QByteArrayView text; ///< where there are several
        QTime time;
    };

    std::optional<Layout> bestLayout() const;
    Layout layoutOf(const QString& separator, qsizetype fewestFields) const;
    bool isHeader(QByteArrayView line, QByteArrayView separator) const;

    QStringList namesOf(const Layout& layout) const;
    static ByRole namedColumns(const QStringList& names);
    void takeNamed(const SampleBody& body, const ByRole& named);
    void takeNamedPrices(const ByRole& named, const std::map<int, Column>& columns);
    void noteUnused(const QStringList& names);
    void takeByContent(const SampleBody& body, qsizetype fields);
    void findDateAndTime(ColumnReader& reader, const SampleBody& body, qsizetype fields);
    void findPrices(ColumnReader& reader, const SampleBody& body, qsizetype fields);
    void findVolume(const SampleBody& body, const Column& column, int index);

    bool takeDate(const SampleBody& body, const Column& column, int index);
    bool takeTime(const SampleBody& body, const Column& column, int index);
    void chooseDateForm(const SampleBody& body);
    void chooseTimeframe(const SampleBody& body);
    std::optional<Stamp> stampOf(size_t line) const;
    void takeDecimals(const PriceColumns& columns);

    void take(ColumnRole role, int column) { m_guess.columns.insert(qint32(role), column); }
    bool has(ColumnRole role, int column) const
    {
        return m_guess.columns.value(qint32(role), -1) == column;
    }
    bool isDateOrTime(int column) const
    {
        return has(ColumnRole::Date, column) || has(ColumnRole::Time, column);
    }
    void miss(const QString& what) { m_guess.missing.append(what); }

    const FileSample& m_sample;
    const GuessHints& m_hints;
    std::vector<DateForm> m_dateForms;
    std::vector<TimeForm> m_timeForms;
    FormatGuess m_guess;
    // What the columns of the date and the time hold, where they were found.
    Column m_dates;
    Column m_times;
    std::vector<DateForm> m_heldDateForms;
    std::optional<TimeForm> m_timeForm;
};

FormatGuess Guessing::run()
{
    m_guess.lines = qsizetype(m_sample.lines.size());
    m_guess.timeframe = m_hints.timeframe.value_or(m_guess.timeframe);
    const std::optional<Layout> layout = bestLayout();
    if (!layout) {
        m_guess.missing = {dateMissing, pricesMissing, separatorMissing, timeMissing};
        return m_guess;
    }
    m_guess.separator = QString::fromUtf8(layout->separator);
    m_guess.hasHeader = layout->hasHeader;

    const SampleBody body(m_sample, layout->separator, layout->hasHeader);
    const QStringList names = namesOf(*layout);
    const ByRole named = namedColumns(names);
    const bool namesPrices = std::any_of(priceRoles.begin(), priceRoles.end(),
                                         [&](ColumnRole role) { return named.contains(role); });
    if (namesPrices)
        takeNamed(body, named);
    else
        takeByContent(body, layout->fields);
    noteUnused(names);

    if (m_dates.empty())
        miss(dateMissing);
    if (m_times.empty())
        miss(timeMissing);
    chooseDateForm(body);
    chooseTimeframe(body);
    std::sort(m_guess.missing.begin(), m_guess.missing.end());
    return m_guess;
}

// The one that divides the lines into the most fields.
std::optional<Guessing::Layout> Guessing::bestLayout() const
{
    constexpr qsizetype fewestFields = 6; // date, time and prices
    static const QStringList known{QStringLiteral(","), QStringLiteral(";"), QStringLiteral("\t"),
                                   QStringLiteral(" "), QStringLiteral("|")};
    std::optional<Layout> best;
    for (const QString& separator : m_hints.separator ? QStringList{*m_hints.separator} : known) {
        if (separator.isEmpty() || m_sample.lines.empty())
            continue;
        const Layout layout = layoutOf(separator, best ? best->fields + 1 : fewestFields);
        if (layout.fields > 0)
            best = layout;
    }
    return best;
}

// Without fields where it does not divide the lines into so many.
Guessing::Layout Guessing::layoutOf(const QString& separator, qsizetype fewestFields) const
{
    Layout layout{separator.toUtf8()};
    layout.hasHeader =
        m_hints.hasHeader.value_or(isHeader(m_sample.lines.front().text, layout.separator));
    layout.fields =
        SampleBody(m_sample, layout.separator, layout.hasHeader).fieldCount(fewestFields);
    return layout;
}

bool Guessing::isHeader(QByteArrayView line, QByteArrayView separator) const
{
    // A line with a date is none, whatever form is asked for.
    static const auto knownDates = formsOf<DateForm>(knownDateForms(), std::nullopt);
    static const auto knownTimes = formsOf<TimeForm>(knownTimeForms(), std::nullopt);
    const std::vector<QByteArrayView> fields = fieldsOf(line, separator);
    return std::none_of(fields.begin(), fields.end(), [this](QByteArrayView field) {
        return isInAny(knownDates, field) || isInAny(knownTimes, field) ||
               isInAny(m_dateForms, field) || isInAny(m_timeForms, field);
    });
}

// The names that the header has; none without one.
QStringList Guessing::namesOf(const Layout& layout) const
{
    QStringList names;
    if (!layout.hasHeader)
        return names;
    for (const QByteArrayView name : fieldsOf(m_sample.lines.front().text, layout.separator))
        names.append(m_sample.isUtf8 ? vexdesk::textFromUtf8(name) : textFromWindows1251(name));
    return names;
}

// The leftmost column of each role.
Guessing::ByRole Guessing::namedColumns(const QStringList& names)
{
    ByRole named;
    for (int column = 0; column < int(names.size()); ++column) {
        const std::optional<ColumnRole> role = roleOfColumnName(names[column]);
        if (role && !named.contains(*role))
            named.insert(*role, column);
    }
    return named;
}

void Guessing::noteUnused(const QStringList& names)
{
    const QList<qint32> used = m_guess.columns.values();
    for (int column = 0; column < int(names.size()); ++column) {
        const QString name = names[column].trimmed();
        if (!name.isEmpty() && !used.contains(column))
            m_guess.unused.append(name);
    }
}

// Names alone count: a column is looked at only to know whether it can be what it is called.
void Guessing::takeNamed(const SampleBody& body, const ByRole& named)
{
    std::map<int, Column> columns;
    ColumnReader reader(body);
    QList<int> indexes = named.values();
    std::sort(indexes.begin(), indexes.end());
    for (const int index : indexes)
        columns.emplace(index, reader.column(index));
    const auto takeNumber = [&](ColumnRole role, auto isSuch, const QString& missing) {
        if (!named.contains(role))
            return;
        if (body.holds(columns.at(named[role]), isSuch))
            take(role, named[role]);
        else
            miss(missing);
    };
    if (named.contains(ColumnRole::Date))
        takeDate(body, columns.at(named[ColumnRole::Date]), named[ColumnRole::Date]);
    if (named.contains(ColumnRole::Time))
        takeTime(body, columns.at(named[ColumnRole::Time]), named[ColumnRole::Time]);
    takeNumber(ColumnRole::Volume, isVolume, volumeMissing);
    takeNumber(ColumnRole::OpenInterest, isOpenInterest, openInterestMissing);
    for (const ColumnRole role : {ColumnRole::Value, ColumnRole::Ticker}) {
        if (named.contains(role))
            take(role, named[role]);
    }
    takeNamedPrices(named, columns);
}

// All four or none.
void Guessing::takeNamedPrices(const ByRole& named, const std::map<int, Column>& columns)
{
    std::array<Numbers, priceRoles.size()> numbers;
    for (size_t i = 0; i < priceRoles.size(); ++i) {
        if (!named.contains(priceRoles[i])) {
            miss(pricesMissing);
            return;
        }
        numbers[i] = numbersOf(columns.at(named[priceRoles[i]]));
    }
    for (const ColumnRole role : priceRoles)
        take(role, named[role]);
    takeDecimals({&numbers[0], &numbers[1], &numbers[2], &numbers[3]});
}

void Guessing::takeByContent(const SampleBody& body, qsizetype fields)
{
    // The prices stand behind date and time in nearly all files: one reader does for both.
    ColumnReader reader(body);
    findDateAndTime(reader, body, fields);
    findPrices(reader, body, fields);
}

void Guessing::findDateAndTime(ColumnReader& reader, const SampleBody& body, qsizetype fields)
{
    ColumnReader probe(body, body.probeSize());
    for (int index = 0; index < fields && (m_dates.empty() || m_times.empty()); ++index) {
        const Column start = probe.column(index);
        const bool mayBeDate = m_dates.empty() && holdsAny(body, start, m_dateForms);
        const bool mayBeTime = m_times.empty() && holdsAny(body, start, m_timeForms);
        if (!mayBeDate && !mayBeTime)
            continue;
        const Column column = reader.column(index);
        // A column that could be either is a time only where another one is the date.
        const bool isDate = mayBeDate && takeDate(body, column, index);
        if (!isDate && mayBeTime)
            takeTime(body, column, index);
    }
}

void Guessing::findPrices(ColumnReader& reader, const SampleBody& body, qsizetype fields)
{
    ColumnReader probe(body, body.probeSize());
    NumberWindow starts;
    NumberWindow window;
    for (int index = 0; index < fields; ++index) {
        const Column start = probe.column(index);
        if (isDateOrTime(index)) {
            starts.clear();
            continue;
        }
        starts.add(index, start);
        if (!starts.isFull() || !mayBePrices(body, starts.columns()))
            continue;
        if (window.firstMissing(index) < reader.next())
            reader = ColumnReader(body);
        for (int missing = window.firstMissing(index); missing <= index; ++missing)
            window.add(missing, reader.column(missing));
        if (!arePrices(body, window.columns()))
            continue;
        if (isOpenExchanged(body, window.columns()))
            break;
        for (size_t i = 0; i < priceRoles.size(); ++i)
            take(priceRoles[i], index - int(priceRoles.size()) + 1 + int(i));
        takeDecimals(window.columns());
        findVolume(body, reader.column(index + 1), index + 1);
        return;
    }
    miss(pricesMissing);
}

void Guessing::findVolume(const SampleBody& body, const Column& column, int index)
{
    if (!isDateOrTime(index) && body.holds(column, isVolume))
        take(ColumnRole::Volume, index);
}

bool Guessing::takeDate(const SampleBody& body, const Column& column, int index)
{
    m_heldDateForms = formsThatHold(body, column, m_dateForms);
    if (m_heldDateForms.empty())
        return false;
    m_dates = column;
    take(ColumnRole::Date, index);
    return true;
}

bool Guessing::takeTime(const SampleBody& body, const Column& column, int index)
{
    const std::vector<TimeForm> forms = formsThatHold(body, column, m_timeForms);
    if (forms.empty())
        return false;
    // They differ in length: no field is in two of them.
    m_timeForm = forms.front();
    m_guess.timeFormat = m_timeForm->pattern();
    m_times = column;
    take(ColumnRole::Time, index);
    return true;
}

// Of several the one, if it is one alone, by which the dates follow each other.
void Guessing::chooseDateForm(const SampleBody& body)
{
    const std::vector<DateForm>& held = m_heldDateForms;
    if (held.size() > 1) {
        std::vector<DateForm> gapless;
        for (const DateForm& form : held) {
            if (isGapless(body, m_dates, form))
                gapless.push_back(form);
        }
        if (gapless.size() == 1)
            m_heldDateForms = gapless;
    }
    if (m_heldDateForms.size() == 1) {
        m_guess.dateFormat = m_heldDateForms.front().pattern();
        return;
    }
    for (const DateForm& form : m_heldDateForms)
        m_guess.ambiguous.append(form.pattern());
}

void Guessing::chooseTimeframe(const SampleBody& body)
{
    constexpr int minute = 60 * 1000; // ms
    if (m_hints.timeframe || m_dates.empty() || m_times.empty())
        return;
    std::optional<Stamp> before;
    for (size_t line = 0; line < body.size(); ++line) {
        if (body.beginsHalf(line))
            before.reset();
        const std::optional<Stamp> stamp = stampOf(line);
        if (!stamp)
            continue;
        if (before && before->isOfDay(*stamp) && before->time.msecsTo(stamp->time) % minute != 0) {
            m_guess.timeframe = 1;
            return;
        }
        before = stamp;
    }
}

std::optional<Guessing::Stamp> Guessing::stampOf(size_t line) const
{
    const std::optional<QTime> time = m_timeForm->read(m_times[line]);
    if (!time)
        return std::nullopt;
    if (m_heldDateForms.size() > 1)
        return isInAny(m_heldDateForms, m_dates[line])
                   ? std::optional(Stamp{QDate(), m_dates[line], *time})
                   : std::nullopt;
    const std::optional<QDate> date = m_heldDateForms.front().read(m_dates[line]);
    return date ? std::optional(Stamp{*date, {}, *time}) : std::nullopt;
}

void Guessing::takeDecimals(const PriceColumns& columns)
{
    constexpr int mostOfSecurities = 15;
    m_guess.decimals = std::min(mostDecimals(columns), mostOfSecurities);
}

} // namespace

bool FormatGuess::isEnough() const
{
    return ambiguous.isEmpty() &&
           std::all_of(missing.begin(), missing.end(), [](const QString& what) {
               return what == openInterestMissing || what == volumeMissing;
           });
}

Result<FormatGuess> guessFormat(const QString& path, const GuessHints& hints)
{
    const Result<FileSample> sample = sampleFile(path);
    if (!sample)
        return sample.failure();
    return guessFormat(*sample, hints);
}

FormatGuess guessFormat(const FileSample& sample, const GuessHints& hints)
{
    return Guessing(sample, hints).run();
}

} // namespace tadata
