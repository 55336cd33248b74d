// SPDX-License-Identifier: MIT
// Runs the SQL of a file with DuckDB and prints the rows, a line each, values separated by blanks.
//
//   TADATA_NODE_MODULES=DIR node run-sql.mjs FILE
//
// DIR is the directory "node_modules" that holds @duckdb/node-api, or the one above it.
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';

const { DuckDBInstance } = createRequire(`${process.env.TADATA_NODE_MODULES}/`)('@duckdb/node-api');
const instance = await DuckDBInstance.create(':memory:');
const connection = await instance.connect();
const result = await connection.runAndReadAll(readFileSync(process.argv[2], 'utf8'));
for (const row of result.getRows())
    console.log(row.join(' '));
