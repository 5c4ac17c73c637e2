// The control for the value of a setting: {element, read, hint, notation}. `read` returns the value as JSON, or as the
// function `notation` reads it; it may be refused.

const isScalarOf = ({ rows, columns }) => rows === 1 && columns === 1;
const isNumeric = (className) => className === "double" || integerLimits(className) !== undefined;

function tryToDecode(json) {
    try {
        return JSON.parse(json);
    } catch {
        return undefined;
    }
}

/** Returns the JSON for what was typed as a number. */
function numberJson(text) {
    const typed = text.trim();
    if (typeof tryToDecode(typed) === "number") {
        return typed;
    }
    return typed !== "" && Number.isFinite(Number(typed)) ? formatNumber(Number(typed)) : JSON.stringify(typed);
}

function makeSwitch(_, json) {
    const element = make("input", { type: "checkbox", role: "switch", checked: json === "true" });
    return { element, read: () => String(element.checked) };
}

function makeList({ constraint, phrases = {} }, json) {
    const current = tryToDecode(json ?? "");
    const textOf = (value) => (value || "(empty)") + (phrases[value] ? ` – ${phrases[value]}` : "");
    const element = make("select", {},
        ...constraint.allowed.map((value) => new Option(textOf(value), value, false, value === current)));
    if (!constraint.allowed.includes(current)) {
        element.prepend(new Option("choose", "", true, true));
        element.options[0].disabled = true;
    }
    return { element, read: () => JSON.stringify(element.value) };
}

function makeNumber({ constraint }, json) {
    const { lower, upper, isWhole } = constraint;
    const limits = integerLimits(constraint.class);
    const value = tryToDecode(json ?? "") ?? "";
    const isBounded = isWhole || limits || (lower !== undefined && upper !== undefined);
    const element = isBounded && typeof value !== "string"
        ? make("input", { type: "number", min: String(lower ?? limits?.least ?? ""), max: String(upper ?? limits?.greatest ?? ""),
            step: isWhole || limits ? "1" : "any" })
        : make("input", { type: "text", inputMode: "decimal", size: 12 });
    element.value = value;
    return { element, read: () => (element.validity.badInput ? '"that"' : numberJson(element.value)) };
}

function makeString({ constraint }, json) {
    const value = tryToDecode(json ?? "") ?? "";
    const element = value.length > 60 || value.includes("\n")
        ? make("textarea", { rows: Math.min(8, 2 + value.split("\n").length) })
        : make("input", { type: "text" });
    element.value = value;
    return { element, read: () => JSON.stringify(element.value) };
}

function makePassword() {
    const element = make("input", { type: "password", autocomplete: "new-password" });
    return { element, read: () => JSON.stringify(element.value) };
}

/** One string on each line. */
function makeLines(_, json) {
    const element = make("textarea", {});
    const lines = tryToDecode(json ?? "[]") ?? [];
    element.value = lines.join("\n");
    element.rows = Math.min(10, lines.length + 2);
    return { element, hint: "one on each line", read: () => JSON.stringify(element.value === "" ? [] : element.value.split("\n")) };
}

function makeNotation(value) {
    return make("textarea", { className: "json", value, spellcheck: false, rows: Math.min(10, 2 + Math.ceil(value.length / 40)) });
}

function makeJson(_, json) {
    const element = makeNotation(json ?? "");
    return { element, hint: "as JSON", read: () => element.value };
}

/** Several numbers, as they are shown. */
function makeNumbers({ constraint }, json) {
    const element = makeNotation(json === undefined ? "" : formatValue(parseValue(json, constraint)));
    return { element, hint: "such as [1 2 3] or [1 2; 3 4], or as JSON", notation: readNumbers, read: () => element.value };
}

const hexParts = (hex) => [1, 3, 5].map((at) => parseInt(hex.slice(at, at + 2), 16));
const toHex = (parts) => `#${parts.map((part) => Math.round(part).toString(16).padStart(2, "0")).join("")}`;

/** A colour input beside its three numbers, and the names that the setting accepts. */
function makeColour({ constraint: { colour, names } }, json) {
    const scale = colour === "normalised" ? 255 : 1;
    const current = tryToDecode(json ?? "");
    const triple = Array.isArray(current) ? current : [0, 0, 0];
    const picker = make("input", { type: "color", "aria-label": "Colour" });
    const numbers = ["Red", "Green", "Blue"].map((name, at) => make("input", { type: "number", min: "0",
        max: String(255 / scale), step: scale === 1 ? "1" : "any", value: triple[at], "aria-label": name }));
    const name = make("select", { "aria-label": "Name of the colour", hidden: names.length === 0 },
        new Option("numbers", ""), ...names.map((each) => new Option(each, each, false, each === current)));
    const showPicker = () => {
        const parts = numbers.map((number) => Math.min(255, Math.max(0, number.valueAsNumber * scale)));
        picker.value = parts.some(Number.isNaN) ? picker.value : toHex(parts);
    };
    const showParts = () => numbers.forEach((number) => { number.hidden = picker.hidden = name.value !== ""; });
    picker.addEventListener("input", () => hexParts(picker.value).forEach((part, at) => {
        numbers[at].value = Number((part / scale).toFixed(scale === 1 ? 0 : 4));
    }));
    numbers.forEach((number) => number.addEventListener("input", showPicker));
    name.addEventListener("input", showParts);
    showPicker();
    showParts();
    const element = make("div", { className: "colour" }, picker, ...numbers, name);
    const readNumbers = () => `[${numbers.map((number) => numberJson(number.value)).join(", ")}]`;
    return { element, read: () => (name.value === "" ? readNumbers() : JSON.stringify(name.value)) };
}

/** Whether the lines of a text field can hold the value: no string in it has a line break or is the only, empty one. */
function fitsLines(json) {
    const lines = tryToDecode(json ?? "[]");
    return !lines.some((line) => /[\r\n]/.test(line)) && !(lines.length === 1 && lines[0] === "");
}

function controlFor({ constraint, isSecret }, json) {
    const { class: className, allowed, colour } = constraint;
    const isText = className === "char" || (className === "string" && isScalarOf(constraint));
    if (isSecret && isText) {
        return makePassword;
    }
    if (colour) {
        return makeColour;
    }
    if (isText) {
        const keepsReturns = !(tryToDecode(json ?? "") ?? "").includes("\r"); // which text fields do not
        return allowed ? makeList : keepsReturns ? makeString : makeJson;
    }
    if (className === "cell") {
        return fitsLines(json) ? makeLines : makeJson;
    }
    const isScalar = isScalarOf(constraint);
    const areNumbers = isNumeric(className) || (className === undefined && constraint.lower !== undefined);
    return isScalar && className === "logical" ? makeSwitch : !areNumbers ? makeJson : isScalar ? makeNumber : makeNumbers;
}

const makeControl = (setting, json) => controlFor(setting, json)(setting, json);
