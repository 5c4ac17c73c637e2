// Settings files, edited in place: every byte that is not part of a change stays as it is.

const byteOrderMark = "\ufeff";

/** The members of an object with the whitespace around them, so that removing an added member restores the text. */
class ObjectEdit {
    constructor(text, object, style) {
        this.style = style;
        this.inside = text.slice(object.start + 1, object.end - 1); // between the braces of an empty object
        let at = object.start + 1;
        this.members = object.members.map(({ name, start, nameEnd, value }) => {
            const next = value.end + text.slice(value.end).search(/[^ \t\r\n]/);
            const member = {
                name,
                lead: text.slice(at, start),
                nameText: text.slice(start, nameEnd),
                colon: text.slice(nameEnd, value.start),
                value: value.text,
                trail: text.slice(value.end, next),
            };
            at = next + 1;
            return member;
        });
    }

    set(name, value) {
        const member = this.members.findLast((candidate) => candidate.name === name);
        if (member) {
            member.value = value;
        } else {
            this.add({ name, nameText: JSON.stringify(name), value });
        }
    }

    add(member) {
        const last = this.members.at(-1);
        if (last) {
            const trail = last.trail;
            last.trail = this.members.at(-2)?.trail ?? "";
            this.members.push({ ...member, lead: last.lead, trail, colon: last.colon.includes("\n") ? ": " : last.colon });
        } else {
            const [lead, trail] = this.inside ? [this.inside, this.inside] : [this.style.opening, this.style.closing];
            this.members.push({ ...member, lead, trail, colon: this.style.colon });
        }
    }

    remove(name) {
        for (let at = this.members.length - 1; at >= 0; --at) {
            if (this.members[at].name === name) {
                this.removeAt(at);
            }
        }
    }

    removeAt(at) {
        const [removed] = this.members.splice(at, 1);
        if (this.members.length === 0) {
            this.inside = removed.lead === removed.trail ? removed.trail : "";
        } else if (at === this.members.length) {
            this.members[at - 1].trail = removed.trail;
        } else {
            this.members[at].lead = removed.lead;
        }
    }

    text() {
        const members = this.members.map(({ lead, nameText, colon, value, trail }) =>
            lead + nameText + colon + value + trail);
        return `{${members.length ? members.join(",") : this.inside}}`;
    }
}

const lastMember = (object, name) => object.members.findLast((member) => member.name === name)?.value;

function newSettingsFile() {
    const release = data.release ? `  "release": ${JSON.stringify(data.release)},\n` : "";
    return `{\n${release}  "settings": {}\n}\n`;
}

/** Damaged locks might let values apply that an administrator excludes. */
function requirePaths(locked) {
    if (locked.kind !== "array") {
        throw new ParseError(locked.start, 'expected an array of paths for "locked"');
    }
    const odd = locked.elements.find(({ kind }) => kind !== "string");
    if (odd) {
        throw new ParseError(odd.start, 'expected the path of a setting or group in "locked"');
    }
}

/** Reads the text of a settings file. Throws ParseError, with an offset after the byte-order mark. */
function readSettingsFile(text) {
    const isEmpty = /^\ufeff?[ \t\r\n]*$/.test(text);
    const prefix = !isEmpty && text.startsWith(byteOrderMark) ? byteOrderMark : "";
    const json = isEmpty ? newSettingsFile() : text.slice(prefix.length);
    const root = readJson(json);
    if (root.kind !== "object") {
        throw new ParseError(root.start, 'expected an object: { "release": ..., "settings": { ... } }');
    }
    const values = lastMember(root, "settings");
    if (values && values.kind !== "object") {
        throw new ParseError(values.start, 'expected an object of paths and values for "settings"');
    }
    const locked = lastMember(root, "locked");
    if (locked) {
        requirePaths(locked);
    }
    return { prefix, json, root, values };
}

/** The whitespace for the first setting of a file: as deep again as the members of the file. */
function nestedStyle({ json, root }) {
    const lineAndIndent = (text) => /\r?\n[ \t]*$/.exec(text)?.[0] ?? "";
    const first = root.members[0];
    const outer = first ? lineAndIndent(json.slice(root.start + 1, first.start)) : "";
    const indent = outer.replace(/^\r?\n/, "");
    const colon = first && /^[^\n]*$/.test(json.slice(first.nameEnd, first.value.start))
        ? json.slice(first.nameEnd, first.value.start) : ": ";
    return { colon, opening: indent && outer + indent, closing: indent && outer };
}

/** Returns the file with each of the changes, a value as JSON or null for a removal, by path. */
function editSettingsFile(file, changes) {
    const { prefix, json, root, values } = file;
    const style = nestedStyle(file);
    const edit = new ObjectEdit(values ? json : "{}", values ?? { start: 0, end: 2, members: [] }, style);
    for (const [path, value] of changes) {
        if (value === null) {
            edit.remove(path);
        } else {
            edit.set(path, value);
        }
    }
    const whole = new ObjectEdit(json, root, { colon: ": ", opening: "\n  ", closing: "\n" });
    whole.set("settings", edit.text());
    return prefix + json.slice(0, root.start) + whole.text() + json.slice(root.end);
}
