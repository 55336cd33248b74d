// SPDX-License-Identifier: MIT
// The peer of "tadata export --timeframe 86400" with every column and the heading: DuckDB with two
// threads.
//
//   PEERS=DIR node export.duckdb.mjs SERIES_DIR FILE
//
// PEERS is the directory whose node_modules holds @duckdb/node-api.
//
// What is not the same: only finished bars are written, one per day, where the export writes the
// bar as it has become for each stored line; and there is no byte order mark. Stored times are not
// looked at: no bar of the series is stamped midnight, and "first" and "last" follow the order of the
// lines, because a file of a day is smaller than what one thread reads at a time.
import { createRequire } from 'node:module';

const { DuckDBInstance } = createRequire(`${process.env.PEERS}/`)('@duckdb/node-api');
const [directory, output] = process.argv.slice(2);

const instance = await DuckDBInstance.create(':memory:', { threads: '2' });
const connection = await instance.connect();
await connection.run(`
    COPY (
        SELECT 'ALFA' AS "<TICKER>", 86400 AS "<PER>",
               strftime(strptime(left(right(filename, 15), 8), '%Y%m%d') + INTERVAL 1 DAY,
                        '%Y%m%d') AS "<DATE>",
               '000000' AS "<TIME>", first(open) AS "<OPEN>", max(high) AS "<HIGH>",
               min(low) AS "<LOW>", last(close) AS "<CLOSE>", sum(volume) AS "<VOL>",
               sum(value) AS "<VAL>", last(interest) AS "<OPEN_INT>"
        FROM read_csv('${directory}/*_60.iss', auto_detect = false, header = false, delim = ';',
                      quote = '', escape = '', filename = true,
                      columns = {time: 'VARCHAR', open: 'VARCHAR', high: 'DECIMAL(18, 2)',
                                 low: 'DECIMAL(18, 2)', close: 'VARCHAR', volume: 'BIGINT',
                                 value: 'DECIMAL(18, 2)', interest: 'INTEGER'})
        GROUP BY filename
        ORDER BY filename
    ) TO '${output}' (FORMAT csv, HEADER true, DELIMITER ',', QUOTE '')`);
