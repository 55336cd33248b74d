// SPDX-License-Identifier: MIT
// What an import costs at the least: reads the output of makebars by blocks and writes the day
// files, with no look at what the fields hold. The system's calls and memchr, nothing else.
//
//   bench_bytes FILE DIRECTORY

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr size_t blockSize = size_t(256) * 1024;
constexpr std::string_view unusedColumns = ";0.00;0\n";

[[noreturn]] void fail(const char* what, const std::string& name)
{
    std::fprintf(stderr, "%s %s: %s\n", what, name.c_str(), std::strerror(errno));
    std::exit(EXIT_FAILURE);
}

class DayFiles final
{
public:
    explicit DayFiles(std::string directory)
        : m_directory(std::move(directory))
    {
        m_buffer.reserve(2 * blockSize);
    }
    ~DayFiles() { close(); }
    DayFiles(const DayFiles&) = delete;
    DayFiles& operator=(const DayFiles&) = delete;

    // A line without its end: ticker, length, day, then what the day file holds.
    void add(std::string_view line)
    {
        const size_t day = line.find(',', line.find(',') + 1) + 1;
        const size_t time = line.find(',', day) + 1;
        if (const std::string_view name = line.substr(day, time - 1 - day); name != m_day)
            open(name);
        for (const char c : line.substr(time))
            m_buffer.push_back(c == ',' ? ';' : c);
        m_buffer.append(unusedColumns);
        if (m_buffer.size() >= blockSize)
            flush();
    }

private:
    void open(std::string_view day)
    {
        close();
        m_day = day;
        m_name = m_directory + '/' + m_day + "_60.iss";
        constexpr mode_t mode = 0666;
        m_file = ::open(m_name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode);
        if (m_file < 0)
            fail("open", m_name);
    }

    void flush()
    {
        if (::write(m_file, m_buffer.data(), m_buffer.size()) !=
            static_cast<ssize_t>(m_buffer.size()))
            fail("write", m_name);
        m_buffer.clear();
    }

    void close()
    {
        if (m_file < 0)
            return;
        flush();
        ::close(m_file);
    }

    std::string m_directory;
    std::string m_day;
    std::string m_name;
    std::string m_buffer;
    int m_file = -1;
};

void copyLines(int input, const std::string& name, DayFiles& days)
{
    std::vector<char> buffer(2 * blockSize);
    size_t kept = 0; // of the line that the last block ended in
    bool isHeader = true;
    for (;;) {
        const ssize_t count = ::read(input, buffer.data() + kept, buffer.size() - kept);
        if (count < 0)
            fail("read", name);
        if (count == 0)
            return;
        const char* begin = buffer.data();
        const char* const end = begin + kept + count;
        while (const auto* lineEnd = static_cast<const char*>(
                   std::memchr(begin, '\n', static_cast<size_t>(end - begin)))) {
            if (!isHeader)
                days.add({begin, static_cast<size_t>(lineEnd - begin)});
            isHeader = false;
            begin = lineEnd + 1;
        }
        kept = static_cast<size_t>(end - begin);
        std::memmove(buffer.data(), begin, kept);
    }
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 3) {
        std::fputs("usage: bench_bytes FILE DIRECTORY\n", stderr);
        return EXIT_FAILURE;
    }
    const int input = ::open(argv[1], O_RDONLY | O_CLOEXEC);
    if (input < 0)
        fail("open", argv[1]);
    DayFiles days(argv[2]);
    copyLines(input, argv[1], days);
    ::close(input);
    return EXIT_SUCCESS;
}
