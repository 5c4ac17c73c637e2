// Values as people read them, in the notation of the scripting language, and as settings files hold them.

/** Returns the shortest decimal: 5000, 0.1, 1e-07, NaN, Inf. */
function formatNumber(number) {
    if (typeof number === "bigint" || (Math.abs(number) <= 2 ** 53 && Number.isInteger(number) && !Object.is(number, -0))) {
        return String(number);
    }
    if (!Number.isFinite(number)) {
        return String(number).replace("Infinity", "Inf");
    }
    if (number === 0) {
        return "-0";
    }
    const [, sign, digits, exponent] = /^(-?)([\d.]+)e(.*)$/.exec(number.toExponential());
    const scientific = `${digits}e${exponent[0]}${exponent.slice(1).padStart(2, "0")}`;
    const significant = digits.replace(".", "");
    const point = Number(exponent) + 1;
    const fixed = point <= 0 ? `0.${"0".repeat(-point)}${significant}`
        : point < significant.length ? `${significant.slice(0, point)}.${significant.slice(point)}`
            : BigInt(Math.abs(number)).toString();
    return sign + (fixed.length <= scientific.length ? fixed : scientific);
}

const unprintable = /[\u0000-\u001f\u007f-\u009f\u061c\u200e\u200f\u202a-\u202e\u2066-\u2069]/g;

function escapeUnprintable(text) {
    const hex = (character, length) => character.charCodeAt(0).toString(16).padStart(length, "0");
    return text.replace(unprintable, (character) => ({ "\n": "\\n", "\t": "\\t" })[character] ??
        (character < "\u0080" ? `\\x${hex(character, 2)}` : `\\u${hex(character, 4)}`));
}

function truncate(text, width) {
    const characters = [...text];
    return characters.length > width ? `${characters.slice(0, width - 1).join("")}…` : text;
}

const rowsOf = ({ rows, columns, elements }) =>
    Array.from({ length: rows }, (_, row) => elements.slice(row * columns, (row + 1) * columns));

/** Formats a value on one line: true, [14 0 255], {"a","b"}, "long". */
function formatValue(value, width = Infinity) {
    const format = (element) => (typeof element === "string" ? `"${element.replaceAll('"', '""')}"`
        : element === null ? "missing" : typeof element === "boolean" ? String(element) : formatNumber(element));
    const isCell = value.class === "cell";
    const join = () => rowsOf(value).map((row) => row.map(format).join(isCell ? "," : " ")).join("; ");
    const text = isCell ? `{${join()}}` : value.elements.length === 1 ? format(value.elements[0])
        : `[${value.columns === 0 ? "" : join()}]`;
    return truncate(escapeUnprintable(text), width);
}

function formatJsonElement(element) {
    if (typeof element === "number" || typeof element === "bigint") {
        const decimal = formatNumber(element);
        return /\d/.test(decimal) ? decimal : `"${decimal}"`;
    }
    return JSON.stringify(element);
}

/** Formats a value as settings files hold it. */
function formatJson(value, constraint) {
    const isScalar = value.class !== "cell" && value.rows === 1 && value.elements.length === 1;
    const rows = rowsOf(value).map((row) => `[${row.map(formatJsonElement).join(", ")}]`);
    const json = isScalar ? formatJsonElement(value.elements[0])
        : value.rows === 1 ? rows[0] : `[${rows.join(", ")}]`;
    // In a list of rows, the names of numbers are numbers even if no class is known.
    const isClassKnown = constraint.class && !constraint.names?.length;
    const hasOnlyNames = value.class === "double" && value.elements.length > 0 && !value.elements.some(Number.isFinite);
    const depth = isClassKnown || !hasOnlyNames || json.startsWith("[[") ? 0 : json.startsWith("[") ? 1 : 2;
    return "[".repeat(depth) + json + "]".repeat(depth);
}
