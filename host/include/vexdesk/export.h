// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/qglobal.h>

// Marks what the terminal's shared libraries give to plug-ins.
#if defined(VEXDESK_CORE_LIBRARY)
#    define VEXDESK_CORE_EXPORT Q_DECL_EXPORT
#else
#    define VEXDESK_CORE_EXPORT Q_DECL_IMPORT
#endif

#if defined(VEXDESK_GUI_LIBRARY)
#    define VEXDESK_GUI_EXPORT Q_DECL_EXPORT
#else
#    define VEXDESK_GUI_EXPORT Q_DECL_IMPORT
#endif

#if defined(VEXDESK_HISTORY_LIBRARY)
#    define VEXDESK_HISTORY_EXPORT Q_DECL_EXPORT
#else
#    define VEXDESK_HISTORY_EXPORT Q_DECL_IMPORT
#endif
