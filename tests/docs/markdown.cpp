// SPDX-License-Identifier: MIT
#include "markdown.h"

#include "support/filetree.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

namespace testsupport {

namespace {

QRegularExpression pattern(const char* text)
{
    return QRegularExpression(QString::fromUtf8(text));
}

QStringList captures(const QString& text, const QRegularExpression& expression)
{
    QStringList found;
    auto walk = expression.globalMatch(text);
    while (walk.hasNext())
        found.append(walk.next().captured(1));
    return found;
}

// The anchor that the common viewers make of a heading: letters, digits, "-" and "_" stay.
QString anchorOf(const QString& heading, const QStringList& taken)
{
    QString anchor;
    for (const QChar c : heading.toLower()) {
        if (c.isLetterOrNumber() || c == u'-' || c == u'_')
            anchor += c;
        else if (c == u' ')
            anchor += u'-';
    }
    const QString first = anchor;
    for (int n = 1; taken.contains(anchor); ++n)
        anchor = first + u'-' + QString::number(n);
    return anchor;
}

// Takes a page apart line by line.
class Reader final
{
public:
    explicit Reader(Page& page)
        : m_page(page)
    {
        m_page.sections.append(Section());
    }

    void read(const QString& text)
    {
        const QStringList lines = text.split(u'\n');
        for (const QString& line : lines)
            take(line);
        endSection();
    }

private:
    Section& section() { return m_page.sections.last(); }

    void take(const QString& line)
    {
        static const QRegularExpression fence = pattern("^ *```(\\w*)$");
        static const QRegularExpression heading = pattern("^(#+) +(.*)$");
        const auto fenced = fence.match(line);
        if (fenced.hasMatch()) {
            m_isFenced = !m_isFenced;
            m_isIndented = false;
            if (m_isFenced)
                section().codes.append({fenced.captured(1), QString()});
        } else if (m_isFenced) {
            addCode(line);
        } else if (const auto found = heading.match(line); found.hasMatch()) {
            endSection();
            beginSection(static_cast<int>(found.capturedLength(1)), found.captured(2));
        } else if (line.startsWith(QStringLiteral("    "))) {
            if (!m_isIndented)
                section().codes.append(Section::Code());
            m_isIndented = true;
            addCode(line.mid(4));
        } else {
            m_isIndented = false;
            addProse(line);
        }
    }

    void addCode(const QString& line)
    {
        QString& text = section().codes.last().text;
        text += text.isEmpty() ? line : u'\n' + line;
    }

    void addProse(const QString& line)
    {
        static const QRegularExpression item = pattern("^ *(?:[-*]|\\d+\\.) ");
        static const QRegularExpression code = pattern("`[^`]*`");
        section().tableRows += line.startsWith(u'|');
        section().listItems += item.match(line).hasMatch();
        m_prose += QString(line).remove(code).simplified() + u' ';
    }

    void beginSection(int level, const QString& heading)
    {
        Section next;
        next.level = level;
        next.heading = heading;
        next.anchor = anchorOf(heading, m_page.anchors());
        m_page.sections.append(next);
    }

    void endSection()
    {
        static const QRegularExpression picture = pattern("!\\[[^\\]]*\\]\\(([^)\\s]+)\\)");
        static const QRegularExpression image = pattern("<img [^>]*src=\"([^\"]+)\"");
        static const QRegularExpression link = pattern("(?<!!)\\[[^\\]]*\\]\\(([^)\\s]+)\\)");
        static const QRegularExpression reference = pattern("<a [^>]*href=\"([^\"]+)\"");
        static const QRegularExpression bold = pattern("\\*\\*([^*]+)\\*\\*");
        section().pictures = captures(m_prose, picture) + captures(m_prose, image);
        section().links =
            captures(QString(m_prose).remove(picture), link) + captures(m_prose, reference);
        section().boldTexts = captures(m_prose, bold);
        m_prose.clear();
        m_isIndented = false;
    }

    Page& m_page;
    QString m_prose; // of the section, without code
    bool m_isFenced = false;
    bool m_isIndented = false;
};

template <typename Member>
QStringList joined(const QList<Section>& sections, Member member)
{
    QStringList all;
    for (const Section& section : sections)
        all += section.*member;
    return all;
}

} // namespace

QStringList Page::links() const
{
    return joined(sections, &Section::links);
}

QStringList Page::pictures() const
{
    return joined(sections, &Section::pictures);
}

QStringList Page::boldTexts() const
{
    return joined(sections, &Section::boldTexts);
}

QStringList Page::anchors() const
{
    return joined(sections, &Section::anchor);
}

QStringList Page::codes(const QString& language) const
{
    QStringList found;
    for (const Section& section : sections) {
        for (const Section::Code& code : section.codes) {
            if (code.language == language)
                found.append(code.text);
        }
    }
    return found;
}

Page readPage(const QString& path)
{
    Page page;
    page.path = path;
    const QByteArray content = readFile(path);
    if (content.isEmpty())
        QTest::qFail(qPrintable(QStringLiteral("Nothing to read in ") + path), __FILE__, __LINE__);
    Reader(page).read(QString::fromUtf8(content));
    return page;
}

} // namespace testsupport
