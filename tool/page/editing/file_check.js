// What is wrong in a settings file, in the words of `vxsettings check`.

function fullPath(path) {
    const [root] = groups.keys();
    return path === root || path.startsWith(`${root}.`) ? path : `${root}.${path}`;
}

class FileCheck {
    values = new Map(); // the accepted ones as JSON, by path
    diagnostics = []; // {offset, path, message}

    constructor({ json, root, values }) {
        this.positions = new PositionIndex(json);
        this.checkDuplicates(root.members);
        this.checkDuplicates(values?.members ?? []);
        root.members.forEach((member) => this.checkTopLevelMember(member));
        values?.members.forEach((member) => this.checkSetting(member));
        this.diagnostics.sort((a, b) => a.offset - b.offset);
    }

    report(offset, path, message) {
        this.diagnostics.push({ offset, path, message });
    }

    checkDuplicates(members) {
        const firsts = new Map();
        for (const { name, start } of members) {
            if (firsts.has(name)) {
                this.report(start, name, `is a duplicate of the one in line ${this.positions.line(firsts.get(name))}; ` +
                    "the last one applies: remove the others");
            } else {
                firsts.set(name, start);
            }
        }
    }

    checkTopLevelMember({ name, start, value }) {
        if (name === "release") {
            this.checkRelease(value);
        } else if (name === "locked") {
            value.elements?.forEach((path) => this.checkLock(path));
        } else if (name !== "$schema" && name !== "settings") { // text editors read $schema
            this.reportUnknownMember(name, start);
        }
    }

    checkRelease({ start, string = "" }) {
        if (!/^R\d{4}[ab]$/.test(string)) {
            this.report(start, "release", 'is not a release: write R, the year and a or b, such as "R2022b"');
        } else if (data.newestRelease && string > data.newestRelease) {
            this.report(start, "release",
                `is newer than the newest known release, ${data.newestRelease}: use the tools of that release`);
        }
    }

    checkLock({ start, string: path }) {
        const alias = settingsByPath.get(path)?.alias;
        if (alias) {
            this.report(start, path, `is locked, but is an alias: write ${alias} instead`);
        } else if (!settingsByPath.has(path) && !groups.has(path)) {
            this.report(start, path, `is locked, but is no setting or group${whatBecameOf(path)}`);
        }
    }

    reportUnknownMember(name, start) {
        const path = fullPath(name);
        const isKnown = settingsByPath.has(path) || groups.has(path);
        this.report(start, name, !isKnown && !name.includes(".")
            ? 'is an unknown member: a settings file has "release", "locked" and "settings"'
            : `has no effect here: write it inside "settings": { ... }${isKnown && path !== name ? `, as ${path}` : ""}`);
    }

    checkSetting({ name: path, start, value }) {
        const setting = settingsByPath.get(path);
        this.values.delete(path); // of duplicates, the last one applies
        if (!setting) {
            this.report(start, path, groups.has(path) ? "is a group: list its settings one by one"
                : `${path === "" ? '"" is' : "is"} not a setting${whatBecameOf(path)}`);
        } else if (setting.alias) {
            this.report(start, path, `is an alias: write ${setting.alias} instead`);
        } else {
            this.checkValueOf(setting, start, value);
        }
    }

    checkValueOf(setting, start, json) {
        const { value, message, offset } = checkValue(json.text, setting.constraint, setting.isSecret);
        if (setting.isReadOnly) {
            this.report(start, setting.path, "is read-only: remove it from the file");
        }
        if (!value) {
            this.report(json.start + offset, setting.path, message);
        } else if (setting.lock) {
            this.report(start, setting.path, setting.fixedReason);
        } else if (!setting.isReadOnly) {
            this.values.set(setting.path, formatJson(value, setting.constraint));
        }
    }
}

/** Returns what releases did to a path; the suggestions of the command are not made here. */
function whatBecameOf(path) {
    const change = changeOf(path);
    return change ? `; ${change.text}` : "";
}
