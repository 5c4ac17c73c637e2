// Changes as commands for a POSIX shell.

function quoteForShell(text) {
    return /^[\w@%+=:,./-]+$/.test(text) ? text : `'${text.replaceAll("'", "'\\''")}'`;
}

/** Returns the arguments of `vxsettings set` after the path: strings and scalars as people type them, else JSON. */
function setArguments(json, constraint) {
    const [element] = parseValue(json, constraint).elements;
    const isPlainString = constraint.class === "char" && /^\s*[^\s"'\0]/.test(element) &&
        !element.includes("\0") && element.isWellFormed();
    const isPlainScalar = /^(true|false|[\d.][\d.e+-]*)$/.test(json) && constraint.class;
    const text = isPlainString ? element : json;
    const separator = text.startsWith("-") ? ["--"] : [];
    return { options: isPlainString || isPlainScalar ? [] : ["--json-value"], values: [...separator, quoteForShell(text)] };
}

/** Returns the command that makes a change. Secrets are left to standard input: shells record what they run. */
function commandFor({ path, constraint, isSecret }, json) {
    if (json === null) {
        return `vxsettings reset ${path}`;
    }
    if (isSecret) {
        return `# a secret is not written here; enter it with: vxsettings set ${path} --stdin`;
    }
    const { options, values } = setArguments(json, constraint);
    return ["vxsettings set", ...options, quoteForShell(path), ...values].join(" ");
}
