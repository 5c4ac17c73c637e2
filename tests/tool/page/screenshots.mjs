// Makes the pictures of the page in docs/: npm run screenshots, with vxsettings on PATH.

import { execFileSync } from "node:child_process";
import { mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { pathToFileURL } from "node:url";
import { chromium } from "playwright-core";

const folder = mkdtempSync(join(tmpdir(), "page-"));
const file = join(folder, "settings.html");
execFileSync("vxsettings", ["export", "--format", "html", "-o", file, "--installation", join(folder, "none"),
    "--personal", join(import.meta.dirname, "screenshots.json")]);
const browser = await chromium.launch({
    executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
    args: ["--disable-gpu", ...(process.getuid() === 0 ? ["--no-sandbox"] : [])],
});
async function picture(name, hash, context, prepare = () => {}) {
    const page = await browser.newPage({ viewport: { width: 1200, height: 680 }, ...context });
    await page.goto(pathToFileURL(file).href + hash);
    await page.waitForTimeout(500);
    await prepare(page);
    await page.screenshot({ path: join(import.meta.dirname, `../../../docs/${name}.png`) });
    await page.close();
}
async function edit(page, path, change) {
    await page.evaluate((path) => { location.hash = path; }, path);
    await page.waitForTimeout(200);
    await page.keyboard.press("e");
    await change(page.locator(".editor"));
}
await picture("settings-page", "#verdix.colors", {});
await picture("settings-page-dark", "#?q=dark+theme", { colorScheme: "dark" });
await picture("settings-page-phone", "#?q=font+size", { viewport: { width: 390, height: 720 }, hasTouch: true, isMobile: true });
await picture("settings-page-editing", "", {}, async (page) => {
    await edit(page, "verdix.commandwindow.NumericFormat", (editor) => editor.locator("select").selectOption("long"));
    await page.getByRole("button", { name: "Done" }).click();
    await edit(page, "verdix.colors.CommentColor", (editor) => editor.getByLabel("Colour", { exact: true }).fill("#b06000"));
    await page.getByRole("button", { name: "Done" }).click();
    await edit(page, "verdix.colors.KeywordColor", (editor) => editor.getByLabel("Green").fill("300"));
    await page.keyboard.press("Tab");
    await page.locator("#show-changes").click();
    await page.getByText("Commands", { exact: true }).click();
});
await browser.close();
rmSync(folder, { recursive: true });
