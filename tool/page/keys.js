// Keys of the whole page, of the search and of the settings.

function focusSetting(from, by) {
    const candidates = main.classList.contains("searching") ? [...resultRows.rows].map(settingOf) : shown;
    const next = candidates[candidates.indexOf(from) + by];
    next?.row.scrollIntoView({ block: "nearest" });
    next?.row.querySelector("a").focus({ preventScroll: true });
}

/** Leaves the search and the filters: shows all, at the setting that had the focus. */
function leaveSearch() {
    const setting = settingOf(document.activeElement);
    if (clearFilters()) {
        storeFilter(false);
    }
    if (setting) {
        revealSetting(setting);
    } else {
        main.focus();
    }
}

function onSearchKey(event) {
    if (event.isComposing) {
        return; // the key is for the input method
    }
    if (event.key === "Escape") {
        event.preventDefault();
        leaveSearch();
    } else if (event.key === "ArrowDown" || event.key === "Enter") {
        event.preventDefault();
        focusSetting(undefined, 1);
    }
}

function onSettingKey(event, setting) {
    if (event.key === "ArrowDown" || event.key === "ArrowUp") {
        event.preventDefault();
        focusSetting(setting, event.key === "ArrowDown" ? 1 : -1);
    } else if (event.key === "c") {
        copyPath(setting);
    } else if (event.key === "e") {
        event.preventDefault();
        openEditor(setting);
    }
}

function closeDrawers() {
    const isOpen = !panel.hidden || document.documentElement.classList.contains("groups");
    setDrawer(false);
    if (!panel.hidden) {
        setPanel(false);
    }
    return isOpen;
}

function onKey(event) {
    const isTyping = event.target.matches?.("input, select, textarea");
    if (event.defaultPrevented || isTyping || event.ctrlKey || event.altKey || event.metaKey) {
        return;
    }
    const setting = settingOf(event.target);
    if (event.key === "/") {
        event.preventDefault();
        search.focus();
        search.select();
    } else if (event.key === "Escape") {
        if (!closeDrawers()) {
            leaveSearch();
        }
    } else if (setting) {
        onSettingKey(event, setting);
    }
}
