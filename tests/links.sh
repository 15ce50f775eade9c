#!/usr/bin/env bash
# Fails where a link of a Markdown page leads nowhere: tests/links.sh FOLDER HEADERS. All pages in FOLDER are looked through,
# but for what is built in it, and so are the headers, which name pages as docs/PAGE.md. Links to other sites are left out.
set -euo pipefail
headers=$(realpath "$2")
cd "$1"

# The names of a page's headings, as links write them.
headings() {
    awk '/^```/ { isCode = !isCode } !isCode && /^#+ /' "$1" | sed 's/^#* //' | tr '[:upper:]' '[:lower:]' |
        sed 's/[^a-z0-9 _-]//g; s/ /-/g'
}

links() { # outside of code
    awk '/^```/ { isCode = !isCode } !isCode && !/^    /' "$1" | sed 's/`[^`]*`//g' | { grep -o '](\([^)]*\))' || true; } |
        sed 's/^](//; s/)$//'
}

count=0
dead=0
while read -r page; do
    while read -r link; do
        case "$link" in
            http://* | https://*) continue ;;
        esac
        count=$((count + 1))
        target=${link%%#*}
        heading=
        [[ $link == *#* ]] && heading=${link#*#}
        target=${target:+$(dirname "$page")/$target}
        target=${target:-$page}
        if [ ! -e "$target" ] || { [ -n "$heading" ] && ! headings "$target" | grep -qx -- "$heading"; }; then
            echo "$page: $link" >&2
            dead=$((dead + 1))
        fi
    done < <(links "$page")
done < <(find . \( -name build -o -name out -o -name '.?*' \) -prune -o -name '*.md' -print)

while read -r page; do
    count=$((count + 1))
    if [ ! -e "$page" ]; then
        echo "$headers: $page" >&2
        dead=$((dead + 1))
    fi
done < <(grep -rhoE 'docs/[A-Za-z0-9/_-]+\.md' "$headers" | sort -u)

echo "$count links, $dead of them dead"
[ "$count" -gt 0 ] && [ "$dead" -eq 0 ]
