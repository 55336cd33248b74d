// SPDX-License-Identifier: MIT
// What an export costs at the least: folds one-minute day files as imports write them, with two
// digits after the point, into a longer timeframe, and writes a line for each stored bar. Nothing
// is checked and every number is taken to be what it should be.
//
//   bench_exportbytes TICKER TIMEFRAME OUTPUT DAYFILE...

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

constexpr size_t blockSize = size_t(256) * 1024;
constexpr int secondsOfDay = 24 * 60 * 60;
constexpr std::string_view heading =
    "\xef\xbb\xbf<TICKER>,<PER>,<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>,<VAL>,<OPEN_INT>\n";

[[noreturn]] void fail(const char* what, const std::string& name)
{
    std::fprintf(stderr, "%s %s: %s\n", what, name.c_str(), std::strerror(errno));
    std::exit(EXIT_FAILURE);
}

std::string contentOf(const std::string& name)
{
    const int file = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status = {};
    if (file < 0 || ::fstat(file, &status) != 0)
        fail("open", name);
    std::string content(static_cast<size_t>(status.st_size), '\0');
    if (::read(file, content.data(), content.size()) != status.st_size)
        fail("read", name);
    ::close(file);
    return content;
}

long long numberAt(const char*& at)
{
    const bool negative = *at == '-';
    at += negative ? 1 : 0;
    long long number = 0;
    for (; *at != ';' && *at != '\n'; ++at) {
        if (*at != '.')
            number = number * 10 + (*at - '0');
    }
    ++at;
    return negative ? -number : number;
}

// The fields of a line, prices and money in hundredths.
struct Bar
{
    int second = 0;
    long long open = 0;
    long long high = 0;
    long long low = 0;
    long long close = 0;
    long long volume = 0;
    long long value = 0;
    long long openInterest = 0;
};

Bar barAt(const char*& at)
{
    const auto two = [&at](int place) { return (at[place] - '0') * 10 + at[place + 1] - '0'; };
    Bar bar;
    bar.second = (two(0) * 60 + two(2)) * 60 + two(4);
    at += 7;
    for (long long* const field :
         {&bar.open, &bar.high, &bar.low, &bar.close, &bar.volume, &bar.value, &bar.openInterest})
        *field = numberAt(at);
    return bar;
}

class Output final
{
public:
    explicit Output(const std::string& name)
        : m_name(name)
        , m_file(::open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666))
    {
        if (m_file < 0)
            fail("open", name);
        m_buffer.reserve(2 * blockSize);
        m_buffer += heading;
    }
    ~Output()
    {
        flush();
        ::close(m_file);
    }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void write(const Bar& bar, const std::string& stamp)
    {
        m_buffer += stamp;
        for (const long long price : {bar.open, bar.high, bar.low, bar.close})
            hundredths(price);
        integer(bar.volume, ',');
        hundredths(bar.value);
        integer(bar.openInterest, '\n');
        if (m_buffer.size() >= blockSize)
            flush();
    }

private:
    void integer(long long number, char end)
    {
        char digits[24];
        m_buffer.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
        m_buffer += end;
    }

    void hundredths(long long number)
    {
        if (number < 0)
            m_buffer += '-';
        const long long size = number < 0 ? -number : number;
        integer(size / 100, '.');
        m_buffer += static_cast<char>('0' + size / 10 % 10);
        m_buffer += static_cast<char>('0' + size % 10);
        m_buffer += ',';
    }

    void flush()
    {
        if (::write(m_file, m_buffer.data(), m_buffer.size()) !=
            static_cast<ssize_t>(m_buffer.size()))
            fail("write", m_name);
        m_buffer.clear();
    }

    std::string m_name;
    std::string m_buffer;
    int m_file;
};

std::string twoDigits(int number)
{
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

std::string dateAfter(const std::string& day)
{
    using namespace std::chrono;
    const int number = std::atoi(day.c_str());
    const year_month_day date(year(number / 10000),
                              month(static_cast<unsigned>(number / 100 % 100)),
                              std::chrono::day(static_cast<unsigned>(number % 100)));
    const year_month_day next(sys_days(date) + days(1));
    return std::to_string(int(next.year())) + twoDigits(static_cast<int>(unsigned(next.month()))) +
           twoDigits(static_cast<int>(unsigned(next.day())));
}

void exportDay(const std::string& name, const std::string& begin, int timeframe, Output& output)
{
    const std::string content = contentOf(name);
    const std::string day = name.substr(name.rfind('/') + 1, 8);
    std::string stamp;
    Bar target;
    int end = -1;
    for (const char* at = content.data(); at != content.data() + content.size();) {
        const Bar bar = barAt(at);
        if (end < bar.second) {
            if (end >= 0)
                output.write(target, stamp);
            target = bar;
            end = (bar.second + timeframe - 1) / timeframe * timeframe;
            // What ends at midnight has the date of the next day.
            stamp = begin + (end == secondsOfDay ? dateAfter(day) : day) + ',' +
                    twoDigits(end / 3600 % 24) + twoDigits(end / 60 % 60) + twoDigits(end % 60) +
                    ',';
        } else {
            target.high = bar.high > target.high ? bar.high : target.high;
            target.low = bar.low < target.low ? bar.low : target.low;
            target.close = bar.close;
            target.volume += bar.volume;
            target.value += bar.value;
            target.openInterest = bar.openInterest;
        }
        output.write(target, stamp);
    }
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc < 5) {
        std::fputs("usage: bench_exportbytes TICKER TIMEFRAME OUTPUT DAYFILE...\n", stderr);
        return EXIT_FAILURE;
    }
    Output output(argv[3]);
    const std::string begin = std::string(argv[1]) + ',' + argv[2] + ',';
    for (int i = 4; i < argc; ++i)
        exportDay(argv[i], begin, std::atoi(argv[2]), output);
    return EXIT_SUCCESS;
}
