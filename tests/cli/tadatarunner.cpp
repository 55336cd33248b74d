// SPDX-License-Identifier: MIT
#include "tadatarunner.h"

#include <QtCore/QDirIterator>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

namespace testsupport {

char* toString(const Outcome& outcome)
{
    constexpr qsizetype shown = 500;
    const QByteArray text = "exit code " + QByteArray::number(outcome.exitCode) +
                            "\n   stdout: \"" + outcome.out.left(shown) + "\"\n   stderr: \"" +
                            outcome.err.left(shown) + '"';
    return qstrdup(text.constData());
}

Outcome succeeded(const QByteArray& out)
{
    return {0, out, QByteArray()};
}

Outcome failed(const QString& message, int error)
{
    const QString reason = error == 0 ? QString() : QStringLiteral(": ") + qt_error_string(error);
    return {1, QByteArray(), (message + reason + u'\n').toUtf8()};
}

Outcome messageOf(const Outcome& outcome)
{
    // The message has two lines.
    Outcome message = outcome;
    message.err.truncate(outcome.err.indexOf('\n', outcome.err.indexOf('\n') + 1) + 1);
    return message;
}

Outcome refused(const QString& reason)
{
    return {2, QByteArray(), "tadata: " + reason.toUtf8() + "\nПодсказка: tadata --help\n"};
}

QProcessEnvironment plainEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QLatin1String(name));
    environment.insert(QStringLiteral("QT_ASSUME_STDERR_HAS_CONSOLE"), QStringLiteral("1"));
    return environment;
}

QProcessEnvironment faultyEnvironment(const QString& call, const QString& pathEnd, int error,
                                      int passed)
{
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(TADATA_PRELOADED_FAULTS));
    environment.insert(QStringLiteral("TADATA_TEST_FAULT"),
                       QStringLiteral("%1 %2 %3 %4").arg(call).arg(error).arg(passed).arg(pathEnd));
    // The sanitizer wants to be the first library of all, for no reason that matters here.
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("verify_asan_link_order=0"));
    return environment;
}

QString tadataProgram()
{
    return QStringLiteral(TADATA_PROGRAM);
}

Outcome runProgram(const QString& program, const QStringList& words,
                   const QProcessEnvironment& environment, const QString& directory)
{
    constexpr int patience = 240'000;
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(directory);
    process.start(program, words, QIODevice::ReadOnly);
    Outcome outcome;
    if (process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit)
        outcome.exitCode = process.exitCode();
    outcome.out = process.readAllStandardOutput();
    outcome.err = process.readAllStandardError();
    return outcome;
}

Outcome runTadata(const QStringList& words, const QProcessEnvironment& environment,
                  const QString& directory)
{
    return runProgram(tadataProgram(), words, environment, directory);
}

Outcome runTadataLimited(const QStringList& words)
{
    const QStringList limited{QStringLiteral("-c"), QStringLiteral("ulimit -f 1 && exec \"$@\""),
                              QStringLiteral("bash"), tadataProgram()};
    // What a program that counts its lines writes at its end is cut as well: it goes elsewhere.
    const QTemporaryDir counts;
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("GCOV_PREFIX"), counts.path());
    return runProgram(QStringLiteral("bash"), limited + words, environment);
}

QStringList words(const char* text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

QStringList readDirectories(const QDir& root)
{
    QStringList found;
    QDirIterator walk(root.path(), QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext())
        found.append(root.relativeFilePath(walk.next()));
    found.sort();
    return found;
}

} // namespace testsupport
