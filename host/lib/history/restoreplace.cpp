// SPDX-License-Identifier: MIT
#include <vexdesk/history/restoreplace.h>

#include "systemfile.h"

#include <vexdesk/history/filestate.h>
#include <vexdesk/history/links.h>
#include <vexdesk/icore.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cerrno>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::RestorePlace)
};

// No value where the system does not say; errno then says why.
std::optional<QString> canonicalRoot(const QDir& root)
{
    // By the system, for which ".." after a link is another directory than it looks.
    if (!isMissing(root.path()))
        return withoutLinks(root.path());
    QString existing = QDir::cleanPath(root.absolutePath());
    QString rest;
    while (isMissing(existing)) {
        const QFileInfo missing(existing);
        rest = u'/' + missing.fileName() + rest;
        existing = missing.path();
    }
    const std::optional<QString> canonical = withoutLinks(existing);
    if (!canonical)
        return std::nullopt;
    return *canonical == u"/" ? rest : *canonical + rest;
}

QString besideStore(const QString& root)
{
    return root + QStringLiteral("-restore");
}

QString inDataDirectory(const QString& root)
{
    const QByteArray sum =
        QCryptographicHash::hash(QFile::encodeName(root), QCryptographicHash::Sha256);
    return ICore::getDir(QString(), false)
        .filePath(QStringLiteral("restore/") + QString::fromLatin1(sum.toHex()));
}

} // namespace

bool RestorePlace::isBesideStore() const
{
    return path == besideStore(root);
}

Result<RestorePlace> restorePlace(const QDir& root)
{
    const std::optional<QString> found = canonicalRoot(root);
    if (!found)
        return Failure{Text::tr("Невозможно прочитать каталог %1").arg(root.path()),
                       qt_error_string(errno)};
    const QString& canonical = *found;
    const QString beside = besideStore(canonical);
    // Points and locks are behind it, and others would not be found once it leads there again.
    if (isLostLink(beside))
        return lostLink(beside);
    // What cannot be looked at is not taken for missing: locks in two places would lock nothing.
    if (isMissing(beside) || kindOf(beside) == PathKind::File) {
        // Once points are kept there, they and the locks stay together.
        const QString inData = inDataDirectory(canonical);
        if (QFileInfo(inData).isDir())
            return RestorePlace{canonical, inData};
    }
    return RestorePlace{canonical, beside};
}

Result<RestorePlace> makeRestorePlace(const QDir& root)
{
    Result<RestorePlace> place = restorePlace(root);
    if (!place || makeDirectory(place->path))
        return place;
    QStringList reasons{qt_error_string(errno)};
    const QString inData = inDataDirectory(place->root);
    const bool mayBeThere = kindOf(place->path) == PathKind::Unknown;
    if (!mayBeThere && makeDirectory(inData))
        return RestorePlace{place->root, inData};
    reasons.append(qt_error_string(errno));
    reasons.removeDuplicates();
    return Failure{
        Text::tr("Невозможно создать ни каталог %1, ни каталог %2 для блокировок и точек "
                 "возврата")
            .arg(place->path, inData),
        reasons.join(QStringLiteral("; "))};
}

} // namespace vexdesk
