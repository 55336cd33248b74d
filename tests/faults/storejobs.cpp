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

// In whole minutes, each of which has but one bar of seconds.
QByteArray bars(std::initializer_list<const char*> days, std::initializer_list<int> minutes,
                int price)
{
    QByteArray lines;
    for (const char* day : days) {
        for (const int minute : minutes)
            lines += QByteArray(day) + ",10" + QByteArray::number(minute) + "00," +
                     QByteArray::number(price) + ',' + QByteArray::number(price + 1) + ',' +
                     QByteArray::number(price - 1) + ',' + QByteArray::number(price) + '\n';
    }
    return lines;
}

} // namespace

Files filesBelow(const QString& root)
{
    Files files;
    QDirIterator walk(root, QDir::Files | QDir::Hidden | QDir::System,
                      QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
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

QByteArray toText(const CallOrder& order)
{
    return QByteArray::number(order.at) + ' ' + order.deed + ' ' + QByteArray::number(order.number);
}

QByteArray toText(const MadeCall& call)
{
    return call.name + ' ' + call.path;
}

void KeptTree::take(const QString& root)
{
    m_root = root.toStdString();
    m_directories.clear();
    m_files.clear();
    m_links.clear();
    const auto statusOf = [](const fs::path& path) {
        struct stat status = {};
        ::lstat(path.c_str(), &status);
        return status;
    };
    m_directories[m_root] = statusOf(m_root).st_mode & 07777;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(m_root)) {
        const struct stat status = statusOf(entry.path());
        const mode_t mode = status.st_mode & 07777;
        if (entry.is_symlink())
            m_links[entry.path()] = fs::read_symlink(entry.path());
        else if (entry.is_directory())
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
    for (const auto& [path, target] : m_links)
        fs::create_symlink(target, path);
}

// An import, by its name among the jobs. DIR is the test's directory.
struct StoreJobs::Import
{
    const char* name;
    const char* mode;
    int timeframe;
    const char* files;
    const char* series = "S/B/X";
    const char* options = "";
};

const std::array<StoreJobs::Import, 13> StoreJobs::imports{{
    {"import", "replace", 60, "DIR/new.csv"},
    {"import seconds", "replace", 1, "DIR/new.csv"},
    {"import new", "replace", 1, "DIR/new.csv"},
    {"import files", "replace", 60, "DIR/X.csv DIR/Z.csv", "S/B/{name}"},
    {"import rejects", "replace", 60, "DIR/spoiled.csv", "S/B/X", "--rejects DIR/rejects.csv"},
    {"import prune", "replace", 60, "DIR/new.csv", "S/B/X", "--keep 2"},
    {"import undo", "replace", 1, "DIR/new.csv", "S/B/X", "--undo-on-error"},
    {"import spoiled", "replace", 1, "DIR/spoiled.csv", "S/B/X", "--undo-on-error"},
    {"import linked", "replace", 60, "DIR/new.csv"},
    {"merge", "merge", 60, "DIR/more.csv"},
    {"merge seconds", "merge", 1, "DIR/more.csv"},
    {"fill", "fill", 60, "DIR/more.csv"},
    {"fill seconds", "fill", 1, "DIR/more.csv"},
}};

QStringList StoreJobs::changing()
{
    QStringList names;
    for (const Import& import : imports)
        names.append(QLatin1String(import.name));
    return names +
           QStringLiteral("undo,undo linked,edit,delete,delete all,copy,rename").split(u',');
}

QStringList StoreJobs::reading()
{
    return QStringLiteral("export,list,health,points,check,check merge,export linked,"
                          "list linked,health linked,points linked")
        .split(u',');
}

bool StoreJobs::isVariant(const QString& job)
{
    return job == u"delete all" || job == u"undo linked" ||
           (job.startsWith(u"import ") && job != u"import seconds");
}

bool StoreJobs::putsBack(const QString& job)
{
    return job == u"import undo" || job == u"import spoiled";
}

StoreJobs::StoreJobs(const QString& job)
{
    writeInputs();
    if (job != u"import new")
        makeStore();
    if (job.endsWith(u" linked"))
        moveBehindLinks();
    m_pointsBefore = points();
    m_firstPoint = m_pointsBefore.value(0);
    m_kept.take(m_dir.path());
    m_before = filesBelow(store());
}

StoreJobs::~StoreJobs()
{
    QDir(placeInUserFolder()).removeRecursively();
}

QString StoreJobs::placeInUserFolder() const
{
    const QString root = path(QFileInfo(store()).isSymLink() ? "disk" : "store");
    const QByteArray sum = QCryptographicHash::hash(root.toUtf8(), QCryptographicHash::Sha256);
    return QFileInfo(tadataProgram()).path() + QStringLiteral("/user/restore/") +
           QString::fromLatin1(sum.toHex());
}

QString StoreJobs::place() const
{
    const QString inUserFolder = placeInUserFolder();
    if (QFileInfo::exists(inUserFolder))
        return inUserFolder;
    return path(QFileInfo(store()).isSymLink() ? "disk-restore" : "store-restore");
}

void StoreJobs::writeInputs() const
{
    const QByteArray some = bars({"20240115", "20240116", "20240117"}, {10, 25, 40}, 90);
    const QByteArray later = bars({"20240115", "20240117"}, {25, 55}, 51);
    writeFile(path("old.csv"), bars({"20240115", "20240116"}, {10, 25, 40}, 50));
    writeFile(path("second.csv"), bars({"20240116"}, {10, 25, 40}, 70));
    writeFile(path("new.csv"), some);
    writeFile(path("more.csv"), later);
    writeFile(path("X.csv"), later);
    writeFile(path("Z.csv"), some);
    writeFile(path("spoiled.csv"), bars({"20240115", "20240116"}, {10, 25, 40}, 90) +
                                       "20240116,spoiled\n" + bars({"20240117"}, {10, 25}, 90));
}

void StoreJobs::makeStore()
{
    for (const Import& import :
         {Import{"", "replace", 60, "DIR/old.csv"}, Import{"", "replace", 1, "DIR/old.csv"},
          Import{"", "replace", 60, "DIR/second.csv"}}) {
        if (const Outcome made = runTadata(importLine(import)); made.exitCode != 0)
            m_problem += made.err;
    }
    if (filesBelow(store()).size() != 6 || points().size() != 3)
        m_problem += "there is no such store";
}

void StoreJobs::moveBehindLinks()
{
    const auto move = [this](const char* from, const char* to) {
        if (!QFile::rename(path(from), path(to)) || !QFile::link(path(to), path(from)))
            m_problem += "there is no such link";
    };
    QDir(m_dir.path()).mkpath(QStringLiteral("days"));
    move("store/S/B/X/20240116_60.iss", "days/20240116_60.iss");
    move("store/S/B/X", "series");
    move("store", "disk");
    m_problem += QDir().rename(path("store-restore"), path("disk-restore")) ? "" : "nor points";
}

QStringList StoreJobs::importLine(const Import& import) const
{
    QStringList line = words("import --decimals 0 --no-header --columns") << columns;
    line << QStringLiteral("--mode") << QLatin1String(import.mode) << QStringLiteral("--timeframe")
         << QString::number(import.timeframe) << QStringLiteral("--series")
         << QLatin1String(import.series) << QStringLiteral("--store") << store();
    line += words(import.options) + words(import.files);
    return line.replaceInStrings(QStringLiteral("DIR"), m_dir.path());
}

void StoreJobs::refresh()
{
    m_kept.putBack();
    QDir(placeInUserFolder()).removeRecursively();
}

QStringList StoreJobs::commandLine(const QString& job) const
{
    if (job == u"edit")
        return {QStringLiteral(EDIT_ROWS), store(), QStringLiteral("S/B/X")};
    const QStringList program{tadataProgram()};
    const QStringList where{QStringLiteral("--store"), store()};
    const auto import = std::find_if(imports.begin(), imports.end(), [&job](const Import& one) {
        return job == QLatin1String(one.name);
    });
    if (import != imports.end())
        return program + importLine(*import);
    if (job == u"check" || job == u"check merge") {
        const char* const mode = job == u"check" ? "replace" : "merge";
        const QStringList line = importLine({"", mode, 60, "DIR/more.csv"});
        return program + QStringList{QStringLiteral("check")} + line.mid(1);
    }
    const QString reader = QString(job).remove(QStringLiteral(" linked"));
    if (reader == u"export")
        return program + words("export --series S/B/X --from 2024-01-14 --to 2024-01-17") + where +
               QStringList{path("out.txt")};
    if (job == u"delete all")
        return program + words("delete S/B/X --all") + where;
    if (job == u"delete")
        return program + words("delete S/B/X --to 2024-01-15") + where;
    if (reader == u"undo")
        return program + words("undo") + where + QStringList{m_firstPoint};
    if (job == u"copy" || job == u"rename")
        return program + QStringList{job} + words("S/B/X S/B/Y") + where;
    return program + QStringList{reader} + where;
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

QList<MadeCall> StoreJobs::calls() const
{
    QByteArrayList lines = readFile(path("calls")).split('\n');
    lines.removeLast();
    QList<MadeCall> calls;
    for (const QByteArray& line : lines) {
        const bool isMet = line.startsWith('!');
        const QByteArrayList parts = line.mid(isMet ? 1 : 0).split(' ');
        calls.append({parts[0], parts.value(1), parts.value(2), isMet});
    }
    return calls;
}

Files StoreJobs::outputs() const
{
    Files files = filesBelow(m_dir.path());
    const QStringList outputs{QStringLiteral("out.txt"), QStringLiteral("rejects.csv")};
    files.removeIf([&](Files::iterator file) { return !outputs.contains(file.key()); });
    return files;
}

QStringList StoreJobs::points() const
{
    static const QRegularExpression id(QStringLiteral("^\\d{8}-\\d{6}-\\d+$"));
    QStringList ids = QDir(place()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).filter(id);
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
    text.replace(placeInUserFolder().toUtf8(), "DIR/store-restore");
    text.replace(m_dir.path().toUtf8(), "DIR");
    text.replace("DIR/disk", "DIR/store");
    text.replace("DIR/series", "DIR/store/S/B/X");
    text.replace("DIR/days", "DIR/store/S/B/X");
    QString plain = QString::fromUtf8(text);
    static const std::array patterns{
        std::pair(QRegularExpression(QStringLiteral("\\.tadata-\\d+-\\d+\\.tmp")), "TEMPORARY"),
        std::pair(QRegularExpression(QStringLiteral("\"modified\":\\d+")), "MODIFIED"),
        std::pair(QRegularExpression(QStringLiteral("\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d")),
                  "MOMENT"),
    };
    for (const auto& [pattern, with] : patterns)
        plain.replace(pattern, QLatin1String(with));
    text = plain.toUtf8();
    static const QRegularExpression id(QStringLiteral("\\d{8}-\\d{6}-\\d"));
    const QStringList ids = plain.contains(id) ? points() : QStringList();
    for (qsizetype i = 0; i < ids.size(); ++i)
        text.replace(ids[i].toLatin1(), "POINT" + QByteArray::number(ids.size() - i));
    return text;
}

QByteArray StoreJobs::state() const
{
    QByteArray text;
    for (const Files& files : {filesBelow(store()), filesBelow(place()), outputs()}) {
        text += '\n';
        for (auto file = files.begin(); file != files.end(); ++file) {
            const bool isLock = file.key().endsWith(u".lock");
            text += file.key().toUtf8() + ' ' + QByteArray::number(file->second) + '\n' +
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

QByteArray forEach(const QString& job, int count,
                   const std::function<QByteArray(StoreJobs& jobs, int number)>& act)
{
    constexpr qsizetype enough = 20;
    std::atomic<int> next = 0;
    std::mutex mutex;
    QByteArrayList problems;
    const auto work = [&] {
        StoreJobs jobs(job);
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
    // One more than there are processors: each waits for its programs.
    for (unsigned i = 0; i <= std::max(1U, std::thread::hardware_concurrency()); ++i)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
    // What was there is what they had made, if anything.
    for (const char* name : {"/user/restore", "/user"})
        QDir().rmdir(QFileInfo(tadataProgram()).path() + QLatin1String(name));
    return problems.join('\n');
}

} // namespace testsupport
