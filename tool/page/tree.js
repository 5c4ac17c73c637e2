// The tree of groups beside the settings.

function makeItem(group, depth) {
    const isParent = group.children.length > 0;
    const part = (className, textContent) => make("span", { className, textContent });
    group.number = part("count", "");
    const label = make("span", { className: "label" }, part("twist", isParent ? "›" : ""), part("text", group.name), group.number);
    label.style.setProperty("--depth", depth);
    group.item = make("li", { role: "treeitem", "aria-selected": "false", "aria-level": depth + 1, tabIndex: -1,
        "data-path": group.path }, label);
    if (isParent) {
        group.item.append(make("ul", { role: "group" }, ...group.children.map((child) => makeItem(child, depth + 1))));
        group.item.setAttribute("aria-expanded", String(depth === 0));
    }
    return group.item;
}

const isOpen = (item) => item.getAttribute("aria-expanded") === "true";
const isClosed = (item) => item.getAttribute("aria-expanded") === "false";
const setOpen = (item, open) => item.setAttribute("aria-expanded", String(open));
const above = (item) => item.parentElement.closest("[role=treeitem]");
const reachable = () => [...byId("tree").querySelectorAll("li")].filter((item) => item.offsetParent !== null);

const tabStop = () => byId("tree").querySelector('li[tabindex="0"]');

/** Makes an item the one that the Tab key leads to. */
function setTabStop(item) {
    tabStop()?.setAttribute("tabindex", "-1");
    item.tabIndex = 0;
}

/** Keeps the tree within reach of the Tab key when groups are hidden. */
function keepTabStop() {
    const firstShown = byId("tree").querySelector("li:not([hidden])");
    if (firstShown && tabStop().closest("[hidden]")) {
        setTabStop(firstShown);
    }
}

function focusItem(item) {
    setTabStop(item);
    item.focus();
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
    Enter: (item) => goToGroup(item.dataset.path),
    " ": (item) => goToGroup(item.dataset.path),
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
        goToGroup(item.dataset.path);
    }
}

/** Shows or hides the tree, which narrow windows hide by default. */
function setDrawer(isShown) {
    document.documentElement.classList.toggle("groups", isShown);
    byId("groups").setAttribute("aria-expanded", String(isShown));
}

function buildTree() {
    const roots = [...groups.values()].filter((group) => !group.parent);
    const list = make("ul", { role: "tree", "aria-label": "Groups" }, ...roots.map((root) => makeItem(root, 0)));
    list.addEventListener("keydown", onTreeKey);
    list.addEventListener("click", onTreeClick);
    byId("tree").append(list);
    setTabStop(list.querySelector("li"));
}
