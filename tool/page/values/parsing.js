// Values of settings from JSON: {class, rows, columns, elements}, with the elements row by row.

const unsuitable = ({ start }, what) => new ParseError(start, `expected ${what}`, true);
const isString = (node) => node.kind === "string";
const isNonFiniteName = (string) => ["NaN", "Inf", "-Inf"].includes(string);

/** Returns least and greatest number of an integer class as BigInt; undefined for other classes. */
function integerLimits(className) {
    const [, unsigned, bits] = /^(u?)int(\d+)$/.exec(className ?? "") ?? [];
    if (bits === undefined) {
        return undefined;
    }
    const count = 1n << BigInt(bits);
    return unsigned ? { least: 0n, greatest: count - 1n } : { least: -count / 2n, greatest: count / 2n - 1n };
}

function parseDouble(token) {
    const number = Number(token);
    const isTooSmall = number === 0 && /[1-9]/.test(token.split(/e/i)[0]);
    return Number.isFinite(number) && !isTooSmall ? number : undefined;
}

/** Returns a whole number within the limits as a number, or as a BigInt beyond 2^53; undefined for any other. */
function parseInteger(token, { least, greatest }) {
    const number = parseDouble(token);
    const exact = /^-?\d+$/.test(token) ? BigInt(token)
        : Number.isSafeInteger(number) ? BigInt(number) : undefined;
    if (exact === undefined || exact < least || exact > greatest) {
        return undefined;
    }
    return Number.isSafeInteger(Number(exact)) ? Number(exact) : exact;
}

function toElement(node, className) {
    const found = isString(node) ? "a string" : node.text;
    const limits = integerLimits(className);
    const fail = (what) => unsuitable(node, `${what}, not ${found}`);
    if (className === "logical") {
        if (node.kind !== "boolean") {
            throw fail("true or false");
        }
        return node.text === "true";
    }
    if (limits || className === "double") {
        const number = node.kind === "number" ? (limits ? parseInteger(node.text, limits) : parseDouble(node.text))
            : !limits && isString(node) && isNonFiniteName(node.string) ? Number(node.string.replace("Inf", "Infinity"))
                : undefined;
        if (number === undefined) {
            throw fail(limits ? `a whole number from ${limits.least} to ${limits.greatest}` : "a number");
        }
        return number;
    }
    if (!isString(node) && !(className === "string" && node.kind === "null")) {
        throw fail("a string");
    }
    return isString(node) ? node.string : null;
}

/** Returns the elements of a list, or of a list of rows, with the shape that the notation gives them. */
function gridOf(node) {
    if (node.kind !== "array") {
        return { notation: "scalar", rows: 1, columns: 1, nodes: [node] };
    }
    const isNested = node.elements[0]?.kind === "array";
    const lists = isNested ? node.elements : [node];
    const columns = lists[0].elements.length;
    const odd = lists.find((list) => list.kind !== "array" || list.elements.length !== columns);
    if (odd) {
        throw new ParseError(odd.start, `expected a list of ${columns} elements as in the first row`);
    }
    return { notation: isNested ? "rows" : "list", rows: lists.length, columns,
        nodes: lists.flatMap((list) => list.elements) };
}

function requireScalars(nodes) {
    for (const node of nodes) {
        if (node.kind === "array") {
            throw new ParseError(node.start, "expected a list of values, or a list of rows of the same length");
        }
        if (node.kind === "object") {
            throw new ParseError(node.start, "expected a value or a list, not an object");
        }
    }
}

function classByNotation({ notation, nodes }) {
    if (nodes.length === 0) {
        return "double";
    }
    const token = nodes.find((node) => !isString(node));
    if (!token) {
        const areNumbers = notation === "rows" && nodes.every((node) => isNonFiniteName(node.string));
        return areNumbers ? "double" : notation === "scalar" ? "char" : "cell";
    }
    return token.kind === "boolean" ? "logical" : "double";
}

/** Returns the value of a JSON text, or of one that another function reads, for a constraint. Throws ParseError. */
function parseValue(text, constraint, read = readJson) {
    const root = read(text);
    const grid = gridOf(root);
    requireScalars(grid.nodes);
    const isScalar = grid.notation === "scalar";
    const isName = constraint.names?.length > 0 && isScalar && isString(grid.nodes[0]);
    const className = isName ? "char" : (constraint.class ?? classByNotation(grid));
    if (className === "char") {
        if (!isScalar || !isString(grid.nodes[0])) {
            throw unsuitable(root, "a string");
        }
        const string = grid.nodes[0].string;
        return { class: "char", rows: 1, columns: string.length, elements: [string] };
    }
    if (className === "cell" && isScalar) {
        throw unsuitable(root, "a list of strings");
    }
    if (className === "cell" && grid.rows !== 1) {
        throw unsuitable(root, "a list of strings in one row");
    }
    const elements = grid.nodes.map((node) => toElement(node, className));
    return { class: className, rows: grid.rows, columns: grid.columns, elements };
}
