// SPDX-License-Identifier: MIT
#include "aftermath.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace testsupport {

namespace {

const QByteArray place("DIR/store-restore");

bool isTemporary(const QString& path)
{
    return path.section(u'/', -1).startsWith(u".tadata-");
}

// Whether a message has this path, and not only one that begins so.
bool hasPath(const QByteArray& message, const QByteArray& path)
{
    static const QRegularExpression more(QStringLiteral("^\\.?[\\w/-]"));
    for (qsizetype at = message.indexOf(path); at >= 0; at = message.indexOf(path, at + 1)) {
        if (!more.match(QString::fromUtf8(message.mid(at + path.size()))).hasMatch())
            return true;
    }
    return false;
}

// Of a file beside another: what it is renamed to.
QByteArray targetOf(const QList<MadeCall>& calls, qsizetype at)
{
    const QByteArray& path = calls[at].path;
    const auto put = std::find_if(calls.begin() + at, calls.end(), [&path](const MadeCall& call) {
        return call.name.startsWith("rename") && call.from == path;
    });
    return put == calls.end() ? path : put->path;
}

// What has become of a file.
enum class Became { Same, Old, New, Begun, Empty, Other };

class Aftermath final
{
public:
    Aftermath(const QString& job, const StoreJobs& jobs, const QList<MadeCall>& calls,
              const Undisturbed& done)
        : m_job(job)
        , m_before(jobs.before())
        , m_after(done.made)
        , m_now(withoutTemporary(filesBelow(jobs.store())))
    {
        for (const MadeCall& call : calls) {
            if (call.isMet && call.name == "unlink")
                m_notRemoved.append(jobs.plain(call.path));
        }
        for (const Files* files : {&m_before, &m_after, &m_now})
            m_paths.unite(QSet<QString>(files->keyBegin(), files->keyEnd()));
    }

    bool isAsBefore() const { return m_now == m_before; }
    bool isDone() const
    {
        return std::all_of(m_paths.begin(), m_paths.end(), [this](const QString& path) {
            return isWhole(path) && becameOf(path) != Became::Old;
        });
    }

    // Whether a message, in a plain text, names the file or directory that a call is for.
    bool isNamed(const QByteArray& message, QByteArray path) const
    {
        path = path.endsWith("/.") ? path.chopped(2) : path;
        static const QRegularExpression copy(
            QStringLiteral("^DIR/store-restore/[^/]+/([^/]+/[^/]+/[^/]+/\\d{8}_[^/]+)$"));
        if (hasPath(message, path))
            return true;
        const auto kept = copy.match(QString::fromUtf8(path));
        if (kept.hasMatch())
            return hasPath(message, "DIR/store/" + kept.captured(1).toUtf8());
        if (path.startsWith(place + '/') && !path.startsWith(place + "/locks"))
            return isPointNamed(message, path);
        const QByteArray directory = path.left(path.lastIndexOf('/'));
        const QByteArray name = path.mid(directory.size() + 1);
        return !name.contains('_') && !name.contains('.') && message.contains(path + '/');
    }

    // What a job leaves that does not put it back.
    QByteArray wrong(bool isOnce) const
    {
        if (m_job.startsWith(u"import"))
            return wrongDays();
        if (m_job.startsWith(u"merge") || m_job.startsWith(u"fill"))
            return wrongMerge(isOnce);
        for (const QString& path : m_paths) {
            if (!isWhole(path))
                return told(path);
            if (m_job == u"rename" && !m_now.contains(path) && isLost(path))
                return path.toUtf8() + " is lost";
        }
        return {};
    }

    // What was put back only in part.
    QByteArray wrongAfterPuttingBack() const
    {
        for (const QString& path : m_paths) {
            if (becameOf(path) == Became::Other)
                return told(path);
        }
        return {};
    }

private:
    // A point's own file: the point, or the day that was left alone since it could not be kept.
    bool isPointNamed(const QByteArray& message, const QByteArray& path) const
    {
        if (!message.contains(place))
            return false;
        static const QRegularExpression point(QStringLiteral("POINT\\d+"));
        const QString id = point.match(QString::fromUtf8(path)).captured();
        if (message.contains(id.isEmpty() ? "POINT" : id.toUtf8()))
            return true;
        return std::any_of(m_paths.begin(), m_paths.end(), [&](const QString& day) {
            return hasPath(message, "DIR/store/" + day.toUtf8()) &&
                   m_now.value(day) == m_before.value(day);
        });
    }

    Became becameOf(const QString& path) const
    {
        const auto now = m_now.value(path);
        const auto whole = m_after.value(path);
        if (now == m_before.value(path))
            return now == whole ? Became::Same : Became::Old;
        if (now == whole)
            return Became::New;
        if (now.first.isEmpty())
            return Became::Empty;
        return whole.first.startsWith(now.first) && now.first.endsWith('\n') ? Became::Begun
                                                                             : Became::Other;
    }

