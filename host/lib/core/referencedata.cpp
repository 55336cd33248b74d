// SPDX-License-Identifier: MIT
#include <vexdesk/terminal/referencedata.h>

#include <vexdesk/icore.h>

#include "referencetable.h"

#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QSet>

#include <algorithm>
#include <limits>

namespace vexdesk {

namespace {

// A resource of a library is registered when the library is loaded; the prefix is ours alone.
constexpr char resourceFolder[] = ":/vexdesk/";

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ReferenceData)
};

// Reads one array of the document, entry by entry, and stops at the first wrong one.
class EntryReader final
{
public:
    // What goes wrong is entered into the outcome, unless it has failed already.
    EntryReader(const QJsonObject& document, QString array, Outcome& outcome)
        : m_array(std::move(array))
        , m_outcome(outcome)
    {
        const QJsonValue value = document.value(m_array);
        if (!value.isArray() && m_outcome)
            m_outcome = Failure{Text::tr("нет списка \"%1\"").arg(m_array)};
        m_entries = value.toArray();
    }

    bool next()
    {
        if (!m_outcome || ++m_index >= m_entries.size())
            return false;
        m_entry = m_entries.at(m_index).toObject();
        return true;
    }

    // A code becomes the name of a directory, so it must be able to be one.
    QString code(const QString& key)
    {
        QString text = m_entry.value(key).toString();
        if (text.isEmpty() || text == u"." || text == u".." || text.contains(u'/'))
            fail(key);
        return text;
    }

    QString text(const QString& key) { return m_entry.value(key).toString(); }

    qint64 integer(const QString& key, qint64 least, qint64 most)
    {
        const qint64 number = m_entry.value(key).toInteger(least - 1);
        if (number < least || number > most)
            fail(key);
        return number;
    }

    // Refuses a code or an id that an earlier entry of the same owner has.
    void unique(const QString& owner, const QString& code, qint64 id)
    {
        if (m_codes.contains({owner, code}))
            fail(QStringLiteral("code"), Text::tr("повторное значение"));
        if (m_ids.contains({owner, id}))
            fail(QStringLiteral("id"), Text::tr("повторное значение"));
        m_codes.insert({owner, code});
        m_ids.insert({owner, id});
    }

    // Refuses an entry whose owner does not stand in the list of owners.
    void known(const QString& key, bool found)
    {
        if (!found)
            fail(key, Text::tr("неизвестное значение"));
    }

private:
    void fail(const QString& key) { fail(key, Text::tr("неверное значение")); }
    void fail(const QString& key, const QString& what)
    {
        if (m_outcome)
            m_outcome = Failure{Text::tr("список \"%1\", запись %2: %3 \"%4\"")
                                    .arg(m_array, QString::number(m_index + 1), what, key)};
    }

    QString m_array;
    Outcome& m_outcome;
    QJsonArray m_entries;
    QJsonObject m_entry;
    qsizetype m_index = -1;
    QSet<std::pair<QString, QString>> m_codes;
    QSet<std::pair<QString, qint64>> m_ids;
    QSet<QString> m_seen;
};

constexpr int maxInt = std::numeric_limits<int>::max();
constexpr qint64 maxId = std::numeric_limits<qint64>::max();

// Venues by their codes and boards by "venue/board": no code holds a slash.
using Owners = QSet<QString>;

QList<Stock> readStocks(const QJsonObject& document, Owners& owners, Outcome& outcome)
{
    QList<Stock> stocks;
    for (EntryReader entry(document, QStringLiteral("stocks"), outcome); entry.next();) {
        const Stock stock{static_cast<int>(entry.integer(QStringLiteral("id"), 1, maxInt)),
                          entry.code(QStringLiteral("code")), entry.text(QStringLiteral("name"))};
        entry.unique(QString(), stock.code, stock.id);
        owners.insert(stock.code);
        stocks.append(stock);
    }
    return stocks;
}

QList<Board> readBoards(const QJsonObject& document, Owners& owners, Outcome& outcome)
{
    QList<Board> boards;
    for (EntryReader entry(document, QStringLiteral("boards"), outcome); entry.next();) {
        const Board board{entry.code(QStringLiteral("stock")),
                          static_cast<int>(entry.integer(QStringLiteral("id"), 1, maxInt)),
                          entry.code(QStringLiteral("code")), entry.text(QStringLiteral("name")),
                          static_cast<int>(entry.integer(QStringLiteral("flags"), 0, maxInt))};
        entry.known(QStringLiteral("stock"), owners.contains(board.stockCode));
        entry.unique(board.stockCode, board.code, board.id);
        owners.insert(board.stockCode + u'/' + board.code);
        boards.append(board);
    }
    return boards;
}

