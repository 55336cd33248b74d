// SPDX-License-Identifier: MIT
// Filling the three selector models from a store of many series, beside the "find" that lists the
// same directories. One line for each of RUNS: processor seconds of ours, of find, and of a find
// that finds nothing, which is what starting the program costs.
//
//   bench_selectors [SERIES] [RUNS]
//
// The store is "user/tadata" beside the program: copy the program into a directory of its own.
// Where that store holds anything the program ends without having touched it.

#include "seriesselectormodels.h"

#include <vexdesk/history/storepaths.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <ctime>

namespace {

constexpr int stockCount = 5;
constexpr int boardsOfStock = 4;

bool makeStore(const QDir& root, int series)
{
    for (int i = 0; i < series; ++i) {
        const QString path = QStringLiteral("STOCK%1/BOARD%2/SERIES%3")
                                 .arg(i % stockCount)
                                 .arg(i / stockCount % boardsOfStock)
                                 .arg(i);
        if (!root.mkpath(path))
            return false;
    }
    return true;
}

struct Filled
{
    double seconds = 0;
    qsizetype stocks = 0;
    qsizetype boards = 0;
    qsizetype securities = 0;
};

Filled fillModels()
{
    StockWithStoredSelectorModel stocks(true, nullptr);
    BoardWithStoredSelectorModel boards(true, nullptr);
    SecurityWithStoredSelectorModel securities(true, nullptr);
    const std::clock_t start = std::clock();
    stocks.populate();
    boards.populate();
    securities.populate();
    return {static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, stocks.rowCount(),
            boards.rowCount(), securities.rowCount()};
}

double seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// Processor seconds; negative when the program failed.
double runFind(const QByteArray& directory, const char* depth)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const std::array<const char*, 7> words{
        "find", directory.constData(), "-mindepth", depth, "-maxdepth", depth, nullptr};
    pid_t child = 0;
    const int error = posix_spawnp(&child, words[0], &actions, nullptr,
                                   const_cast<char* const*>(words.data()), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (error != 0 || ::wait4(child, &status, 0, &usage) != child || status != 0)
        return -1;
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

qsizetype countFound(const QString& directory)
{
    QProcess find;
    find.start(QStringLiteral("find"), {directory, QStringLiteral("-mindepth"), QStringLiteral("3"),
                                        QStringLiteral("-maxdepth"), QStringLiteral("3")});
    return find.waitForFinished() ? find.readAllStandardOutput().count('\n') : -1;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int series = arguments.value(1, QStringLiteral("20000")).toInt();
    const int runs = arguments.value(2, QStringLiteral("5")).toInt();
    const QDir root = vexdesk::storeRoot();
    if (!root.isEmpty()) {
        std::fprintf(stderr, "%s is not empty: copy the program into a directory of its own\n",
                     qUtf8Printable(root.path()));
        return EXIT_FAILURE;
    }
    // The terminal knows none of the series: what is filled in is what the store holds.
    vexdesk::ReferenceData::install({});
    if (!makeStore(root, series)) {
        std::fprintf(stderr, "The series cannot be made in %s\n", qUtf8Printable(root.path()));
        return EXIT_FAILURE;
    }
    const QByteArray path = QFile::encodeName(root.path());
    const qsizetype found = countFound(root.path());
    for (int run = 0; run < runs; ++run) {
        const Filled filled = fillModels();
        if (filled.securities != found || found != series || filled.stocks != stockCount ||
            filled.boards != qsizetype(stockCount) * boardsOfStock) {
            std::fprintf(stderr, "Of %d series %lld are shown and %lld found\n", series,
                         static_cast<long long>(filled.securities), static_cast<long long>(found));
            return EXIT_FAILURE;
        }
        const double theirs = runFind(path, "3");
        const double start = runFind(path, "0");
        if (theirs < 0 || start < 0) {
            std::fputs("find failed\n", stderr);
            return EXIT_FAILURE;
        }
        std::printf("%.4f %.4f %.4f\n", filled.seconds, theirs, start);
    }
    return EXIT_SUCCESS;
}
