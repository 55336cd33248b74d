// SPDX-License-Identifier: MIT
#include "desk/datadirectory.h"

#include <vexdesk/icore.h>

#include <QtCore/QTemporaryFile>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::DataDirectory)
};

constexpr qsizetype leastRoom = qsizetype(64) * 1024; // bytes; less is as good as nothing

} // namespace

DataDirectory::DataDirectory()
    : m_path(ICore::getDir(QString(), false).absolutePath())
    , m_lock(m_path + QStringLiteral("/vexdesk.lock"))
{
    // The first terminal of a user finds none.
    QDir().mkpath(m_path);
    // However long a terminal runs; whether it still does is told by its process.
    m_lock.setStaleLockTime(0);
    if (m_lock.tryLock(0))
        return;
    qint64 process = 0;
    QString host;
    QString program;
    // A file that names no process was left by a terminal that ended while it wrote it.
    if (!m_lock.getLockInfo(&process, &host, &program) && m_lock.removeStaleLockFile() &&
        m_lock.tryLock(0))
        return;
    m_taken = m_lock.error() == QLockFile::LockFailedError;
}

DataDirectory::~DataDirectory() = default;

void DataDirectory::giveBack()
{
    m_lock.unlock();
}

bool DataDirectory::mayBeUsed() const
{
    if (!m_taken)
        return true;
    qint64 process = 0;
    QString host;
    QString program;
    m_lock.getLockInfo(&process, &host, &program);
    QMessageBox box(QMessageBox::Warning, Text::tr("Терминал уже запущен"),
                    Text::tr("С этим каталогом данных уже работает терминал (процесс %1):\n%2\n\n"
                             "Если менять историю или настройки в обоих, изменения одного из них "
                             "пропадут.")
                        .arg(QString::number(process), QDir::toNativeSeparators(m_path)));
    box.setTextFormat(Qt::PlainText);
    QPushButton* const end = box.addButton(Text::tr("&Завершить"), QMessageBox::RejectRole);
    QPushButton* const goOn = box.addButton(Text::tr("&Продолжить"), QMessageBox::AcceptRole);
    box.setDefaultButton(end);
    box.setEscapeButton(end);
    box.exec();
    return box.clickedButton() == goOn;
}

Outcome DataDirectory::canKeep() const
{
    const QString path = QDir::toNativeSeparators(m_path);
    QTemporaryFile attempt(m_path + QStringLiteral("/vexdesk.XXXXXX"));
    if (!attempt.open())
        return Failure{Text::tr("В каталог данных %1 нельзя писать: импорт, правка истории и "
                                "настройки не сохранятся.")
                           .arg(path)};
    if (attempt.write(QByteArray(leastRoom, '\0')) != leastRoom || !attempt.flush())
        return Failure{Text::tr("На диске каталога данных %1 нет места: импорт, правка истории и "
                                "настройки не сохранятся.")
                           .arg(path)};
    return Outcome();
}

} // namespace vexdesk