QList<Security> readSecurities(const QJsonObject& document, const Owners& owners, Outcome& outcome)
{
    QList<Security> securities;
    for (EntryReader entry(document, QStringLiteral("securities"), outcome); entry.next();) {
        const Security security{entry.code(QStringLiteral("stock")),
                                entry.code(QStringLiteral("board")),
                                entry.integer(QStringLiteral("id"), 1, maxId),
                                entry.code(QStringLiteral("code")),
                                entry.text(QStringLiteral("title")),
                                static_cast<int>(entry.integer(QStringLiteral("decimals"), 0,
                                                               ReferenceData::maxDecimals))};
        const QString owner = security.stockCode + u'/' + security.boardCode;
        entry.known(QStringLiteral("stock"), owners.contains(security.stockCode));
        entry.known(QStringLiteral("board"), owners.contains(owner));
        entry.unique(owner, security.code, security.id);
        securities.append(security);
    }
    return securities;
}

Result<ReferenceData> fromJson(const QByteArray& text)
{
    QJsonParseError parseError;
    const QJsonDocument json = QJsonDocument::fromJson(text, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        return Failure{Text::tr("байт %1: %2")
                           .arg(QString::number(parseError.offset), parseError.errorString())};
    }
    const QJsonObject document = json.object();
    Owners owners;
    Outcome outcome;
    ReferenceData data;
    data.stocks = readStocks(document, owners, outcome);
    data.boards = readBoards(document, owners, outcome);
    data.securities = readSecurities(document, owners, outcome);
    if (!outcome)
        return outcome.failure();
    return data;
}

QString cannotOpen(const QString& path)
{
    return Text::tr("Невозможно открыть файл %1").arg(path);
}

QString wrongContent(const QString& path, const QString& what)
{
    return Text::tr("Ошибка в справочнике %1: %2").arg(path, what);
}

// The place that ICore::getDir gives for an empty path, without making it.
QString standardFile()
{
    const QDir programDir = ICore::getDir(QString(), true);
    const QString dataDir =
        programDir.exists(QStringLiteral(".installed"))
            ? QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation)
            : programDir.filePath(QStringLiteral("user"));
    return QDir(dataDir).filePath(QStringLiteral("reference.json"));
}

template <typename Entry, typename Matches, typename Make>
Entry& findOrAdd(QList<Entry>& list, Matches matches, Make make)
{
    const auto found = std::find_if(list.begin(), list.end(), matches);
    return found != list.end() ? *found : list.emplaceBack(make());
}

template <typename Entry>
auto freeId(const QList<Entry>& list)
{
    QSet<decltype(Entry::id)> taken;
    for (const Entry& entry : list)
        taken.insert(entry.id);
    decltype(Entry::id) id = 1;
    while (taken.contains(id))
        ++id;
    return id;
}

QString demonstrationFile()
{
    const QString folder = QLatin1String(resourceFolder);
    const QString translated =
        folder +
        Text::tr("demonstration.json", "file of the same securities, named in the language");
    // An incomplete translation must not leave the terminal without securities.
    return QFile::exists(translated) ? translated : folder + QStringLiteral("demonstration.json");
}

} // namespace

ReferenceData ReferenceData::demonstration()
{
    const Result<ReferenceData> data = fromFile(demonstrationFile());
    Q_ASSERT_X(data, "ReferenceData::demonstration", qPrintable(data.message()));
    return *data;
}

Result<ReferenceData> ReferenceData::fromFile(const QString& path)
{
    QFile file(path);
    // To open a pipe is to wait for somebody who writes into it. Resources are files too.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        return Failure{cannotOpen(path)};
    }
    const qint64 size = file.size();
    const QByteArray text = file.readAll();
    if (file.error() != QFileDevice::NoError || text.size() < size) {
        return Failure{Text::tr("Невозможно прочитать файл %1").arg(path)};
    }
    Result<ReferenceData> data = fromJson(text);
    return data ? data : Failure{wrongContent(path, data.message())};
}

Result<ReferenceData> ReferenceData::standard()
{
    const QString path = standardFile();
    return QFile::exists(path) ? fromFile(path) : Result<ReferenceData>(demonstration());
}

ReferenceData ReferenceData::installed()
{
    return ReferenceTable::current().data();
}

void ReferenceData::install(const ReferenceData& data)
{
    ReferenceTable::publish(data);
}

void ReferenceData::setSeries(const QString& stockCode, const QString& boardCode,
                              const QString& securityCode, int decimals)
{
    findOrAdd(
        stocks, [&](const Stock& stock) { return stock.code == stockCode; },
        [&] {
            return Stock{freeId(stocks), stockCode, QString()};
        });
    findOrAdd(
        boards,
        [&](const Board& board) { return board.stockCode == stockCode && board.code == boardCode; },
        [&] {
            return Board{stockCode, freeId(boards), boardCode, QString(), 0};
        });
    Security& security = findOrAdd(
        securities,
        [&](const Security& entry) {
            return entry.stockCode == stockCode && entry.boardCode == boardCode &&
                   entry.code == securityCode;
        },
        [&] {
            return Security{stockCode,    boardCode, freeId(securities),
                            securityCode, QString(), decimals};
        });
    security.decimals = decimals;
}

} // namespace vexdesk
