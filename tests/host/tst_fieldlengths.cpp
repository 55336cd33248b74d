// SPDX-License-Identifier: MIT
#include "support/strictlog.h"

#include <vexdesk/history/fieldlengths.h>

#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

#include <algorithm>

using vexdesk::FieldLengths;

namespace {

// The same, the plain way.
struct PlainLengths
{
    FieldLengths::Line add(const QByteArray& line)
    {
        const QByteArrayList fields = line.split(';');
        if (fields.size() != vexdesk::RecordFieldCount)
            return FieldLengths::Line::NoRecord;
        for (int field = 0; field < fields.size(); ++field)
            longest[field] = std::max(longest[field], fields.at(field).size());
        return std::all_of(line.begin(), line.end(),
                           [](char c) { return QByteArray("-./0123456789:;").contains(c); })
                   ? FieldLengths::Line::Numbers
                   : FieldLengths::Line::Text;
    }

    std::vector<qsizetype> longest = std::vector<qsizetype>(vexdesk::RecordFieldCount, 0);
};

std::vector<qsizetype> longestOf(const FieldLengths& lengths)
{
    std::vector<qsizetype> longest;
    for (int field = 0; field < vexdesk::RecordFieldCount; ++field)
        longest.push_back(lengths.longest(static_cast<vexdesk::RecordField>(field)));
    return longest;
}

QByteArray randomField(QRandomGenerator& random, int longest)
{
    QByteArray field(random.bounded(longest + 1), '0');
    for (char& character : field)
        character = static_cast<char>('0' + random.bounded(10));
    return field;
}

} // namespace

class TestFieldLengths final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void knowsNothingAtFirst();
    void seesEachCharacterAtEachPlace();
    void agreesWithThePlainWay_data();
    void agreesWithThePlainWay();
    void countsEveryLineAgain();
};

void TestFieldLengths::knowsNothingAtFirst()
{
    QCOMPARE(longestOf(FieldLengths()), PlainLengths().longest);
}

// Next to a separator too: there a sum of eight characters at a time carries, if it is to.
void TestFieldLengths::seesEachCharacterAtEachPlace()
{
    for (const QByteArray& line :
         {QByteArray("100000;1.50;1.70;1.40;1.60;12;345.60;7"), QByteArray("1;2;;3;;;;45")}) {
        for (int place = 0; place < line.size(); ++place) {
            for (int code = 0; code < 256; ++code) {
                QByteArray other = line;
                other[place] = static_cast<char>(code);
                FieldLengths ours;
                PlainLengths plain;
                QCOMPARE(ours.add(other), plain.add(other));
                QCOMPARE(longestOf(ours), plain.longest);
            }
        }
    }
}

void TestFieldLengths::agreesWithThePlainWay_data()
{
    QTest::addColumn<int>("longest");
    QTest::newRow("short lines") << 2;
    QTest::newRow("usual lines") << 9;
    QTest::newRow("long lines") << 20;
    QTest::newRow("very long lines") << 60;
}

void TestFieldLengths::agreesWithThePlainWay()
{
    QFETCH(const int, longest);
    QRandomGenerator random(20230105);
    FieldLengths ours;
    PlainLengths plain;
    for (int i = 0; i < 30'000; ++i) {
        // Lines grow only gradually: the lengths of most are known.
        const int limit = 1 + longest * i / 30'000;
        const int fields = random.bounded(8) == 0 ? random.bounded(12) : 8;
        QByteArray line;
        for (int field = 0; field < fields; ++field)
            line += (field == 0 ? "" : ";") + randomField(random, limit);
        if (!line.isEmpty() && random.bounded(10) == 0)
            line[random.bounded(line.size())] = static_cast<char>(random.bounded(256));
        QCOMPARE(ours.add(line), plain.add(line));
        QCOMPARE(longestOf(ours), plain.longest);
    }
}

void TestFieldLengths::countsEveryLineAgain()
{
    FieldLengths lengths;
    for (int time = 0; time < 3; ++time) {
        QCOMPARE(lengths.add("100000;1.50;1.70;1.40;1.60;12;345.60;7"),
                 FieldLengths::Line::Numbers);
        QCOMPARE(lengths.add("100000;1.50;1.70;1.40;1.60;12;345.60+7"),
                 FieldLengths::Line::NoRecord);
        QCOMPARE(lengths.add("100000;1.50;1.70;1.40;1.60;12;345 60;7"), FieldLengths::Line::Text);
    }
    QCOMPARE(longestOf(lengths), (std::vector<qsizetype>{6, 4, 4, 4, 4, 2, 6, 1}));
}

QTEST_GUILESS_MAIN(TestFieldLengths)
#include "tst_fieldlengths.moc"
