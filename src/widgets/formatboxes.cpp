// SPDX-License-Identifier: MIT
#include "formatboxes.h"

#include <QtWidgets/QComboBox>

namespace tadata {

namespace {

void offer(QComboBox& box, const QList<TextFormat>& formats)
{
    for (const TextFormat& format : formats)
        box.addItem(format.title, format.pattern);
}

} // namespace

void FormatBoxes::fill(FormatPage page) const
{
    offer(separator, separators(page));
    offer(date, dateFormats(page));
    offer(time, timeFormats(page));
}

} // namespace tadata
