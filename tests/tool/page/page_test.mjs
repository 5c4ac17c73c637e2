// The exported page in a browser. The folder in PAGE_FOLDER holds plain.html, modified.html (exported with the settings
// file personal.json) and tree.json (the exported tree); scripts/page_test.sh makes them.

import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { pathToFileURL } from "node:url";
import { chromium } from "playwright-core";

const folder = process.env.PAGE_FOLDER;
const readJson = (name) => JSON.parse(readFileSync(join(folder, name), "utf8"));
const nodes = readJson("tree.json").nodes.filter((node) => node.node !== "group");
const paths = (accepts) => nodes.filter(accepts).map((node) => node.path).sort();
const hasRule = (node, kind) => node.valueValidators.some((rule) => rule.kind === kind);

let browser;
before(async () => {
    browser = await chromium.launch({
        executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
        args: ["--disable-gpu", "--disable-background-networking", "--disable-component-update", "--disable-sync",
            ...(process.getuid() === 0 ? ["--no-sandbox"] : [])],
    });
});
after(() => browser?.close());

/** A test with a page of its own, which must neither complain nor ask the network for anything. */
function pageTest(name, options, run) {
    test(name, async () => {
        const context = await browser.newContext({ viewport: { width: 1280, height: 800 }, ...options.context });
        const troubles = [];
        context.on("request", (request) => {
            if (!/^(file|data):/.test(request.url())) {
                troubles.push(`asked for ${request.url()}`);
            }
        });
        context.on("console", (message) => {
            if (["error", "warning"].includes(message.type())) {
                troubles.push(message.text());
            }
        });
        context.on("weberror", (error) => troubles.push(String(error.error())));
        const page = await context.newPage();
        const file = pathToFileURL(join(folder, options.file ?? "plain.html")).href;
        await page.goto(file + (options.hash ?? ""));
        await run(page, context);
        await context.close();
        assert.deepEqual(troubles, []);
    });
}

const visibleSettings = async (page) =>
    (await page.evaluate(() => [...document.querySelectorAll("tbody tr[id]")]
        .filter((row) => row.getClientRects().length > 0).map((row) => row.id))).sort();
const focusedText = (page) => page.evaluate(() => document.activeElement.textContent);
const isInView = (page, id) => page.evaluate((id) => {
    const box = document.getElementById(id).getBoundingClientRect();
    return box.height > 0 && box.top >= 0 && box.bottom <= innerHeight;
}, id);

pageTest("shows every setting with its value, colour and font", {}, async (page) => {
    assert.deepEqual(await visibleSettings(page), paths(() => true));
    const style = (path, selector, property) => page.evaluate(([path, selector, property]) =>
        getComputedStyle(document.getElementById(path).querySelector(selector))[property], [path, selector, property]);
    assert.equal(await style("verdix.colors.KeywordColor", ".swatch", "backgroundColor"), "rgb(14, 0, 255)");
    assert.equal(await style("verdix.fonts.editor.heading1.Name", ".font", "fontSize"), "20px");
    assert.equal(await style("verdix.fonts.editor.heading1.Name", ".font", "fontWeight"), "700");
    assert.match(await page.locator('[id="verdix.suggestions.ShowTips"]').innerText(),
        /moved from verdix\.editor\.suggestions\.ShowTips in R2025b/);
    assert.equal(await page.locator("#modified").isVisible(), false);
});

pageTest("searches as one types, in all words at once", {}, async (page) => {
    await page.keyboard.type("/");
    await page.keyboard.type("EDITOR wrap");
    const found = await visibleSettings(page);
    assert.ok(found.length > 0 && found.length < 60, `${found.length} found`);
    for (const path of paths((node) => /editor/i.test(node.path) && /wrap/i.test(node.path))) {
        assert.ok(found.includes(path), path);
    }
    assert.equal(await page.locator("#status").innerText(), `${found.length} of ${nodes.length}`);
    await page.locator("#search").fill("nothing has this text");
    assert.deepEqual(await visibleSettings(page), []);
    await page.getByRole("button", { name: "Clear all filters" }).click();
    assert.equal((await visibleSettings(page)).length, nodes.length);
});

pageTest("filters by area, class, visibility and validator", {}, async (page) => {
    await page.locator("#class").selectOption("int32");
    await page.locator("#constraints").selectOption("colour");
    const isColour = (node) => node.value?.class === "int32" && hasRule(node, "colour");
    assert.deepEqual(await visibleSettings(page), paths(isColour));
    await page.locator("#area").selectOption("colors");
    const inColors = (node) => isColour(node) && node.path.startsWith("verdix.colors.");
    assert.deepEqual(await visibleSettings(page), paths(inColors));
    await page.locator("#clear").click();
    await page.locator("#visibility").selectOption("hidden");
    const hidden = await visibleSettings(page);
    assert.ok(hidden.length < nodes.length && hidden.length >= paths((node) => node.visibility === "hidden").length);
});

pageTest("shows what settings files changed, whatever is in it", { file: "modified.html" }, async (page) => {
    const { "verdix.commandwindow.NumericFormat": unmodified, ...personal } = readJson("personal.json").settings;
    await page.locator("#modified").check();
    assert.deepEqual(await visibleSettings(page), Object.keys(personal).sort());
    for (const [path, value] of Object.entries(personal)) {
        const shown = await page.locator(`[id="${path}"] .held code`).last().textContent();
        assert.equal(shown, typeof value === "string" ? `"${value.replaceAll('"', '""')}"` : `[${value.join(" ")}]`);
    }
    assert.equal(await page.evaluate(() => "injected" in window || document.querySelector(".injected") !== null), false);
});

pageTest("opens at the setting or group that the address names", { hash: "#verdix.web.cef.webbrowser" }, async (page) => {
    assert.ok(await isInView(page, "verdix.web.cef.webbrowser"));
    assert.equal(await focusedText(page), "webbrowser");
    await page.locator("#search").fill("colour");
    await page.evaluate(() => { location.hash = "verdix.suggestions.ShowTips"; });
    await page.waitForFunction(() => document.activeElement.textContent === "ShowTips");
    assert.ok(await isInView(page, "verdix.suggestions.ShowTips"), "hidden by the filter");
    await page.evaluate(() => { location.hash = "%"; });
});

pageTest("is used by keyboard alone", {}, async (page) => {
    await page.keyboard.press("/");
    await page.keyboard.type("KeywordColor");
    await page.keyboard.press("ArrowDown");
    assert.equal(await focusedText(page), "KeywordColor");
    assert.notEqual(await page.evaluate(() => getComputedStyle(document.activeElement).outlineStyle), "none");
    await page.keyboard.press("Enter");
    assert.equal(await page.evaluate(() => location.hash), "#verdix.colors.KeywordColor");
    await page.keyboard.press("Escape");
    const index = paths(() => true).indexOf("verdix.colors.KeywordColor");
    assert.ok(index > 0);
    await page.keyboard.press("ArrowDown");
    assert.equal(await focusedText(page), "CommentColor");
    await page.keyboard.press("ArrowUp");
    assert.equal(await focusedText(page), "KeywordColor");
});

pageTest("is a plain table without script", { context: { javaScriptEnabled: false } }, async (page) => {
    assert.deepEqual(await visibleSettings(page), paths(() => true));
    for (const part of ["#filters", "#tree", "footer", "#nothing", "#groups"]) {
        assert.equal(await page.locator(part).isVisible(), false, part);
    }
});
