// SPDX-License-Identifier: MIT
#include "charactersearch.h"

#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

class TestCharacterSearch final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsOneCharacter_data();
    void countsOneCharacter();
    void countsWhereAllAreTheSame();
    void marksThePlacesOfACharacter();
    void knowsABlankLine();
};

void TestCharacterSearch::countsOneCharacter_data()
{
    QTest::addColumn<char>("character");
    for (const char character : {',', '\0', '\x80', '\xff'})
        QTest::addRow("%d", character) << character;
}

void TestCharacterSearch::countsOneCharacter()
{
    QFETCH(const char, character);
    QRandomGenerator random(7);
    const QByteArray others("ab-+.\x01\x7f\x81\xfe", 9);
    for (qsizetype length = 0; length < 20'000; length += 1 + length / 7) {
        QByteArray text(length, character);
        for (char& byte : text) {
            if (random.bounded(3) > 0)
                byte = others[random.bounded(int(others.size()))];
        }
        QCOMPARE(tadata::countOf(character, text), text.count(character));
    }
}

void TestCharacterSearch::countsWhereAllAreTheSame()
{
    for (const qsizetype length : {0, 1, 31, 32, 33, 8159, 8160, 8161, 8192, 100'000})
        QCOMPARE(tadata::countOf(';', QByteArray(length, ';')), length);
}

void TestCharacterSearch::marksThePlacesOfACharacter()
{
    for (int place = 0; place < 8; ++place) {
        QByteArray text("+-.:0123");
        text[place] = ',';
        QCOMPARE(tadata::placesOf(',', text.constData()), quint64(0x80) << 8 * place);
    }
}

void TestCharacterSearch::knowsABlankLine()
{
    QVERIFY(tadata::isBlank(""));
    QVERIFY(tadata::isBlank(" \t\v\f\r"));
    QVERIFY(!tadata::isBlank(" x "));
    QVERIFY(!tadata::isBlank("\xc2\xa0"));
}

QTEST_APPLESS_MAIN(TestCharacterSearch)
#include "tst_charactersearch.moc"
