// The exported page in a browser. The folder in PAGE_FOLDER holds plain.html, modified.html (exported with the settings
// files personal.json and installation.json) and tree.json (the exported tree); scripts/page_test.sh makes them.

import assert from "node:assert/strict";
import { execFileSync, spawnSync } from "node:child_process";
import { mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { dirname, join } from "node:path";
import { after, before, test } from "node:test";
import { pathToFileURL } from "node:url";
import { chromium } from "playwright-core";

const folder = process.env.PAGE_FOLDER;
const readJson = (file) => JSON.parse(readFileSync(file, "utf8"));
const fixture = (name) => join(import.meta.dirname, name);
const nodes = readJson(join(folder, "tree.json")).nodes.filter((node) => node.node !== "group");
const paths = (accepts) => nodes.filter(accepts).map((node) => node.path).sort();
const hasValidator = (node, kind) => node.valueValidators.some((validator) => validator.kind === kind);

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
    (await page.evaluate(() => [...document.querySelectorAll("tr[id]")]
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
    assert.match(await page.locator('[id="verdix.suggestions.ShowTips"]').textContent(),
        /moved from verdix\.editor\.suggestions\.ShowTips in R2025b/);
    assert.equal(await page.locator("#modified").isVisible(), false);
    const counts = ["setting", "alias"].map((kind) => nodes.filter(({ node }) => node === kind).length);
    assert.ok((await page.locator("header p").first().innerText()).startsWith(`${counts[0]} settings and ${counts[1]} aliases`));
});

pageTest("finds settings as one types, the best first, and goes back to the tree", {}, async (page) => {
    const before = await page.locator("tr[id]").evaluateAll((rows) => rows.map((row) => row.id));
    await page.keyboard.type("/");
    await page.keyboard.type("keywordcolor", { delay: 5 });
    const found = await page.locator("#results tr[id]").evaluateAll((rows) => rows.map((row) => row.id));
    assert.ok(found.every((path) => path.endsWith(".KeywordColor")) && found.length > 5, String(found));
    assert.equal(await page.locator("#status").innerText(), `${found.length} of ${nodes.length}`);
    await page.locator("#area").selectOption("editor");
    assert.equal(await page.evaluate(() => location.hash), "#?q=keywordcolor&area=editor");
    assert.equal((await visibleSettings(page)).length, found.filter((path) => path.startsWith("verdix.editor.")).length);
    await page.goBack();
    assert.equal((await visibleSettings(page)).length, found.length);
    await page.locator("#search").press("Escape");
    assert.equal((await visibleSettings(page)).length, nodes.length);
    assert.deepEqual(await page.locator("tr[id]").evaluateAll((rows) => rows.map((row) => row.id)),
        before, "in tree order again");
    await page.locator("#search").fill("zzqqxx");
    await page.getByRole("button", { name: "Show all settings" }).click();
    assert.equal((await visibleSettings(page)).length, nodes.length);
});

pageTest("filters by area, class, visibility and validator", {}, async (page) => {
    await page.locator("#class").selectOption("int32");
    await page.locator("#validator").selectOption("colour");
    const isColour = (node) => node.value?.class === "int32" && hasValidator(node, "colour");
    assert.deepEqual(await visibleSettings(page), paths(isColour));
    await page.locator("#area").selectOption("colors");
    const inColors = (node) => isColour(node) && node.path.startsWith("verdix.colors.");
    assert.deepEqual(await visibleSettings(page), paths(inColors));
    await page.locator("#clear").click();
    await page.locator('[data-path="verdix.web"] > .label').click(); // the area filter hides it
    await page.locator("#area").selectOption("colors");
    assert.equal(await page.locator('#tree li[tabindex="0"]').isVisible(), true, "the tree is reached by Tab");
    await page.locator("#area").selectOption("");
    await page.locator("#visibility").selectOption("hidden");
    const hidden = await visibleSettings(page);
    assert.ok(hidden.length < nodes.length && hidden.length >= paths((node) => node.visibility === "hidden").length);
});

pageTest("shows what settings files changed, whatever is in it", { file: "modified.html" }, async (page) => {
    const { "verdix.commandwindow.NumericFormat": unmodified, ...personal } = readJson(fixture("personal.json")).settings;
    const { "verdix.web.ProxyPassword": secret, ...shown } = { ...personal, ...readJson(fixture("installation.json")).settings };
    await page.locator("#modified").check();
    assert.deepEqual(await visibleSettings(page), [...Object.keys(shown), "verdix.web.ProxyPassword"].sort());
    for (const [path, value] of Object.entries(shown)) {
        const shown = await page.locator(`[id="${path}"] .held code`).last().textContent();
        assert.equal(shown, typeof value === "string" ? `"${value.replaceAll('"', '""')}"`
            : value.length ? `[${value.join(" ")}]` : String(value));
    }
    assert.ok(!(await page.content()).includes(secret));
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
    await page.evaluate(() => { location.hash = "verdix.editor.suggestions.ShowTips"; });
    await page.getByText("moved to verdix.suggestions.ShowTips in R2025b").first().waitFor();
    await page.waitForFunction(() => document.activeElement.textContent === "ShowTips");
    const removed = readJson(join(folder, "tree.json")).releaseChanges
        .flatMap(({ release, changes }) => changes.map((change) => ({ release, ...change })))
        .find(({ operation }) => operation === "remove");
    await page.evaluate((path) => { location.hash = path; }, removed.from[0]);
    await page.locator("#notice").getByText(`removed in ${removed.release}`).waitFor();
    await page.locator("#class").selectOption("cell"); // as no setting of the following group is, but some beneath it are
    await page.evaluate(() => { location.hash = "verdix.desktop"; });
    await page.waitForFunction(() => document.querySelector('[aria-selected="true"]').dataset.path.startsWith("verdix.desktop"));
    assert.ok(await isInView(page, "verdix.desktop.currentfolder.History"));
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

/** Opens the editor of a setting by keyboard. */
async function edit(page, path) {
    await page.evaluate((path) => { location.hash = path; }, path);
    await page.waitForFunction((path) => document.activeElement.closest("tr")?.id === path, path);
    await page.keyboard.press("e");
    return page.locator(`[id="${path}"] .editor`);
}

/** Types a value into a text field of the editor. */
async function enter(page, path, text) {
    const editor = await edit(page, path);
    await editor.locator("input, textarea").first().fill(text);
    await editor.getByRole("button", { name: "Done" }).click();
    return editor;
}

const diagnostics = (file) => JSON.parse(spawnSync("vxsettings", ["check", "--json", file]).stdout).diagnostics;

pageTest("edits a settings file as the commands do", {}, async (page) => {
    const original = '\ufeff{\r\n\t"$schema" : "x", "release":"R2026a", "unknown": [1.50e2],\r\n\t"settings" : {\r\n' +
        '\t\t"verdix.commandwindow.NumericFormat" : "hex", "verdix.desktop.Zoom":1.50e2 ,\r\n' +
        '\t\t"verdix.string.DefaultTextType": "a\\u0062c", "verdix.UserPath": 12,"verdix.desktop.Zoom" :150 \r\n\t}}\r\n';
    const file = join(folder, "verdix", "settings.json");
    mkdirSync(dirname(file), { recursive: true });
    writeFileSync(file, original);
    await page.locator("#show-changes").click();
    for (const text of ['{"settings": {,}}', "\u00a0", '{"settings": 1}', `{"a": ${"[".repeat(101)}${"]".repeat(101)}}`, '{"a": [1, 2,\n],}',
        '\ufeff{} // "😀"', '{"😀": 01}', '{"locked": [1]}', '{"a": "\\x"}', '{"a\tb": 1}', '{"a": tru}', '["a', Buffer.from("{\u00e9\n  \xff", "latin1")]) {
        const buffer = Buffer.from(text);
        writeFileSync(join(folder, "x.json"), buffer);
        const [{ line, column, message }] = diagnostics(join(folder, "x.json"));
        await page.locator("#open-file").setInputFiles({ name: "x.json", mimeType: "", buffer });
        await page.locator("#notice").getByText(`x.json:${line}:${column}: ${message}. It was not`).waitFor();
    }
    const open = async (file) => {
        await page.locator("#open-file").setInputFiles(file);
        const problems = diagnostics(file).map(({ line, column, path, message }) => `${line}:${column}: ${path}: ${message}`);
        await page.waitForFunction((last) => document.querySelector("#diagnostics li:last-child")?.textContent === last, problems.at(-1));
        assert.deepEqual(await page.locator("#diagnostics li").allTextContents(), problems);
    };
    const moved = "verdix.editor.suggestions.ShowTips";
    const alias = nodes.find(({ node }) => node === "alias").path;
    writeFileSync(join(folder, "x.json"), `{"release": "R2099a", "release": 1, "Settings": {},\n"desktop.Zoom": 1, "locked": ["${moved}", "${alias}"],
        "settings": {"${moved}": true, "${alias}": 1, "verdix.editor": 1, "verdix.ui.internal.figuretype.webfigures": 1}}`);
    await open(join(folder, "x.json"));
    const zoom = await edit(page, "verdix.desktop.Zoom");
    await open(file);
    assert.equal(await page.locator("#notice").isVisible(), false);
    assert.match(await page.locator('[id="verdix.commandwindow.NumericFormat"]').textContent(), /"hex"/);

    assert.equal(await zoom.locator("input").inputValue(), "150");
    await zoom.getByRole("button", { name: "Remove" }).click();
    await edit(page, "verdix.commandwindow.WrapLines");
    await page.keyboard.press("Space");
    await page.keyboard.press("Enter");
    assert.equal(await focusedText(page), "WrapLines");
    const list = await edit(page, "verdix.commandwindow.NumericFormat");
    await list.locator("select").selectOption("long");
    const number = await enter(page, "verdix.commandwindow.NumberOfLinesInScrollBuffer", "12");
    assert.equal(await number.getByRole("alert").innerText(), "12 is not allowed: must be a whole number from 1000 to 25000");
    await number.locator("input").fill("2000");
    await page.keyboard.press("Enter");
    const colour = await edit(page, "verdix.colors.KeywordColor");
    await colour.getByLabel("Green").fill("77");
    assert.equal(await colour.getByLabel("Colour", { exact: true }).inputValue(), "#0e4dff");
    await (await edit(page, "verdix.ui.figure.Color")).getByLabel("Colour", { exact: true }).fill("#ff8000");
    await enter(page, "verdix.UserPath", `it's "a" \\ $HOME`);
    await enter(page, "verdix.G11nLanguagePref", "-x");
    await enter(page, "verdix.appdesigner.history.MaxFileListSize", "-5");
    await enter(page, "verdix.desktop.currentfolder.History", "a b\n-c'd");
    const position = await enter(page, "verdix.appdesigner.window.Position", "1 2 3 4");
    assert.match(await position.getByRole("alert").innerText(), /; write it as a list: \[1 2 3 4\]$/);
    await position.locator("textarea").fill("[1 2 3 4]");
    await position.getByRole("button", { name: "Done" }).click();
    const undone = await edit(page, "verdix.editor.OtherEditor");
    await page.keyboard.type("undone");
    await page.keyboard.press("Tab");
    await page.getByRole("button", { name: "Undo verdix.editor.OtherEditor" }).click();
    assert.equal(await undone.locator("input").inputValue(), "");
    await edit(page, "verdix.workingfolder.LastFolderPath");
    await page.keyboard.type("cancelled");
    await page.keyboard.press("Escape");

    const download = page.waitForEvent("download");
    await page.getByRole("button", { name: "Download settings.json" }).click();
    const edited = join(folder, "edited.json");
    await (await download).saveAs(edited);
    const { "verdix.string.DefaultTextType": untouched, ...values } =
        JSON.parse(readFileSync(edited, "utf8").slice(1)).settings;
    assert.deepEqual(values, {
        "verdix.commandwindow.NumericFormat": "long", "verdix.UserPath": `it's "a" \\ $HOME`,
        "verdix.commandwindow.WrapLines": true, "verdix.commandwindow.NumberOfLinesInScrollBuffer": 2000,
        "verdix.colors.KeywordColor": [14, 77, 255], "verdix.ui.figure.Color": [1, 0.502, 0],
        "verdix.G11nLanguagePref": "-x", "verdix.appdesigner.history.MaxFileListSize": -5,
        "verdix.desktop.currentfolder.History": ["a b", "-c'd"], "verdix.appdesigner.window.Position": [1, 2, 3, 4],
    });
    assert.deepEqual(diagnostics(edited).map(({ path }) => path), ["unknown"], "no errors but the one that was there");
    execFileSync("sh", ["-e"], { input: await page.locator("#command-list").textContent(), env: { ...process.env,
        XDG_CONFIG_HOME: folder, XDG_CONFIG_DIRS: join(folder, "none"), XDG_STATE_HOME: folder } });
    assert.equal(readFileSync(edited, "utf8"), readFileSync(file, "utf8"));
});

pageTest("hides secrets, and says why a setting is not edited", { file: "modified.html" }, async (page) => {
    await enter(page, "verdix.web.ProxyPassword", "opensesame");
    assert.ok(!(await page.locator("body").innerText()).includes("opensesame"));
    assert.match(await page.locator("#command-list").textContent(), /^# .*set verdix\.web\.ProxyPassword --stdin$/);
    for (const [path, reason] of [["verdix.desktop.Zoom", "is locked by"], ["verdix.ui.internal.figuretype.webfigures", "is read-only"]]) {
        assert.equal(await (await edit(page, path)).count(), 0);
        assert.match(await page.locator("#status").innerText(), new RegExp(reason));
        assert.equal(await page.getByRole("button", { name: `Edit ${path}` }).count(), 0);
    }
    for (const path of ["verdix.UserPath", "verdix.dump"]) { // the buttons follow the pointer after a click, too
        await page.locator(`[id="${path}"]`).hover();
        await page.getByRole("button", { name: "Copy path" }).click();
        await page.locator("#status").getByText(path).waitFor();
    }
});

test("refuses the values that the check command refuses, with the same messages", () => {
    const source = ["text_reader", "json_text", "parsing", "script_notation", "formatting", "suggestions", "validators", "constraints"]
        .map((name) => readFileSync(join(import.meta.dirname, `../../../tool/page/values/${name}.js`), "utf8")).join("");
    const { checkValue, readNumbers } = new Function(`${source}; return { checkValue, readNumbers };`)();
    const html = readFileSync(join(folder, "plain.html"), "utf8");
    const data = JSON.parse(/<script type="application\/json" id="data">(.*?)<\/script>/s.exec(html)[1]);
    const settings = [...html.matchAll(/<tr id="([^"]*)"/g)]
        .map(([, path], index) => ({ path, ...data.settings[index] }))
        .map((setting) => ({ ...setting, constraint: data.constraints[setting.constraint] }))
        .filter(({ constraint, isReadOnly }) => constraint && !isReadOnly);
    const corpus = readJson(fixture("values.json"));
    for (const value of new Set(corpus.map((entry) => entry.value))) {
        const file = join(folder, "values.json");
        writeFileSync(file, `{"settings": {${settings.map(({ path }) => `"${path}": ${value}`).join(",\n")}}}`);
        const messages = new Map(diagnostics(file).map(({ path, message }) => [path, message]));
        for (const { path, constraint, isSecret } of settings) {
            const inPage = checkValue(value, constraint, isSecret).message;
            assert.equal(inPage, messages.get(path), `${path}: ${value}`);
        }
        for (const { path, message } of corpus.filter((entry) => entry.value === value)) {
            assert.equal(messages.get(path) ?? null, message, `${path}: ${value}`);
        }
    }
    const path = "verdix.ui.figure.Colormap";
    const colormap = settings.find((setting) => setting.path === path).constraint;
    for (const typed of ["[1 0 .5; 0,1 0]", "[1 0 0", "1 0 0", "[1 0 0;]", "[1 0; 1]", "[1 0 +1e0x]", "", "[1 NaN 0]", "{1 0 0}", "['a", "[1 0 0]]"]) {
        const [, refusal] = /^vxsettings: [^:]*: (.*)\n$/.exec(spawnSync("vxsettings", ["set", "--dry-run", path, typed]).stderr) ?? [];
        assert.equal(checkValue(typed, colormap, false, readNumbers).message,
            refusal?.replace(`${typed}: column`, "column").replace(/list: '(.*)'$/, "list: $1"), typed);
    }
    const { constraint } = settings.find(({ path }) => path === "verdix.commandwindow.NumericFormat");
    assert.match(checkValue(JSON.stringify("x".repeat(1e6)), constraint).message, /^"x+… is not allowed: must be a string/);
});

pageTest("prints the shown settings only", { hash: "#?area=colors" }, async (page) => {
    await page.emulateMedia({ media: "print" });
    assert.deepEqual(await visibleSettings(page), paths((node) => node.path.startsWith("verdix.colors.")));
    assert.equal(await page.locator("form:visible, nav:visible, aside:visible, button:visible").count(), 0);
});

const axe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");
for (const [name, context] of Object.entries({
    light: { colorScheme: "light" }, "dark, forced colours": { colorScheme: "dark", forcedColors: "active" },
    dark: { colorScheme: "dark" }, phone: { viewport: { width: 320, height: 640 } },
})) {
    pageTest(`is accessible: ${name}`, { context, file: "modified.html" }, async (page) => {
        await page.evaluate(axe);
        // axe is slow: two groups have all that the others have.
        await page.addStyleTag({ content: 'section:not(#results, [id="verdix.colors"], [id="verdix.commandwindow"]) { display: none }' });
        const check = async () => {
            const { violations } = await page.evaluate(() => window.axe.run());
            assert.deepEqual(violations.map(({ id, nodes }) => [id, nodes[0].html, nodes[0].failureSummary]), []);
            assert.equal(await page.evaluate(() => document.documentElement.scrollWidth > innerWidth), false);
        };
        await edit(page, "verdix.colors.KeywordColor");
        assert.equal(await page.evaluate(() => {
            const boxes = [...document.querySelectorAll(".editing :is(.badge, button, a, .shape)")].map((part) => part.getBoundingClientRect());
            return boxes.some((a, index) => boxes.slice(index + 1).some((b) =>
                a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom));
        }), false, "overlap");
        await enter(page, "verdix.commandwindow.NumberOfLinesInScrollBuffer", "12");
        await check();
        await page.locator("#search").fill("keyword color");
        await page.locator("#show-changes").click();
        await check();
        assert.equal(await page.locator(".swatch").first().evaluate((swatch) => getComputedStyle(swatch).forcedColorAdjust), "none");
    });
}
