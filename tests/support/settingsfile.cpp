// SPDX-License-Identifier: MIT
#include "support/settingsfile.h"

#include "support/filetree.h"

namespace testsupport {

// No two files are equally long: one that was written within the same tick of the clock would be
// taken for the one before it.
void writeSettings(const QByteArray& lines)
{
    static int number = 0;
    writeFile(userFolder().filePath(QStringLiteral("vexdesk.ini")),
              QByteArray(100 * ++number - lines.size(), ';') + "\n[TADataManager]\n" + lines +
                  '\n');
}

} // namespace testsupport
