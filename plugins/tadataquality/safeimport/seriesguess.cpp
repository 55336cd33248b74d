// SPDX-License-Identifier: MIT
#include "seriesguess.h"

#include "seriespattern.h"

#include <vexdesk/boarddirectory.h>
#include <vexdesk/stockdirectory.h>

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

#include <algorithm>
#include <vector>

namespace tadata {

namespace {

// The words of a file's name. A code may be several of them, with the signs that part them.
class NameWords final
{
public:
    explicit NameWords(const QString& name)
        : m_name(name)
    {
        static const QRegularExpression word(QStringLiteral("[^_\\-. ()]+"));
        for (auto words = word.globalMatch(name); words.hasNext();) {
            const QRegularExpressionMatch one = words.next();
            m_words.push_back({one.capturedStart(), one.capturedEnd()});
        }
        if (m_words.size() > 1 && isSuffix(m_words.back()))
            m_words.pop_back();
    }

    size_t count() const { return m_words.size(); }
    QString text(size_t first, size_t last) const
    {
        return m_name.mid(m_words[first].begin, m_words[last].end - m_words[first].begin);
    }
    /// As in "ALFA-12.26", which is a code of its own where one knows it.
    bool goesOnWithAMonth(size_t last) const
    {
        if (last + 1 >= count())
            return false;
        static const QRegularExpression month(QStringLiteral("^[-.][0-9]{1,2}$"));
        const Word& next = m_words[last + 1];
        return month.match(m_name.mid(m_words[last].end, next.end - m_words[last].end)).hasMatch();
    }

private:
    struct Word
    {
        qsizetype begin = 0;
        qsizetype end = 0;
    };

    bool isSuffix(const Word& word) const
    {
        static const QRegularExpression suffix(QStringLiteral("^\\.(csv|txt)$"),
                                               QRegularExpression::CaseInsensitiveOption);
        return suffix.match(m_name.mid(word.begin - 1)).hasMatch();
    }

    QString m_name;
    std::vector<Word> m_words;
};

struct Found
{
    size_t first = 0; ///< of the words
    size_t last = 0;
    QString series;

    bool isWithin(const Found& other) const
    {
        return other.first <= first && last <= other.last &&
               other.last - other.first > last - first;
    }
};

// Calls for each code that may begin with the word, with its last word.
template <typename Call>
void forCodesFrom(const NameWords& words, size_t first, Call call)
{
    constexpr size_t longest = 3; // words
    for (size_t last = first; last < std::min(words.count(), first + longest); ++last)
        call(words.text(first, last), last);
}

bool isBoard(const QString& stock, const QString& board)
{
    return BoardDirectory::i().idByCode(stock, board) != 0;
}

std::vector<Found> seriesIn(const NameWords& words)
{
    std::vector<Found> found;
    for (size_t first = 0; first < words.count(); ++first) {
        forCodesFrom(words, first, [&](const QString& stock, size_t stockEnd) {
            forCodesFrom(words, stockEnd + 1, [&](const QString& board, size_t boardEnd) {
                if (!isBoard(stock, board))
                    return;
                forCodesFrom(words, boardEnd + 1, [&](const QString& security, size_t last) {
                    const SeriesCodes codes{stock, board, security};
                    if (isKnown(codes))
                        found.push_back({first, last, codes.name()});
                });
            });
        });
    }
    return found;
}

// A venue by its title: to ask for the id of another word would give it one.
bool namesAnotherBoard(const NameWords& words, const QString& stock, const QString& board)
{
    bool isAnother = false;
    for (size_t first = 0; first < words.count(); ++first) {
        forCodesFrom(words, first, [&](const QString& code, size_t last) {
            isAnother = isAnother || (code != board && isBoard(stock, code)) ||
                        (code != stock && !StockDirectory::i().nameByCode(code).isEmpty());
            forCodesFrom(words, last + 1, [&](const QString& next, size_t) {
                isAnother = isAnother || (code != stock && isBoard(code, next));
            });
        });
    }
    return isAnother;
}

std::vector<Found> securitiesIn(const NameWords& words, const QString& stock, const QString& board)
{
    std::vector<Found> found;
    if (namesAnotherBoard(words, stock, board))
        return found;
    for (size_t first = 0; first < words.count(); ++first) {
        forCodesFrom(words, first, [&](const QString& security, size_t last) {
            const SeriesCodes codes{stock, board, security};
            if (isKnown(codes) && !words.goesOnWithAMonth(last))
                found.push_back({first, last, codes.name()});
        });
    }
    return found;
}

void addLongest(const std::vector<Found>& found, QSet<QString>& series)
{
    for (const Found& one : found) {
        const bool isPart = std::any_of(found.begin(), found.end(),
                                        [&one](const Found& other) { return one.isWithin(other); });
        if (!isPart)
            series.insert(one.series);
    }
}

} // namespace

QString seriesOfFileName(const QString& file, const QString& board)
{
    const QString name = QFileInfo(file).fileName();
    QSet<QString> known;
    for (const QString& cased : {name, name.toUpper()})
        addLongest(seriesIn(NameWords(cased)), known);
    if (known.isEmpty()) {
        for (const QString& cased : {name, name.toUpper()})
            addLongest(
                securitiesIn(NameWords(cased), board.section(u'/', 0, 0), board.section(u'/', 1)),
                known);
    }
    return known.size() == 1 ? *known.cbegin() : QString();
}

} // namespace tadata
