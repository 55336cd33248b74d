// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

namespace vexdesk {

/// What became of one library file in a plug-in directory. A plain value.
struct PluginRecord
{
    enum class State {
        Loaded,  ///< initialised and in use
        Refused, ///< left out; `reason` says why
    };

    QString path; ///< absolute
    State state = State::Refused;
    /// The plug-in's own texts. Empty when the library was refused before they were read.
    QString code;
    QString name;
    QString author;
    QString version;
    QString description;
    QString reason; ///< sentences for the user; empty for a loaded plug-in
    /// What Qt says of it, which may be in another language; mostly empty.
    QString details = QString();
};

} // namespace vexdesk
