// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArrayList>
#include <QtCore/QMetaType>
#include <QtCore/QString>

#include <cerrno>
#include <functional>
#include <memory>

namespace testsupport {

/// The calls of the system that can be made to fail. ReadEnd is a read that has found the end of
/// the file, LockRefused a lock that somebody else holds, before the caller hears of it.
enum class SystemCall { Open, Read, Write, Close, Rename, ReadEnd, Lock, LockRefused };

/// Makes a call of the system fail on some files, in the whole process, as long as the object
/// lives: a disk that is full or broken, a network file system that says only at the end what it
/// could not keep. A test program that makes one calls the system through it from then on.
///
/// A closed file is closed all the same. The name that counts for Rename is the new one.
class Fault final
{
public:
    /// On the files whose path ends so; the first `passed` calls work as ever.
    Fault(SystemCall call, const QString& pathEnd, int error = EIO, int passed = 0);
    ~Fault();
    Q_DISABLE_COPY_MOVE(Fault)

    /// How many calls have failed.
    int failed() const;

    struct Rule;

private:
    std::shared_ptr<Rule> m_rule;
};

/// Keeps what is handed to the system by each call of write, for the files whose path ends so.
class WrittenPieces final
{
public:
    explicit WrittenPieces(const QString& pathEnd);
    ~WrittenPieces();
    Q_DISABLE_COPY_MOVE(WrittenPieces)

    QByteArrayList pieces() const;

    struct Record;

private:
    std::shared_ptr<Record> m_record;
};

/// Does something once, before a call of the system on the files whose path ends so: what somebody
/// else does while the program is at work.
class Meanwhile final
{
public:
    Meanwhile(SystemCall call, const QString& pathEnd, const std::function<void()>& act);
    ~Meanwhile();
    Q_DISABLE_COPY_MOVE(Meanwhile)

    struct Deed;

private:
    std::shared_ptr<Deed> m_deed;
};

} // namespace testsupport

Q_DECLARE_METATYPE(testsupport::SystemCall)
