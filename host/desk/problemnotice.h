// SPDX-License-Identifier: MIT
#pragma once

#include "desk/statuslink.h"

namespace vexdesk {

class Core;

/// What was reported by ICore::reportProblem and not yet read: in the status bar how many there are
/// and the newest of them, after a click the whole list. Hidden while there is nothing to read.
/// Nothing opens by itself.
class ProblemNotice final : public StatusLink
{
    Q_OBJECT

public:
    /// `core` must live as long as the notice; what was reported to it before is shown as well.
    explicit ProblemNotice(Core& core, QWidget* parent = nullptr);
    ~ProblemNotice() override;

private:
    void refresh();
    void showList();

    Core& m_core;
};

} // namespace vexdesk
