// SPDX-License-Identifier: MIT
#include "patterns.h"

#include <algorithm>
#include <initializer_list>

namespace tadata {

namespace {

// Whether a pattern has, outside of its quotes, a run of one of these lengths of one of these
// letters: a field of a date or a time, which Qt tells apart by case and length.
bool hasField(const QString& pattern, QStringView letters, std::initializer_list<int> lengths)
{
    bool isQuoted = false;
    QChar current;
    int length = 0;
    for (const QChar letter : pattern + QChar()) {
        if (letter == current && letter != u'\'') {
            ++length;
            continue;
        }
        if (!isQuoted && letters.contains(current) &&
            std::find(lengths.begin(), lengths.end(), length) != lengths.end())
            return true;
        if (letter == u'\'')
            isQuoted = !isQuoted;
        current = letter;
        length = 1;
    }
    return false;
}

} // namespace

bool namesADay(const QString& pattern)
{
    return hasField(pattern, u"d", {1, 2}) && hasField(pattern, u"M", {1, 2, 3, 4}) &&
           hasField(pattern, u"y", {2, 4});
}

bool hasHours(const QString& pattern)
{
    return hasField(pattern, u"hH", {1, 2});
}

bool hasMinutes(const QString& pattern)
{
    return hasField(pattern, u"m", {1, 2});
}

} // namespace tadata
