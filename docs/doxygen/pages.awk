# Gives doxygen a Markdown page with what its links need: a name of its own for each heading, made from the heading as
# everywhere else, and references in place of the paths of sources.
function nameOf(path) {
    sub(/^.*\//, "", path)
    gsub(/[^A-Za-z0-9]/, "-", path)
    return path
}

BEGIN { page = nameOf(ARGV[1]) }

/^```/ { isCode = !isCode }

!isCode {
    if (/^##+ /) {
        name = tolower($0)
        sub(/^##+ /, "", name)
        gsub(/[^a-z0-9 _-]/, "", name)
        gsub(/ /, "-", name)
        $0 = $0 " {#" page "-" name "}"
    }
    gsub(/\]\(#/, "](#" page "-")
    while (match($0, /\]\([^():@ ]*\.md#[a-z0-9_-]*\)/)) {
        heading = substr($0, RSTART + 2, RLENGTH - 3)
        $0 = substr($0, 1, RSTART + 1) "@ref " nameOf(heading) substr($0, RSTART + RLENGTH - 1)
    }
    while (match($0, /\]\([^():@ ]*\.(h|def|cpp)\)/)) {
        source = substr($0, RSTART + 2, RLENGTH - 3)
        sub(/^.*\//, "", source)
        $0 = substr($0, 1, RSTART + 1) "@ref " source substr($0, RSTART + RLENGTH - 1)
    }
    # The reference has no scripts: what they are called stays.
    while (match($0, /\]\([^():@ ]*\.(py|ipynb)\)/)) {
        words = substr($0, 1, RSTART - 1)
        rest = substr($0, RSTART + RLENGTH)
        sub(/\[[^\[]*$/, "", words)
        $0 = words substr($0, length(words) + 2, RSTART - length(words) - 2) rest
    }
}

{ print }
