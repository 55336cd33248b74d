// SPDX-License-Identifier: MIT
#pragma once

class EditorTADataModel;
class QTreeView;

namespace tadata {

/// Makes the columns of a table wide enough for its titles and for every row that the model has
/// just loaded, without a look at most of them: numbers are as wide as they are long, and a time is
/// no wider than the widest one of the default locale.
void fitColumns(QTreeView& table, const EditorTADataModel& model);

} // namespace tadata
