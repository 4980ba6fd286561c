// Prints every row of every user table of an Access file, as an independent reader sees it:
// one JSON line {"table":T,"row":{column:value,...}} a row. Usage: node dump.mjs FILE
import { readFileSync } from "node:fs";
import MDBReader from "mdb-reader";

function plain(value) {
    if (value === undefined) return null;
    if (value instanceof Date) return value.toISOString().replace("Z", "");
    if (value instanceof Uint8Array) return Buffer.from(value).toString("hex");
    if (typeof value === "bigint") return value.toString();
    return value;
}

const reader = new MDBReader(readFileSync(process.argv[2]));
const lines = [];
for (const table of reader.getTableNames()) {
    for (const row of reader.getTable(table).getData()) {
        for (const column of Object.keys(row)) row[column] = plain(row[column]);
        lines.push(JSON.stringify({ table, row }));
    }
}
process.stdout.write(lines.length === 0 ? "" : lines.join("\n") + "\n");
