// Editing a value in its row.

/** The open editors by setting. */
const editors = new Map();

function makeButton(text, type, action) {
    const button = make("button", { type, textContent: text });
    button.addEventListener("click", action);
    return button;
}

/** The control of a setting in its row, with the reason for which its value is refused. */
class Editor {
    constructor(setting) {
        this.setting = setting;
        this.changeBefore = changes.get(setting.path);
        this.isTouched = false;
        this.json = valueNow(setting); // what the control shows
        this.control = makeControl(setting, setting.isSecret ? undefined : (this.json ?? undefined));
        this.message = make("p", { className: "message", role: "alert", id: `message-${setting.path}` });
        this.nameFields();
        this.form = this.makeForm();
    }

    /** The fields of the control: a colour has several. */
    get fields() {
        const { element } = this.control;
        return element.matches("input, select, textarea") ? [element] : [...element.querySelectorAll("input, select")];
    }

    nameFields() {
        this.control.element.setAttribute("aria-label", this.setting.path);
        if (!this.fields.includes(this.control.element)) {
            this.control.element.setAttribute("role", "group");
        }
        this.fields.forEach((field) => field.setAttribute("aria-describedby", this.message.id));
    }

    makeForm() {
        const { setting, control } = this;
        const notes = [control.hint, setting.constraint.needsProgram && "checked further when it is set"].filter(Boolean);
        this.removeButton = makeButton("Remove from my file", "button", () => this.remove());
        this.removeButton.hidden = personalValue(setting) === undefined;
        const form = make("form", { className: "editor", noValidate: true }, control.element, this.message,
            make("p", { className: "note", textContent: notes.join("; "), hidden: notes.length === 0 }),
            make("div", { className: "buttons" }, makeButton("Done", "submit", () => {}),
                makeButton("Cancel", "button", () => this.cancel()), this.removeButton));
        form.addEventListener("input", () => this.onInput());
        form.addEventListener("change", () => this.commit());
        form.addEventListener("submit", (event) => this.onSubmit(event));
        form.addEventListener("keydown", (event) => {
            if (event.key === "Escape" && !event.isComposing) {
                event.preventDefault();
                this.cancel();
            }
        });
        return form;
    }

    open() {
        editors.set(this.setting, this);
        this.setting.row.cells[1].append(this.form);
        this.setting.row.classList.add("editing");
        this.fields[0].focus();
    }

    /** Shows the effective value, if another one than that of the control became it. */
    follow() {
        this.removeButton.hidden = personalValue(this.setting) === undefined;
        if (valueNow(this.setting) !== this.json) {
            const editor = new Editor(this.setting);
            editors.set(this.setting, editor);
            this.form.replaceWith(editor.form);
        }
    }

    close() {
        if (this.form.contains(document.activeElement)) {
            // Before anything else, because a field that is left commits what was typed.
            this.setting.row.querySelector("th a").focus({ preventScroll: true });
        }
        editors.delete(this.setting);
        this.form.remove();
        this.setting.row.classList.remove("editing");
        showInRow(this.setting);
    }

    /** Checks what was entered, and shows why it is refused. Returns the value if it is accepted. */
    check() {
        const { read, notation = readJson } = this.control;
        const { value, message = "" } = checkValue(read(), this.setting.constraint, this.setting.isSecret, notation);
        this.message.textContent = message;
        this.fields.forEach((field) => field.setAttribute("aria-invalid", String(message !== "")));
        return value;
    }

    /** Makes what was entered a change; returns whether it is accepted. */
    commit() {
        const value = this.check();
        if (value) {
            this.json = formatJson(value, this.setting.constraint);
            changeValue(this.setting, this.json);
        }
        return value !== undefined;
    }

    onInput() {
        this.isTouched = true;
        if (this.message.textContent !== "") {
            this.check();
        }
    }

    onSubmit(event) {
        event.preventDefault();
        if (!this.isTouched || this.commit()) {
            this.close();
        }
    }

    remove() {
        this.close();
        changeValue(this.setting, null);
    }

    cancel() {
        this.close();
        changeValue(this.setting, this.changeBefore);
    }
}

function openEditor(setting) {
    if (setting.fixedReason) {
        announce(`${setting.path} cannot be edited: ${setting.fixedReason}`);
    } else if (editors.has(setting)) {
        editors.get(setting).fields[0].focus();
    } else {
        new Editor(setting).open();
    }
}
