// Groups and settings, from the rows of the document and the data beside them.

const main = byId("settings");
const data = JSON.parse(byId("data").textContent);

/** Groups by path, in tree order: each group before its subgroups. */
const groups = new Map();

function addGroup(path) {
    const end = path.lastIndexOf(".");
    const parent = end < 0 ? null : (groups.get(path.slice(0, end)) ?? addGroup(path.slice(0, end)));
    const group = { path, name: path.slice(end + 1), parent, children: [], settings: [], section: null, count: 0 };
    groups.set(path, group);
    parent?.children.push(group);
    return group;
}

/** Why a setting cannot be edited; empty if it can. */
function fixedReason({ alias, lock, isReadOnly }, constraint) {
    return alias ? `it is an alias of ${alias}: edit that setting`
        : isReadOnly ? "it is read-only" : lock ? `it is locked by ${lock}`
            : constraint.acceptsNothing ? "no value satisfies its constraints" : "";
}

function readSetting(row, group, facts) {
    const area = row.id.split(".")[1];
    const constraint = data.constraints[facts.constraint] ?? {};
    return {
        ...facts,
        path: row.id,
        row,
        group,
        constraint,
        fixedReason: fixedReason(facts, constraint),
        facets: {
            area: group.parent ? area : group.name,
            class: row.dataset.class,
            visibility: row.dataset.visibility,
            validator: row.dataset.constraints,
        },
    };
}

const settings = [];
for (const section of main.querySelectorAll("section:not(#results)")) {
    const group = groups.get(section.id) ?? addGroup(section.id);
    group.section = section;
    group.body = section.querySelector("tbody");
    for (const row of group.body.rows) {
        group.settings.push(readSetting(row, group, data.settings[settings.length]));
        settings.push(group.settings.at(-1));
    }
}
const settingsByPath = new Map(settings.map((setting) => [setting.path, setting]));
const groupsUpwards = [...groups.values()].reverse();
const settingOf = (element) => settingsByPath.get(element?.closest?.("tr[id]")?.id);

/** What the search compares, made when it is first used. */
function searchEntries() {
    const oldPaths = new Map();
    for (const [path, { to }] of Object.entries(data.changes)) {
        oldPaths.set(to, [...(oldPaths.get(to) ?? []), path]);
    }
    const stringsIn = (json = "[]") => (json[0] === '"' || json.startsWith('["') ? [JSON.parse(json)].flat() : []);
    return settings.map(({ path, title, row, keywords = [], constraint, phrases = {}, factory }) => ({
        path,
        title,
        sentence: row.querySelector(".sentence")?.textContent ?? "",
        keywords,
        values: [constraint.allowed ?? constraint.names ?? [], Object.values(phrases), stringsIn(factory)].flat(),
        oldPaths: oldPaths.get(path) ?? [],
        isSecondary: row.dataset.visibility === "hidden",
    }));
}
