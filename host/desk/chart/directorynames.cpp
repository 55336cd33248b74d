// SPDX-License-Identifier: MIT
#include "desk/chart/directorynames.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::DirectoryNames)
};

bool isAbsence(int error)
{
    return error == ENOENT || error == ENOTDIR || error == ELOOP;
}

// Names may be read where the files behind them may not be reached.
int errorOfReaching(const QByteArray& path)
{
    return ::faccessat(AT_FDCWD, path.constData(), X_OK, AT_EACCESS) == 0 ? 0 : errno;
}

// The directory on the way to this one through which nobody gets, or this one.
QString barredOn(const QString& directory)
{
    QString barred = directory;
    for (QString above = QFileInfo(directory).path(); above != QFileInfo(above).path();
         above = QFileInfo(above).path()) {
        if (errorOfReaching(QFile::encodeName(above)) != 0)
            barred = above;
    }
    return barred;
}

Failure cannotRead(const QString& directory, int error)
{
    const QString named = error == EACCES ? barredOn(directory) : directory;
    return {Text::tr("Не удалось прочитать каталог \"%1\": %2")
                .arg(QDir::toNativeSeparators(named), qt_error_string(error))};
}

} // namespace

Result<QStringList> namesInDirectory(const QString& directory)
{
    const QByteArray path = QFile::encodeName(directory);
    QStringList names;
    std::error_code error;
    std::filesystem::directory_iterator entry(path.toStdString(), error);
    const std::filesystem::directory_iterator end;
    for (; !error && entry != end; entry.increment(error))
        names.append(QFile::decodeName(entry->path().filename().c_str()));
    if (isAbsence(error.value()))
        return QStringList();
    const int failed = error ? error.value() : errorOfReaching(path);
    if (failed != 0 && !isAbsence(failed))
        return cannotRead(directory, failed);
    return names;
}

Failure unreadableDirectory(const QString& directory)
{
    const Result<QStringList> names = namesInDirectory(directory);
    return names ? cannotRead(directory, EIO) : names.failure();
}

} // namespace vexdesk
