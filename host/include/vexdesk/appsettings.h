// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/settings.h>

/// The terminal's own settings, opened at one group: "TADataManager", or with a path such as
/// "TADataManager/ImportWizard". They are kept in the file "vexdesk.ini" in the directory that
/// ICore::getDir gives for an empty path.
class VEXDESK_CORE_EXPORT AppSettings final : public Settings
{
public:
    explicit AppSettings(const QString& group);
};
