// SPDX-License-Identifier: MIT
#include "storejobs.h"

#include "support/filetree.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <thread>
#include <utility>
#include <vector>

namespace testsupport {

namespace {

namespace fs = std::filesystem;

const QString columns = QStringLiteral("date=0,time=1,open=2,high=3,low=4,close=5");

QByteArray bars(std::initializer_list<const char*> days, std::initializer_list<int> minutes,
                int price)
{
    QByteArray lines;
    for (const char* day : days) {
        for (const int minute : minutes)
            lines += QByteArray(day) + ",1000" + QByteArray::number(minute) + ',' +
                     QByteArray::number(price) + ',' + QByteArray::number(price + 1) + ',' +
                     QByteArray::number(price - 1) + ',' + QByteArray::number(price) + '\n';
    }
    return lines;
}

QByteArray replaced(QByteArray text, const char* pattern, const char* with)
{
    return QString::fromUtf8(text)
        .replace(QRegularExpression(QLatin1String(pattern)), QLatin1String(with))
        .toUtf8();
}

} // namespace

Files filesBelow(const QString& root)
{
    Files files;
    QDirIterator walk(root, QDir::Files | QDir::Hidden | QDir::System,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        files.insert(QDir(root).relativeFilePath(path),
                     {readFile(path), int(walk.fileInfo().permissions())});
    }
    return files;
}

Files withoutTemporary(Files files)
{
    static const QRegularExpression name(QStringLiteral("/\\.tadata-\\d+-\\d+\\.tmp$"));
    files.removeIf([](Files::iterator file) { return name.match(file.key()).hasMatch(); });
    return files;
}

Files withoutEmpty(Files files)
{
    files.removeIf([](Files::iterator file) { return file.value().first.isEmpty(); });
    return files;
}

QByteArray toText(const CallOrder& order)
{
    return QByteArray::number(order.at) + ' ' + order.deed + ' ' + QByteArray::number(order.number);
}

void KeptTree::take(const QString& root)
{
    m_root = root.toStdString();
    m_directories.clear();
    m_files.clear();
    const auto statusOf = [](const fs::path& path) {
        struct stat status = {};
        ::lstat(path.c_str(), &status);
        return status;
    };
    m_directories[m_root] = statusOf(m_root).st_mode & 07777;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(m_root)) {
        const struct stat status = statusOf(entry.path());
        const mode_t mode = status.st_mode & 07777;
        if (entry.is_directory())
            m_directories[entry.path()] = mode;
        else
            m_files[entry.path()] = {readFile(QString::fromStdString(entry.path())), mode,
                                     status.st_mtim};
    }
}

void KeptTree::putBack() const
{
    fs::remove_all(m_root);
    for (const auto& [path, mode] : m_directories) {
        ::mkdir(path.c_str(), mode);
        ::chmod(path.c_str(), mode);
    }
    for (const auto& [path, file] : m_files) {
        const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
        const auto size = static_cast<size_t>(file.content.size());
        const bool isWhole =
            ::write(descriptor, file.content.constData(), size) == file.content.size();
        const timespec times[]{file.modified, file.modified};
        if (!isWhole || ::fchmod(descriptor, file.mode) != 0 ||
            ::futimens(descriptor, times) != 0 || ::close(descriptor) != 0)
            qFatal("A file cannot be put back: %s", path.c_str());
    }
}

QStringList StoreJobs::changing()
{
    return QStringLiteral("import,import seconds,merge,merge seconds,fill,fill seconds,undo,edit,"
                          "delete,copy,rename")
        .split(u',');
}

QStringList StoreJobs::reading()
{
    return QStringLiteral("export,list,health,points,check,check merge").split(u',');
}

StoreJobs::StoreJobs()
{
    writeFile(path("old.csv"), bars({"20240115", "20240116"}, {10, 25, 40}, 50));
    writeFile(path("second.csv"), bars({"20240116"}, {10, 25, 40}, 70));
    writeFile(path("new.csv"), bars({"20240115", "20240116", "20240117"}, {10, 25, 40}, 90));
    writeFile(path("more.csv"), bars({"20240115", "20240117"}, {25, 55}, 51));
    for (const int timeframe : {60, 1})
        expect(importLine(QStringLiteral("replace"), timeframe, "old.csv"));
    expect(importLine(QStringLiteral("replace"), 60, "second.csv"));
    m_pointsBefore = points();
    m_firstPoint = m_pointsBefore.value(0);
    m_kept.take(m_dir.path());
    m_before = filesBelow(store());
    if (m_before.size() != 6 || m_pointsBefore.size() != 3)
        m_problem += "there is no such store";
}

void StoreJobs::expect(const QStringList& line)
{
    const Outcome outcome = runTadata(line);
    if (outcome.exitCode != 0)
        m_problem += outcome.err;
}

QStringList StoreJobs::importLine(const QString& mode, int timeframe, const char* file) const
{
    return words("import --series S/B/X --decimals 0 --no-header")
           << QStringLiteral("--columns") << columns << QStringLiteral("--mode") << mode
           << QStringLiteral("--timeframe") << QString::number(timeframe)
           << QStringLiteral("--store") << store() << path(file);
}

void StoreJobs::refresh()
{
    m_kept.putBack();
}

