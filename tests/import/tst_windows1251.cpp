// SPDX-License-Identifier: MIT
#include "windows1251.h"

#include <QtTest/QTest>

class TestWindows1251 final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEveryByte();
};

void TestWindows1251::readsEveryByte()
{
    QByteArray bytes;
    for (int byte = 0x80; byte < 0x100; ++byte)
        bytes += static_cast<char>(byte);
    QCOMPARE(
        tadata::textFromWindows1251(bytes),
        QStringLiteral("ЂЃ‚ѓ„…†‡€‰Љ‹ЊЌЋЏђ‘’“”•–—\ufffd™љ›њќћџ\u00a0ЎўЈ¤Ґ¦§Ё©Є«¬\u00ad®Ї°±Ііґµ¶·"
                       "ё№є»јЅѕїАБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдежзийклмнопрстуфхцчшщъ"
                       "ыьэюя"));
    QCOMPARE(tadata::textFromWindows1251(QByteArray("Date\0<", 6)),
             QString::fromLatin1("Date\0<", 6));
}

QTEST_GUILESS_MAIN(TestWindows1251)
#include "tst_windows1251.moc"
