// Starts the page: shows what needs a script, and listens.

function listenToFilters() {
    filterForm.addEventListener("input", (event) => {
        applyFilters();
        storeFilter(event.target === search);
    });
    filterForm.addEventListener("submit", (event) => event.preventDefault());
    filterForm.addEventListener("reset", (event) => {
        event.preventDefault();
        clearFilters();
        storeFilter(false);
        search.focus();
    });
    search.addEventListener("keydown", onSearchKey);
    moreResults.addEventListener("click", showAllResults);
    byId("nothing").querySelector("button").addEventListener("click", leaveSearch);
    const more = byId("more-filters");
    more.addEventListener("click", () => more.setAttribute("aria-expanded",
        String(more.getAttribute("aria-expanded") === "false")));
}

function listenToSettings() {
    document.addEventListener("click", followLink);
    main.addEventListener("pointerover", offerActions);
    main.addEventListener("focusin", offerActions);
    main.addEventListener("click", (event) => {
        const setting = settingOf(event.target);
        const isTouch = matchMedia("(hover: none)").matches;
        if (isTouch && setting?.row.cells[1].contains(event.target) && !event.target.closest("form, summary, a")) {
            openEditor(setting);
        }
    });
    editButton.addEventListener("click", () => openEditor(settingOf(editButton)));
    copyButton.addEventListener("click", () => copyPath(settingOf(copyButton)));
}

function listenToScrolling() {
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
}

document.documentElement.classList.add("js");
for (const part of document.querySelectorAll("#groups, #show-changes, #theme, #filters, #tree, footer")) {
    part.hidden = false;
}
facets.forEach(fillSelect);
buildTree();
countInGroups(false);
setTheme(themes.includes(storedTheme()) ? storedTheme() : "system");
startPanel();
listenToFilters();
listenToSettings();
listenToScrolling();
addEventListener("hashchange", () => location.href !== handledAddress && followAddress());
byId("theme").addEventListener("click", nextTheme);
byId("groups").addEventListener("click", (event) =>
    setDrawer(event.currentTarget.getAttribute("aria-expanded") === "false"));
notice.querySelector("button").addEventListener("click", () => showNotice(""));
document.addEventListener("keydown", onKey);
// Later than load, because the browser scrolls to the address and moves the focus while the page loads.
addEventListener("load", () => setTimeout(() => {
    followAddress();
    followScrolling();
    (window.requestIdleCallback ?? setTimeout)(prepareSearch);
}));