QStringList StoreJobs::commandLine(const QString& job) const
{
    if (job == u"edit")
        return {QStringLiteral(EDIT_ROWS), store(), QStringLiteral("S/B/X")};
    const QStringList program{tadataProgram()};
    const QStringList where{QStringLiteral("--store"), store()};
    const QString first = job.section(u' ', 0, 0);
    if (first == u"import")
        return program +
               importLine(QStringLiteral("replace"), job == u"import" ? 60 : 1, "new.csv");
    if (first == u"merge" || first == u"fill")
        return program + importLine(first, job == first ? 60 : 1, "more.csv");
    if (first == u"check") {
        const QStringList line = importLine(
            job == first ? QStringLiteral("replace") : QStringLiteral("merge"), 60, "more.csv");
        return program + QStringList{first} + line.mid(1);
    }
    if (job == u"export")
        return program + words("export --series S/B/X --from 2024-01-14 --to 2024-01-17") + where +
               QStringList{path("out.txt")};
    if (job == u"delete")
        return program + words("delete S/B/X --to 2024-01-15") + where;
    if (job == u"undo")
        return program + words("undo") + where + QStringList{m_firstPoint};
    if (job == u"copy" || job == u"rename")
        return program + QStringList{job} + words("S/B/X S/B/Y") + where;
    return program + QStringList{job} + where;
}

Outcome StoreJobs::run(const QString& job, Counted counted, const CallOrder& order,
                       const QStringList& options) const
{
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(COUNTED_CALLS));
    environment.insert(QStringLiteral("TADATA_TEST_BELOW"),
                       QFileInfo(m_dir.path()).canonicalFilePath());
    environment.insert(QStringLiteral("TADATA_TEST_CALLS"), path("calls"));
    if (counted == Counted::Changing)
        environment.insert(QStringLiteral("TADATA_TEST_COUNTED"), QStringLiteral("changing"));
    if (order.at > 0)
        environment.insert(QStringLiteral("TADATA_TEST_ORDER"), QString::fromLatin1(toText(order)));
    const QStringList line = commandLine(job) + options;
    return runProgram(line.first(), line.mid(1), environment);
}

QByteArrayList StoreJobs::calls() const
{
    QByteArrayList lines = readFile(path("calls")).split('\n');
    lines.removeLast();
    return lines;
}

QStringList StoreJobs::points() const
{
    static const QRegularExpression id(QStringLiteral("^\\d{8}-\\d{6}-\\d+$"));
    QStringList ids =
        QDir(path("store-restore")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).filter(id);
    // Fewer than ten points are made in a second.
    std::sort(ids.begin(), ids.end(), std::greater<>());
    return ids;
}

QStringList StoreJobs::newPoints() const
{
    QStringList ids = points();
    ids.removeIf([this](const QString& id) { return m_pointsBefore.contains(id); });
    return ids;
}

QByteArray StoreJobs::takeBack() const
{
    const QStringList now = newPoints();
    if (now.size() > 1)
        return "there are too many points";
    if (now.isEmpty())
        return withoutTemporary(filesBelow(store())) == m_before ? QByteArray()
                                                                 : "changed without a point";
    const Outcome undone = runTadata(words("undo --store") << store() << now.first());
    if (undone.exitCode != 0)
        return "not taken back: " + undone.err;
    return filesBelow(store()) == m_before ? QByteArray() : "taken back, and not what it was";
}

QByteArray StoreJobs::plain(QByteArray text) const
{
    text.replace(m_dir.path().toUtf8(), "DIR");
    text = replaced(text, "\\.tadata-\\d+-\\d+\\.tmp", "TEMPORARY");
    text = replaced(text, "\"modified\":\\d+", "MODIFIED");
    text = replaced(text, "\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d", "MOMENT");
    const QStringList ids = points();
    for (qsizetype i = 0; i < ids.size(); ++i)
        text.replace(ids[i].toLatin1(), "POINT" + QByteArray::number(ids.size() - i));
    return text;
}

QByteArray StoreJobs::state() const
{
    QByteArray text;
    for (const char* name : {"store", "store-restore", "out.txt"}) {
        const Files files = QFileInfo(path(name)).isDir()
                                ? filesBelow(path(name))
                                : Files{{QString(), {readFile(path(name)), 0}}};
        for (auto file = files.begin(); file != files.end(); ++file) {
            const bool isLock = file.key().endsWith(u".lock");
            text += QByteArray(name) + '/' + file.key().toUtf8() + ' ' +
                    QByteArray::number(file->second) + '\n' +
                    (isLock ? QByteArray() : file->first) + '\n';
        }
    }
    return QCryptographicHash::hash(plain(text), QCryptographicHash::Sha1);
}

bool SeenStates::add(const QByteArray& state)
{
    const std::lock_guard lock(m_mutex);
    return m_states.insert(state).second;
}

QByteArray forEach(int count, const std::function<QByteArray(StoreJobs& jobs, int number)>& act)
{
    constexpr qsizetype enough = 20;
    std::atomic<int> next = 0;
    std::mutex mutex;
    QByteArrayList problems;
    const auto work = [&] {
        StoreJobs jobs;
        QByteArray problem = jobs.problem();
        for (int number = next++; number < count; number = next++) {
            if (problem.isEmpty())
                problem = act(jobs, number);
            if (problem.isEmpty())
                continue;
            const std::lock_guard lock(mutex);
            problems.append(std::exchange(problem, QByteArray()));
            if (problems.size() >= enough)
                next = count;
        }
    };
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < std::max(1U, std::thread::hardware_concurrency()); ++i)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
    return problems.join('\n');
}

} // namespace testsupport
