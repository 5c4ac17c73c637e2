// Strings that the reader may have meant, by edit distance (optimal string alignment).

const utf8 = (text) => new TextEncoder().encode(text);
const lowerAscii = (text) => text.replace(/[A-Z]/g, (letter) => letter.toLowerCase());

function editDistance(from, to) {
    let [beforePrevious, previous] = [[], Array.from({ length: to.length + 1 }, (_, column) => column)];
    for (let row = 1; row <= from.length; ++row) {
        const current = [row];
        for (let column = 1; column <= to.length; ++column) {
            let best = Math.min(previous[column] + 1, current[column - 1] + 1,
                previous[column - 1] + (from[row - 1] === to[column - 1] ? 0 : 1));
            if (row > 1 && column > 1 && from[row - 1] === to[column - 2] && from[row - 2] === to[column - 1]) {
                best = Math.min(best, beforePrevious[column - 2] + 1);
            }
            current.push(best);
        }
        [beforePrevious, previous] = [previous, current];
    }
    return previous[to.length];
}

/** Returns the up to three strings that are most similar to the wanted one. */
function suggestStrings(wanted, strings) {
    const from = utf8(lowerAscii(wanted));
    if (from.length > 200) {
        return [];
    }
    const allowed = (longer) => (longer < 2 ? 0 : Math.max(1, Math.floor(longer / 3)));
    return strings.map((string) => ({ string, to: utf8(lowerAscii(string)) }))
        .map(({ string, to }) => ({ string, distance: editDistance(from, to), longer: Math.max(from.length, to.length) }))
        .filter(({ distance, longer }) => distance <= allowed(longer))
        .sort((a, b) => a.distance - b.distance)
        .filter(({ distance }, _, [closest]) => distance <= 1.5 * closest.distance)
        .slice(0, 3)
        .map(({ string }) => string);
}

/** Returns `did you mean "long" or "longG"?`; empty without strings. */
function didYouMean(strings) {
    const quoted = strings.map((string) => `"${string}"`);
    const last = quoted.pop();
    return last === undefined ? "" : `did you mean ${quoted.join(", ")}${quoted.length ? " or " : ""}${last}?`;
}
