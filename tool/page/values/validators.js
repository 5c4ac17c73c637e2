// Validators of native libraries, as far as the page knows what they require: {message, lower, upper, isWhole, string,
// row}, with JSON Schema keywords for every string and for every row.

/** What each keyword requires, of those that validators need. */
const keywordChecks = {
    pattern: (string, pattern) => new RegExp(pattern, "u").test(string),
    minItems: (row, count) => row.length >= count,
    maxItems: (row, count) => row.length <= count,
    uniqueItems: (row) => new Set(row).size === row.length,
    contains: (row, item) => row.includes(item.const),
    if: (row, condition, { then }) => !satisfiesKeywords(row, condition) || satisfiesKeywords(row, then),
};

function satisfiesKeywords(value, keywords) {
    return Object.entries(keywords).every(([name, argument]) => keywordChecks[name]?.(value, argument, keywords) ?? true);
}

/** Whether a value has the constraint's size and satisfies its validator, which checks both. */
function satisfiesNativeValidator(value, constraint) {
    const { string, row, ...numbers } = constraint.validator;
    return hasSize(value, constraint) && satisfiesElements(value, numbers) &&
        value.elements.every((element) => typeof element !== "string" || satisfiesKeywords(element, string)) &&
        rowsOf(value).every((elements) => satisfiesKeywords(elements, row));
}
