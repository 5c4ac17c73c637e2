// JSON with the place and the spelling of each value, so that numbers keep their digits and files their layout.

const whitespace = /[ \t\r\n]*/y;
const scalarText = /"(?:[^"\\]|\\.)*"|[^\s,\]}]+/y;
const deepestNesting = 100;

/**
 * Returns the tree of a JSON text: {kind, start, end, text, string, elements, members}. Members have name, start (of
 * the name), nameEnd and value. Throws SyntaxError for invalid JSON, and Error for lists and objects nested too deep.
 */
function readJson(text) {
    JSON.parse(text); // what follows relies on a valid text
    let at = 0;
    let depth = 0;
    const match = (pattern) => {
        pattern.lastIndex = at;
        const [found] = pattern.exec(text);
        at += found.length;
        return found;
    };
    const separated = (close, readItem) => {
        const items = [];
        depth += 1;
        if (depth > deepestNesting) {
            throw new Error(`nesting deeper than ${deepestNesting}`);
        }
        at += 1;
        match(whitespace);
        while (text[at] !== close) {
            items.push(readItem());
            match(whitespace);
            at += text[at] === "," ? 1 : 0;
            match(whitespace);
        }
        at += 1;
        depth -= 1;
        return items;
    };
    const readMember = () => {
        const start = at;
        const name = JSON.parse(match(scalarText));
        const nameEnd = at;
        match(whitespace);
        at += 1;
        match(whitespace);
        return { name, start, nameEnd, value: readValue() };
    };
    const scalarKind = (token) => (token[0] === '"' ? "string" : token === "null" ? "null"
        : token === "true" || token === "false" ? "boolean" : "number");
    function readValue() {
        const node = { start: at };
        if (text[at] === "[") {
            node.kind = "array";
            node.elements = separated("]", readValue);
        } else if (text[at] === "{") {
            node.kind = "object";
            node.members = separated("}", readMember);
        } else {
            const token = match(scalarText);
            node.kind = scalarKind(token);
            node.string = node.kind === "string" ? JSON.parse(token) : undefined;
        }
        node.end = at;
        node.text = text.slice(node.start, at);
        return node;
    }
    match(whitespace);
    return readValue();
}
