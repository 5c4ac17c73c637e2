// JSON with the place and the spelling of each value, so that numbers keep their digits and files their layout. Refuses
// what the commands refuse, in their words.

const deepestNesting = 100;
const mostValues = 1_000_000;

class JsonReader extends TextReader {
    count = 0; // of values so far

    document() {
        this.skipWhitespace();
        const root = this.value(0);
        this.requireEnd();
        return root;
    }

    fail(message) {
        super.fail(/(\/[/*]|#)/y.test(this.text.slice(this.at, this.at + 2)) ? "JSON has no comments: remove it" : message);
    }

    value(depth) {
        if (depth > deepestNesting) {
            this.fail(`nesting deeper than ${deepestNesting}`);
        }
        if (++this.count > mostValues) {
            this.fail(`more than ${mostValues} values`);
        }
        const start = this.at;
        const parts = this.parts(depth);
        return { start, end: this.at, text: this.text.slice(start, this.at), ...parts };
    }

    parts(depth) {
        switch (this.next) {
        case "{":
            return { kind: "object", members: this.items("}", "a member", () => this.member(depth)) };
        case "[":
            return { kind: "array", elements: this.items("]", "an element", () => this.value(depth + 1)) };
        case '"':
            return { kind: "string", string: JSON.parse(this.literal()) };
        case "t":
        case "f":
            return this.keyword("boolean", this.next === "t" ? "true" : "false");
        case "n":
            return this.keyword("null", "null");
        default:
            return this.number();
        }
    }

    items(close, what, readItem) {
        const items = [];
        this.at += 1;
        this.skipWhitespace();
        if (this.take(close)) {
            return items;
        }
        do {
            this.skipWhitespace();
            items.push(readItem());
            this.skipWhitespace();
        } while (this.takeComma(close));
        if (!this.take(close)) {
            this.fail(`expected "," or "${close}" after ${what}`);
        }
        return items;
    }

    /** Takes a comma, which must not be the last one. */
    takeComma(close) {
        const comma = this.at;
        if (!this.take(",")) {
            return false;
        }
        this.skipWhitespace();
        if (this.next === close) {
            throw new ParseError(comma, `remove the comma before ${close}`);
        }
        return true;
    }

    member(depth) {
        const start = this.at;
        if (this.next !== '"') {
            this.fail("expected a name in double quotes");
        }
        const name = JSON.parse(this.literal());
        const nameEnd = this.at;
        this.skipWhitespace();
        if (!this.take(":")) {
            this.fail('expected ":" after a name');
        }
        this.skipWhitespace();
        return { name, start, nameEnd, value: this.value(depth + 1) };
    }

    literal() {
        const start = this.at;
        this.at += 1;
        for (this.match(/[^"\\\0-\x1f]+/y); !this.take('"'); this.match(/[^"\\\0-\x1f]+/y)) {
            if (this.at === this.text.length || this.next === "\n" || this.next === "\r") {
                this.fail("expected a closing double quote");
            }
            if (this.next !== "\\") {
                this.fail("unescaped control character: write it as an escape such as \\t or \\u001b");
            }
            if (this.match(/\\(?:["\\/bfnrt]|u[\da-fA-F]{4})/y) === "") {
                this.fail('expected an escape: \\" \\\\ \\/ \\b \\f \\n \\r \\t or \\u and four hexadecimal digits');
            }
        }
        return this.text.slice(start, this.at);
    }

    keyword(kind, word) {
        if (!this.text.startsWith(word, this.at)) {
            this.failAtValue();
        }
        this.at += word.length;
        return { kind };
    }

    number() {
        const start = this.at;
        if (!this.take("-") && !/\d/.test(this.next)) {
            this.failAtValue();
        }
        if (!this.take("0")) {
            this.digits();
        } else if (/\d/.test(this.next)) {
            this.at = start;
            this.fail("leading zero: write the number without it");
        }
        if (this.take(".")) {
            this.digits();
        }
        if (this.match(/[eE][+-]?/y)) {
            this.digits();
        }
        return { kind: "number" };
    }

    digits() {
        if (this.match(/\d+/y) === "") {
            this.fail("expected a digit");
        }
    }

    failAtValue() {
        this.fail(this.at === this.text.length ? "expected a value, not the end of the input"
            : "expected a value: a string in double quotes, a number, true, false, null, [ or {");
    }
}

/**
 * Returns the tree of a JSON text: {kind, start, end, text, string, elements, members}. Members have name, start (of
 * the name), nameEnd and value. Throws ParseError.
 */
const readJson = (text) => new JsonReader(text).document();
