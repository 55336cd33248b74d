// SPDX-License-Identifier: MIT
#include "restorefiles.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/filestate.h>
#include <vexdesk/history/links.h>
#include <vexdesk/history/serieslock.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <functional>

namespace vexdesk::restore {

namespace {

const QString idForm = QStringLiteral("yyyyMMdd-hhmmss");
const QString momentForm = QStringLiteral("yyyy-MM-ddThh:mm:ss");

QString sumsPath(const RestorePlace& place, const QString& id)
{
    return QStringLiteral("%1/sums/%2").arg(place.path, id);
}

// A point.json, field by field. Anything that this version would not have written makes it fail.
class RecordReader final
{
public:
    explicit RecordReader(QJsonObject object)
        : m_object(std::move(object))
    {}

    QString text(const char* name)
    {
        const QJsonValue value = take(name);
        m_isRight = m_isRight && value.isString();
        return value.toString();
    }
    bool flag(const char* name)
    {
        const QJsonValue value = take(name);
        m_isRight = m_isRight && value.isBool();
        return value.toBool();
    }
    QStringList texts(const char* name)
    {
        const QJsonValue value = take(name);
        m_isRight = m_isRight && value.isArray();
        QStringList list;
        const QJsonArray array = value.toArray();
        for (const auto& one : array) {
            m_isRight = m_isRight && one.isString();
            list.append(one.toString());
        }
        return list;
    }
    QStringList paths(const char* name)
    {
        const QStringList list = texts(name);
        m_isRight = m_isRight && std::all_of(list.begin(), list.end(), isStorePath);
        return list;
    }
    QMap<QString, LeftFile> left(const char* name)
    {
        const QJsonValue value = take(name);
        m_isRight = m_isRight && value.isObject();
        const QJsonObject files = value.toObject();
        QMap<QString, LeftFile> left;
        for (auto file = files.begin(); file != files.end(); ++file)
            left.insert(file.key(), leftFile(file.value().toObject()));
        return left;
    }

    bool isRight() const { return m_isRight; }
    bool hasMore() const { return !m_object.isEmpty(); }

private:
    QJsonValue take(const char* name) { return m_object.take(QLatin1String(name)); }

    LeftFile leftFile(const QJsonObject& object)
    {
        const QJsonValue size = object.value(QLatin1String("size"));
        const QJsonValue modified = object.value(QLatin1String("modified"));
        const QJsonValue sum = object.value(QLatin1String("sha256"));
        m_isRight =
            m_isRight && size.isDouble() && modified.isDouble() && (sum.isString() || sum.isNull());
        return {size.toInteger(), modified.toInteger(), sum.toString()};
    }

