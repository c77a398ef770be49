// compile.js FOLDER PARSERS: compiles each .ksy file of FOLDER to Python. The compiler is a library that takes parsed
// YAML, which Python turns into JSON.
const fs = require("fs");
const path = require("path");
const {execFileSync} = require("child_process");
const Compiler = require("kaitai-struct-compiler");

const [folder, parsers] = process.argv.slice(2);
const toJson = "import json, sys, yaml; print(json.dumps({p: yaml.safe_load(open(p)) for p in sys.argv[1:]}))";
const files = fs.readdirSync(folder).filter((name) => name.endsWith(".ksy")).map((name) => path.join(folder, name));
const parsed = JSON.parse(execFileSync("/usr/bin/python3", ["-c", toJson, ...files], {maxBuffer: 1 << 26}));
const importer = {importYaml: async (name) => parsed[path.join(folder, path.basename(name) + ".ksy")]};

(async () => {
  for (const file of files) {
    const made = await new Compiler().compile("python", parsed[file], importer, false);
    for (const [name, text] of Object.entries(made)) fs.writeFileSync(path.join(parsers, name), text);
  }
})().catch((problem) => {
  console.error(`compile.js: ${problem}`);
  process.exit(1);
});
