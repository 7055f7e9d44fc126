import diff from "microdiff";
import { readDocuments } from "./documents.mjs";

const [original, client] = readDocuments();
console.log(diff(original, client).length);
