// SPDX-License-Identifier: MIT
#include "json.h"

#include <QtCore/QList>

#include <algorithm>

namespace tadata {

namespace {

void appendEscaped(QByteArray& text, char character)
{
    constexpr QByteArrayView named("\b\f\n\r\t");
    constexpr QByteArrayView letters("bfnrt");
    text += '\\';
    if (character == '"' || character == '\\')
        text += character;
    else if (const qsizetype at = named.indexOf(character); at >= 0)
        text += letters[at];
    else
        text += 'u' + QByteArray::number(character, 16).rightJustified(4, '0');
}

QByteArray quoted(QByteArrayView utf8)
{
    constexpr char firstPlain = 0x20;
    QByteArray text("\"");
    for (const char character : utf8) {
        // The bytes of longer characters are negative where char is signed.
        const bool isControl = static_cast<uchar>(character) < firstPlain;
        if (isControl || character == '"' || character == '\\')
            appendEscaped(text, character);
        else
            text += character;
    }
    return text += '"';
}

// toUtf8() would put a question mark in the place of half a character.
QByteArray wholeCharacters(const QString& text)
{
    QByteArray utf8;
    for (const uint character : text.toUcs4()) {
        const auto whole =
            char32_t(QChar::isSurrogate(character) ? uint(QChar::ReplacementCharacter) : character);
        utf8 += QString::fromUcs4(&whole, 1).toUtf8();
    }
    return utf8;
}

} // namespace

Json::Json()
    : m_text("null")
{}

Json::Json(std::nullopt_t)
    : Json()
{}

Json::Json(bool yes)
    : m_text(yes ? "true" : "false")
{}

Json::Json(const QString& text)
    : m_text(quoted(text.isValidUtf16() ? text.toUtf8() : wholeCharacters(text)))
{}

Json::Json(const char* utf8)
    : m_text(quoted(utf8))
{}

Json::Json(const QDate& day)
    : Json(day.isValid() ? Json(day.toString(QStringLiteral("yyyy-MM-dd"))) : Json())
{}

Json::Json(const QTime& time)
    : Json(time.isValid() ? Json(time.toString(QStringLiteral("hh:mm:ss"))) : Json())
{}

Json Json::moment(const QDate& day, const QTime& time)
{
    if (!day.isValid() || !time.isValid())
        return {};
    return day.toString(QStringLiteral("yyyy-MM-dd")) +
           time.toString(QStringLiteral("'T'hh:mm:ss"));
}

Json Json::object(std::initializer_list<Member> members)
{
    return ofMembers(members);
}

Json Json::ofMembers(QList<Member> members)
{
    // The order of code points is that of UTF-8 and not that of QString.
    const auto byCodePoint = [](const Member& left, const Member& right) {
        return left.first.toUtf8() < right.first.toUtf8();
    };
    std::sort(members.begin(), members.end(), byCodePoint);
    Json object;
    object.m_text = "{";
    for (const Member& member : members) {
        if (object.m_text.size() > 1)
            object.m_text += ',';
        object.m_text += Json(member.first).m_text + ':' + member.second.m_text;
    }
    object.m_text += '}';
    return object;
}

Json Json::startOfList()
{
    Json list;
    list.m_text = "[";
    return list;
}

void Json::append(const Json& value)
{
    if (m_text.size() > 1)
        m_text += ',';
    m_text += value.m_text;
}

void Json::endList()
{
    m_text += ']';
}

QString ratioText(Wide part, Wide whole)
{
    constexpr int unit = 10000;
    constexpr int digits = 4;
    const Wide rounded = (part * unit * 2 + whole) / (whole * 2);
    return QStringLiteral("%1.%2")
        .arg(static_cast<qint64>(rounded / unit))
        .arg(static_cast<int>(rounded % unit), digits, 10, QLatin1Char('0'));
}

} // namespace tadata
