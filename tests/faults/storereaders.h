// SPDX-License-Identifier: MIT
#pragma once

#include "faults/storejobs.h"

namespace testsupport {

/// Lists, checks and exports a store, and compares what is printed with what lies in its files.
/// A day that ends in a half line hinders nobody. What is wrong; empty where nothing is.
QByteArray wrongReaders(const StoreJobs& jobs);

} // namespace testsupport
