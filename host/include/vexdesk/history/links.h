// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>
#include <vexdesk/outcome.h>

#include <QtCore/QString>

#include <optional>

/// Where the symbolic links of a store lead. Days and directories may be links, to another disk
/// for example. Any thread.
namespace vexdesk {

/// What a path leads to through links, whether it is there or not: links among the directories
/// above stay. No value where the system cannot tell, and for links in a circle; errno then says
/// why.
VEXDESK_HISTORY_EXPORT std::optional<QString> behindLinks(const QString& path);

/// The path without any link of a file or directory that is there. No value where the system
/// cannot tell; errno then says why.
VEXDESK_HISTORY_EXPORT std::optional<QString> withoutLinks(const QString& path);

/// Whether a path is a link that leads to nothing, or in a circle. That is not nothing: what was
/// stored behind it may be on a disk that is not there now.
VEXDESK_HISTORY_EXPORT bool isLostLink(const QString& path);

/// That it is one, with what can be done.
VEXDESK_HISTORY_EXPORT Failure lostLink(const QString& path);

/// Whether a file that is missing could be made: not where its path is a link into a directory that
/// is missing too, which would hide what a disk has of it that is not there now. The failure says
/// so.
VEXDESK_HISTORY_EXPORT Outcome mayBeMade(const QString& path);

} // namespace vexdesk
