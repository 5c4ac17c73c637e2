// Numbers and lists of them as people type them, in the notation in which they are shown: 12, [14 0 255], [1, 2; 3, 4].

class ScriptReader extends TextReader {
    document() {
        this.skipWhitespace();
        const start = this.at;
        const close = { "[": "]", "{": "}" }[this.next];
        const root = close ? this.list(close) : this.scalar("a value");
        this.requireEnd();
        if (close === "}") {
            throw unsuitable({ start }, "no braces, which are for lists of strings");
        }
        return root;
    }

    /** Returns a list, or a list of lists if there are several rows. */
    list(close) {
        const start = this.at;
        this.at += 1;
        this.skipWhitespace();
        const rows = this.next === close ? [[]] : this.rows(close);
        this.at += 1;
        const lists = rows.map((elements) => ({ kind: "array", start, elements }));
        return lists.length === 1 ? lists[0] : { kind: "array", start, elements: lists };
    }

    rows(close) {
        const rows = [this.row(close)];
        while (this.take(";")) {
            this.skipWhitespace();
            const start = this.at;
            const row = this.row(close);
            rows.push(row);
            if (row.length !== rows[0].length) {
                throw new ParseError(start, `row ${rows.length} has ${row.length} elements, ` +
                    `expected ${rows[0].length} as in the first row`);
            }
        }
        return rows;
    }

    row(close) {
        const elements = [];
        do {
            elements.push(this.scalar("an element"));
        } while (this.separator(close));
        return elements;
    }

    /** Skips what separates two elements. Returns whether another element must follow in this row. */
    separator(close) {
        const start = this.at;
        this.skipWhitespace();
        if (this.take(",")) {
            this.skipWhitespace();
            return true;
        }
        if (this.next === ";" || this.next === close) {
            return false;
        }
        if (this.at === this.text.length || this.at === start) {
            this.fail(`expected whitespace, ",", ";" or "${close}" after an element`);
        }
        return true;
    }

    scalar(what) {
        const start = this.at;
        const text = this.match(/"(?:[^"]|"")*"|'(?:[^']|'')*'|[^ \t\r\n,;[\]{}"']+/y);
        if (text === "" && /["']/.test(this.next)) {
            throw new ParseError(this.text.length, `expected a closing ${this.next}`);
        }
        if (text === "") {
            this.fail(`expected ${what}`);
        }
        const name = text.replace(/^\+(?!-)/, ""); // NaN and the infinities are strings in JSON
        const kind = /^["']/.test(text) || isNonFiniteName(name) ? "string" : /^(true|false)$/.test(text) ? "boolean"
            : /^[+-]?(\d+\.?\d*|\.\d+)(e[+-]?\d+)?$/i.test(text) ? "number" : "word";
        return { kind, start, text, string: kind === "string" ? name.replace(/^(["'])(.*)\1$/s, "$2") : undefined };
    }
}

/** Returns the tree of what was typed, as readJson does: also of rows in JSON. Throws ParseError. */
const readNumbers = (text) => (/^\s*\[\s*\[/.test(text) ? readJson(text) : new ScriptReader(text).document());
