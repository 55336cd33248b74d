// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"

class QProgressDialog;

/// The import command.
class ImporterTAData final
{
public:
    /// Asks for a file and how to read it, imports it behind a progress dialog and tells the user
    /// how it went. Returns when all of it is over. User-interface thread.
    static void doImport();
};

/// Runs the import into the terminal's store and shows its progress on the dialog, whose value is
/// set on the user-interface thread by queued calls. It takes no lock and keeps nothing of what it
/// replaces; the command does both around the same work. Null text on success, otherwise the
/// message for the user. Any thread; the dialog must outlive the call.
QString importFromFile(QProgressDialog* progress, QString fileName, ImportDetails details);
