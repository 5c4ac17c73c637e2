// Short names for making and finding elements.

const byId = (id) => document.getElementById(id);

/** Makes an element with properties; "dataset", "style" and ARIA attributes are given by their attribute names. */
function make(tag, properties = {}, ...children) {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(properties)) {
        if (name.includes("-") || name === "role") {
            element.setAttribute(name, value);
        } else {
            element[name] = value;
        }
    }
    element.append(...children);
    return element;
}

const status = byId("status");
const notice = byId("notice");

/** Tells something that happened in a line that screen readers announce. */
function announce(text) {
    status.textContent = text;
}

/** Shows a message until it is closed. */
function showNotice(text) {
    notice.querySelector("p").textContent = text;
    notice.hidden = text === "";
}
