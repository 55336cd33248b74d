// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>

class QComboBox;

namespace tadata {

/// Offers these timeframes, in seconds, which are also the data of the entries. Those from a second
/// to a day that are in use have a text. User-interface thread.
void offerTimeframes(QComboBox& box, const QList<int>& timeframes);

} // namespace tadata
