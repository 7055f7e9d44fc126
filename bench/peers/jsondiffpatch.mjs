import { create } from "jsondiffpatch";
import { readDocuments } from "./documents.mjs";

const [original, client] = readDocuments();
const differ = create({ objectHash: (object) => object.internal_name });
const delta = differ.diff(original, client);
console.log(Object.keys(delta ?? {}));
