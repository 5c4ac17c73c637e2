// Which settings are shown: all in tree order, or those that the search found, best first.

const search = byId("search");
const results = byId("results");
const resultRows = results.querySelector("tbody");
const moreResults = results.querySelector("button");
const shownResults = 100; // until the reader asks for all
const facets = ["area", "class", "visibility", "validator"].map((name) => ({ name, select: byId(name) }));
const filterForm = byId("filters");

/** The settings that are shown, in their order. */
let shown = settings;
let findSettings = null;

function fillSelect({ name, select }) {
    const counts = new Map();
    for (const setting of settings) {
        for (const value of setting.facets[name].split(" ")) {
            counts.set(value, (counts.get(value) ?? 0) + 1);
        }
    }
    const options = [...counts.keys()].sort().map((value) =>
        // Isolated as in the style sheet, which does not reach into options.
        new Option(`\u2068${value}\u2069 (${counts.get(value)})`, value));
    select.append(...options);
}

/** Returns what the reader chose as URLSearchParams. */
function currentFilter() {
    const filter = new URLSearchParams();
    const put = (name, value) => value && filter.set(name, value);
    put("q", search.value.trim());
    facets.forEach(({ name, select }) => put(name, select.value));
    put("modified", byId("modified").checked ? "1" : "");
    return filter;
}

/** Fills the form; returns whether that changes it. */
function fillForm(filter) {
    const before = String(currentFilter());
    search.value = filter.get("q") ?? "";
    facets.forEach(({ name, select }) => { select.value = filter.get(name) ?? ""; });
    facets.filter(({ select }) => select.selectedIndex < 0).forEach(({ select }) => { select.value = ""; });
    byId("modified").checked = filter.has("modified");
    return before !== String(currentFilter());
}

function acceptedBy(filter) {
    const chosen = facets.filter(({ name }) => filter.has(name))
        .map(({ name }) => ({ name, value: ` ${filter.get(name)} ` }));
    return (setting) => chosen.every(({ name, value }) => ` ${setting.facets[name]} `.includes(value)) &&
        (!filter.has("modified") || isModified(setting));
}

function prepareSearch() {
    findSettings ??= makeSearch(searchEntries(), data.synonyms);
}

function ranked(query) {
    prepareSearch();
    return findSettings(query).map((index) => settings[index]);
}

/** Only touches the element if that changes something, because reading is cheaper. */
function setHidden(element, isHidden) {
    if (element.hidden !== isHidden) {
        element.hidden = isHidden;
    }
}

function putBack(rows) {
    const homes = new Set([...rows].map((row) => settingOf(row).group));
    for (const group of homes) {
        group.body.append(...group.settings.map((setting) => setting.row));
    }
}

function showResults(limit) {
    putBack(resultRows.rows);
    for (const { row, group } of shown.slice(0, limit)) {
        row.hidden = false;
        row.querySelector("th a").dataset.group = `${group.path}.`;
        resultRows.append(row);
    }
    moreResults.hidden = shown.length <= limit;
    moreResults.textContent = `Show all ${shown.length} settings`;
}

/** Shows the results that were left out, from the first of them on, as the button for it disappears. */
function showAllResults() {
    showResults(Infinity);
    resultRows.rows[shownResults].querySelector("a").focus();
}

function showInTree() {
    putBack(resultRows.rows);
    const isShown = new Set(shown);
    for (const setting of settings) {
        setHidden(setting.row, !isShown.has(setting));
    }
}

/** Counts the shown settings in the tree of groups, and hides groups without. */
function countInGroups(isSearching) {
    const isFiltered = shown.length !== settings.length;
    const direct = new Map();
    for (const { group } of shown) {
        direct.set(group, (direct.get(group) ?? 0) + 1);
    }
    for (const group of groupsUpwards) {
        group.count = 0;
    }
    for (const group of groupsUpwards) {
        group.count += direct.get(group) ?? 0;
        if (group.parent) {
            group.parent.count += group.count;
        }
        if (group.section && !isSearching) { // a search hides all sections at once
            setHidden(group.section, isFiltered && !direct.has(group));
        }
        setHidden(group.item, isFiltered && group.count === 0);
        if (group.number.textContent !== String(group.count)) {
            group.number.textContent = group.count;
        }
    }
    keepTabStop();
}

/** Shows what the form asks for. */
function applyFilters() {
    const filter = currentFilter();
    const query = filter.get("q");
    const isAny = filter.size > 0;
    shown = isAny ? (query ? ranked(query) : settings).filter(acceptedBy(filter)) : settings;
    main.classList.toggle("searching", Boolean(query));
    results.hidden = !query || shown.length === 0;
    if (query) {
        showResults(shownResults);
    } else {
        showInTree();
    }
    countInGroups(Boolean(query));
    byId("nothing").hidden = shown.length > 0;
    byId("clear").disabled = !isAny;
    announce(isAny ? `${shown.length} of ${settings.length}` : "");
}

/** Shows all settings; returns whether some were hidden. */
function clearFilters() {
    const isChange = fillForm(new URLSearchParams());
    if (isChange) {
        applyFilters();
    }
    return isChange;
}
