// Errors, places and what readers of a notation have in common.

/** An error at an offset in a text. It is unsuitable if the notation is right, but not the class of the value. */
class ParseError extends Error {
    constructor(offset, message, isUnsuitable = false) {
        super(message);
        this.offset = offset;
        this.isUnsuitable = isUnsuitable;
    }
}

/** A place in a text, and what can be skipped there. */
class TextReader {
    constructor(text) {
        this.text = text;
        this.at = 0;
    }

    fail(message) {
        throw new ParseError(this.at, message);
    }

    get next() {
        return this.text[this.at];
    }

    take(character) {
        const isHere = this.next === character;
        this.at += isHere ? 1 : 0;
        return isHere;
    }

    /** Skips what a sticky pattern matches, and returns it. */
    match(pattern) {
        const start = this.at;
        pattern.lastIndex = start;
        this.at = pattern.test(this.text) ? pattern.lastIndex : start;
        return this.text.slice(start, this.at);
    }

    skipWhitespace() {
        this.match(/[ \t\r\n]+/y);
    }

    requireEnd() {
        this.skipWhitespace();
        if (this.at !== this.text.length) {
            this.fail("expected nothing after the value");
        }
    }
}

/** Finds lines and columns in a text. */
class PositionIndex {
    constructor(text) {
        this.text = text;
        this.lineStarts = [0, ...[...text.matchAll(/\n/g)].map(({ index }) => index + 1)];
    }

    /** Returns the number of a line, from 1. */
    line(offset) {
        let [line, next] = [0, this.lineStarts.length];
        while (next - line > 1) {
            const middle = (line + next) >> 1;
            [line, next] = this.lineStarts[middle] <= offset ? [middle, next] : [line, middle];
        }
        return next;
    }

    /** Returns line and column, both from 1; columns count characters. */
    at(offset) {
        const line = this.line(offset);
        return { line, column: [...this.text.slice(this.lineStarts[line - 1], offset)].length + 1 };
    }
}
