// SPDX-License-Identifier: MIT
#pragma once

#include "output.h"

#include <QtCore/QList>
#include <QtCore/QStringList>

#include <limits>

/// The commands of tadata and their options as a table, from which the parser, the help and the
/// manual pages come: an option that is added there is known, explained and checked everywhere.
/// The texts are in the user's language, so the table is made after translations are installed.
namespace tadata::cli {

class CommandLine;

/// The most words of a command that takes as many as there are.
constexpr int anyNumberOfWords = std::numeric_limits<int>::max();

struct Option
{
    QString name;             ///< without its dashes
    QString value = {};       ///< what stands for the value in the help; empty for a switch
    QString meaning;          ///< whole sentences
    QString takes = {};       ///< which values are right, as a part of a sentence
    QStringList choices = {}; ///< the only right values; `takes` is then the list of them
    QString fallback = {};    ///< the value of an option that is not given; null for none
    bool isRequired = false;
    QString partner = {}; ///< the option that must be given wherever this one is

    bool isSwitch() const { return value.isEmpty(); }
};

struct Command
{
    QString name;
    QString words = {}; ///< what stands for the words beside the options in the help
    int fewestWords = 0;
    int mostWords = 0;
    QString summary;     ///< in the list of the commands
    QString description; ///< whole sentences
    QList<Option> options;
    QString example = {}; ///< command lines
    ExitCode (*run)(const CommandLine& line);
};

/// How a text file says its bars.
Command guessCommand();
/// A text file becomes day files of a series.
Command importCommand();
/// What an import would do.
Command checkCommand();
/// Stored bars and the deals of a day become a text file.
Command exportCommand();
/// What a store holds.
Command listCommand();
/// What is wrong with what a store holds.
Command healthCommand();

/// Files of a series go, are copied or get another name.
Command deleteCommand();
Command copyCommand();
Command renameCommand();
/// What can be taken back.
Command pointsCommand();
/// Takes it back.
Command undoCommand();
/// Options of imports under a name.
Command profileCommand();
/// Removes a lock that nobody holds any more.
Command unlockCommand();

/// All of them, in the order of the help.
QList<Command> commands();

/// What the program itself takes in the place of a command.
QList<Option> programOptions();

// Options of several commands.
Option seriesOption();
Option separatorOption();
Option storeOption();
Option referenceOption();
// One whose value CommandLine::day takes.
Option dayOption(const char* name, const QString& meaning);

} // namespace tadata::cli
