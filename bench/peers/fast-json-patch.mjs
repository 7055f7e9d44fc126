import jsonpatch from "fast-json-patch";
import { readDocuments } from "./documents.mjs";

const [original, client] = readDocuments();
console.log(jsonpatch.compare(original, client).length);
