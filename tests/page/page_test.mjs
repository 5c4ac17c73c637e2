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
    assert.equal(await style("verdix.ui.container.tab.BackgroundColor", ".swatch", "display"), "inline-block");
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
    assert.ok(hidden.length < nodes.length);
    for (const path of paths((node) => node.visibility === "hidden")) {
        assert.ok(hidden.includes(path), path);
    }
    await page.locator("#clear").click();
    await page.locator("#constraints").selectOption("mustBeNumericScalar");
    assert.deepEqual(await visibleSettings(page), paths((node) => node.validator?.function === "mustBeNumericScalar"));
});

pageTest("shows what settings files changed, whatever is in it", { file: "modified.html" }, async (page) => {
    const personal = readJson("personal.json").settings;
    await page.locator("#modified").check();
    assert.deepEqual(await visibleSettings(page), Object.keys(personal).sort());
    for (const [path, value] of Object.entries(personal)) {
        const shown = await page.locator(`[id="${path}"] .held code`).first().textContent();
        assert.equal(shown, typeof value === "string" ? `"${value.replaceAll('"', '""')}"` : `[${value.join(" ")}]`);
    }
    assert.equal(await page.evaluate(() => "injected" in window || document.querySelector(".injected") !== null), false);
});

pageTest("opens at the setting or group that the address names", { hash: "#verdix.web.cef.webbrowser" }, async (page) => {
    assert.ok(await isInView(page, "verdix.web.cef.webbrowser"));
    assert.equal(await focusedText(page), "webbrowser");
    assert.ok(await page.locator("thead th").first().evaluate((cell) =>
        cell.getBoundingClientRect().top >= document.querySelector("main").getBoundingClientRect().top), "no headings");
    await page.locator("#search").fill("colour");
    await page.evaluate(() => { location.hash = "verdix.suggestions.ShowTips"; });
    await page.waitForFunction(() => document.activeElement.textContent === "ShowTips");
    assert.ok(await isInView(page, "verdix.suggestions.ShowTips"), "hidden by the filter");
    await page.evaluate(() => { location.hash = "verdix.fonts"; });
    await page.waitForFunction(() =>
        document.querySelector("[aria-selected=true]").dataset.path.startsWith("verdix.fonts"));
    for (const odd of ["%", "no.such.path", "%3Cscript%3E"]) {
        await page.evaluate((hash) => { location.hash = hash; }, odd);
    }
});

const clipboard = { context: { permissions: ["clipboard-read", "clipboard-write"] } };
pageTest("copies a path by button and by key", clipboard, async (page) => {
    const copied = () => page.evaluate(() => navigator.clipboard.readText());
    await page.locator("#search").fill("KeywordColor");
    await page.locator('[id="verdix.colors.KeywordColor"]').hover();
    await page.getByRole("button", { name: "Copy path" }).click();
    await page.getByText("Copied verdix.colors.KeywordColor").waitFor();
    assert.equal(await copied(), "verdix.colors.KeywordColor");
    await page.locator("#search").fill("CommentColor");
    await page.locator('[id="verdix.colors.CommentColor"] a').focus();
    await page.keyboard.press("c");
    await page.getByText("Copied verdix.colors.CommentColor").waitFor();
    assert.equal(await copied(), "verdix.colors.CommentColor");
});

/** Contrast of text on its background by the rules for accessible content, from 1 to 21. */
const contrast = (page, selector) => page.evaluate((selector) => {
    const canvas = document.createElement("canvas").getContext("2d", { willReadFrequently: true });
    const light = (colour) => {
        canvas.fillStyle = colour;
        canvas.fillRect(0, 0, 1, 1);
        const [red, green, blue] = [...canvas.getImageData(0, 0, 1, 1).data].map((part) =>
            (part / 255 <= 0.04045 ? part / 255 / 12.92 : ((part / 255 + 0.055) / 1.055) ** 2.4));
        return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
    };
    const element = document.querySelector(selector);
    let ground = element;
    while (getComputedStyle(ground).backgroundColor === "rgba(0, 0, 0, 0)") {
        ground = ground.parentElement;
    }
    const [low, high] = [light(getComputedStyle(element).color), light(getComputedStyle(ground).backgroundColor)]
        .sort((left, right) => left - right);
    return (high + 0.05) / (low + 0.05);
}, selector);

