// SPDX-License-Identifier: MIT
#include "support/formrows.h"

#include "support/child.h"

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>

namespace testsupport {

Items items(const QComboBox* box)
{
    Items all;
    for (int i = 0; i < box->count(); ++i)
        all.append({box->itemText(i), box->itemData(i).toString()});
    return all;
}

Items separatorItems()
{
    return {{"запятая (,)", ","}, {"точка с запятой (;)", ";"}, {"пробел ( )", " "}};
}

Items dateFormatItems()
{
    return {{"ггггммдд", "yyyyMMdd"},
            {"ггммдд", "yyMMdd"},
            {"ддммгг", "ddMMyy"},
            {"дд.мм.гг", "dd.MM.yy"},
            {"дд/мм/гг", "dd/MM/yy"}};
}

Items timeFormatItems()
{
    return {{"ччммсс", "hhmmss"}, {"ччмм", "hhmm"}, {"чч:мм:сс", "hh:mm:ss"}, {"чч:мм", "hh:mm"}};
}

void compareRows(const QWidget* page, int first, const QList<FormRow>& rows)
{
    auto* const form = qobject_cast<QFormLayout*>(page->layout());
    QVERIFY(form);
    for (int i = 0; i < rows.size(); ++i) {
        const auto* const label =
            qobject_cast<QLabel*>(form->itemAt(first + i, QFormLayout::LabelRole)->widget());
        QWidget* const field = form->itemAt(first + i, QFormLayout::FieldRole)->widget();
        QVERIFY(label);
        QCOMPARE(label->objectName(), QLatin1String(rows[i].label));
        QCOMPARE(label->text(), QString::fromUtf8(rows[i].text));
        QCOMPARE(field->objectName(), QLatin1String(rows[i].field));
        QVERIFY(qobject_cast<QComboBox*>(field));
        QCOMPARE(label->buddy(), field);
    }
}

void compareContext(const QWidget* page, const QList<const char*>& boxes, const QString& context)
{
    const QString beginning = context + u'|';
    for (const char* name : boxes) {
        const Items all = items(child<QComboBox>(page, name));
        for (const auto& [text, data] : all)
            QVERIFY2(text.startsWith(beginning), qPrintable(text));
    }
}

} // namespace testsupport
