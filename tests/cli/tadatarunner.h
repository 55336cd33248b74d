// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// Runs the program tadata as a shell does and says what came of it.
namespace testsupport {

/// How a run ended. A program that crashed or did not end has the exit code -1.
struct Outcome
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;

    bool operator==(const Outcome& other) const = default;
};

/// For QCOMPARE, which finds it by this name.
char* toString(const Outcome& outcome);

/// Exit code 0 and this output. Success is silent on standard error.
Outcome succeeded(const QByteArray& out = QByteArray());
/// Exit code 1 and one message on standard error, with what the system says of this error.
Outcome failed(const QString& message, int error = 0);
/// A run without the lines that quote a wrong line of its input, below the message about it.
Outcome messageOf(const Outcome& outcome);
/// Exit code 2: the command line is wrong, with a hint.
Outcome refused(const QString& reason);

/// The environment that the runs get unless they are given another one: the test's own, without a
/// display, and with Qt's messages on standard error.
QProcessEnvironment plainEnvironment();

/// The same, with a call of the system (open, read, write, close, rename) that fails on the files
/// whose path ends so, after so many that work.
QProcessEnvironment faultyEnvironment(const QString& call, const QString& pathEnd, int error,
                                      int passed = 0);

/// The file name of the program under test.
QString tadataProgram();

/// In this directory, or the test's own.
Outcome runProgram(const QString& program, const QStringList& words,
                   const QProcessEnvironment& environment = plainEnvironment(),
                   const QString& directory = QString());
Outcome runTadata(const QStringList& words,
                  const QProcessEnvironment& environment = plainEnvironment(),
                  const QString& directory = QString());

/// The same, by a shell that lets no file become larger than a kilobyte.
Outcome runTadataLimited(const QStringList& words);

/// The words of a command line, separated by blanks. For those that hold no blank themselves.
QStringList words(const char* text);

/// Every directory below another one, as paths relative to it, sorted.
QStringList readDirectories(const QDir& root);

} // namespace testsupport
