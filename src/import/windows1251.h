// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArrayView>
#include <QtCore/QString>

namespace tadata {

/// The text of bytes in the encoding windows-1251, which Qt knows only where it was built with a
/// library for it. A byte that stands for no character becomes a replacement character. Any thread.
QString textFromWindows1251(QByteArrayView bytes);

} // namespace tadata
