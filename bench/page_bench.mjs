// Measures the exported page with ten times its settings in Chromium: the time to load, and to search.
//
//   vxsettings export --format html -o page.html && node bench/page_bench.mjs page.html [RUNS]

import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

const { chromium } = createRequire(new URL("../tests/tool/page/", import.meta.url))("playwright-core");
const [, , file, runs = "7"] = process.argv;
if (!file || !(Number(runs) > 0)) {
    console.error("usage: node bench/page_bench.mjs PAGE [RUNS], with the file of the exported page");
    process.exit(2);
}
const times = 10;
const queries = ["color", "k", "ke", "keyword", "keyword color", "show line numbers", "wrap", "zzqqxx", "font siez", "e"];

/** Returns the page with its groups repeated under other roots. */
function repeatSettings(html) {
    const repeat = (text, transform) => Array.from({ length: times }, (_, index) => transform(text, index)).join("");
    const rows = /<section id="(?!results)[^]*<\/section>\n(?=<p id="nothing")/;
    const [, root] = /<title>Settings under ([^<]*)/.exec(html);
    const data = /(<script type="application\/json" id="data">)(.*?)(<\/script>)/s;
    return html
        .replace(rows, (all) => repeat(all, (text, index) => text.replaceAll(`"${root}.`, `"${root}${index}.`)
            .replaceAll(`"#${root}.`, `"#${root}${index}.`).replaceAll(`id="${root}"`, `id="${root}${index}"`)))
        .replace(data, (_, start, json, end) => {
            const parsed = JSON.parse(json);
            parsed.settings = Array.from({ length: times }, () => parsed.settings).flat();
            return start + JSON.stringify(parsed).replaceAll("<", "\\u003c") + end;
        });
}

const median = (numbers) => numbers.sort((a, b) => a - b)[Math.floor(numbers.length / 2)];
const milliseconds = (numbers) => `${median(numbers).toFixed(0)} ms`;

/** Runs in the page: the time until a query is shown on the screen. */
const searchFor = async (query) => {
    const field = document.getElementById("search");
    const start = performance.now();
    field.value = query;
    field.dispatchEvent(new Event("input", { bubbles: true }));
    await new Promise((resolve) => requestAnimationFrame(() => { setTimeout(resolve); }));
    return performance.now() - start;
};
const drawn = async () => {
    await new Promise((resolve) => requestAnimationFrame(() => { setTimeout(resolve); }));
    return performance.now();
};

const folder = mkdtempSync(join(tmpdir(), "page-bench-"));
const page10 = join(folder, "page.html");
writeFileSync(page10, repeatSettings(readFileSync(file, "utf8")));
const browser = await chromium.launch({
    executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
    args: ["--disable-gpu", ...(process.getuid() === 0 ? ["--no-sandbox"] : [])],
});
for (const [name, path] of [["once", file], ["ten times", page10]]) {
    const loads = [];
    const firsts = [];
    const searches = new Map(queries.map((query) => [query, []]));
    for (let run = 0; run < Number(runs); ++run) {
        const page = await browser.newPage({ viewport: { width: 1280, height: 800 } });
        await page.goto(pathToFileURL(path).href);
        loads.push(await page.evaluate(drawn));
        await page.waitForTimeout(1500);
        firsts.push(await page.evaluate(searchFor, "first"));
        for (const query of queries) {
            searches.get(query).push(await page.evaluate(searchFor, query));
        }
        searches.set("(left)", [...(searches.get("(left)") ?? []), await page.evaluate(searchFor, "")]);
        await page.close();
    }
    console.log(`${name}: loaded in ${milliseconds(loads)}, first search in ${milliseconds(firsts)}`);
    for (const [query, durations] of searches) {
        console.log(`    "${query}" in ${milliseconds(durations)}, at most ${Math.max(...durations).toFixed(0)} ms`);
    }
}
await browser.close();
rmSync(folder, { recursive: true });