    QByteArray told(const QString& path) const
    {
        return "what is left of " + path.toUtf8() + " is '" + m_now.value(path).first + '\'';
    }

    // The editor empties a file that it may not remove.
    bool isWhole(const QString& path) const
    {
        const Became became = becameOf(path);
        if (became == Became::Empty && m_job == u"edit" && !m_after.contains(path))
            return m_notRemoved.contains("DIR/store/" + path.toUtf8());
        return became == Became::Same || became == Became::Old || became == Became::New;
    }

    bool isLost(const QString& path) const
    {
        QString renamed = path;
        renamed.replace(QStringLiteral("/X/"), QStringLiteral("/Y/"));
        return m_before.contains(path) && !m_now.contains(renamed);
    }

    QStringList changedDays(const char* ending) const
    {
        QStringList days;
        for (const QString& path : m_paths) {
            if (path.endsWith(QLatin1String(ending)) && becameOf(path) != Became::Same)
                days.append(path);
        }
        days.sort();
        return days;
    }

    QByteArray wrongDays() const
    {
        QByteArray wrong;
        for (const char* ending : {"_60.iss", "_1.iss", "_60"}) {
            if (wrong.isEmpty())
                wrong = wrongOrder(changedDays(ending), true);
        }
        for (const QString& path : changedDays("_60")) {
            if (becameOf(path) != Became::Old && becameOf(secondsOf(path)) == Became::Old)
                return "before its seconds: " + told(path);
        }
        return wrong;
    }

    // New days, at most one that was begun where that may be, and old ones; of each series by
    // itself.
    QByteArray wrongOrder(const QStringList& paths, bool mayBegin) const
    {
        QMap<QString, bool> isEnd;
        for (const QString& path : paths) {
            const Became became = becameOf(path);
            const bool isBegun = became == Became::Begun || became == Became::Empty;
            if (became == Became::Other || (isBegun && !mayBegin))
                return told(path);
            bool& isReached = isEnd[path.section(u'/', 0, -2)];
            if (became != Became::Old && isReached)
                return "out of order: " + told(path);
            isReached = isReached || became != Became::New;
        }
        return {};
    }

    // Minutes are written after the seconds of the next day: those of one day may be missing that
    // could not be written, of two where nothing can. The last that were have an open minute less.
    QByteArray wrongMerge(bool isOnce) const
    {
        QByteArray wrong;
        for (const char* ending : {"_60.iss", "_1.iss"}) {
            if (wrong.isEmpty())
                wrong = wrongOrder(changedDays(ending), false);
        }
        int late = 0;
        bool hasBegun = false;
        for (const QString& path : changedDays("_60")) {
            const Became became = becameOf(path);
            const bool areSecondsNew = becameOf(secondsOf(path)) != Became::Old;
            if (hasBegun ? became != Became::Old || areSecondsNew
                         : became != Became::Old && !areSecondsNew)
                return "out of order: " + told(path);
            hasBegun = hasBegun || became == Became::Begun || became == Became::Empty;
            if (hasBegun && became != Became::Old && !lacksLastLine(path))
                return told(path);
            late += became == Became::Old && areSecondsNew ? 1 : 0;
        }
        return late > (isOnce ? 1 : 2) ? "minutes are missing" : wrong;
    }

    static QString secondsOf(const QString& minutes)
    {
        return minutes.chopped(2) + QStringLiteral("1.iss");
    }

    bool lacksLastLine(const QString& path) const
    {
        const QByteArray whole = m_after.value(path).first;
        return m_now.value(path).first == whole.left(whole.lastIndexOf('\n', whole.size() - 2) + 1);
    }

