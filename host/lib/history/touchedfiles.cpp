// SPDX-License-Identifier: MIT
#include "touchedfiles.h"

#include <vexdesk/history/dayfilenames.h>

#include <algorithm>

namespace vexdesk {

namespace {

constexpr int derived = 0;

// Up to the name, with the "/".
QString directoryOf(const QString& path)
{
    return path.first(path.lastIndexOf(u'/') + 1);
}

} // namespace

QString TouchedFiles::Name::text() const
{
    const QDate date = QDate::fromJulianDay(day);
    return timeframe == derived ? minuteFileName(date) : dayFileName(date, timeframe);
}

bool TouchedFiles::Name::operator<(const Name& other) const
{
    return day != other.day ? day < other.day : text() < other.text();
}

bool TouchedFiles::ByCodePoint::operator()(const QString& left, const QString& right) const
{
    const auto one = left.toUcs4();
    const auto other = right.toUcs4();
    return one != other ? one < other : left < right;
}

// A derived file has the name of a day file without its extension.
TouchedFiles::Name TouchedFiles::nameOf(const QString& relative)
{
    const QString text = relative.section(u'/', -1);
    const auto file = parseDayFileName(text);
    const DayFileKey key = file ? *file : *parseDayFileName(text + QStringLiteral(".iss"));
    return {static_cast<qint32>(key.day.toJulianDay()), file ? key.timeframe : derived};
}

bool TouchedFiles::contains(const QString& relative) const
{
    const auto directory = m_directories.find(directoryOf(relative));
    if (directory == m_directories.end())
        return false;
    const auto& names = directory->second.names;
    return std::binary_search(names.begin(), names.end(), nameOf(relative));
}

void TouchedFiles::insert(const QString& path, const QString& relative,
                          const std::optional<Kept>& kept)
{
    Name name = nameOf(relative);
    if (kept) {
        name.kept = static_cast<qint32>(m_kept.size());
        m_kept.push_back(*kept);
    }
    Directory& directory = m_directories[directoryOf(relative)];
    directory.path = directoryOf(path);
    auto& names = directory.names;
    names.insert(std::lower_bound(names.begin(), names.end(), name), name);
}

TouchedFiles::File TouchedFiles::fileOf(const QString& directory, const Directory& files,
                                        const Name& name) const
{
    const QString text = name.text();
    return {directory + text, files.path + text,
            name.kept < 0 ? nullptr : &m_kept[static_cast<size_t>(name.kept)]};
}

void TouchedFiles::forEach(const std::function<void(const File&)>& visit) const
{
    for (const auto& [directory, files] : m_directories) {
        for (const Name& name : files.names)
            visit(fileOf(directory, files, name));
    }
}

void TouchedFiles::removeIf(const std::function<bool(const File&)>& isGone)
{
    for (auto& entry : m_directories) {
        std::erase_if(entry.second.names, [this, &entry, &isGone](const Name& name) {
            return isGone(fileOf(entry.first, entry.second, name));
        });
    }
    std::erase_if(m_directories, [](const auto& entry) { return entry.second.names.empty(); });
}

} // namespace vexdesk
