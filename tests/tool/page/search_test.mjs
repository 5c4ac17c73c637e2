// The search of the page beside that of the command vxsettings in PATH: for all settings and groups and their catalog,
// both have the same results. PAGE_FOLDER holds the exported tree in tree.json; scripts/page_test.sh makes it.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { readdirSync, readFileSync } from "node:fs";
import { join } from "node:path";
import { test } from "node:test";

const project = join(import.meta.dirname, "../../..");
const catalogFolder = join(project, "catalog/en");
const read = (...path) => readFileSync(join(...path), "utf8");
const makeSearch = new Function(`${read(project, "tool/page/search.js")}; return makeSearch;`)();

const tree = JSON.parse(read(process.env.PAGE_FOLDER, "tree.json"));
const synonyms = JSON.parse(read(catalogFolder, "synonyms.json"));
const files = readdirSync(catalogFolder).filter((file) => file !== "synonyms.json");
const catalog = Object.assign({}, ...files.map((file) => JSON.parse(read(catalogFolder, file))));
const moves = tree.releaseChanges.flatMap(({ changes }) => changes).filter(({ operation }) => operation === "move");

const oldPathsOf = (path) =>
    moves.filter(({ to }) => to[0] === path).flatMap(({ from }) => [from[0], ...oldPathsOf(from[0])]);
const titlesOf = (path) => {
    const end = path.lastIndexOf(".");
    return end < 0 ? [] : [...titlesOf(path.slice(0, end)), catalog[path]?.title ?? path.slice(end + 1)];
};
const hidden = tree.nodes.filter(({ visibility }) => visibility === "hidden").map(({ path }) => `${path}.`);
const entries = tree.nodes.map(({ path, node, value, valueValidators = [] }) => ({
    ...catalog[path],
    path,
    title: titlesOf(path).join(" › "),
    values: [valueValidators.map((validator) => [validator.values, validator.words]), value?.data ?? [],
        Object.values(catalog[path]?.values ?? {})].flat(4).filter((part) => typeof part === "string"),
    oldPaths: oldPathsOf(path),
    isSecondary: node === "group" || hidden.some((start) => `${path}.`.startsWith(start)),
}));
const search = makeSearch(entries, synonyms);
const phrases = read(project, "tests/tool/search_phrases.txt").trim().split("\n").map((line) => line.split(" -> "));

test("ranks as the command does", () => {
    const queries = [...phrases.map(([phrase]) => phrase), "fnot", "numericfromat", "pssword", "softwrap", "linenumbers", "white space",
        "e", "wrapl", "the", "verdix.editor", "verdix.commandwindow.EightyColumns", "UTF8", "größe font", "日本語 fnot",
        "¿show_line-numbers!", "C++"];
    for (const query of queries) {
        const result = execFileSync("vxsettings", ["search", "--hidden", "--json", "--", query],
            { encoding: "utf8", env: { ...process.env, LC_ALL: "C" } });
        const found = search(query).map((index) => entries[index].path);
        assert.deepEqual(found, JSON.parse(result).matches.map(({ path }) => path), query);
    }
});

test("finds what people ask for among the settings of the page", () => {
    const settings = entries.filter((entry, index) => tree.nodes[index].node !== "group");
    const searchSettings = makeSearch(settings, synonyms);
    for (const [phrase, accepted] of phrases) {
        const first = searchSettings(phrase).slice(0, 3).map((index) => settings[index].path);
        assert.ok(first.some((path) => accepted.split(", ").includes(path)), `${phrase}: ${first}`);
    }
    assert.deepEqual(searchSettings("zzzzqq").concat(searchSettings(" ?"), makeSearch([], [])("font")), []);
});
