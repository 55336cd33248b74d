// SPDX-License-Identifier: MIT
#include "seriesguess.h"

#include "seriespattern.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

namespace tadata {

namespace {

// The name as a whole, too: a code may have a dash.
QStringList wordsOf(const QString& file)
{
    static const QRegularExpression between(QStringLiteral("[_\\-. ]+"));
    const QString name = QFileInfo(file).completeBaseName();
    return QStringList{name} + name.split(between, Qt::SkipEmptyParts);
}

void addKnown(const QString& series, QSet<QString>& known)
{
    for (const QString& name : {series, series.toUpper()}) {
        const auto codes = seriesFrom(name);
        if (codes && isKnown(*codes))
            known.insert(name);
    }
}

} // namespace

QString seriesOfFileName(const QString& file, const QString& board)
{
    const QStringList words = wordsOf(file);
    QSet<QString> known;
    for (qsizetype word = 2; word < words.size(); ++word)
        addKnown(words.mid(word - 2, 3).join(u'/'), known);
    for (const QString& word : known.isEmpty() ? words : QStringList())
        addKnown(board + u'/' + word, known);
    return known.size() == 1 ? *known.cbegin() : QString();
}

} // namespace tadata
