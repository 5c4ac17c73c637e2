// Editing a value in its row.

/** The open editors, {form, field}, by setting. */
const editors = new Map();

function describe(setting, control) {
    const accepts = setting.row.cells[2];
    accepts.id ||= `accepts-${setting.path}`;
    const field = control.element.matches(".colour") ? null : control.element;
    (field ?? control.element).setAttribute("aria-label", setting.path);
    if (!field) {
        control.element.setAttribute("role", "group");
    }
    return field ?? control.element.querySelector("input");
}

function openEditor(setting) {
    if (setting.lockedReason) {
        announce(`${setting.path} cannot be edited: ${setting.lockedReason}`);
        return;
    }
    if (editors.has(setting)) {
        editors.get(setting).field.focus();
        return;
    }
    const before = changes.get(setting.path);
    const json = setting.isSecret ? undefined : (valueNow(setting) ?? undefined);
    const control = makeControl(setting, json);
    const field = describe(setting, control);
    const message = make("p", { className: "message", role: "alert", id: `message-${setting.path}` });
    const button = (text, action, type = "button") => {
        const element = make("button", { type, textContent: text });
        element.addEventListener("click", action);
        return element;
    };
    const show = (text) => {
        message.textContent = text;
        for (const part of control.element.matches("input, select, textarea")
            ? [control.element] : control.element.querySelectorAll("input, select")) {
            part.setAttribute("aria-invalid", String(text !== ""));
            part.setAttribute("aria-describedby", message.id);
        }
    };
    const commit = () => {
        const { value, message: reason } = checkValue(control.read(), setting.constraint, setting.isSecret);
        show(reason ?? "");
        if (value) {
            changeValue(setting, formatJson(value, setting.constraint));
        }
        return value !== undefined;
    };
    const remove = () => {
        removeValue(setting);
        closeEditor(setting);
    };
    const cancel = () => {
        if (before === undefined) {
            undoChange(setting);
        } else {
            changes.set(setting.path, before);
            onChange(setting);
        }
        closeEditor(setting);
    };
    let isTouched = false;
    const done = (event) => {
        event.preventDefault();
        if (!isTouched || commit()) {
            closeEditor(setting);
        }
    };
    const notes = [control.hint, setting.constraint.needsProgram && "checked further when it is set"].filter(Boolean);
    const form = make("form", { className: "editor", noValidate: true }, control.element, message,
        ...(notes.length ? [make("p", { className: "note", textContent: notes.join("; ") })] : []),
        make("div", { className: "buttons" }, button("Done", () => {}, "submit"), button("Cancel", cancel),
            ...(personalValue(setting) === undefined ? [] : [button("Remove from my file", remove)])));
    form.addEventListener("input", () => {
        isTouched = true;
        if (message.textContent) {
            show(checkValue(control.read(), setting.constraint, setting.isSecret).message ?? "");
        }
    });
    form.addEventListener("change", commit);
    form.addEventListener("submit", done);
    form.addEventListener("keydown", (event) => {
        if (event.key === "Escape") {
            event.preventDefault();
            cancel();
        }
    });
    editors.set(setting, { form, field });
    setting.row.cells[1].append(form);
    setting.row.classList.add("editing");
    field.focus();
}

function closeEditor(setting) {
    const { form } = editors.get(setting);
    const hadFocus = form.contains(document.activeElement);
    editors.delete(setting);
    form.remove();
    setting.row.classList.remove("editing");
    showInRow(setting);
    if (hadFocus) {
        setting.row.querySelector("th a").focus({ preventScroll: true });
    }
}
