// SPDX-License-Identifier: MIT
#pragma once

#include "tadatarunner.h"

#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QTemporaryDir>

#include <memory>

namespace testsupport {

/// The content of each file below a directory, by its path.
using Tree = QMap<QString, QByteArray>;

/// A test of commands: each of its functions has a directory of its own, with a store in it that is
/// made when it is written to.
class CommandTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    QString path(const QString& name) const { return m_dir->filePath(name); }
    QString path(const char* name) const { return path(QString::fromUtf8(name)); }
    QDir directory() const { return QDir(m_dir->path()); }
    Tree stored() const;

    /// An import of this file into the store, of the series NORD/MAIN/ALFA, which has two decimals,
    /// and without a header. An option among the words takes the place of the usual one; the word
    /// "header" stands for a file that has one.
    QStringList importLine(const QString& file, const QStringList& more = {}) const;
    /// An export of the same series from the store, of the day 2024-01-15.
    QStringList exportLine(const QString& file, const QStringList& more = {}) const;
    /// Imports a file of this content.
    Outcome import(const QByteArray& content, const QStringList& more = {},
                   const QProcessEnvironment& environment = plainEnvironment()) const;

    std::unique_ptr<QTemporaryDir> m_dir;
};

} // namespace testsupport
