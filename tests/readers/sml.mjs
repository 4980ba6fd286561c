// Prints the messages of an SML file as an independent reader sees them: one JSON line
// {"s":2,"f":33,"w":true,"item":{"f":"L","v":[...]}} a message. Texts are the hexadecimal digits of
// their bytes. Usage: node sml.mjs FILE
//
// That reader takes one message at a time, ignores what follows the item of a message, and knows a
// text as one quoted run. So messages are told apart here, items are counted, and runs are joined,
// each 0xNN among them as one character of the private area.
import { readFileSync } from "node:fs";
import { SecsItemType, SmlParser } from "secs4js";

const PRIVATE = 0xe000;
const TEXT_OR_RUNS = /<A((?: (?:"[^"]*"|0x[0-9A-Fa-f]{2}))+)>|"[^"]*"/g;
const RUN = /"([^"]*)"|0x([0-9A-Fa-f]{2})/g;

function joined(whole, runs) {
    if (runs === undefined) return whole;
    const parts = [...runs.matchAll(RUN)];
    if (parts.length === 1 && parts[0][1] !== undefined) return whole;
    const text = parts.map(([, quoted, byte]) =>
        quoted ?? String.fromCharCode(PRIVATE + parseInt(byte, 16)));
    return `<A "${text.join("")}">`;
}

function bytesOf(text) {
    const bytes = [...text].map((c) => {
        const code = c.codePointAt(0);
        return code >= PRIVATE ? code - PRIVATE : code;
    });
    return Buffer.from(bytes).toString("hex");
}

function plain(item) {
    const format = SecsItemType[item.type];
    const value = item.value;
    if (format === "L") return { f: format, v: value.map(plain) };
    if (format === "A") return { f: format, v: bytesOf(value) };
    if (format === "B") return { f: format, v: value.toString("hex") };
    return { f: format, v: [value].flat() };
}

function countItems(item) {
    return item.f === "L" ? item.v.reduce((sum, child) => sum + countItems(child), 1) : 1;
}

const lines = [];
for (const text of readFileSync(process.argv[2], "utf8").split("\n\n")) {
    if (text === "") continue;
    const message = text.replace(TEXT_OR_RUNS, joined);
    const read = SmlParser.parse(message);
    const item = plain(read.body);
    if (countItems(item) !== message.replace(/"[^"]*"/g, "").split("<").length - 1)
        throw new Error(`items were passed over in ${message}`);
    lines.push(JSON.stringify({ s: read.stream, f: read.func, w: read.wBit, item }));
}
process.stdout.write(lines.length === 0 ? "" : lines.join("\n") + "\n");
