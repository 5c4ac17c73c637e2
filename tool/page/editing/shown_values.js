// How values look, in the rows and in the panel.

const maskedValue = "********";

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

/** Shows the effective value in the row, and what it replaces; in the editor, while it is open. */
function showInRow(setting) {
    const cell = setting.row.cells[1];
    if (editors.has(setting)) {
        editors.get(setting).follow();
        return;
    }
    if (!changes.has(setting.path) && !opened) {
        showExported(setting);
        return;
    }
    setting.exported ??= [...cell.childNodes];
    const origin = originOf(setting);
    const isMarked = origin === "changed" || isModified(setting);
    if (!isMarked) {
        cell.replaceChildren(...showValue(setting, setting.factory));
    } else {
        const [label, replaced] = origin === "changed" ? ["before", valueBefore(setting)] : ["factory", setting.factory];
        cell.replaceChildren(make("div", { className: "held" }, ...showValue(setting, valueNow(setting))),
            make("div", { className: "factory" }, `${label}: `, ...showValue(setting, replaced)));
    }
    const badge = badgeOf(setting);
    badge.hidden = !isMarked;
    badge.textContent = origin;
    badge.className = `badge ${origin === "changed" ? "changed" : "modified"}`;
}
