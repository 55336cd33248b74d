// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSet>

class QMenu;

namespace vexdesk {

class MenuBuilder;

/// Fills the context menu of a chart: with the menu "Вид", but for the commands that are left out,
/// and with what plug-ins have put into the other menus, as it stands there. The items are those of
/// the menus. User-interface thread only.
void fillChartMenu(QMenu& menu, const MenuBuilder& builder, const QSet<QByteArray>& leftOut,
                   const QSet<QByteArray>& ownCommands);

} // namespace vexdesk
