"use strict";

// Makes the table searchable. The document has the whole content; this script only filters, navigates and copies.
(() => {
    const byId = (id) => document.getElementById(id);
    const main = byId("settings");
    const search = byId("search");
    const status = byId("status");

    // --- Model ---

    /** Groups by path, in tree order: each group before its subgroups. */
    const groups = new Map();

    function addGroup(path) {
        const end = path.lastIndexOf(".");
        const parent = end < 0 ? null : (groups.get(path.slice(0, end)) ?? addGroup(path.slice(0, end)));
        const group = { path, name: path.slice(end + 1), parent, children: [], body: null, direct: 0, count: 0 };
        groups.set(path, group);
        parent?.children.push(group);
        return group;
    }

    function readSetting(row, group) {
        const [, area = ""] = row.id.split(".");
        return {
            path: row.id,
            row,
            group,
            isShown: true,
            text: `${row.id} ${row.title} ${row.dataset.keywords ?? ""} ${row.textContent}`.toLowerCase(),
            area: [group.parent ? area : group.name],
            class: [row.dataset.class],
            visibility: [row.dataset.visibility],
            constraints: row.dataset.constraints.split(" "),
            isModified: "modified" in row.dataset,
        };
    }

    const settings = [];
    for (const body of document.querySelectorAll("tbody[id]")) {
        const group = groups.get(body.id) ?? addGroup(body.id);
        group.body = body;
        for (const row of body.querySelectorAll("tr[id]")) {
            settings.push(readSetting(row, group));
        }
    }
    const settingsByPath = new Map(settings.map((setting) => [setting.path, setting]));
    const groupsUpwards = [...groups.values()].reverse();

    // --- Filters ---

    const facets = ["area", "class", "visibility", "constraints"].map((name) => ({ name, select: byId(name) }));

    function fillSelect({ name, select }) {
        const counts = new Map();
        for (const setting of settings) {
            for (const value of setting[name]) {
                counts.set(value, (counts.get(value) ?? 0) + 1);
            }
        }
        for (const value of [...counts.keys()].sort()) {
            // Isolated as in the style sheet, which does not reach into options.
            select.add(new Option(`\u2068${value}\u2069 (${counts.get(value)})`, value));
        }
    }

    function currentFilter() {
        const words = search.value.toLowerCase().split(/\s+/).filter(Boolean);
        const chosen = facets.map(({ name, select }) => [name, select.value]).filter(([, value]) => value !== "");
        const onlyModified = byId("modified").checked;
        const isAny = words.length > 0 || chosen.length > 0 || onlyModified;
        const accepts = (setting) =>
            words.every((word) => setting.text.includes(word)) &&
            chosen.every(([name, value]) => setting[name].includes(value)) &&
            (!onlyModified || setting.isModified);
        return { isAny, accepts };
    }

    function showGroups(isFiltered) {
        for (const group of groupsUpwards) {
            group.count += group.direct;
            if (group.parent) {
                group.parent.count += group.count;
            }
            if (group.body) {
                group.body.hidden = isFiltered && group.direct === 0;
            }
            group.item.hidden = isFiltered && group.count === 0;
            group.number.textContent = group.count;
        }
    }

    function applyFilters() {
        const { isAny, accepts } = currentFilter();
        for (const group of groupsUpwards) {
            group.direct = group.count = 0;
        }
        let shown = 0;
        for (const setting of settings) {
            const isShown = accepts(setting);
            if (isShown !== setting.isShown) {
                setting.row.hidden = !isShown;
                setting.isShown = isShown;
            }
            setting.group.direct += isShown;
            shown += isShown;
        }
        showGroups(isAny);
        byId("nothing").hidden = shown > 0;
        byId("clear").disabled = !isAny;
        status.textContent = isAny ? `${shown} of ${settings.length}` : "";
    }

    function clearFilters() {
        byId("filters").reset();
        applyFilters();
    }

    // --- The tree of groups ---

    function makeItem(group, depth) {
        const item = document.createElement("li");
        item.setAttribute("role", "treeitem");
        item.setAttribute("aria-selected", "false");
        item.setAttribute("aria-level", depth + 1);
        item.tabIndex = -1;
        item.dataset.path = group.path;
        const part = (className, text) => {
            const element = document.createElement("span");
            element.className = className;
            element.textContent = text;
            return element;
        };
        const label = part("label", "");
        label.style.setProperty("--depth", depth);
        group.number = part("count", "");
        label.append(part("twist", group.children.length ? "›" : ""), part("text", group.name), group.number);
        item.append(label);
        group.item = item;
        if (group.children.length) {
            const list = document.createElement("ul");
            list.setAttribute("role", "group");
            list.append(...group.children.map((child) => makeItem(child, depth + 1)));
            item.append(list);
            item.setAttribute("aria-expanded", String(depth === 0));
        }
        return item;
    }

    const isOpen = (item) => item.getAttribute("aria-expanded") === "true";
    const isClosed = (item) => item.getAttribute("aria-expanded") === "false";
    const setOpen = (item, open) => item.setAttribute("aria-expanded", String(open));
    const above = (item) => item.parentElement.closest("[role=treeitem]");
    const reachable = () => [...byId("tree").querySelectorAll("li")].filter((item) => item.offsetParent !== null);

    function focusItem(item) {
        byId("tree").querySelector('li[tabindex="0"]')?.setAttribute("tabindex", "-1");
        item.tabIndex = 0;
        item.focus({ preventScroll: false });
    }

    /** Selects the tree item of a group, or the innermost visible item above it if it is in a closed one. */
    function select(group) {
        let item = group.item;
        for (let over = above(item); over; over = above(over)) {
            item = isClosed(over) ? over : item;
        }
        const before = byId("tree").querySelector('[aria-selected="true"]');
        if (before !== item) {
            before?.setAttribute("aria-selected", "false");
            item.setAttribute("aria-selected", "true");
            item.firstChild.scrollIntoView({ block: "nearest" });
        }
    }

    function step(item, by) {
        const items = reachable();
        return items[items.indexOf(item) + by];
    }

    function startingWith(item, letter) {
        const items = reachable();
        const at = items.indexOf(item) + 1;
        return [...items.slice(at), ...items.slice(0, at)].find((other) =>
            groups.get(other.dataset.path).name.toLowerCase().startsWith(letter));
    }

    function openOrEnter(item) {
        if (isClosed(item)) {
            setOpen(item, true);
            return null;
        }
        return isOpen(item) ? step(item, 1) : null;
    }

    function closeOrLeave(item) {
        if (isOpen(item)) {
            setOpen(item, false);
            return null;
        }
        return above(item);
    }

    const treeKeys = {
        ArrowDown: (item) => step(item, 1),
        ArrowUp: (item) => step(item, -1),
        ArrowRight: openOrEnter,
        ArrowLeft: closeOrLeave,
        Home: () => reachable()[0],
        End: () => reachable().at(-1),
        Enter: (item) => go(item.dataset.path),
        " ": (item) => go(item.dataset.path),
    };

    function onTreeKey(event) {
        if (event.ctrlKey || event.altKey || event.metaKey) {
            return;
        }
        const isLetter = event.key.length === 1 && event.key !== " " && event.key !== "/";
        const move = treeKeys[event.key] ?? (isLetter && ((item) => startingWith(item, event.key.toLowerCase())));
        if (move) {
            event.preventDefault();
            const next = move(event.target);
            if (next) {
                focusItem(next);
            }
        }
    }

    function onTreeClick(event) {
        const item = event.target.closest("li");
        if (!item) {
            return;
        }
        focusItem(item);
        if (event.target.className === "twist" && item.hasAttribute("aria-expanded")) {
            setOpen(item, isClosed(item));
        } else {
            go(item.dataset.path);
        }
    }

    function buildTree() {
        const list = document.createElement("ul");
        list.setAttribute("role", "tree");
        list.setAttribute("aria-label", "Groups");
        list.append(...[...groups.values()].filter((group) => !group.parent).map((group) => makeItem(group, 0)));
        list.querySelector("li").tabIndex = 0;
        list.addEventListener("keydown", onTreeKey);
        list.addEventListener("click", onTreeClick);
        byId("tree").append(list);
    }

    // --- Links ---

    function linkedPath() {
        try {
            return decodeURIComponent(location.hash.slice(1));
        } catch {
            return "";
        }
    }

    function revealSetting(setting) {
        if (!setting.isShown) {
            clearFilters();
        }
        setting.row.scrollIntoView({ block: "center" });
        setting.row.querySelector("a").focus({ preventScroll: true });
        select(setting.group);
    }

    function revealGroup(group) {
        let first = group;
        while (!first.body) {
            first = first.children[0];
        }
        if (first.body.hidden) {
            const shown = settings.find(({ path, isShown }) => isShown && path.startsWith(`${group.path}.`));
            first = shown ? shown.group : first;
        }
        if (first.body.hidden) {
            clearFilters();
        }
        for (let over = above(group.item); over; over = above(over)) {
            setOpen(over, true);
        }
        first.body.scrollIntoView({ block: "start" });
        select(group);
    }

    /** Scrolls to the setting or group in the address after "#"; returns false if there is none. */
    function reveal() {
        const path = linkedPath();
        if (settingsByPath.has(path)) {
            revealSetting(settingsByPath.get(path));
        } else if (groups.has(path)) {
            revealGroup(groups.get(path));
        } else {
            return false;
        }
        return true;
    }

    let handledAddress = "";

    /**
     * Follows the link of a setting at once: hashchange comes later, when the arrow keys may have moved the focus to
     * another row, and would move it back.
     */
    function followLink(event) {
        const link = event.target.closest("tr[id] a[href^='#']");
        if (!link || event.ctrlKey || event.metaKey || event.shiftKey || event.altKey) {
            return;
        }
        event.preventDefault();
        if (location.hash !== link.hash) {
            location.hash = link.hash; // pushState would not make the row the :target
            handledAddress = location.href;
        }
        reveal();
    }

    function onAddress(event) {
        if (event.newURL !== handledAddress) {
            reveal();
        }
        handledAddress = "";
    }

    /** Scrolls to a group as its link does, but keeps the focus in the tree. */
    function go(path) {
        setDrawer(false);
        if (linkedPath() !== path) {
            history.pushState(null, "", `#${path}`);
        }
        reveal();
    }

    /** Selects the group at the top of the table in the tree. */
    function followScrolling() {
        const box = main.getBoundingClientRect();
        const top = document.elementFromPoint(box.left + 40, Math.max(box.top, 0) + 50);
        const group = groups.get(top?.closest("tbody")?.id);
        if (group) {
            select(group);
        }
    }

    // --- Copying ---

    const copyButton = document.createElement("button");
    copyButton.type = "button";
    copyButton.className = "copy";

    function offerCopy(event) {
        const row = event.target.closest?.("tr[id]");
        if (row && !row.contains(copyButton) && document.activeElement !== copyButton) {
            copyButton.textContent = "Copy path";
            row.cells[0].append(copyButton);
        }
    }

    /** Copies without the clipboard API, which is not available to pages from files. */
    function copyBySelection(text) {
        const area = document.createElement("textarea");
        const focused = document.activeElement;
        area.value = text;
        document.body.append(area);
        area.select();
        const isCopied = document.execCommand("copy");
        area.remove();
        focused.focus();
        return isCopied;
    }

    async function copyPath(row) {
        let isCopied = true;
        try {
            await navigator.clipboard.writeText(row.id);
        } catch {
            isCopied = copyBySelection(row.id);
        }
        status.textContent = isCopied ? `Copied ${row.id}` : `Cannot copy ${row.id}`;
        if (row.contains(copyButton)) {
            copyButton.textContent = isCopied ? "Copied" : "Not copied";
        }
    }

    // --- Keys ---

    function focusSetting(from, by) {
        const shown = settings.filter((setting) => setting.isShown);
        const at = shown.findIndex((setting) => setting.row === from);
        const next = shown[at + by];
        next?.row.scrollIntoView({ block: "nearest" });
        next?.row.querySelector("a").focus({ preventScroll: true });
    }

    function onSearchKey(event) {
        if (event.key === "Escape") {
            clearFilters();
        } else if (event.key === "ArrowDown") {
            event.preventDefault();
            focusSetting(null, 1);
        }
    }

    function onSettingKey(event, row) {
        if (event.key === "ArrowDown" || event.key === "ArrowUp") {
            event.preventDefault();
            focusSetting(row, event.key === "ArrowDown" ? 1 : -1);
        } else if (event.key === "c") {
            copyPath(row);
        }
    }

    function onKey(event) {
        const isTyping = event.target.matches?.("input, select");
        if (event.defaultPrevented || isTyping || event.ctrlKey || event.altKey || event.metaKey) {
            return;
        }
        const row = event.target.closest?.("tr[id]");
        if (event.key === "/") {
            event.preventDefault();
            search.focus();
            search.select();
        } else if (event.key === "Escape") {
            setDrawer(false);
            clearFilters();
        } else if (row) {
            onSettingKey(event, row);
        }
    }

    // --- Theme and layout ---

    const themes = ["system", "light", "dark"];
    const themeKey = "settings-page-theme";

    function storedTheme() {
        try {
            return localStorage.getItem(themeKey);
        } catch {
            return null;
        }
    }

    function setTheme(theme) {
        document.documentElement.dataset.theme = theme;
        byId("theme").textContent = `Theme: ${theme}`;
        try {
            localStorage.setItem(themeKey, theme);
        } catch {
            // Without storage, the theme is kept until the page is closed.
        }
    }

    function nextTheme() {
        const at = themes.indexOf(document.documentElement.dataset.theme);
        setTheme(themes[(at + 1) % themes.length]);
    }

    /** Shows or hides the tree, which narrow windows hide by default. */
    function setDrawer(isShown) {
        document.documentElement.classList.toggle("groups", isShown);
        byId("groups").setAttribute("aria-expanded", String(isShown));
    }

    // --- Start ---

    document.documentElement.classList.add("js");
    for (const part of document.querySelectorAll("#groups, #filters, #tree, footer")) {
        part.hidden = false;
    }
    byId("modified-label").hidden = !settings.some((setting) => setting.isModified);
    facets.forEach(fillSelect);
    buildTree();
    applyFilters();
    setTheme(themes.includes(storedTheme()) ? storedTheme() : "system");

    const filters = byId("filters");
    filters.addEventListener("input", applyFilters);
    filters.addEventListener("submit", (event) => event.preventDefault());
    filters.addEventListener("reset", () => setTimeout(applyFilters));
    byId("nothing").querySelector("button").addEventListener("click", clearFilters);
    byId("theme").addEventListener("click", nextTheme);
    byId("groups").addEventListener("click", (event) =>
        setDrawer(event.currentTarget.getAttribute("aria-expanded") === "false"));
    search.addEventListener("keydown", onSearchKey);
    document.addEventListener("keydown", onKey);
    main.addEventListener("click", followLink);
    main.addEventListener("pointerover", offerCopy);
    main.addEventListener("focusin", offerCopy);
    copyButton.addEventListener("click", () => copyPath(copyButton.closest("tr")));
    let isFollowing = false;
    document.addEventListener("scroll", (event) => {
        if (!isFollowing && event.target !== byId("tree")) {
            isFollowing = true;
            requestAnimationFrame(() => {
                isFollowing = false;
                followScrolling();
            });
        }
    }, { capture: true, passive: true });
    addEventListener("hashchange", onAddress);
    // Later than load, because the browser scrolls to the address and moves the focus while the page loads.
    addEventListener("load", () => setTimeout(() => reveal() || followScrolling()));
})();
