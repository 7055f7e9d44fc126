import { readFileSync } from "node:fs";

// The original and the client's document, which the command line names in this order.
export function readDocuments() {
  return process.argv.slice(2, 4).map((path) => JSON.parse(readFileSync(path, "utf8")));
}
