// SPDX-License-Identifier: MIT
// The peer of "tadata import" for the output of makebars: DuckDB with two threads writes the same
// day files.
//
//   PEERS=DIR node import.duckdb.mjs FILE DIRECTORY
//
// PEERS is the directory whose node_modules holds @duckdb/node-api.
//
// One row per bar with PARTITION_BY is not enough: the partitioned writer keeps the order of rows
// within a file only as long as a day does not fall on two of its chunks, and a day file whose bars
// are out of order is another file. One COPY per day keeps the order and takes three times as long.
// So the lines of a day are put together by an ordered aggregate, and the writer gets one row per
// day; of the ways that write the same bytes this is the fastest.
//
// What is not the same: the fields are not checked and never become numbers, which is in DuckDB's
// favour. PARTITION_BY names the files by itself; giving them the names of day files is part of the
// job.
import { readdirSync, renameSync, rmdirSync } from 'node:fs';
import { createRequire } from 'node:module';

const { DuckDBInstance } = createRequire(`${process.env.PEERS}/`)('@duckdb/node-api');
const [input, directory] = process.argv.slice(2);

const instance = await DuckDBInstance.create(':memory:', { threads: '2' });
const connection = await instance.connect();
await connection.run('SET partitioned_write_max_open_files = 100000');
await connection.run(`
    COPY (
        SELECT day, string_agg(concat_ws(';', time, open, high, low, close, volume, '0.00;0'),
                               chr(10) ORDER BY time)
        FROM read_csv('${input}', auto_detect = false, header = true, delim = ',',
                      quote = '', escape = '',
                      columns = {ticker: 'VARCHAR', per: 'VARCHAR', day: 'VARCHAR', time: 'VARCHAR',
                                 open: 'VARCHAR', high: 'VARCHAR', low: 'VARCHAR',
                                 close: 'VARCHAR', volume: 'VARCHAR'})
        GROUP BY day
    ) TO '${directory}' (FORMAT csv, HEADER false, DELIMITER ';', QUOTE '',
                         PARTITION_BY (day), OVERWRITE_OR_IGNORE true)`);

for (const partition of readdirSync(directory)) {
    const day = partition.slice('day='.length);
    renameSync(`${directory}/${partition}/data_0.csv`, `${directory}/${day}_60.iss`);
    rmdirSync(`${directory}/${partition}`);
}
