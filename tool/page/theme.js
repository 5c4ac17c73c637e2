// The colour theme, and the parts that narrow windows hide.

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
    byId("theme").querySelector(".word").textContent = `Theme: ${theme}`;
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
