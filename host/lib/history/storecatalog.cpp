// SPDX-License-Identifier: MIT
#include <vexdesk/history/storecatalog.h>

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/links.h>

#include <QtCore/QFile>
#include <QtCore/QMap>

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

namespace vexdesk {

namespace {

using Entry = std::filesystem::directory_entry;
using Path = std::filesystem::path;

// Names differ where their bytes do.
QString codeOf(const Path& path)
{
    const QByteArray name = path.filename().c_str();
    const QString code = QFile::decodeName(name);
    if (QFile::encodeName(code) == name)
        return code;
    constexpr char16_t escape = 0xdc00;
    QString escaped;
    for (const char byte : name) {
        const auto character = static_cast<uchar>(byte);
        escaped += QChar(character < 0x80 ? character : static_cast<char16_t>(escape + character));
    }
    return escaped;
}

class StoreWalk final
{
public:
    void listStocks(const Path& root)
    {
        for (const Path& stock : directories(root)) {
            m_codes.stockCode = codeOf(stock);
            for (const Path& board : directories(stock)) {
                m_codes.boardCode = codeOf(board);
                for (const Path& security : directories(board)) {
                    m_codes.securityName = codeOf(security);
                    listSeries(security);
                }
            }
        }
    }

    StoreCatalog takeCatalog() { return std::move(m_catalog); }

private:
    template <typename Visit>
    void visitEntries(const Path& directory, Visit visit)
    {
        std::error_code error;
        std::filesystem::directory_iterator entry(directory, error);
        const std::filesystem::directory_iterator end;
        bool isWhole = true;
        for (; !error && entry != end; entry.increment(error)) {
            std::error_code unknown;
            visit(*entry, unknown);
            isWhole = isWhole && !isUnreadable(unknown);
            if (isAbsence(unknown))
                noteLostLink(*entry);
        }
        if (!isWhole || isUnreadable(error))
            m_catalog.unreadable.append(QFile::decodeName(directory.c_str()));
    }

    // A directory may go while the store is listed, and a link may lead nowhere or to itself.
    static bool isAbsence(const std::error_code& error)
    {
        return error == std::errc::no_such_file_or_directory ||
               error == std::errc::too_many_symbolic_link_levels;
    }

    static bool isUnreadable(const std::error_code& error) { return error && !isAbsence(error); }

    void noteLostLink(const Entry& entry)
    {
        const QString path = QFile::decodeName(entry.path().c_str());
        if (isLostLink(path))
            m_catalog.lostLinks.append(path);
    }

    // Not in the order of the locale: the list is for programs too.
    std::vector<Path> directories(const Path& directory)
    {
        std::vector<Path> paths;
        visitEntries(directory, [&paths](const Entry& entry, std::error_code& error) {
            if (entry.is_directory(error))
                paths.push_back(entry.path());
        });
        std::sort(paths.begin(), paths.end(),
                  [](const Path& left, const Path& right) { return codeOf(left) < codeOf(right); });
        return paths;
    }

    void listSeries(const Path& directory)
    {
        QMap<int, StoredSeries> byTimeframe;
        visitEntries(directory, [&](const Entry& entry, std::error_code& error) {
            const auto key = parseDayFileName(QFile::decodeName(entry.path().filename().c_str()));
            if (!key || !entry.is_regular_file(error))
                return;
            const auto bytes = static_cast<qint64>(entry.file_size(error));
            if (error)
                return;
            auto series = byTimeframe.find(key->timeframe);
            if (series == byTimeframe.end()) {
                series = byTimeframe.insert(key->timeframe, m_codes);
                series->timeframe = key->timeframe;
            }
            countDayFile(*series, key->day, bytes);
        });
        m_catalog.series += byTimeframe.values();
    }

    static void countDayFile(StoredSeries& series, const QDate& day, qint64 bytes)
    {
        ++series.dayFiles;
        series.bytes += bytes;
        if (!series.firstDay.isValid() || day < series.firstDay)
            series.firstDay = day;
        if (!series.lastDay.isValid() || day > series.lastDay)
            series.lastDay = day;
    }

    StoredSeries m_codes; // of the directory that is being listed
    StoreCatalog m_catalog;
};

} // namespace

StoreCatalog storeCatalog(const QDir& root)
{
    StoreWalk walk;
    walk.listStocks(Path(QFile::encodeName(root.path()).toStdString()));
    return walk.takeCatalog();
}

QList<StoredSeries> listStore(const QDir& root)
{
    return storeCatalog(root).series;
}

} // namespace vexdesk
