// SPDX-License-Identifier: MIT
#pragma once

#include "importcheck.h"

#include <QtCore/QString>

namespace tadata {

/// What is wrong or odd in a file, in the user's language: without a full stop, so that a number
/// may follow. Any thread.
QString titleOf(ProblemKind kind);

} // namespace tadata
