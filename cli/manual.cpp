// SPDX-License-Identifier: MIT
// Writes a manual page for the build: a text with the options of the commands' table put in.
// tadata_manual TEXT PAGE [TRANSLATION]

#include "help.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QTranslator>

#include <cstdio>

namespace {

using namespace tadata::cli;

// Text of a page's source that has no meaning for the typesetter.
QString plain(QString text)
{
    return text.replace(u'\\', QStringLiteral("\\e")).replace(u'-', QStringLiteral("\\-"));
}

QString bold(const QString& text)
{
    return QStringLiteral("\\fB%1\\fR").arg(plain(text));
}

QString optionEntry(const Option& option)
{
    const QString value =
        option.isSwitch() ? QString() : QStringLiteral(" \\fI%1\\fR").arg(plain(option.value));
    return QStringLiteral(".TP\n") + bold(QStringLiteral("--") + option.name) + value + u'\n' +
           plain(optionText(option)) + u'\n';
}

QString synopsis(const QList<Command>& commands)
{
    QString text;
    for (const Command& command : commands)
        text += bold(QStringLiteral("tadata ") + command.name) + u' ' +
                plain(usageParts(command).join(u' ')) + QStringLiteral("\n.br\n");
    return text + bold(QStringLiteral("tadata --help")) + QStringLiteral(" | ") +
           bold(QStringLiteral("--version")) + u'\n';
}

QString optionSections(const QList<Command>& commands)
{
    QString text;
    for (const Command& command : commands) {
        text += QStringLiteral(".SS tadata %1\n").arg(command.name);
        for (const Option& option : command.options)
            text += optionEntry(option);
    }
    text += QStringLiteral(".SS tadata\n");
    for (const Option& option : programOptions())
        text += optionEntry(option);
    return text;
}

QString examples(const QList<Command>& commands)
{
    QString text = QStringLiteral(".nf\n");
    for (const Command& command : commands) {
        if (!command.example.isEmpty())
            text += plain(command.example) + u'\n';
    }
    return text + QStringLiteral(".fi\n");
}

bool writePage(const QString& source, const QString& page)
{
    QFile in(source);
    QFile out(page);
    if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly))
        return false;
    const QList<Command> known = commands();
    QString text = QString::fromUtf8(in.readAll());
    text.replace(QStringLiteral("@VERSION@"), QStringLiteral(TADATA_VERSION))
        .replace(QStringLiteral("@SYNOPSIS@\n"), synopsis(known))
        .replace(QStringLiteral("@OPTIONS@\n"), optionSections(known))
        .replace(QStringLiteral("@EXAMPLES@\n"), examples(known));
    const QByteArray bytes = text.toUtf8();
    return out.write(bytes) == bytes.size() && out.flush();
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    QTranslator translation;
    if (words.size() > 3) {
        if (!translation.load(words[3]))
            return 1;
        QCoreApplication::installTranslator(&translation);
    }
    if (words.size() > 2 && writePage(words[1], words[2]))
        return 0;
    std::fprintf(stderr, "usage: tadata_manual TEXT PAGE [TRANSLATION]; or one cannot be used\n");
    return 1;
}
