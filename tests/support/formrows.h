// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

#include <utility>

class QComboBox;
class QWidget;

namespace testsupport {

/// Text and data of every item.
using Items = QList<std::pair<QString, QString>>;
Items items(const QComboBox* box);

/// What the wizards offer for the fields of a file.
Items separatorItems();
Items dateFormatItems();
Items timeFormatItems();

/// A box and the label before it.
struct FormRow
{
    const char* field;
    const char* label;
    const char* text;
};

/// Compares the rows of a page's form with these, from the row with the number `first` on.
void compareRows(const QWidget* page, int first, const QList<FormRow>& rows);

/// Fails the test for an item of the boxes that is not translated in this context. For texts with
/// marks, see MarkingTranslator.
void compareContext(const QWidget* page, const QList<const char*>& boxes, const QString& context);

} // namespace testsupport
