// Prints every table of a data file as an independent reader sees it: JSON arrays, one in each line.
//   node dump.mjs FILE            ["table", name], ["columns", name...], then ["row", cell...] for each row
//   node dump.mjs --count FILE    reads every cell and prints the number of rows of each table only
//
// A cell is null or a text:
//   truth value          "1" or "0"
//   whole number         digits
//   Currency, Numeric    digits with the column's number of decimals
//   Single, Double       the sixteen hexadecimal digits of the number as a double
//   date                 "YYYY-MM-DD HH:MM:SS", rounded to the second
//   text, memo           itself
//   binary, OLE          hexadecimal digits
//   GUID                 "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}"
import { readFileSync } from "node:fs";
import MDBReader from "mdb-reader";

const millisecondsOfDay = 86400000;
// From 30/12/1899, where the file's days start, to 1/1/1970, where the reader's do.
const daysToUnix = 25569;

// The reader counts a date as a plain number of days. In the file the fraction counts forward from midnight
// before the first day too: -1.25 is 29/12/1899 06:00.
function moment(date) {
  const days = date.getTime() / millisecondsOfDay + daysToUnix;
  const midnight = Math.trunc(days);
  const seconds = Math.round(Math.abs(days - midnight) * 86400);
  return new Date((midnight - daysToUnix) * millisecondsOfDay + seconds * 1000)
    .toISOString().slice(0, 19).replace("T", " ");
}

function bits(number) {
  const bytes = Buffer.alloc(8);
  bytes.writeDoubleBE(number);
  return bytes.toString("hex");
}

const texts = {
  binary: (value) => value.toString("hex"),
  boolean: (value) => (value ? "1" : "0"),
  datetime: moment,
  double: bits,
  float: bits,
  ole: (value) => value.toString("hex"),
  repid: (value) => `{${value.toUpperCase()}}`,
};

function cell(type, value) {
  return value === null ? null : (texts[type] ?? String)(value);
}

function* lines(table) {
  const columns = table.getColumns();
  yield ["table", table.name];
  yield ["columns", ...columns.map((column) => column.name)];
  for (const row of table.getData()) {
    yield ["row", ...columns.map((column) => cell(column.type, row[column.name]))];
  }
}

function dump(table) {
  let text = "";
  for (const line of lines(table)) {
    text += JSON.stringify(line) + "\n";
  }
  return text;
}

// The reader takes a piece of a long value to end where the slot before it says, and reads the marks of a
// deleted slot as a part of that number. Nothing points at a deleted slot of these pages, so that its marks
// can go.
function forgetDeletedPieces(file) {
  const pageSize = 4096, owner = 4, slotCount = 12, slots = 14;
  for (let page = pageSize; page < file.length; page += pageSize) {
    if (file[page] === 1 && file.toString("latin1", page + owner, page + owner + 4) === "LVAL") {
      const end = page + slots + 2 * file.readUInt16LE(page + slotCount);
      for (let slot = page + slots; slot < end; slot += 2) {
        file.writeUInt16LE(file.readUInt16LE(slot) & 0x1fff, slot);
      }
    }
  }
  return file;
}

const [countOnly, file] = process.argv[2] === "--count" ? [true, process.argv[3]] : [false, process.argv[2]];
const reader = new MDBReader(forgetDeletedPieces(readFileSync(file)));
for (const name of reader.getTableNames()) {
  const table = reader.getTable(name);
  process.stdout.write(countOnly ? `${name} ${table.getData().length}\n` : dump(table));
}
