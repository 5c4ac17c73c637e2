// Why a setting refuses a value, in the words of `vxsettings check`.

const shownWidth = 60; // characters of a value

function isInRange(number, { lower = -Infinity, upper = Infinity }) {
    return (lower === -Infinity && upper === Infinity) || (number >= lower && number <= upper);
}

function lengthOf(value) {
    return value.class === "char" || (value.class === "string" && value.elements.length === 1)
        ? (value.elements[0]?.length ?? 0) : value.elements.length;
}

function satisfiesElements(value, constraint) {
    return value.elements.every((element) => {
        if (typeof element === "number" || typeof element === "bigint") {
            return isInRange(element, constraint) &&
                (!constraint.isWhole || typeof element === "bigint" || Number.isInteger(element));
        }
        return (!constraint.allowed || constraint.allowed.includes(element)) &&
            !(constraint.rejectsMissing && element === null);
    });
}

function hasSize(value, { rows, columns }) {
    return (rows === undefined || value.rows === rows) && (columns === undefined || value.columns === columns);
}

/** Whether a value satisfies the value validators, as far as the constraint tells them from the factory value. */
function satisfiesValidators(value, constraint) {
    if (constraint.colour && value.class === "char") {
        return constraint.names.includes(value.elements[0]);
    }
    return (constraint.hasFactorySize || hasSize(value, constraint)) &&
        lengthOf(value) <= (constraint.length ?? Infinity) && satisfiesElements(value, constraint);
}

/** Returns undefined if the constraint accepts the value, else the message of a function that refuses it, or "". */
function refusal(value, constraint) {
    const isName = constraint.colour && value.class === "char";
    const isSatisfied = !constraint.acceptsNothing && satisfiesValidators(value, constraint);
    if (isSatisfied && constraint.validator && !satisfiesNativeValidator(value, constraint)) {
        return constraint.errorMessage ?? constraint.validator.message;
    }
    const isAccepted = isSatisfied && (isName || !constraint.hasFactorySize || hasSize(value, constraint));
    return isAccepted ? undefined : (constraint.errorMessage ?? "");
}

/** Describes all constraints, with the numbers that the class has if nothing else limits them. */
function describeAllowed(constraint) {
    const limits = integerLimits(constraint.class);
    const isOpen = constraint.lower === undefined && constraint.upper === undefined;
    return limits && isOpen && !constraint.colour
        ? `${constraint.text} from ${limits.least} to ${limits.greatest}` : constraint.text;
}

const notAllowed = (what, constraint) => `${what} is not allowed: must be ${describeAllowed(constraint)}`;

const withAdvice = (message, advice) => (advice ? `${message}; ${advice}` : message);

const describeRed = ({ colour }) => `red is ${colour === "normalised" ? "[1, 0, 0]" : "[255, 0, 0]"}`;

/** Returns what to do about a value that is no colour; empty if that is not obvious. */
function colourAdvice(value, constraint) {
    if (constraint.colour && value.class === "char") {
        return describeRed(constraint);
    }
    const isTripleOfBytes = value.rows === 1 && value.columns === 3 &&
        value.elements.every((part) => Number.isInteger(part) && part >= 0 && part <= 255);
    return constraint.colour === "normalised" && isTripleOfBytes ? "divide each by 255" : "";
}

function describeRejectedValue(value, constraint) {
    const allowed = constraint.allowed ?? constraint.names ?? [];
    const string = value.elements.find((element) => typeof element === "string" && !allowed.includes(element));
    const meant = string === undefined ? "" : didYouMean(suggestStrings(string, allowed));
    if (meant === "") {
        return withAdvice(notAllowed(formatValue(value, shownWidth), constraint), colourAdvice(value, constraint));
    }
    const list = constraint.allowed ? allowed.map((word) => word || '""').join(", ") : describeAllowed(constraint);
    return `"${truncate(escapeUnprintable(string), shownWidth)}" is not allowed; ${meant} Allowed: ${list}`;
}

function tryToParse(text, constraint, read) {
    try {
        return parseValue(text, constraint, read);
    } catch {
        return undefined;
    }
}

/** Returns what a text has in quotes, a logical value as true or false; empty without quotes. */
function withoutQuotes(text, constraint) {
    const [, , content = ""] = /^(["'])(.*)\1$/.exec(text) ?? [];
    return constraint.class !== "logical" ? content
        : /^(true|on|yes)$/i.test(content) ? "true" : /^(false|off|no)$/i.test(content) ? "false" : "";
}

/** Returns what the user may have meant by a text that is no value, the most likely first, by what to do. */
function corrections(text, constraint) {
    const isGrouped = /^[-+]?\d{1,3}(,\d{3})+(\.|$)/.test(text);
    return [
        ["write it without quotes", withoutQuotes(text, constraint)],
        ["write it as a list", `[${text}]`],
        ["write it without commas", isGrouped ? text.replaceAll(",", "") : ""],
    ];
}

/** Returns what to do about a text that is no value; empty if that is not obvious, or too long to be shown. */
function adviceFor(text, constraint, isUnsuitable, read) {
    if (text === "" || utf8(text).length > shownWidth) {
        return "";
    }
    if (escapeUnprintable(text) === text) {
        for (const [advice, corrected] of corrections(text, constraint)) {
            const value = tryToParse(corrected, constraint, read);
            if (value && refusal(value, constraint) === undefined) {
                return `${advice}: ${corrected}`;
            }
        }
    }
    return constraint.colour && isUnsuitable ? describeRed(constraint) : "";
}

function describePlace(text, offset) {
    const { line, column } = new PositionIndex(text).at(offset);
    return `${line > 1 ? `line ${line}, ` : ""}column ${column}: `;
}

function describeRejectedText(text, error, constraint, readTyped) {
    const advice = adviceFor(text, constraint, error.isUnsuitable, readTyped);
    if (advice || text === "" || (error.isUnsuitable && constraint.class)) {
        const what = text === "" ? "an empty value" : truncate(escapeUnprintable(text), shownWidth);
        return withAdvice(notAllowed(what, constraint), advice);
    }
    const place = readTyped ? describePlace(text, error.offset) : "";
    return `${place}${error.message}; must be ${describeAllowed(constraint)}`;
}

/**
 * Parses a text as the value of a setting: JSON in a file, or what was typed, which readTyped reads. Returns the value,
 * or the reason for which it is refused as `message`, and where in the text as `offset`.
 */
function checkValue(text, constraint, isSecret = false, readTyped = undefined) {
    const hidden = () => notAllowed("its value, which is not shown,", constraint);
    try {
        const value = parseValue(text, constraint, readTyped);
        const message = refusal(value, constraint);
        return message === undefined ? { value }
            : { message: isSecret ? hidden() : message || describeRejectedValue(value, constraint), offset: 0 };
    } catch (error) {
        return { message: isSecret ? hidden() : describeRejectedText(text, error, constraint, readTyped),
            offset: error.offset };
    }
}