pageTest("is readable in light and dark, by the system's choice or one's own", {}, async (page) => {
    const ground = () => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
    const grounds = {};
    for (const colorScheme of ["light", "dark"]) {
        await page.emulateMedia({ colorScheme });
        grounds[colorScheme] = await ground();
        for (const selector of ["h1", ".title p", "td code", ".shape", ".badge.visibility", "nav .text", "nav .count",
            "[aria-selected=true] .text", "footer", "thead th"]) {
            const ratio = await contrast(page, selector);
            assert.ok(ratio >= 4.5, `${selector} in ${colorScheme}: contrast ${ratio.toFixed(2)}`);
        }
    }
    assert.notEqual(grounds.light, grounds.dark);
    const button = page.locator("#theme");
    await button.click();
    assert.equal(await button.innerText(), "Theme: light");
    assert.equal(await ground(), grounds.light);
    await page.reload();
    assert.equal(await ground(), grounds.light, "forgotten");
    await button.click();
    await page.emulateMedia({ colorScheme: "light" });
    assert.equal(await ground(), grounds.dark);
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

    const item = () => page.evaluate(() => {
        const { dataset, ariaExpanded, ariaLevel, firstChild } = document.activeElement;
        return { path: dataset.path, open: ariaExpanded, level: ariaLevel, ring: getComputedStyle(firstChild).outlineStyle };
    });
    await page.locator("#tree [tabindex='0']").focus();
    await page.keyboard.press("Home");
    await page.keyboard.press("f");
    assert.equal((await item()).path, "verdix.findfiles");
    await page.keyboard.press("f");
    await page.keyboard.press("ArrowRight");
    assert.deepEqual(await item(), { path: "verdix.fonts", open: "true", level: "2", ring: "solid" });
    await page.keyboard.press("ArrowRight");
    assert.deepEqual(await item(), { path: "verdix.fonts.codefont", open: null, level: "3", ring: "solid" });
    await page.keyboard.press("Enter");
    assert.equal(await page.evaluate(() => location.hash), "#verdix.fonts.codefont");
    await page.waitForFunction(() => document.querySelector("[aria-selected=true]")?.dataset.path === "verdix.fonts.codefont");
    await page.keyboard.press("ArrowLeft");
    await page.keyboard.press("ArrowLeft");
    assert.equal((await item()).open, "false");
});

pageTest("is a plain table without script", { context: { javaScriptEnabled: false } }, async (page) => {
    assert.deepEqual(await visibleSettings(page), paths(() => true));
    for (const part of ["#filters", "#tree", "footer", "#nothing", "#groups"]) {
        assert.equal(await page.locator(part).isVisible(), false, part);
    }
});

pageTest("fits a narrow window", { context: { viewport: { width: 390, height: 800 } } }, async (page) => {
    assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), 390);
    assert.equal(await page.locator("#tree").isVisible(), false);
    await page.getByRole("button", { name: "Groups" }).click();
    await page.locator('#tree [data-path="verdix.colors"] .text').first().click();
    assert.equal(await page.locator("#tree").isVisible(), false);
    assert.ok(await isInView(page, "verdix.colors.UseSystemColor"));
});

pageTest("filters all settings within a frame", {}, async (page) => {
    const times = await page.evaluate(() => {
        const search = document.getElementById("search");
        const measured = [];
        for (const text of ["editor.wrap", "color", "verdix", "number from 1", "zzz"]) {
            for (let round = 0; round < 5; ++round) {
                for (let length = 0; length <= text.length; ++length) {
                    search.value = text.slice(0, length);
                    const start = performance.now();
                    search.dispatchEvent(new Event("input", { bubbles: true }));
                    measured.push(performance.now() - start);
                }
            }
        }
        return measured.sort((left, right) => left - right);
    });
    const median = times[times.length >> 1];
    const worst = times.at(-1);
    console.log(`filtering ${nodes.length} settings, ${times.length} times: median ${median.toFixed(1)} ms, worst ${worst.toFixed(1)} ms`);
    // A frame has 16 ms; the bound leaves room for a machine that is busy with other things.
    assert.ok(median < 100, `median ${median} ms`);
});
