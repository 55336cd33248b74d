// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>

namespace vexdesk {

/// Leaves the letters that are typed into a box or a list to it, which looks for the entry that
/// begins so: a command whose shortcut is a capital letter would be run instead. In the terminal's
/// own window such commands come first; fields of text keep their letters by themselves.
///
/// An event filter of the application object. User-interface thread only.
class LetterKeys final : public QObject
{
    Q_OBJECT

public:
    explicit LetterKeys(QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace vexdesk