    QJsonObject m_object;
    bool m_isRight = true;
};

// Never a pipe, for whose writer it would wait.
Outcome openToRead(QFile& file)
{
    if (kindOf(file.fileName()) == PathKind::Other)
        return Failure{Text::tr("это не обычный файл")};
    return file.open(QIODevice::ReadOnly) ? Outcome() : Failure{file.errorString()};
}

Failure broken(const RestorePlace& place, const QString& id, const QString& why)
{
    return {Text::tr("Точка возврата %1 испорчена: %2").arg(directoryOf(place, id), why)};
}

Result<RestorePointRecord> recordFrom(const RestorePlace& place, const QString& id,
                                      const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        return broken(place, id, Text::tr("point.json не читается"));
    RecordReader reader(document.object());
    RestorePointRecord point;
    point.id = reader.text("id");
    point.when = QDateTime::fromString(reader.text("when"), momentForm);
    point.when.setTimeSpec(Qt::UTC);
    point.by = reader.text("by");
    point.series = reader.texts("series");
    point.source = reader.texts("source");
    point.kept = reader.paths("kept");
    point.created = reader.paths("created");
    point.left = reader.left("left");
    point.isComplete = reader.flag("complete");
    const QStringList jobs{QStringLiteral("import"), QStringLiteral("merge"),
                           QStringLiteral("fill"),   QStringLiteral("edit"),
                           QStringLiteral("delete"), QStringLiteral("copy"),
                           QStringLiteral("rename"), QStringLiteral("undo")};
    if (reader.hasMore() || (reader.isRight() && !jobs.contains(point.by)))
        return broken(place, id, Text::tr("point.json записан более новой версией"));
    if (!reader.isRight() || point.id != id || !point.when.isValid())
        return broken(place, id, Text::tr("в point.json не то, что должно быть"));
    return point;
}

// What a job that was killed had touched. A line without its end was about to be written.
Outcome addJournal(const RestorePlace& place, RestorePointRecord& point)
{
    QFile journal(directoryOf(place, point.id) + QStringLiteral("/journal"));
    if (isMissing(journal.fileName()))
        return {};
    if (const Outcome opened = openToRead(journal); !opened)
        return broken(place, point.id, QStringLiteral("journal: ") + opened.message());
    QByteArrayList lines = journal.readAll().split('\n');
    if (journal.error() != QFileDevice::NoError)
        return broken(place, point.id, journal.errorString());
    lines.removeLast();
    for (const QByteArray& line : lines) {
        const QString path = QString::fromUtf8(line.mid(2));
        const bool isKept = line.startsWith("K ");
        if (!isStorePath(path) || (!isKept && !line.startsWith("C ")))
            return broken(place, point.id, Text::tr("journal не читается"));
        (isKept ? point.kept : point.created).append(path);
    }
    return {};
}

// A copy that is gone has no size; it is missed when the point is put back.
Outcome addSizes(const RestorePlace& place, RestorePointRecord& point)
{
    point.bytes = 0;
    for (const QString& relative : std::as_const(point.kept)) {
        const QString copy = directoryOf(place, point.id) + u'/' + relative;
        const auto [kind, state] = lookAt(copy);
        if (kind == PathKind::Unknown)
            return broken(place, point.id, copy);
        point.bytes += state ? state->size : 0;
    }
    return {};
}

Step fillInPlace(int from, const QByteArray& target)
{
    Descriptor file(::open(target.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen() || ::lseek(from, 0, SEEK_SET) != 0 || ::ftruncate(file.get(), 0) != 0 ||
        !copyContent(from, file.get()))
        return Step::failed();
    // Whoever may write to a file need not be its owner.
    if (const Step taken = takeModeAndTimes(file.get(), from);
        !taken.isDone() && !taken.isRefused())
        return taken;
    return file.close();
}

QByteArray jsonText(const QJsonValue& value)
{
    return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).chopped(1).sliced(1);
}

QByteArray pathText(const TouchedFiles::File& file)
{
    return jsonText(file.relative);
}

// Nothing for a file that is not there. What cannot be looked at is no such file: the point would
// take it for removed.
QByteArray leftText(const TouchedFiles::File& file, Outcome& looked)
{
    const auto [kind, left] = lookAt(file.path);
    if (kind == PathKind::Unknown)
        looked = Failure{file.path + QStringLiteral(": ") + Step::failed().reason()};
    if (!left)
        return QByteArray();
    return pathText(file) + ":{\"modified\":" + QByteArray::number(left->modified) +
           ",\"sha256\":null,\"size\":" + QByteArray::number(left->size) + '}';
}

// Of each file its text, unless that is empty, between these brackets.
void writeList(WholeFile& to, const TouchedFiles& files,
               const std::function<QByteArray(const TouchedFiles::File&)>& textOf,
               QByteArrayView brackets)
{
    to.write(brackets.first(1));
    bool isFirst = true;
    files.forEach([&](const TouchedFiles::File& file) {
        const QByteArray text = textOf(file);
        if (text.isEmpty())
            return;
        if (!isFirst)
            to.write(",");
        isFirst = false;
        to.write(text);
    });
    to.write(brackets.last(1));
}

} // namespace

Failure notPutBack(const QString& path, const QString& reason)
{
    return {Text::tr("Файл %1 не возвращён: %2").arg(path, reason)};
}

std::optional<std::pair<QDateTime, qint64>> takeIdApart(const QString& id)
{
    const QStringView moment = QStringView(id).left(idForm.size());
    const QStringView number = QStringView(id).mid(idForm.size() + 1);
    QDateTime when = QDateTime::fromString(moment.toString(), idForm);
    when.setTimeSpec(Qt::UTC);
    const qint64 ofSecond = number.toLongLong();
    const bool isId = when.isValid() && ofSecond > 0 && idOf(when, ofSecond) == id;
    return isId ? std::optional(std::pair(when, ofSecond)) : std::nullopt;
}

QString idOf(const QDateTime& when, qint64 number)
{
    return QStringLiteral("%1-%2").arg(when.toString(idForm), QString::number(number));
}

Result<QStringList> idsIn(const RestorePlace& place)
{
    const QFileInfo directory(place.path);
    if (!isMissing(place.path) && (!directory.isDir() || !directory.isExecutable()))
        return Failure{Text::tr("Невозможно прочитать каталог %1").arg(place.path)};
    const Result<QStringList> names = namesIn(place.path, EntryKind::OwnDirectories);
    if (!names)
        return names;
    QList<std::pair<QDateTime, qint64>> found;
    for (const QString& name : *names) {
        if (const auto id = takeIdApart(name))
            found.append(*id);
    }
    std::sort(found.begin(), found.end(), std::greater<>());
    QStringList ids;
    for (const auto& [when, number] : found)
        ids.append(idOf(when, number));
    return ids;
}

QString directoryOf(const RestorePlace& place, const QString& id)
{
    return QStringLiteral("%1/%2").arg(place.path, id);
}

bool isStorePath(const QString& path)
{
    const QStringList parts = path.split(u'/');
    return parts.size() == 4 && isBarFileName(parts.last()) &&
           std::none_of(parts.begin(), parts.end(), [](const QString& part) {
               return part.isEmpty() || part == u"." || part == u".." || part.contains(u'\n') ||
                      part.contains(QChar(u'\0'));
           });
}

Outcome writeRecord(const QString& directory, const RestorePointRecord& point,
                    const TouchedFiles& files)
{
    WholeFile file(directory + QStringLiteral("/point.json"));
    const auto member = [&file](QByteArrayView name, QByteArrayView before = ",") {
        file.write(before);
        file.write("\"" + name.toByteArray() + "\":");
    };
    member("by", "{");
    file.write(jsonText(point.by));
    member("complete");
    file.write(jsonText(point.isComplete));
    member("created");
    writeList(
        file, files, [](const auto& one) { return one.kept ? QByteArray() : pathText(one); }, "[]");
    member("id");
    file.write(jsonText(point.id));
    member("kept");
    writeList(
        file, files, [](const auto& one) { return one.kept ? pathText(one) : QByteArray(); }, "[]");
    member("left");
    Outcome looked;
    writeList(
        file, files, [&looked](const auto& one) { return leftText(one, looked); }, "{}");
    if (!looked)
        return looked;
    member("series");
    file.write(jsonText(QJsonArray::fromStringList(point.series)));
    member("source");
    file.write(jsonText(QJsonArray::fromStringList(point.source)));
    member("when");
    file.write(jsonText(point.when.toString(momentForm)));
    file.write("}\n");
    const Step finished = file.finish();
    return finished.isDone() ? Outcome() : Failure{finished.reason()};
}

Result<RestorePointRecord> readRecord(const RestorePlace& place, const QString& id)
{
    QFile file(directoryOf(place, id) + QStringLiteral("/point.json"));
    if (const Outcome opened = openToRead(file); !opened)
        return broken(place, id, QStringLiteral("point.json: ") + opened.message());
    const QByteArray json = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return broken(place, id, QStringLiteral("point.json: ") + file.errorString());
    Result<RestorePointRecord> point = recordFrom(place, id, json);
    if (!point)
        return point;
    if (!point->isComplete) {
        if (const Outcome added = addJournal(place, *point); !added)
            return added.failure();
    }
    point->kept = sortedByCodePoint(point->kept);
    point->created = sortedByCodePoint(point->created);
    const Outcome sized = addSizes(place, *point);
    return sized ? point : Result<RestorePointRecord>(sized.failure());
}

QByteArray journalLine(char kind, const QString& path)
{
    return QByteArray(1, kind) + ' ' + path.toUtf8() + '\n';
}

// The size of all stands in the first line, then a line for each.
Step writeSums(const RestorePlace& place, const QString& id, const TouchedFiles& files)
{
    const QString path = sumsPath(place, id);
    if (!makeDirectory(QFileInfo(path).path()))
        return Step::failed();
    qint64 bytes = 0;
    files.forEach(
        [&bytes](const TouchedFiles::File& file) { bytes += file.kept ? file.kept->sum.size : 0; });
    WholeFile sums(path);
    sums.write(QByteArray::number(bytes) + '\n');
    files.forEach([&sums](const TouchedFiles::File& file) {
        if (file.kept)
            sums.write(QByteArray::number(file.kept->sum.sum, 16) + ' ' +
                       QByteArray::number(file.kept->sum.size) + ' ' + file.relative.toUtf8() +
                       '\n');
    });
    return sums.finish();
}

Result<std::optional<Sums>> readSums(const RestorePlace& place, const QString& id)
{
    QFile file(sumsPath(place, id));
    const auto notRead = [&file](const QString& why) {
        return Failure{Text::tr("Файл %1 не читается: %2").arg(file.fileName(), why)};
    };
    if (isMissing(file.fileName()))
        return std::optional<Sums>();
    if (const Outcome opened = openToRead(file); !opened)
        return notRead(opened.message());
    QByteArrayList lines = file.readAll().split('\n');
    if (file.error() != QFileDevice::NoError)
        return notRead(file.errorString());
    Sums sums;
    lines.removeLast();
    for (const QByteArray& line : lines.mid(1)) {
        const QByteArrayList parts = line.split(' ');
        const QByteArray path = parts.mid(2).join(' ');
        sums.insert(QString::fromUtf8(path),
                    {parts.value(1).toLongLong(), parts.value(0).toULongLong(nullptr, 16)});
    }
    return std::optional(sums);
}

qint64 bytesOf(const RestorePlace& place, const QString& id)
{
    QFile file(sumsPath(place, id));
    if (openToRead(file))
        return file.readLine().trimmed().toLongLong();
    const Result<RestorePointRecord> point = readRecord(place, id);
    return point ? point->bytes : 0;
}

void removeSums(const RestorePlace& place, const QString& id)
{
    QFile::remove(sumsPath(place, id));
    QDir().rmdir(place.path + QStringLiteral("/sums"));
}

std::optional<ContentSum> keepCopy(int from, const QString& to)
{
    constexpr mode_t nobodyElse = 0600;
    Descriptor copy(::open(QFile::encodeName(to).constData(),
                           O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, nobodyElse));
    if (!copy.isOpen())
        return std::nullopt;
    const std::optional<ContentSum> sum = copyContent(from, copy.get());
    const bool isWhole =
        sum && takeModeAndTimes(copy.get(), from).isDone() && copy.close().isDone();
    return isWhole ? sum : std::nullopt;
}

namespace {

enum class CopyUse { Again, Never };

Outcome putBack(const QString& copy, const QString& path, CopyUse use)
{
    const Descriptor from(
        ::open(QFile::encodeName(copy).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!from.isOpen())
        return notPutBack(path, Step::failed().reason());
    const std::optional<QString> behind = behindLinks(path);
    if (!behind)
        return notPutBack(path, Step::failed().reason());
    const QString& target = *behind;
    const QByteArray name = QFile::encodeName(target);
    const PathKind kind = kindOf(target);
    if (kind == PathKind::Other)
        return notPutBack(path, Text::tr("на его месте не обычный файл"));
    if (kind == PathKind::Unknown)
        return notPutBack(path, Step::failed().reason());
    if (const Outcome made = kind == PathKind::Missing ? mayBeMade(path) : Outcome(); !made)
        return notPutBack(path, made.message());
    if (const QString directory = QFileInfo(target).path(); !makeDirectory(directory))
        return notPutBack(path, Text::tr("невозможно создать каталог %1").arg(directory));
    const Descriptor old(::open(name.constData(), O_PATH | O_CLOEXEC));
    if (!old.isOpen() && errno != ENOENT)
        return notPutBack(path, Step::failed().reason());
    Step step = replaceWhole(from.get(), target, old.isOpen() ? old.get() : -1);
    if (step.isRefused() && old.isOpen())
        step = fillInPlace(from.get(), name);
    if (step.isFull() && use == CopyUse::Never && putInPlace(copy, target).isDone())
        step = Step::done();
    return step.isDone() ? Outcome() : notPutBack(path, step.reason());
}

} // namespace

Outcome putCopyBack(const QString& copy, const QString& path)
{
    return putBack(copy, path, CopyUse::Again);
}

Outcome putLastCopyBack(const QString& copy, const QString& path)
{
    return putBack(copy, path, CopyUse::Never);
}

Outcome removeCreated(const QString& path)
{
    const std::optional<QString> target = behindLinks(path);
    const PathKind kind = target ? kindOf(*target) : PathKind::Unknown;
    if (kind == PathKind::Missing)
        return {};
    if (kind == PathKind::Other)
        return Failure{Text::tr("Файл %1 не удалён: это не обычный файл").arg(path)};
    const Step removed = kind == PathKind::Unknown
                             ? Step::failed()
                             : stepOf(::unlink(QFile::encodeName(*target).constData()));
    return removed.isDone()
               ? Outcome()
               : Failure{Text::tr("Файл %1 не удалён: %2").arg(path, removed.reason())};
}

Outcome removePoint(const RestorePlace& place, const QString& id)
{
    const QString gone = temporaryPathIn(place.path);
    const Step renamed = stepOf(::rename(QFile::encodeName(directoryOf(place, id)).constData(),
                                         QFile::encodeName(gone).constData()));
    if (!renamed.isDone())
        return Failure{Text::tr("Точка возврата %1 не удалена: %2")
                           .arg(directoryOf(place, id), renamed.reason())};
    QDir(gone).removeRecursively();
    removeSums(place, id);
    return {};
}

} // namespace vexdesk::restore
