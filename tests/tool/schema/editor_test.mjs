// Judges the corpus and the values of the real tree by ajv and by the JSON language service that editors use, and tests
// what that offers to the author of a settings file. scripts/schema_test.sh writes the files in SCHEMA_FOLDER.
import Ajv from "ajv/dist/2020.js";
import assert from "node:assert/strict";
import fs from "node:fs";
import { test } from "node:test";
import { fileURLToPath } from "node:url";
import service from "vscode-json-languageservice";

const [here, folder] = [fileURLToPath(new URL(".", import.meta.url)), process.env.SCHEMA_FOLDER];
const read = (file) => fs.readFileSync(file, "utf8").replace(/^\uFEFF/, "");
const readJson = (file) => JSON.parse(read(file));

/** An editor whose files have this schema; ¦ is the cursor. */
class Editor {
    constructor(schema) {
        this.service = service.getLanguageService({
            schemaRequestService: async () => JSON.stringify(schema), clientCapabilities: service.ClientCapabilities.LATEST });
        this.service.configure({ schemas: [{ uri: "file:///schema.json", fileMatch: ["*"], schema }] });
    }

    async apply(name, text) {
        const document = service.TextDocument.create("file:///settings.json", "json", 1, text.replace("¦", ""));
        const cursorAndJson = [document.positionAt(text.indexOf("¦")), this.service.parseJSONDocument(document)];
        return this.service[name](document, ...cursorAndJson.slice(name === "doValidation" ? 1 : 0));
    }
}

const [sample, schema, { nodes, releaseChanges }] = ["sample", "schema", "tree"].map((name) => readJson(`${folder}/${name}.json`));
const [sampleEditor, editor] = [new Editor(sample), new Editor(schema)];
const catalog = Object.assign({}, ...fs.readdirSync(`${here}/../../../catalog/en`)
    .map((file) => readJson(`${here}/../../../catalog/en/${file}`)));

test("the judges agree on the corpus", async () => {
    const validate = new Ajv({ strict: true, allowUnionTypes: true, allowMatchingProperties: true })
        .addVocabulary(["markdownDescription", "enumDescriptions", "deprecationMessage", "errorMessage", "doNotSuggest"])
        .compile(sample);
    const judges = {
        ajv: (text) => { try { return validate(JSON.parse(text)); } catch { return false; } },
        editor: async (text) => (await sampleEditor.apply("doValidation", text)).length === 0,
    };
    const exceptions = readJson(`${here}/exceptions.json`);
    for (const file of ["good", "bad"].flatMap((name) => fs.readdirSync(`${here}/${name}`).map((file) => `${name}/${file}`))) {
        for (const [judge, accepts] of Object.entries(judges)) {
            const errs = exceptions[file]?.judges.includes(judge) ?? false;
            assert.equal(await accepts(read(`${here}/${file}`)), file.startsWith("good") !== errs, `${file}: ${judge}`);
        }
    }
});

test("an editor reports the values of the real tree that python3-jsonschema rejects", async () => {
    const files = fs.readdirSync(folder).filter((file) => file.endsWith(".refused"));
    assert(files.length > 50);
    for (const file of files) {
        const text = read(`${folder}/${file.replace("refused", "json")}`);
        const paths = Object.keys(JSON.parse(text).settings);
        const refused = new Set((await editor.apply("doValidation", text)).map(({ range }) => paths[range.start.line - 1]));
        const expected = new Set(readJson(`${folder}/${file}`));
        assert.deepEqual(paths.filter((path) => refused.has(path) !== expected.has(path)), [], file);
    }
});

test("an editor shows what a setting does, and offers true and false, and the allowed strings with what they do", async () => {
    for (const { path, value, valueValidators } of nodes.filter(({ node }) => node === "setting")) {
        const { sentence = "", values } = catalog[path] ?? {};
        const shown = (await editor.apply("doHover", `{"settings": {"¦${path}": null}}`)).contents[0].replaceAll("\\", "");
        assert(shown.includes(sentence), `${path}: ${shown}`);
        const { items } = await editor.apply("doComplete", `{"settings": {"${path}": ¦}}`);
        if (value?.class === "logical") {
            assert.deepEqual(items.map(({ label }) => label), [`${value.data[0]}`, `${!value.data[0]}`], path);
        }
        const allowed = value?.class === "char" && valueValidators.find(({ kind }) => kind === "allowedValues");
        for (const string of allowed?.values ?? []) {
            const item = items.find(({ label }) => label === JSON.stringify(string));
            assert.equal(item && (values ? item.documentation ?? "" : ""), values?.[string] ?? "", `${path}: ${string}`);
        }
    }
});

test("an editor reports old paths with what to write instead, and offers none", async () => {
    const current = new Set(nodes.map(({ path }) => path));
    const offered = (await editor.apply("doComplete", '{"settings": {¦}}')).items.map(({ label }) => label);
    for (const path of releaseChanges.flatMap(({ changes }) => changes).map(({ from }) => from[0])) {
        const found = await editor.apply("doValidation", `{"settings": {"${path}": 1}}`);
        const advice = found.find(({ code }) => code === service.ErrorCode.Deprecated)?.message ?? "none";
        assert(current.has(path) || /^Remove it: it was removed in R20/.test(advice) || current.has(advice.split(" ")[1]), path);
        assert.equal(offered.includes(path), current.has(path), path);
    }
});

test("an editor inserts a logical setting without a default as a scalar", async () => {
    const { items } = await sampleEditor.apply("doComplete", '{"settings": {¦}}');
    assert.equal(items.find(({ label }) => label === "verdix.dump").insertText, '"verdix.dump": $1');
});

test("an editor says what is wrong in a sentence", async () => {
    for (const [member, ...messages] of [
        ['"settings": {"verdix.dump": "yes"}', "Expected true or false."],
        ['"settings": {"verdix.rule.limit": "NaN"}', 'Expected a number or "Inf".'],
        ['"settings": {"verdix.commandwindow.fixed": 1}', "Read-only: must not be set."],
        ['"settings": {"verdix.keyboard.suggestions.ShowAutomatically": true}', "This value has no effect.",
            "Write verdix.suggestions.ShowAutomatically instead: it was moved in R2025b."],
        ['"settings": {"verdix.keyboard.suggestions.Delay": 1}', "This value has no effect.", "Remove it: it was removed in R2023a."],
        ['"locked": ["verdix.wbe"]', "Expected the path of a setting or group."],
        ['"release": "2025b"', "Expected a release up to R2026a, such as R2022b."]]) {
        assert.deepEqual((await sampleEditor.apply("doValidation", `{${member}}`)).map(({ message }) => message), messages);
    }
});
