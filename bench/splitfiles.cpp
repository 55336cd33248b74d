// SPDX-License-Identifier: MIT
#include "splitfiles.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QFile>

#include <array>
#include <cstring>
#include <string_view>

namespace {

constexpr size_t columns = 8;

const char* findCharacter(const char* begin, const char* end, char character)
{
    return static_cast<const char*>(
        std::memchr(begin, character, static_cast<size_t>(end - begin)));
}

size_t split(std::string_view line, std::array<std::string_view, columns>& fields)
{
    const char* begin = line.data();
    const char* const lineEnd = line.data() + line.size();
    size_t count = 0;
    while (count < columns) {
        const char* const end = findCharacter(begin, lineEnd, ';');
        fields[count++] =
            std::string_view(begin, static_cast<size_t>((end ? end : lineEnd) - begin));
        if (!end)
            break;
        begin = end + 1;
    }
    return count;
}

} // namespace

SplitFiles SplitFiles::read(const QDir& dir, int timeframe)
{
    SplitFiles result;
    std::array<std::string_view, columns> fields;
    for (const QDate& day :
         vexdesk::storedDays(dir, timeframe, QDate(1900, 1, 1), QDate(9999, 12, 31))
             .valueOr(QList<QDate>())) {
        QFile file(dir.filePath(vexdesk::dayFileName(day, timeframe)));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray content = file.readAll();
        const char* begin = content.constBegin();
        while (const char* const end = findCharacter(begin, content.constEnd(), '\n')) {
            result.fields +=
                static_cast<qint64>(split({begin, static_cast<size_t>(end - begin)}, fields));
            ++result.lines;
            begin = end + 1;
        }
    }
    return result;
}
