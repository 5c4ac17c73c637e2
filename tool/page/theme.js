// The colour theme.

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
