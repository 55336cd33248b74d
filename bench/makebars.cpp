// SPDX-License-Identifier: MIT
// Writes made-up bars as delimited text, the same bytes for the same arguments on every machine.
// The input of demonstrations and measurements.

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

namespace {

// A fixed generator of our own: the standard library's distributions differ between compilers.
class Random final
{
public:
    explicit Random(std::uint64_t seed)
        : m_state(seed)
    {}

    // From 0 to count - 1.
    int below(int count)
    {
        m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<int>((m_state >> 33) % static_cast<std::uint64_t>(count));
    }

private:
    std::uint64_t m_state;
};

struct Day
{
    int year = 2024;
    int month = 1;
    int day = 15;

    void next()
    {
        ++day;
        if (day > lengthOfMonth()) {
            day = 1;
            ++month;
        }
        if (month > 12) {
            month = 1;
            ++year;
        }
    }

private:
    int lengthOfMonth() const
    {
        constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
        return month == 2 && leap ? 29 : lengths[month - 1];
    }
};

struct Arguments
{
    long lines = 2500;
    int timeframe = 60;
    int barsPerDay = 500;
};

bool readNumber(const char* text, long& number)
{
    const char* const end = text + std::strlen(text);
    const auto [last, error] = std::from_chars(text, end, number);
    return error == std::errc() && last == end && number > 0;
}

bool readArguments(int argc, char* argv[], Arguments& arguments)
{
    for (int i = 1; i + 1 < argc; i += 2) {
        const std::string_view name = argv[i];
        long number = 0;
        if (!readNumber(argv[i + 1], number))
            return false;
        if (name == "--lines")
            arguments.lines = number;
        else if (name == "--timeframe")
            arguments.timeframe = static_cast<int>(number);
        else if (name == "--bars-per-day")
            arguments.barsPerDay = static_cast<int>(number);
        else
            return false;
    }
    constexpr int secondsPerDay = 86400;
    return argc % 2 == 1 && long(arguments.barsPerDay) * arguments.timeframe < secondsPerDay;
}

void writeBars(const Arguments& arguments)
{
    Random random(20240115);
    Day day;
    int barOfDay = 0;
    int price = 12000; // in hundredths
    std::puts("<TICKER>,<PER>,<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>");
    for (long line = 0; line < arguments.lines; ++line) {
        if (barOfDay == arguments.barsPerDay) {
            barOfDay = 0;
            day.next();
        }
        ++barOfDay;
        // The trading day is the end of the calendar day, short of midnight.
        const int start = 86399 / arguments.timeframe * arguments.timeframe -
                          arguments.barsPerDay * arguments.timeframe;
        const int time = start + barOfDay * arguments.timeframe;
        const int open = price;
        const int close = open < 2000 ? open + random.below(20) : open + random.below(41) - 20;
        const int high = (open > close ? open : close) + random.below(15);
        const int low = (open < close ? open : close) - random.below(15);
        price = close;
        std::printf("DEMO,%d,%04d%02d%02d,%02d%02d%02d,%d.%02d,%d.%02d,%d.%02d,%d.%02d,%d\n",
                    arguments.timeframe, day.year, day.month, day.day, time / 3600, time / 60 % 60,
                    time % 60, open / 100, open % 100, high / 100, high % 100, low / 100, low % 100,
                    close / 100, close % 100, 1 + random.below(5000));
    }
}

} // namespace

int main(int argc, char* argv[])
{
    Arguments arguments;
    if (!readArguments(argc, argv, arguments)) {
        std::fputs("usage: makebars [--lines N] [--timeframe SECONDS] [--bars-per-day N]\n"
                   "The bars of a day must fit into it.\n",
                   stderr);
        return 2;
    }
    writeBars(arguments);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
