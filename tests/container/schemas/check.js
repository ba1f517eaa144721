// SPDX-License-Identifier: MIT
// check.js FILE...
// Holds manifests against the schemas of the Kubernetes API, twice: as objects of its
// types, which have no other fields, and by its validators. Copies that are spoilt on
// purpose have to be refused. Run in a folder with the packages of package.json.
import { execFileSync } from "node:child_process";
import { readFileSync, writeFileSync } from "node:fs";
import { basename } from "node:path";
import { parseAllDocuments } from "yaml";

// Custom resources, whose schemas are not those of Kubernetes.
const FOREIGN = ["k8s.cni.cncf.io/v1"];
const TSC = ["--noEmit", "--strict", "--skipLibCheck", "--target", "es2020", "--module", "nodenext"];

function documents(file) {
  return parseAllDocuments(readFileSync(file, "utf8"), { strict: true, uniqueKeys: true }).map((each) => {
    if (each.errors.length > 0) throw new Error(`${file}: ${each.errors[0].message}`);
    return each.toJS();
  });
}

function typed({ apiVersion, kind, ...rest }) {
  return `import { ${kind} } from "kubernetes-models/${apiVersion}";\n` +
    `export const made = new ${kind}(${JSON.stringify(rest, null, 2)});\n`;
}

// What the compiler says of the document, line by line.
function complaints(document, name) {
  writeFileSync(`${name}.mts`, typed(document));
  try {
    execFileSync("node_modules/.bin/tsc", [...TSC, `${name}.mts`]);
    return [];
  } catch (refusal) {
    return refusal.stdout.toString().trim().split("\n");
  }
}

async function invalid(document) {
  const models = await import(`kubernetes-models/${document.apiVersion}`);
  try {
    new models[document.kind](document).validate();
    return [];
  } catch (refusal) {
    return [refusal.message];
  }
}

// A field that there is not, at the end of every object.
function withStrangers(value) {
  if (Array.isArray(value)) return value.map(withStrangers);
  if (value === null || typeof value !== "object") return value;
  return Object.fromEntries([...Object.entries(value).map(([key, each]) => [key, withStrangers(each)]),
    ["stranger", 1]]);
}

const spoilt = [
  ["a field that there is not", (each) => withStrangers(each)],
  ["a name that is a number", (each) => ({ ...each, metadata: { name: 1 } })],
];

async function check(document, name) {
  const problems = [...complaints(document, name), ...await invalid(document)];
  for (const [what, spoil] of spoilt)
    if (complaints(spoil(document), `${name}-spoilt`).length === 0)
      problems.push(`${what} is not found`);
  return problems;
}

let bad = 0;
for (const file of process.argv.slice(2)) {
  for (const document of documents(file)) {
    const name = `${basename(file)}: ${document.kind} ${document.metadata.name}`;
    if (FOREIGN.includes(document.apiVersion)) {
      console.log(`${name}: not checked: a custom resource`);
      continue;
    }
    const problems = await check(document, document.kind);
    bad += problems.length;
    console.log(`${name}: ${problems.length === 0 ? "as the API has it" : problems.join("\n  ")}`);
  }
}
process.exit(bad === 0 ? 0 : 1);
