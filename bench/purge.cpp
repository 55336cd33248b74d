// SPDX-License-Identifier: MIT
// The purge of old second files over a store of many files, with a warm cache: the walk alone, then
// the walk with the removal. The store is made below a directory of the caller's choice, or the
// system's temporary directory, and removed again.
//
//   bench_purge [SERIES] [FILES_PER_SERIES] [DIR]

#include "purge.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int keptDays = 7;
constexpr int walks = 9;
constexpr int oldOneOf = 100; // one file in so many is old and matches
constexpr int boards = 4;

const QDate today(2024, 1, 15);

struct Times
{
    double wall = 0; // milliseconds
    double user = 0;
    double system = 0;
};

double milliseconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

template <typename Work>
Times measure(const Work& work)
{
    rusage before{};
    rusage after{};
    ::getrusage(RUSAGE_SELF, &before);
    QElapsedTimer timer;
    timer.start();
    work();
    const double wall = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    ::getrusage(RUSAGE_SELF, &after);
    return {wall, milliseconds(after.ru_utime) - milliseconds(before.ru_utime),
            milliseconds(after.ru_stime) - milliseconds(before.ru_stime)};
}

void print(const char* what, const Times& times)
{
    std::printf("%-34s wall %8.1f ms   user %8.1f ms   system %8.1f ms\n", what, times.wall,
                times.user, times.system);
    std::fflush(stdout);
}

// Series in the three levels of a store. Most files are day files, some are minute files without
// an extension, and the old ones lie scattered among them.
bool makeStore(const QDir& root, int series, int filesPerSeries, int* oldFiles)
{
    int number = 0;
    *oldFiles = 0;
    for (int s = 0; s < series; ++s) {
        const QString directory =
            root.filePath(QStringLiteral("NORD/B%1/S%2").arg(s % boards).arg(s));
        if (!root.mkpath(directory))
            return false;
        for (int f = 0; f < filesPerSeries; ++f) {
            const QString day = today.addDays(-(f + 20)).toString(QStringLiteral("yyyyMMdd"));
            const bool old = number++ % oldOneOf == 0;
            *oldFiles += old ? 1 : 0;
            const QString ending = old          ? QStringLiteral("_1")
                                   : f % 5 == 0 ? QStringLiteral("_60")
                                                : QStringLiteral("_1.iss");
            QFile file(directory + u'/' + day + ending);
            if (!file.open(QIODevice::WriteOnly))
                return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int series = arguments.value(1, QStringLiteral("2000")).toInt();
    const int filesPerSeries = arguments.value(2, QStringLiteral("50")).toInt();
    const QTemporaryDir directory(
        QDir(arguments.value(3, QDir::tempPath())).filePath(QStringLiteral("purge-XXXXXX")));
    const QDir root(directory.path());
    int oldFiles = 0;
    if (!directory.isValid() || !makeStore(root, series, filesPerSeries, &oldFiles)) {
        std::fprintf(stderr, "The store cannot be made in %s\n", qUtf8Printable(directory.path()));
        return EXIT_FAILURE;
    }
    std::printf("%d files in %d series, %d of them old\n", series * filesPerSeries, series,
                oldFiles);

    QList<Times> times;
    qsizetype found = 0;
    for (int i = 0; i < walks; ++i)
        times.append(
            measure([&] { found = tadata::oldSecondFiles(root, today, keptDays).size(); }));
    std::sort(times.begin(), times.end(),
              [](const Times& left, const Times& right) { return left.wall < right.wall; });
    print("walk, fastest", times.first());
    print("walk, median", times.at(walks / 2));
    print("walk and removal",
          measure([&] { tadata::removeOldSecondFiles(root, today, keptDays); }));

    const qsizetype left = tadata::oldSecondFiles(root, today, keptDays).size();
    if (found != oldFiles || left != 0) {
        std::fprintf(stderr, "Of %d old files %lld were found and %lld are left\n", oldFiles,
                     static_cast<long long>(found), static_cast<long long>(left));
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
