# Makes a manual page of a page of docs/formats, so that both say the same.
#
#   awk -v name=zem-map -v what="..." -v version="zem 3.1" -f formatPage.awk map.md
#
# Knows what those pages use: headings, paragraphs, lists, tables, examples between fences, and in a
# line `code` and [links](to.md). A link to another format page becomes a reference to its manual.

function escape(text)
{
    gsub(/\\/, "\\e", text)
    gsub(/×/, "\\(mu", text)
    return text
}

# `code` in bold with real hyphens, links by their text or manual.
function inline(text,    out, start, length_, code, target)
{
    text = escape(text)
    while (match(text, /\[[^]]*\]\([^)]*\)/)) {
        start = RSTART
        length_ = RLENGTH
        code = substr(text, start, length_)
        target = code
        sub(/.*\(/, "", target)
        sub(/\)$/, "", target)
        sub(/^\[/, "", code)
        sub(/\].*/, "", code)
        if (target ~ /^(map|log|container|lcov|cobertura|report-csv|report-json)\.md/) {
            sub(/\.md.*/, "", target)
            code = code " (see `zem-" target "`(5))"
        }
        text = substr(text, 1, start - 1) code substr(text, start + length_)
    }
    while (match(text, /`[^`]*`/)) {
        code = substr(text, RSTART + 1, RLENGTH - 2)
        gsub(/-/, "\\-", code)
        out = out substr(text, 1, RSTART - 1) "\\fB" code "\\fR"
        text = substr(text, RSTART + RLENGTH)
    }
    out = out text
    if (out ~ /^[.']/) {
        out = "\\&" out
    }
    return out
}

function endTable()
{
    if (inTable) {
        print ".TE"
    }
    inTable = 0
}

function endList()
{
    inList = 0
}

# A row of a table; the last column takes what room there is.
function tableRow(line,    n, cells, i, row)
{
    gsub(/^\| */, "", line)
    gsub(/ *\|$/, "", line)
    n = split(line, cells, / *\| */)
    if (!inTable) {
        print ".PP"
        print ".TS"
        row = ""
        for (i = 1; i < n; i++) {
            row = row "lb "
        }
        print row "lb"
        gsub(/b/, "", row)
        print row "lx."
        inTable = 1
    }
    row = ""
    for (i = 1; i < n; i++) {
        row = row inline(cells[i]) "\t"
    }
    print row "T{\n" (cells[n] == "" ? "\\&" : inline(cells[n])) "\nT}"
}

BEGIN {
    print "'\\\" t"
    printf ".TH %s 5 \"\" \"%s\" \"File Formats\"\n", toupper(name), version
    manual = name
    gsub(/-/, "\\-", manual)
    printf ".SH NAME\n%s \\- %s\n.SH DESCRIPTION\n", manual, what
}
/^```/ {
    endTable()
    inExample = !inExample
    print inExample ? ".PP\n.nf" : ".fi"
    next
}
inExample { print escape($0); next }
/^# / { next }
/^### / { endTable(); endList(); printf ".SS %s\n", escape(substr($0, 5)); fresh = 1; next }
/^## / { endTable(); endList(); printf ".SH %s\n", toupper(escape(substr($0, 4)))
    fresh = 1; next }
/^\|[-|]*\|$/ { next }
/^\|/ { tableRow($0); next }
/^$/ { endTable(); endList(); if (!fresh) { blank = 1 } next }
/^- / { endTable(); print ".IP \\(bu 2\n" inline(substr($0, 3)); inList = 1; blank = 0; fresh = 0; next }
/^[0-9]+\. / { endTable(); number = $1; sub(/^[0-9]+\. */, "")
    print ".IP " number " 4\n" inline($0); inList = 1; blank = 0; fresh = 0; next }
inList { sub(/^ */, ""); print inline($0); next }
{
    endTable()
    if (blank) {
        print ".PP"
    }
    blank = 0
    fresh = 0
    print inline($0)
}
END {
    endTable()
    print ".SH SEE ALSO"
    n = split("zem 1,zem-import 1,zem-dump 1,zem-container 5,zem-log 5,zem-map 5", pages, /,/)
    separator = ""
    for (i = 1; i <= n; i++) {
        split(pages[i], page, / /)
        if (page[1] != name) {
            printf "%s.BR %s (%s)", separator, page[1], page[2]
            separator = ",\n"
        }
    }
    print ""
}
