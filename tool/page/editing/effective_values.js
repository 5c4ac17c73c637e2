// The effective value of each setting: as exported, with the file that was opened, and with the reader's changes.

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

/** Whether the effective value is another one than the factory value. */
const isModified = (setting) => originOf(setting) !== "factory" && valueNow(setting) !== setting.factory;

function dropIneffectiveChange(setting) {
    const change = changes.get(setting.path);
    if (change === null ? personalValue(setting) === undefined : change === undefined || change === valueBefore(setting)) {
        changes.delete(setting.path);
    }
}

/** Changes a setting to a value as JSON; null removes its personal value, undefined takes back what was changed. */
function changeValue(setting, json) {
    changes.set(setting.path, json);
    dropIneffectiveChange(setting);
    onChange(setting);
}

/** Takes over the values of a settings file. Returns its FileCheck. */
function openFile(name, text) {
    const file = readSettingsFile(text);
    const check = new FileCheck(file);
    const { values } = check;
    const concerned = settings.filter((setting) => personalValue(setting) !== undefined || values.has(setting.path));
    opened = { name, file, values };
    for (const setting of concerned) {
        dropIneffectiveChange(setting);
        showInRow(setting);
    }
    return check;
}

/** Returns the settings file with the changes: the opened one, or a new one. */
const editedFile = () => editSettingsFile(opened?.file ?? readSettingsFile(""), changes);
