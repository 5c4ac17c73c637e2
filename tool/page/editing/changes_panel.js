// The panel with the reader's changes, and what can be done with them.

const panel = byId("changes");
const changeList = byId("change-list");
const fileInput = byId("open-file");
const downloadButton = byId("download");
const copyCommandsButton = byId("copy-commands");
let isSaved = true; // whether all changes were downloaded or copied since the last one was made

const fileName = () => opened?.name ?? "settings.json";
const commandLines = () => [...changes].map(([path, json]) => commandFor(settingsByPath.get(path), json));

function makeChange(setting) {
    const link = make("a", { href: `#${setting.path}`, textContent: setting.path });
    const arrow = make("span", { className: "arrow", textContent: " → ", "aria-label": "becomes" , role: "img" });
    const undo = make("button", { type: "button", textContent: "Undo", "aria-label": `Undo ${setting.path}` });
    undo.addEventListener("click", () => {
        const item = undo.closest("li");
        const next = item.nextElementSibling ?? item.previousElementSibling;
        const path = next?.querySelector("a").hash;
        changeValue(setting, undefined);
        (changeList.querySelector(`a[href="${path}"]`) ?? panel.querySelector("h2")).focus();
    });
    return make("li", {}, link, undo, make("div", { className: "values" }, ...showValue(setting, valueBefore(setting)), arrow,
        ...showValue(setting, valueNow(setting))));
}

function describeFile(check) {
    const count = opened?.values.size ?? 0;
    byId("file-state").textContent = opened ? `${opened.name}: ${count} ${count === 1 ? "value" : "values"} shown`
        : "Open your settings file to change it; without it, the download holds only the changes.";
    const diagnostics = check?.diagnostics ?? [];
    const lines = diagnostics.slice(0, 20).map(({ offset, path, message }) => {
        const { line, column } = check.positions.at(offset);
        return `${line}:${column}: ${path}: ${message}`;
    });
    lines.push(...(diagnostics.length > lines.length ? [`and ${diagnostics.length - lines.length} more`] : []));
    byId("diagnostics").replaceChildren(...lines.map((textContent) => make("li", { textContent })));
    byId("diagnostics-label").hidden = lines.length === 0;
    byId("diagnostics-label").querySelector("summary").textContent = `Problems in this file: ${diagnostics.length}`;
}

function showChanges() {
    const hasChanges = changes.size > 0;
    byId("modified-label").hidden = !settings.some(isModified);
    changeList.replaceChildren(...[...changes.keys()].map((path) => makeChange(settingsByPath.get(path))));
    byId("no-changes").hidden = hasChanges;
    byId("change-actions").hidden = !hasChanges;
    byId("command-list").textContent = commandLines().join("\n");
    byId("import-note").hidden = opened !== null;
    downloadButton.textContent = `Download ${fileName()}`;
    byId("show-changes").textContent = hasChanges ? `Changes (${changes.size})` : "Changes";
    byId("show-changes").classList.toggle("primary", hasChanges);
}

/** Called after each change of a value. */
function onChange(setting) {
    isSaved = false;
    showInRow(setting);
    showChanges();
}

/** Shows or hides the panel. The row that was last edited or linked to stays in view. */
function setPanel(isShown) {
    const row = document.querySelector(".editing, .target");
    const wasInView = row && row.getBoundingClientRect().top > 0 && row.getBoundingClientRect().top < innerHeight;
    document.documentElement.classList.toggle("changing", isShown);
    panel.hidden = !isShown;
    byId("show-changes").setAttribute("aria-expanded", String(isShown));
    if (wasInView) {
        row.scrollIntoView({ block: "nearest" });
    }
    (isShown ? panel.querySelector("h2") : byId("show-changes")).focus();
}

function downloadFile() {
    const url = URL.createObjectURL(new Blob([editedFile()], { type: "application/json" }));
    make("a", { href: url, download: fileName() }).click();
    setTimeout(() => URL.revokeObjectURL(url), 60_000);
    isSaved = true;
    announce(`Downloaded ${fileName()}`);
}

async function copyCommands() {
    const lines = commandLines();
    const isComplete = ![...changes].some(([path, json]) => json !== null && settingsByPath.get(path).isSecret);
    const isCopied = await copyText(`${lines.join("\n")}\n`, `${lines.length} commands`);
    isSaved ||= isCopied && isComplete;
}

function undoAll() {
    const undone = [...changes.keys()].map((path) => settingsByPath.get(path));
    changes.clear();
    undone.forEach(showInRow);
    showChanges();
    panel.querySelector("h2").focus();
}

/** Throws ParseError if the text has other bytes than those that it was decoded from. */
function requireUtf8(bytes, text) {
    const invalid = utf8(text).findIndex((byte, at) => byte !== bytes[at]);
    if (invalid >= 0) {
        const valid = new TextDecoder().decode(bytes.subarray(0, invalid), { stream: true });
        throw new ParseError(valid.length, "invalid UTF-8: save the file as UTF-8");
    }
}

function placeOf(error, text) {
    const { line, column } = new PositionIndex(text.replace(byteOrderMark, "")).at(error.offset);
    return `:${line}:${column}`;
}

async function openChosenFile() {
    const [chosen] = fileInput.files;
    if (!chosen) {
        return;
    }
    let text = "";
    try {
        const bytes = new Uint8Array(await chosen.arrayBuffer());
        text = new TextDecoder("utf-8", { ignoreBOM: true }).decode(bytes);
        requireUtf8(bytes, text);
        describeFile(openFile(chosen.name, text));
        showChanges();
        applyFilters();
        showNotice("");
    } catch (error) {
        const place = error instanceof ParseError ? placeOf(error, text) : "";
        showNotice(`${chosen.name}${place}: ${error.message}. It was not opened; nothing is changed.`);
    }
    fileInput.value = "";
}

function startPanel() {
    byId("show-changes").addEventListener("click", () => setPanel(panel.hidden));
    byId("close-changes").addEventListener("click", () => setPanel(false));
    fileInput.addEventListener("change", openChosenFile);
    downloadButton.addEventListener("click", downloadFile);
    copyCommandsButton.addEventListener("click", copyCommands);
    byId("undo-all").addEventListener("click", undoAll);
    addEventListener("beforeunload", (event) => {
        if (!isSaved && changes.size > 0) {
            event.preventDefault();
        }
    });
    describeFile();
    showChanges();
}
