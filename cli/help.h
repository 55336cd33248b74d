// SPDX-License-Identifier: MIT
#pragma once

#include "commands.h"

namespace tadata::cli {

/// "--store DIR", as it is written in a command line.
QString optionUsage(const Option& option);

/// Which values are right, as a part of a sentence.
QString rightValues(const Option& option);

/// All that the table says of the option, in whole sentences.
QString optionText(const Option& option);

/// What a command line of the command consists of: words, required options, and that there are
/// others.
QStringList usageParts(const Command& command);

/// The text that "tadata COMMAND --help" prints.
QString commandHelp(const Command& command);

/// The text that "tadata --help" prints.
QString generalHelp(const QList<Command>& commands);

} // namespace tadata::cli
