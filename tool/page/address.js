// The address after "#": the path of a setting or group, also an old one, or "?" and the search and filters.

const address = () => {
    try {
        return decodeURIComponent(location.hash.slice(1));
    } catch {
        return "";
    }
};

let handledAddress = location.href;

function go(hash) {
    if (location.hash !== hash) {
        history.pushState(null, "", hash || location.pathname + location.search);
    }
    handledAddress = location.href;
}

/** Keeps the filters in the address. Typing makes one entry in the history, not one for each letter. */
function storeFilter(isTyping) {
    const filter = String(currentFilter());
    const hash = filter ? `#?${filter}` : "";
    if (isTyping && new URLSearchParams(location.hash.slice(2)).has("q") && filter) {
        history.replaceState(null, "", hash);
        handledAddress = location.href;
    } else {
        go(hash);
    }
}

function markTarget(element) {
    document.querySelector(".target")?.classList.remove("target");
    element?.classList.add("target");
}

function revealSetting(setting) {
    if (!shown.includes(setting)) {
        clearFilters();
    } else if (main.classList.contains("searching") && !resultRows.contains(setting.row)) {
        showResults(Infinity);
    }
    setting.row.scrollIntoView({ block: "center" });
    setting.row.querySelector("a").focus({ preventScroll: true });
    markTarget(setting.row);
    select(setting.group);
}

function revealGroup(group) {
    const isInside = ({ path }) => path.startsWith(`${group.path}.`);
    if (main.classList.contains("searching") || !shown.some(isInside)) {
        clearFilters();
    }
    for (let over = above(group.item); over; over = above(over)) {
        setOpen(over, true);
    }
    const isShown = ({ section }) => section && !section.hidden;
    const first = [group, ...[...groups.values()].filter(isInside)].find(isShown);
    first?.section.scrollIntoView({ block: "start" });
    markTarget(null);
    select(group);
}

/** Returns what releases did to a path, or to the group that it was in; undefined if nothing. */
function changeOf(path) {
    const isChanged = (old) => path === old || (path.startsWith(`${old}.`) && data.changes[old].to === "");
    return data.changes[Object.keys(data.changes).find(isChanged)];
}

function revealPath(path) {
    const change = changeOf(path);
    const found = settingsByPath.get(path) ?? settingsByPath.get(change?.to);
    showNotice(found?.path === path || groups.has(path) ? ""
        : change ? `${path}: ${change.text}.` : `There is no setting or group ${path}.`);
    if (found) {
        revealSetting(found);
    } else if (groups.has(path)) {
        revealGroup(groups.get(path));
    }
}

/** Shows what the address says. */
function followAddress() {
    const text = address();
    handledAddress = location.href;
    if (text === "" || text.startsWith("?")) {
        showNotice("");
        markTarget(null);
        if (fillForm(new URLSearchParams(location.hash.slice(2)))) {
            applyFilters();
        }
    } else if (text !== "settings") {
        revealPath(text);
    }
}

/**
 * Follows a link to a setting or group at once: hashchange comes later, when the arrow keys may have moved the focus
 * to another row, and would move it back.
 */
function followLink(event) {
    const link = event.target.closest("a[href^='#']:not(.skip)");
    if (link && !event.ctrlKey && !event.metaKey && !event.shiftKey && !event.altKey) {
        event.preventDefault();
        if (getComputedStyle(panel).position === "fixed") {
            setPanel(false); // it covers the settings
        }
        go(link.hash);
        followAddress();
    }
}

/** Scrolls to a group as its link does, but keeps the focus in the tree. */
function goToGroup(path) {
    setDrawer(false);
    go(`#${path}`);
    followAddress();
}

/** Selects the group at the top of the settings in the tree. */
function followScrolling() {
    const box = main.getBoundingClientRect();
    const top = document.elementFromPoint(box.left + 40, Math.max(box.top, 0) + 50);
    const group = settingOf(top)?.group ?? groups.get(top?.closest("section")?.id);
    if (group) {
        select(group);
    }
}