    QString m_job;
    Files m_before;
    Files m_after;
    Files m_now;
    QByteArrayList m_notRemoved;
    QSet<QString> m_paths;
};

QByteArray wrongMessage(const Aftermath& left, const StoreJobs& jobs, const QList<MadeCall>& calls,
                        const Undisturbed& done, const QByteArray& message, const CallOrder& order)
{
    // It may have had no time to get its name.
    const QByteArray path = jobs.plain(calls[order.at - 1].path);
    if (path == done.calls[order.at - 1].path && left.isNamed(message, done.meant[order.at - 1]))
        return {};
    for (qsizetype at = order.at - 1; at < calls.size(); ++at) {
        if (calls[at].isMet && left.isNamed(message, jobs.plain(targetOf(calls, at))))
            return {};
    }
    // A directory in which a file cannot be looked at is not listed.
    const QByteArray directory = path.left(path.lastIndexOf('/'));
    if (calls[order.at - 1].name == "stat" && message.contains(" " + directory + ": "))
        return {};
    // What the editor cannot open counts as absent; edit_rows says of which series it is.
    if (order.deed == "failon" && message == "Not all bars are shown: " + directory + '\n')
        return {};
    return "not named: " + path;
}

// Where it puts back by itself what it has done, one fault is none to that. An import that only its
// point comes short of has not failed.
QByteArray wrongFiles(const QString& job, const Aftermath& left, const Undisturbed& done,
                      const CallOrder& order)
{
    const bool isOnce = order.deed == "fail" || order.deed == "short";
    if (!StoreJobs::putsBack(job))
        return left.wrong(isOnce);
    if (isOnce && done.outcome.exitCode == 0)
        return left.isAsBefore() || left.isDone() ? QByteArray() : QByteArray("not put back");
    return left.wrongAfterPuttingBack();
}

// Temporary files and locks go, unless that is what fails.
QByteArray wrongRest(const StoreJobs& jobs, const QList<MadeCall>& calls)
{
    const bool isKept = std::any_of(calls.begin(), calls.end(), [](const MadeCall& call) {
        return call.isMet && (call.name.startsWith("unlink") || call.name == "rmdir");
    });
    if (isKept)
        return {};
    const Files left = filesBelow(jobs.path(""));
    for (auto file = left.begin(); file != left.end(); ++file) {
        if (isTemporary(file.key()) || file.key().endsWith(u".lock"))
            return "there is still " + file.key().toUtf8();
    }
    return {};
}

// Lines of a whole output, in their order; the last one may be cut.
bool isPartOf(const QByteArray& part, const QByteArray& whole)
{
    QByteArrayList wanted = whole.split('\n');
    QByteArrayList lines = part.split('\n');
    const QByteArray last = lines.takeLast();
    for (const QByteArray& line : lines) {
        while (!wanted.isEmpty() && wanted.first() != line)
            wanted.removeFirst();
        if (wanted.isEmpty())
            return false;
        wanted.removeFirst();
    }
    return std::any_of(wanted.begin(), wanted.end(),
                       [&last](const QByteArray& line) { return line.startsWith(last); });
}

QByteArray wrongOutputs(const Files& outputs, const Undisturbed& done)
{
    for (auto file = outputs.begin(); file != outputs.end(); ++file) {
        if (!isPartOf(file->first, done.outputs.value(file.key()).first))
            return "what is left of " + file.key().toUtf8() + " is '" + file->first + '\'';
    }
    return {};
}

QByteArray wrongSuccess(const StoreJobs& jobs, const Undisturbed& done, const Aftermath& left)
{
    if (done.outcome.exitCode == 0 ? !left.isDone() : !left.isAsBefore())
        return "success, and the store is not what it should be";
    return jobs.outputs() == done.outputs ? QByteArray()
                                          : "success, and the output is not what it should be";
}

// The wrong line of an input is quoted where it can be read once more.
QByteArray withoutQuotes(const QByteArray& message)
{
    QByteArrayList lines = message.split('\n');
    lines.removeIf([](const QByteArray& line) { return line.startsWith(' '); });
    return lines.join('\n');
}

} // namespace

Undisturbed runUndisturbed(StoreJobs& jobs, const QString& job)
{
    Outcome outcome = jobs.run(job);
    outcome.out = jobs.plain(outcome.out);
    outcome.err = jobs.plain(outcome.err);
    Undisturbed done{outcome, jobs.calls(), {}, jobs.outputs(), filesBelow(jobs.store()), {}};
    for (qsizetype at = 0; at < done.calls.size(); ++at)
        done.meant.append(jobs.plain(targetOf(done.calls, at)));
    for (MadeCall& call : done.calls)
        call.path = jobs.plain(call.path);
    done.made = done.store;
    if (outcome.exitCode != 0) {
        jobs.refresh();
        static_cast<void>(jobs.run(QStringLiteral("import seconds")));
        done.made = filesBelow(jobs.store());
    }
    return done;
}

QByteArray wrongAfterFault(const QString& job, const StoreJobs& jobs, const Undisturbed& done,
                           const Outcome& outcome, const CallOrder& order)
{
    const QList<MadeCall> calls = jobs.calls();
    if (std::none_of(calls.begin(), calls.end(), [](const MadeCall& call) { return call.isMet; }))
        return "nothing has failed";
    const QByteArray printed = jobs.plain(outcome.out);
    const QByteArray message = jobs.plain(outcome.err);
    const Aftermath left(job, jobs, calls, done);
    const bool isAsEver = outcome.exitCode == done.outcome.exitCode &&
                          withoutQuotes(message) == withoutQuotes(done.outcome.err);
    if (isAsEver || outcome.exitCode == 0)
        return printed == done.outcome.out ? wrongSuccess(jobs, done, left)
                                           : "success, and it printed " + printed;
    if (outcome.exitCode != 1)
        return "exit code " + QByteArray::number(outcome.exitCode);
    QByteArray wrong = wrongMessage(left, jobs, calls, done, message, order);
    if (wrong.isEmpty())
        wrong = wrongFiles(job, left, done, order);
    if (wrong.isEmpty())
        wrong = wrongRest(jobs, calls);
    if (wrong.isEmpty())
        wrong = wrongOutputs(jobs.outputs(), done);
    return wrong.isEmpty() && !isPartOf(printed, done.outcome.out) ? "it printed " + printed
                                                                   : wrong;
}

} // namespace testsupport
