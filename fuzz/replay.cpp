// SPDX-License-Identifier: MIT
// Stands in for the fuzzer where there is none: gives every file of the corpus directories on the
// command line to the target, once.

#include "target.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>

#include <cstdio>

namespace {

// The number of files that were given to the target, or -1 when one cannot be read.
int replay(const QString& directory)
{
    int count = 0;
    QDirIterator walk(directory, QDir::Files);
    while (walk.hasNext()) {
        QFile file(walk.next());
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "Cannot read %s\n", qPrintable(file.fileName()));
            return -1;
        }
        const QByteArray content = file.readAll();
        std::fprintf(stderr, "%s\n", qPrintable(file.fileName()));
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.constData()),
                               static_cast<std::size_t>(content.size()));
        ++count;
    }
    return count;
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc < 2) {
        std::fprintf(stderr, "Usage: %s DIRECTORY...\n", argv[0]);
        return 2;
    }
    for (int i = 1; i < argc; ++i) {
        const int count = replay(QFile::decodeName(argv[i]));
        if (count <= 0) {
            std::fprintf(stderr, "No corpus in %s\n", argv[i]);
            return 1;
        }
        std::fprintf(stderr, "%d inputs of %s\n", count, argv[i]);
    }
    return 0;
}
