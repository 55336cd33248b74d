// SPDX-License-Identifier: MIT
#pragma once

#include "exportdetails.h"

class QProgressDialog;

/// The export command.
class ExporterTAData final
{
public:
    /// Asks what to export and how, writes it behind a progress dialog and tells the user how it
    /// went. Incoming data waits meanwhile. Returns when all of it is over; throws what the
    /// database throws for a deal that it cannot read. User-interface thread.
    static void doExport();
};

/// Runs the export of the terminal's store and of today's deals and shows its progress on the
/// dialog, whose value is set on the user-interface thread by queued calls. Null text on success,
/// otherwise the message for the user. Any thread; the dialog must outlive the call.
QString exportData(QProgressDialog* progress, const ExportDetails& details);
