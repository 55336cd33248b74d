// SPDX-License-Identifier: MIT
// The guess of a file's format: whatever the file holds, it ends, and what it says fits the lines.
//
// The first byte of an input, counted from the digit "0", chooses what is given beforehand; the
// rest is the file.

#include "target.h"

#include "fieldforms.h"
#include "formatguess.h"
#include "samplecolumns.h"

namespace {

using fuzz::require;
using namespace tadata;

GuessHints hintsOf(std::uint8_t choice)
{
    GuessHints hints;
    if (choice & 1)
        hints.separator = QStringLiteral(";");
    if (choice & 2)
        hints.dateFormat = QStringLiteral("d.M.yyyy");
    if (choice & 4)
        hints.timeFormat = QStringLiteral("hh:mm");
    if (choice & 8)
        hints.hasHeader = (choice & 16) != 0;
    if (choice & 32)
        hints.timeframe = 1;
    return hints;
}

FileSample sampleOf(const std::uint8_t* data, std::size_t size)
{
    const fuzz::InputFile file(data, size);
    const vexdesk::Result<FileSample> sample = sampleFile(file.path());
    return sample ? *sample : FileSample();
}

bool holdsAt(const SampleBody& body, const FormatGuess& guess, ColumnRole role, auto isSuch)
{
    const auto column = guess.columns.find(qint32(role));
    return column == guess.columns.end() || body.holds(ColumnReader(body).column(*column), isSuch);
}

void checkFound(const FileSample& sample, const FormatGuess& guess)
{
    const SampleBody body(sample, guess.separator->toUtf8(), guess.hasHeader);
    require(body.fieldCount(0) >= 6, "the separator makes six fields");
    if (guess.dateFormat) {
        const DateForm form(*guess.dateFormat);
        require(holdsAt(body, guess, ColumnRole::Date,
                        [&](QByteArrayView field) { return form.read(field).has_value(); }),
                "the dates are in their form");
    }
    if (guess.timeFormat) {
        const TimeForm form(*guess.timeFormat);
        require(holdsAt(body, guess, ColumnRole::Time,
                        [&](QByteArrayView field) { return form.read(field).has_value(); }),
                "the times are in their form");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const GuessHints hints = hintsOf(static_cast<std::uint8_t>(data[0] - '0'));
    const FileSample sample = sampleOf(data + 1, size - 1);
    require(sample.secondHalf <= sample.lines.size(), "the second half is a part of the sample");

    const FormatGuess guess = guessFormat(sample, hints);
    const auto misses = [&guess](const char* what) {
        return guess.missing.contains(QString::fromUtf8(what));
    };
    const auto has = [&guess](ColumnRole role) { return guess.columns.contains(qint32(role)); };
    require(guess.lines == qsizetype(sample.lines.size()), "all lines are counted");
    require(misses("separator") != guess.separator.has_value(), "a separator is found or missing");
    require(misses("date") != has(ColumnRole::Date), "a date is found or missing");
    require(misses("time") != has(ColumnRole::Time), "a time is found or missing");
    require(guess.timeFormat.has_value() == has(ColumnRole::Time), "a time has its form");
    require(misses("prices") != guess.decimals.has_value(), "prices have decimals");
    for (const ColumnRole role :
         {ColumnRole::Open, ColumnRole::High, ColumnRole::Low, ColumnRole::Close})
        require(misses("prices") != has(role), "prices are found all four or not at all");
    require(guess.ambiguous.isEmpty() ||
                (guess.ambiguous.size() > 1 && !guess.dateFormat && has(ColumnRole::Date)),
            "what is ambiguous is not decided");
    if (guess.separator)
        checkFound(sample, guess);
    return 0;
}
