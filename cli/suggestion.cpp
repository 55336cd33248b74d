// SPDX-License-Identifier: MIT
#include "suggestion.h"

#include "output.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace tadata::cli {

namespace {

// Names are short; a word that is not needs no suggestion.
constexpr qsizetype longestWord = 40;

QString bare(const QString& word)
{
    qsizetype dashes = 0;
    while (dashes < word.size() && word[dashes] == u'-')
        ++dashes;
    return word.mid(dashes).toLower();
}

// How many letters have to be put in, taken out or changed, or exchanged with their neighbours.
int distance(const QString& one, const QString& other)
{
    const auto width = static_cast<size_t>(other.size()) + 1;
    std::vector<int> before(width);
    std::vector<int> above(width);
    std::vector<int> row(width);
    std::iota(above.begin(), above.end(), 0);
    for (qsizetype i = 0; i < one.size(); ++i) {
        row[0] = static_cast<int>(i) + 1;
        for (size_t j = 1; j < width; ++j) {
            const auto at = static_cast<qsizetype>(j) - 1;
            const int changed = above[j - 1] + (one[i] == other[at] ? 0 : 1);
            row[j] = std::min({changed, above[j] + 1, row[j - 1] + 1});
            if (i > 0 && at > 0 && one[i] == other[at - 1] && one[i - 1] == other[at])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before.swap(above);
        above.swap(row);
    }
    return above.back();
}

} // namespace

QString nearestWord(const QString& word, const QStringList& known)
{
    const QString given = bare(word);
    if (given.size() < 2 || given.size() > longestWord)
        return {};
    int least = std::max(1, static_cast<int>(given.size()) / 3) + 1;
    QString nearest;
    for (const QString& candidate : known) {
        const int found = candidate.startsWith(given) ? 1 : distance(given, candidate);
        if (found < least) {
            least = found;
            nearest = candidate;
        }
    }
    return nearest;
}

QString suggestion(const QString& word, const QStringList& known, const QString& prefix)
{
    const QString nearest = nearestWord(word, known);
    return nearest.isEmpty() ? QString() : Text::tr("; похоже на %1").arg(prefix + nearest);
}

} // namespace tadata::cli
