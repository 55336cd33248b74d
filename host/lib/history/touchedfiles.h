// SPDX-License-Identifier: MIT
#pragma once

#include "systemfile.h"

#include <vexdesk/history/filestate.h>

#include <QtCore/QString>

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace vexdesk {

/// The files of a store that a job has touched, in the order of the code points of their paths. A
/// file takes a few bytes, so that an import of many years needs no more memory than one of a day.
/// One thread at a time.
class TouchedFiles final
{
public:
    /// What a file was that the job found.
    struct Kept
    {
        FileState state;
        ContentSum sum; ///< of the copy
    };

    struct File
    {
        QString relative; ///< below the store's root, see restore::isStorePath()
        QString path;     ///< as the job names it
        const Kept* kept; ///< null: it did not exist
    };

    bool isEmpty() const { return m_directories.empty(); }
    bool contains(const QString& relative) const;
    void insert(const QString& path, const QString& relative, const std::optional<Kept>& kept);

    void forEach(const std::function<void(const File&)>& visit) const;
    void removeIf(const std::function<bool(const File&)>& isGone);

private:
    struct Name
    {
        qint32 day = 0;       ///< a Julian day
        qint32 timeframe = 0; ///< 0 for a derived minute file
        qint32 kept = -1;     ///< its place in m_kept

        QString text() const;
        bool operator<(const Name& other) const;
    };

    struct Directory
    {
        QString path; ///< as the job names it
        std::deque<Name> names;
    };

    struct ByCodePoint
    {
        bool operator()(const QString& left, const QString& right) const;
    };

    static Name nameOf(const QString& relative);
    File fileOf(const QString& directory, const Directory& files, const Name& name) const;

    std::map<QString, Directory, ByCodePoint> m_directories; ///< by paths that end in "/"
    std::vector<Kept> m_kept;
};

} // namespace vexdesk
