// SPDX-License-Identifier: MIT
#include <vexdesk/history/utf8.h>

#include "support/strictlog.h"

#include <QtTest/QTest>

using vexdesk::isAscii;
using vexdesk::textFromUtf8;

class TestUtf8 final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void dropsNoMark_data();
    void dropsNoMark();
    void seesEveryByteThatIsNotAscii();
};

void TestUtf8::dropsNoMark_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QByteArray& bytes, const QString& text) {
        QTest::newRow(name) << bytes << text;
    };
    const QByteArray mark("\xef\xbb\xbf");
    const QString markText(QChar::ByteOrderMark);
    row("nothing", "", QString());
    row("ASCII", "a;1", QStringLiteral("a;1"));
    row("Cyrillic", "Ёлка", QStringLiteral("Ёлка"));
    row("no UTF-8", "a\xff", QStringLiteral("a\ufffd"));
    row("mark alone", mark, markText);
    row("mark in front", mark + "a", markText + u'a');
    row("two in front", mark + mark + "a", markText + markText + u'a');
    row("mark within", "a" + mark + "b", u'a' + markText + u'b');
    row("marks on both sides", mark + "a" + mark, markText + u'a' + markText);
}

void TestUtf8::dropsNoMark()
{
    QFETCH(const QByteArray, bytes);
    QTEST(textFromUtf8(bytes), "text");
}

void TestUtf8::seesEveryByteThatIsNotAscii()
{
    QVERIFY(isAscii(QByteArray()));
    for (int code = 1; code < 256; ++code)
        QCOMPARE(isAscii(QByteArray(1, static_cast<char>(code))), code < 128);
    for (const int size : {1, 7, 64, 1023, 1024, 1025, 2048, 2049, 5000}) {
        const QByteArray text(size, '\x7f');
        QVERIFY(isAscii(text));
        for (int place = 0; place < size; ++place) {
            QByteArray other = text;
            other[place] = '\x80';
            if (isAscii(other))
                QFAIL(qPrintable(QStringLiteral("%1 of %2").arg(place).arg(size)));
        }
    }
}

QTEST_GUILESS_MAIN(TestUtf8)
#include "tst_utf8.moc"
