// The value of each setting: as exported, in the file that was opened, and with the reader's changes.

const maskedValue = "********";

/** The settings file that the reader opened: {name, file, values}, the accepted values by path. */
let opened = null;

/** What the reader changed: a value as JSON, or null to remove the one of the file, by path. */
const changes = new Map();

/** Returns the personal value as JSON; undefined without one, null if it is a secret that the page does not have. */
const personalValue = (setting) => (opened && !setting.lock ? opened.values.get(setting.path) : setting.personal);

const valueBeneath = ({ installation, factory }) => (installation === undefined ? factory : installation);

function valueBefore(setting) {
    const personal = personalValue(setting);
    return personal === undefined ? valueBeneath(setting) : personal;
}

function valueNow(setting) {
    const change = changes.get(setting.path);
    return change === undefined ? valueBefore(setting) : change === null ? valueBeneath(setting) : change;
}

function originOf(setting) {
    return changes.has(setting.path) ? "changed" : personalValue(setting) !== undefined ? "personal"
        : setting.installation !== undefined ? "installation" : "factory";
}

/** Whether the value in effect is another one than the factory value. */
const isModified = (setting) => originOf(setting) !== "factory" && valueNow(setting) !== setting.factory;

/** Returns a CSS colour for the value of a colour; undefined for any other. */
function cssColour({ elements, class: className }, { colour }) {
    if (!colour || className === "char" || elements.length !== 3) {
        return undefined;
    }
    const parts = elements.map((part) => (colour === "normalised" ? `${part * 100}%` : part));
    return `rgb(${parts.join(" ")})`;
}

/** Makes the elements that show a value. */
function showValue(setting, json) {
    if (json === undefined) {
        return [make("span", { className: "note", textContent: "no value" })];
    }
    if (setting.isSecret && json !== setting.factory) {
        return [make("code", { textContent: maskedValue })];
    }
    const value = parseValue(json, setting.constraint);
    const colour = cssColour(value, setting.constraint);
    const swatch = make("span", { className: "swatch" });
    swatch.style.background = colour ?? "";
    return [...(colour ? [swatch] : []), make("code", { textContent: formatValue(value, 160) })];
}

function badgeOf(setting) {
    setting.badge ??= setting.row.querySelector(".badge.modified") ?? make("span");
    if (!setting.badge.isConnected) {
        setting.row.querySelector("th a").after(" ", setting.badge);
    }
    return setting.badge;
}

function showExported(setting) {
    if (setting.exported) {
        setting.row.cells[1].replaceChildren(...setting.exported);
        badgeOf(setting).hidden = !("modified" in setting.row.dataset);
        badgeOf(setting).textContent = setting.row.dataset.modified ?? "";
        badgeOf(setting).className = "badge modified";
    }
}

/** Shows the value in effect in the row, and what it replaces. */
function showInRow(setting) {
    const cell = setting.row.cells[1];
    if (editors.has(setting)) {
        return; // until the editor is closed
    }
    if (!changes.has(setting.path) && !opened) {
        showExported(setting);
        return;
    }
    setting.exported ??= [...cell.childNodes];
    const origin = originOf(setting);
    if (!isModified(setting) && !changes.has(setting.path)) {
        cell.replaceChildren(...showValue(setting, setting.factory));
    } else {
        const [label, replaced] = origin === "changed" ? ["before", valueBefore(setting)] : ["factory", setting.factory];
        cell.replaceChildren(make("div", { className: "held" }, ...showValue(setting, valueNow(setting))),
            make("div", { className: "factory" }, `${label}: `, ...showValue(setting, replaced)));
    }
    const badge = badgeOf(setting);
    badge.hidden = origin === "factory";
    badge.textContent = origin;
    badge.className = `badge ${origin === "changed" ? "changed" : "modified"}`;
}

/** Changes a setting to a value as JSON; back to the value before if it is that. */
function changeValue(setting, json) {
    if (json === valueBefore(setting)) {
        changes.delete(setting.path);
    } else {
        changes.set(setting.path, json);
    }
    onChange(setting);
}

/** Removes the personal value of a setting. */
function removeValue(setting) {
    if (personalValue(setting) === undefined) {
        changes.delete(setting.path);
    } else {
        changes.set(setting.path, null);
    }
    onChange(setting);
}

function undoChange(setting) {
    changes.delete(setting.path);
    onChange(setting);
}

/** Takes over the values of a settings file. Returns what is wrong with those that are ignored. */
function openFile(name, text) {
    const file = readSettingsFile(text);
    const before = new Set([...settings.filter(({ personal }) => personal !== undefined), ...(opened ? fileSettings() : [])]);
    const values = new Map();
    const ignored = [];
    for (const { name: path, value } of file.values?.members ?? []) {
        const setting = settingsByPath.get(path);
        const checked = setting?.constraint && !setting.lockedReason
            ? checkValue(value.text, setting.constraint, setting.isSecret) : {};
        values.delete(path);
        if (checked.value) {
            values.set(path, formatJson(checked.value, setting.constraint));
        } else {
            ignored.push(`${path}: ${checked.message ?? (setting ? setting.lockedReason : unknownPath(path))}`);
        }
    }
    opened = { name, file, values };
    for (const setting of new Set([...before, ...fileSettings()])) {
        changeBack(setting);
        onChange(setting);
    }
    return ignored;
}

const fileSettings = () => [...opened.values.keys()].map((path) => settingsByPath.get(path));

function unknownPath(path) {
    const change = changeOf(path);
    return change ? `${change.text}: run vxsettings migrate` : "is not a setting";
}

/** Drops a change that has no effect any more. */
function changeBack(setting) {
    const change = changes.get(setting.path);
    if (change === valueBefore(setting) || (change === null && personalValue(setting) === undefined)) {
        changes.delete(setting.path);
    }
}

/** Returns the settings file with the changes: the opened one, or a new one. */
const editedFile = () => editSettingsFile(opened?.file ?? readSettingsFile(""), changes);
