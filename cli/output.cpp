// SPDX-License-Identifier: MIT
#include "output.h"

#include <QtCore/QList>
#include <QtCore/QTextStream>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include <sys/ioctl.h>
#include <unistd.h>

namespace tadata::cli {

namespace {

// Characters that end a line, move the cursor or turn the direction of the text, and halves of
// characters.
bool isUnprintable(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

// Halves of characters that have lost the other one are characters of their own.
QList<char32_t> charactersOf(const QString& text)
{
    QList<char32_t> characters;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPair =
            text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        characters.append(isPair ? QChar::surrogateToUcs4(text[i], text[i + 1])
                                 : char32_t(text[i].unicode()));
        i += isPair ? 1 : 0;
    }
    return characters;
}

QString escapedCharacter(char32_t character)
{
    // A byte of a name that is no UTF-8.
    const bool isByte = character >= 0xdc80 && character <= 0xdcff;
    const auto number = static_cast<uint>(isByte ? character & 0xff : character);
    return number < 0x100 && (isByte || number < 0x80)
               ? QStringLiteral("\\x%1").arg(number, 2, 16, QLatin1Char('0'))
               : QStringLiteral("\\u%1").arg(number, 4, 16, QLatin1Char('0'));
}

} // namespace

void printError(const QString& text)
{
    QTextStream(stderr) << text << '\n';
}

ExitCode fail(const QString& reason)
{
    printError(reason);
    return ExitCode::Failure;
}

ExitCode fail(const vexdesk::Failure& why)
{
    return fail(vexdesk::Outcome(why).wholeMessage());
}

ExitCode printOutput(const QString& text)
{
    return printUtf8(text.toUtf8());
}

ExitCode printUtf8(QByteArrayView text)
{
    const auto size = static_cast<size_t>(text.size());
    // A view of nothing may have no place.
    const bool isWritten = size == 0 || std::fwrite(text.data(), 1, size, stdout) == size;
    if (isWritten && std::fflush(stdout) == 0)
        return ExitCode::Success;
    // Whoever has read enough is not told.
    if (errno == EPIPE)
        return ExitCode::Failure;
    return fail(Text::tr("Невозможно записать в стандартный вывод"));
}

int screenWidth()
{
    constexpr int usualWidth = 100;
    struct winsize size = {};
    const bool isScreen = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isScreen ? size.ws_col : usualWidth;
}

QString escaped(const QString& code)
{
    const QList<char32_t> characters = charactersOf(code);
    QString text;
    for (qsizetype i = 0; i < characters.size(); ++i) {
        const char32_t character = characters[i];
        if (isUnprintable(character)) {
            text += escapedCharacter(character);
            continue;
        }
        // One that would pass for the beginning of an escape.
        const char32_t next = characters.value(i + 1);
        if (character == U'\\' && (next == U'x' || next == U'u'))
            text += u'\\';
        text += QString::fromUcs4(&character, 1);
    }
    return text;
}

bool hasUnprintable(const QString& code)
{
    const QList<char32_t> characters = charactersOf(code);
    return code.contains(QChar(QChar::ReplacementCharacter)) ||
           std::any_of(characters.begin(), characters.end(), isUnprintable);
}

} // namespace tadata::cli
