// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

class QWidget;

namespace testsupport {

enum class Speech { Russian, English };

/// The texts of a window and of all that is shown in it which are not in this language, each with
/// the place where it stands; empty when all is well. Labels, buttons, boxes, entries of lists,
/// headings, tool tips, menus, titles, what stands in empty fields, and the cells of tables count.
///
/// In English no Russian letter may occur. In Russian a text with a Latin word must have a Russian
/// letter too; what users type or what their files hold (cells, fields) is not looked at then, nor
/// are names that are the same in every language.
QStringList foreignTexts(const QWidget* window, Speech speech);

/// The texts of a shown window that have less room than they need, each with the place where it
/// stands; empty when all is well. The user-interface style and the fonts decide.
QStringList cutTexts(const QWidget* window);

/// What is shown in the window with the same access key as another, and menus in which two entries
/// have the same; each with the key.
QStringList sharedAccessKeys(const QWidget* window);

} // namespace testsupport
