// SPDX-License-Identifier: MIT
#include "importfailures.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tadata {

using vexdesk::Failure;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ImporterTAData)
};

} // namespace

QString whyNotOpened(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat found = {};
    if (::stat(name.constData(), &found) != 0)
        return qt_error_string(errno);
    if (S_ISDIR(found.st_mode))
        return qt_error_string(EISDIR);
    // To open a pipe is to wait for somebody who writes into it.
    if (!S_ISREG(found.st_mode))
        return Text::tr("это не обычный файл");
    return ::access(name.constData(), R_OK) == 0 ? QString() : qt_error_string(errno);
}

Failure cannotOpen(const QString& path, const QString& reason)
{
    return {Text::tr("Невозможно открыть файл %1").arg(path),
            reason.isNull() ? whyNotOpened(path) : reason};
}

// Bars that did not reach the disk, because it is full, must not count as imported.
Failure cannotWrite(const QString& path, const QString& reason)
{
    return {Text::tr("Невозможно записать файл %1").arg(path), reason};
}

Failure cannotRead(const QString& path, const QString& reason)
{
    return {Text::tr("Невозможно прочитать файл %1: %2").arg(path, reason)};
}

Failure hasChanged(const QString& path)
{
    return cannotRead(path, Text::tr("он изменился, пока его читали"));
}

Failure cannotReadDir(const QString& path)
{
    return {Text::tr("Невозможно прочитать каталог %1").arg(path)};
}

Failure cannotMakeDir(const QString& path, const QString& reason)
{
    return {Text::tr("Невозможно создать каталог %1: %2").arg(path, reason)};
}

Failure wouldWipe(const QString& path)
{
    return {Text::tr("Файл %1 лежит в хранилище как файл дня этой же серии: импорт стёр бы его. "
                     "Скопируйте его в другое место и импортируйте копию")
                .arg(path)};
}

Failure wrongLine(qint64 number, const QString& what)
{
    return {Text::tr("Ошибка при импорте %1-й строки:\n%2.").arg(QString::number(number), what)};
}

Failure tickerComesAgain(qint64 number, const QString& ticker)
{
    return wrongLine(number, Text::tr("файл возвращается к коду '%1', такой файл импортируют с "
                                      "--mode merge")
                                 .arg(ticker));
}

Failure wrongStoredLine(const QString& path, qint64 number)
{
    return {Text::tr("Файл %1, строка %2: не запись бара").arg(path, QString::number(number))};
}

Failure interrupted()
{
    return {Text::tr("Импорт прерван")};
}

} // namespace tadata
