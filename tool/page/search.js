"use strict";

// Ranks settings for the words of a query, as docs/search.md describes. tool/search/ does the same for the command.

/**
 * Returns a function that takes a query, and returns the indexes of the matching entries, the best first.
 *
 * An entry is { path, title, sentence, keywords, values, oldPaths, isSecondary }, all but path and title optional. The
 * title includes those of the groups, as in "Editor › Display › Show Line Numbers". Groups and hidden settings are
 * secondary. Synonyms are lists of words.
 */
const makeSearch = (() => {
    const weight = { group: 60, keyword: 60, sentence: 30, value: 30, oldPath: 30 };
    const quality = { same: 100, inflected: 90, synonym: 75, part: 50 };
    const maximumWords = 32;
    const shortestSimilar = 4; // in UTF-16 code units
    const shortestPart = 3;

    const fillers = new Set((
        "a activate adjust all also an and any are as at be by can change choose configure deactivate decrease " +
        "disable do does don enable for from get give how i if in increase is it its let make me modify my " +
        "need of off on or please really reduce see set setting settings should so t that the their them there " +
        "these this those to too turn use very want was what when where which who why will with without you your").split(" "));

    // --- Words ---

    // Characters beyond ASCII count as small letters, but for Latin-1 signs and general punctuation.
    const wordPattern = /[A-Z]+(?![a-z\u00c0-\u1fff\u2070-\uffff])|[A-Z]?[a-z\u00c0-\u1fff\u2070-\uffff]+|[0-9]+/g;

    const lowerCase = (text) =>
        /[A-Z]/.test(text) ? text.replace(/[A-Z]+/g, (capitals) => capitals.toLowerCase()) : text;

    /** Returns the words, split at capitals and digits, in small letters. */
    const wordsOf = (text) => (text.match(wordPattern) ?? []).map(lowerCase);

    /** Returns the words, and all of them run together. */
    function wordsOfName(name) {
        const words = wordsOf(name);
        return words.length > 1 ? [...words, words.join("")] : words;
    }

    // Ending, letters that have to be before it, replacement.
    const endings = [
        ["ies", 3, "y"], ["est", 4, ""], ["ing", 3, ""], ["ly", 4, ""], ["ed", 3, ""], ["es", 3, ""], ["s", 3, ""],
    ];

    /** Returns what a word has in common with its inflected forms: "fil" for file, files, filed and filing. */
    function stemOf(word) {
        if (!/^[a-z]+$/.test(word)) {
            return word;
        }
        const [ending, , replacement] = endings.find(([ending, before]) =>
            word.length >= before + ending.length && word.endsWith(ending) && !word.endsWith("ss")) ?? ["", 0, ""];
        const stem = word.slice(0, word.length - ending.length) + replacement;
        const last = stem.at(-1);
        return stem.length > 3 && (last === "e" || last === stem.at(-2)) ? stem.slice(0, -1) : stem;
    }

    /** Whether inserting, deleting or replacing one letter, or exchanging two neighbours, makes the words equal. */
    function isOneEditApart(left, right) {
        if (left.length > right.length) {
            return isOneEditApart(right, left);
        }
        let same = 0;
        while (same < left.length && left[same] === right[same]) {
            ++same;
        }
        const restIsEqual = (fromLeft, fromRight) => left.slice(same + fromLeft) === right.slice(same + fromRight);
        const isExchanged = left[same] === right[same + 1] && left[same + 1] === right[same];
        return left.length === right.length
            ? restIsEqual(1, 1) || (isExchanged && restIsEqual(2, 2))
            : left.length + 1 === right.length && restIsEqual(0, 1);
    }

    // --- Index ---

    /** Returns what entries are searched by: pairs of a weight and words. */
    function fieldsOf(entry) {
        const [root, ...names] = entry.path.split(".");
        const titles = entry.title.split(" › ");
        const name = names.pop() ?? root;
        const title = titles.pop();
        const ofName = 84 + Math.floor(20 / Math.max(wordsOf(title).length, 1)) -
            2 * Math.min(names.length, 10);
        return [
            [ofName, [name, title].flatMap(wordsOfName)],
            [weight.group, [...names, ...titles].flatMap(wordsOfName)],
            [weight.keyword, (entry.keywords ?? []).flatMap(wordsOf)],
            [weight.sentence, wordsOf(entry.sentence ?? "")],
            [weight.value, (entry.values ?? []).flatMap(wordsOf)],
            [weight.oldPath, (entry.oldPaths ?? []).flatMap((path) => path.split(".").slice(1).flatMap(wordsOfName))],
        ];
    }

    const joined = (text) => wordsOf(text).join("");
    const withoutRoot = (path) => path.slice(path.indexOf(".") + 1);

    /** Returns the queries, with their words run together, that name the entry: by its path, and otherwise. */
    function namesOf(entry) {
        const names = [entry.path.split(".").at(-1), entry.title.split(" › ").at(-1), ...(entry.oldPaths ?? []),
            ...(entry.oldPaths ?? []).map(withoutRoot)];
        return { paths: [entry.path, withoutRoot(entry.path)].map(joined), others: names.map(joined) };
    }

    const fieldsOfEntry = 8; // at most

    class Index {
        constructor(entries, synonyms) {
            this.size = entries.length;
            this.longestWord = 0;
            this.words = new Map(); // to stem and postings: number of entry and field, weight, and so on
            this.names = entries.map(namesOf);
            this.isSecondary = entries.map((entry) => entry.isSecondary);
            this.root = lowerCase(entries[0]?.path.split(".")[0] ?? "");
            this.synonyms = new Map();
            entries.forEach((entry, number) => this.addEntry(entry, number));
            for (const stems of synonyms.map((words) => words.map(stemOf))) {
                for (const stem of stems) {
                    this.synonyms.set(stem, new Set([...(this.synonyms.get(stem) ?? []), ...stems]));
                }
            }
        }

        addEntry(entry, number) {
            fieldsOf(entry).forEach(([weight, words], field) => {
                const ofEntry = entry.isSecondary ? Math.floor((weight * 9) / 10) : weight;
                for (const word of new Set(words)) {
                    if (!this.words.has(word)) {
                        this.words.set(word, { stem: stemOf(word), postings: [] });
                        this.longestWord = Math.max(this.longestWord, word.length);
                    }
                    this.words.get(word).postings.push(number * fieldsOfEntry + field, ofEntry);
                }
            });
        }

        /** Returns the postings of the words for which a function of word and stem gives a quality, with that. */
        select(qualityOf) {
            const selected = [];
            for (const [word, { stem, postings }] of this.words) {
                const quality = qualityOf(word, stem);
                if (quality > 0) {
                    selected.push([quality, postings]);
                }
            }
            return selected;
        }

        /** Returns the postings for a word of the query at an index. It may also match together with a neighbour. */
        find(words, at) {
            const wanted = words[at];
            const neighbours = [(words[at - 1] ?? "") + wanted, wanted + (words[at + 1] ?? "")];
            const wantedStem = stemOf(wanted);
            const synonyms = this.synonyms.get(wantedStem);
            const prefixQuality = (word) => 30 + Math.floor((40 * [...wanted].length) / [...word].length);
            return this.select((word, stem) =>
                word === wanted ? quality.same
                : stem === wantedStem || neighbours.includes(word) ? quality.inflected
                : synonyms?.has(stem) ? quality.synonym
                : word.startsWith(wanted) ? prefixQuality(word) : 0);
        }

        /** Returns the postings for a word that find() does not find: the words that contain it, or are similar. */
        findSimilar(wanted) {
            const isSimilar = (word) => wanted.length >= shortestSimilar && (word.includes(wanted) || isOneEditApart(wanted, word));
            return this.select((word) => (isSimilar(word) ? quality.part : 0));
        }

        /** Whether postings are of entries that are not secondary. */
        hasPrimary(found) {
            return found.some(([, postings]) => postings.some((posting, at) =>
                at % 2 === 0 && !this.isSecondary[Math.floor(posting / fieldsOfEntry)]));
        }

        /** Returns two words of the index that the word consists of, or else the word. */
        split(word) {
            const longest = Math.min(word.length - shortestPart, this.longestWord);
            const shortest = Math.max(shortestPart, word.length - this.longestWord);
            for (let end = longest; end >= shortest; --end) {
                if (this.words.has(word.slice(0, end)) && this.words.has(word.slice(end))) {
                    return [word.slice(0, end), word.slice(end)];
                }
            }
            return [word];
        }
    }

    // --- Queries ---

    /** Returns the words of the query without fillers and duplicates. */
    function meantWords(words, index) {
        const isMeant = (word) => !fillers.has(word) && word !== index.root;
        return [...new Set(words.some(isMeant) ? words.filter(isMeant) : words)].slice(0, maximumWords);
    }

    /** Adds what a word of the query contributes to the scores of entries, and to the shares of the query found. */
    function addScores(found, index, scores, shares) {
        const fields = new Map(); // best score by number of entry and field
        for (const [quality, postings] of found) {
            for (let at = 0; at < postings.length; at += 2) {
                fields.set(postings[at], Math.max(fields.get(postings[at]) ?? 0, quality * postings[at + 1]));
            }
        }
        const entries = new Map();
        for (const [field, score] of fields) {
            const entry = Math.floor(field / fieldsOfEntry);
            const { best, sum } = entries.get(entry) ?? { best: 0, sum: 0 };
            entries.set(entry, { best: Math.max(best, score), sum: sum + score });
        }
        const rarity = Math.round(100 * Math.log(1 + index.size / entries.size));
        for (const [entry, { best, sum }] of entries) {
            scores[entry] += rarity * (2 * best + sum);
            shares[entry] += rarity;
        }
    }

    function search(query, index) {
        const all = wordsOf(query);
        const meant = meantWords(all, index);
        const words = meant.flatMap((word, at) => (index.hasPrimary(index.find(meant, at)) ? [word] : index.split(word)));
        const scores = new Float64Array(index.size);
        const shares = new Float64Array(index.size);
        words.forEach((word, at) => {
            const found = index.find(words, at);
            addScores(found.length > 0 ? found : index.findSimilar(word), index, scores, shares);
        });
        const whole = all.join("");
        const exactness = ({ paths, others }) => (paths.includes(whole) ? 2 : others.includes(whole) ? 1 : 0);
        const matches = [];
        for (let entry = 0; entry < index.size; ++entry) {
            if (scores[entry] > 0) {
                matches.push({ entry, exact: exactness(index.names[entry]), score: scores[entry] * shares[entry] });
            }
        }
        const best = matches.reduce((most, { score }) => Math.max(most, score), 0);
        return matches.filter(({ exact, score }) => exact > 0 || 3 * score >= best)
            .sort((left, right) => right.exact - left.exact || right.score - left.score || left.entry - right.entry)
            .map(({ entry }) => entry);
    }

    return (entries, synonyms) => {
        const index = new Index(entries, synonyms);
        return (query) => search(query, index);
    };
})();
