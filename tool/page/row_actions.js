// The buttons of the row that the pointer or the focus is in: one set for the whole page.

const editButton = make("button", { type: "button", className: "edit", textContent: "Edit" });
const copyButton = make("button", { type: "button", className: "copy", textContent: "Copy", "aria-label": "Copy path" });
const rowActions = make("div", { className: "actions" }, editButton, copyButton);

function offerActions(event) {
    const setting = settingOf(event.target);
    const isUsedByKeyboard = rowActions.querySelector(":focus-visible") !== null; // moving them would lose the focus
    if (!setting || setting.row.contains(rowActions) || isUsedByKeyboard) {
        return;
    }
    editButton.hidden = setting.fixedReason !== "";
    editButton.setAttribute("aria-label", `Edit ${setting.path}`);
    copyButton.textContent = "Copy";
    setting.row.cells[2].prepend(rowActions);
}

/** Copies without the clipboard API, which is not available to pages from files in every browser. */
function copyBySelection(text) {
    const area = make("textarea", { value: text });
    const focused = document.activeElement;
    document.body.append(area);
    area.select();
    const isCopied = document.execCommand("copy");
    area.remove();
    focused.focus();
    return isCopied;
}

/** Copies a text; says so, with what was copied as `name`. Returns whether that was possible. */
async function copyText(text, name) {
    let isCopied = true;
    try {
        await navigator.clipboard.writeText(text);
    } catch {
        isCopied = copyBySelection(text);
    }
    announce(isCopied ? `Copied ${name}` : `Cannot copy ${name}`);
    return isCopied;
}

async function copyPath({ path, row }) {
    const isCopied = await copyText(path, path);
    if (row.contains(copyButton)) {
        copyButton.textContent = isCopied ? "Copied" : "Not copied";
    }
}
