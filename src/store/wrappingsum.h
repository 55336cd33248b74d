// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QtGlobal>

namespace tadata {

/// Volumes are 64 bits wide and may be anything: their sum wraps around instead of being undefined.
constexpr qint64 wrappingSum(qint64 left, qint64 right)
{
    return static_cast<qint64>(static_cast<quint64>(left) + static_cast<quint64>(right));
}

} // namespace tadata
