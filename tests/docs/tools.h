// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtTest/QTest>

/// The tools that the documents show beside our own programs. Each is looked for where it usually
/// is, DuckDB where the project's scripts install it or below the directory that the environment
/// variable TADATA_NODE_MODULES names. Without its tool a test is skipped; with the variable
/// TADATA_REQUIRE_TOOLS it fails, except for DuckDB with TADATA_WITHOUT_DUCKDB: npm may be out of
/// reach where the distribution's packages are not.
#define NEEDS(tool, name) NEEDS_IF_REQUIRED(tool, name, testsupport::areToolsRequired())
#define NEEDS_DUCKDB(node)                                                                         \
    NEEDS_IF_REQUIRED(node, "node with the modules of TADATA_NODE_MODULES",                        \
                      testsupport::areToolsRequired() &&                                           \
                          !qEnvironmentVariableIsSet("TADATA_WITHOUT_DUCKDB"))
#define NEEDS_IF_REQUIRED(tool, name, isRequired)                                                  \
    do {                                                                                           \
        if (!(tool).isEmpty())                                                                     \
            break;                                                                                 \
        if (isRequired)                                                                            \
            QFAIL(name " is missing, and TADATA_REQUIRE_TOOLS is set");                            \
        QSKIP(name " is missing");                                                                 \
    } while (false)

namespace testsupport {

inline bool areToolsRequired()
{
    return qEnvironmentVariableIsSet("TADATA_REQUIRE_TOOLS");
}

/// The first Python that knows these modules, with commas between them; else empty.
QString pythonWith(const QString& modules);

/// node, where DuckDB is found by it; else empty.
QString nodeWithDuckdb();

} // namespace testsupport
