// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>
#include <vexdesk/outcome.h>

#include <QtCore/QStringList>

namespace vexdesk {

/// Is told by a job of every file that it is about to make, change or remove. A job that is given
/// none works all the same.
class VEXDESK_HISTORY_EXPORT FileKeeper
{
public:
    virtual ~FileKeeper();
    Q_DISABLE_COPY_MOVE(FileKeeper)

    /// These files of the store are about to be touched. After a failure none of them may be: the
    /// job ends with it. Told of a file again, it does nothing. From the thread of the job.
    virtual Outcome keep(const QStringList& paths) = 0;

protected:
    FileKeeper();
};

} // namespace vexdesk
