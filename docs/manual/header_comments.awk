# Turns the comments of a header into documentation for Doxygen; line numbers stay.   awk -v top=<tree> -f <this> <header>
#
#   the comment at the top      becomes the page of the file, with the header's example program at its end, and the
#                               description of the class named like the header if that has no comment of its own
#   lines further indented      are code: an example from four blanks on, a table with two or three
#   everything else             is plain text, in which only - lists and `code` have a meaning
#   the comment of a group      is repeated, as far as its first empty line, at every member without one of its own

{ lines[NR] = $0 }

END {
    stem = FILENAME
    sub(/.*\//, "", stem)
    sub(/\.h$/, "", stem)
    name = substr(FILENAME, length(top "/src/") + 1)
    at = comment(1, "//", "/// \\file " name " \\brief ")
    for (; at <= NR; ++at) {
        if (lines[at] ~ /^ *\/\/\/[ ]/) {
            own = shared != "" # the first comment of a group describes all its members
            if (grouped && !own) shared = paragraph(at)
            ended = !own
            at = comment(at, "///", "") - 1
        } else if (lines[at] ~ /^ *\/\/\/@/) {
            grouped = lines[at] ~ /@[{]/
            margin = index(lines[at], "/") - 1
            shared = ""
            print lines[at]
        } else if (lines[at] ~ "^(template <.*> )?(class|struct) ([A-Z_]+_API )?" stem "([ :].*)?[{]$" && lines[at - 1] !~ /\/\/\//) {
            print "/** \\copydoc " name " */ " lines[at]
        } else if (split(lines[at], parts, /\/\/\/< /) == 2) {
            match(parts[2], /^slots? [0-9]+[^:;]*[:;]? ?/)
            slot = RLENGTH > 0 ? substr(parts[2], 6, RLENGTH - 5) : ""
            brief = plain(substr(parts[2], RLENGTH > 0 ? RLENGTH + 1 : 1))
            if (brief == "" && grouped && !own) brief = shared
            if (brief == "" && parts[1] ~ /~/) brief = "Destroys the object."
            sub(/^s /, "", slot)
            sub(/[:;]? *$/, "", slot)
            print parts[1] "///< " (slot == "" ? "" : "{{slot " slot "}} ") brief
        } else {
            match(lines[at], /^ */)
            member = grouped && RLENGTH == margin && lines[at] ~ /^ *[][A-Za-z~}]/
            declares = member && ended && !own && lines[at] !~ /^ *(static_assert|})/
            print substr(lines[at], 1, RLENGTH) (declares ? "/** " shared " */ " : "") substr(lines[at], RLENGTH + 1)
            if (member) ended = lines[at] ~ /[;}] *(\/\/.*)?$/
            if (member && ended) own = 0
        }
    }
}

# Returns the first paragraph of the comment that begins at a line.
function paragraph(at,    line, text) {
    for (; lines[at] ~ /^ *\/\/\/ [^ ]/; ++at) {
        line = lines[at]
        sub(/^ *\/\/\/ /, "", line)
        text = text (text == "" ? "" : " ") line
    }
    return plain(text)
}

# Prints the comment that begins at a line and whose lines begin with `mark`; returns the line after it.
function comment(at, mark, opening,    last, text, indent, listing, code, i) {
    indent = lines[at]
    sub(/\/\/.*/, "", indent)
    last = at
    while (index(lines[last + 1], indent mark) == 1 && lines[last + 1] !~ /\/\/\/[@<]/) ++last
    for (i = at; i <= last; ++i) {
        text[i] = substr(lines[i], length(indent mark) + 1)
        listing = text[i] ~ /^ +- / || (listing && text[i] ~ /^   +[^ ]/)
        code[i] = !listing && text[i] ~ /^   /
    }
    for (i = last; i >= at; --i) if (code[i]) code[i] = code[i + 1] == 2 || text[i] !~ /^     / ? 2 : 1
    for (i = at; i <= last; ++i) if (code[i] && code[i - 1]) code[i] = code[i - 1]
    for (i = at; i <= last; ++i) {
        if (!code[i]) text[i] = plain(text[i])
        if (!code[i] && code[i + 1]) text[i] = text[i] " \\code" (code[i + 1] == 1 ? "{.cpp}" : "{.unparsed}")
        if (code[i] && !code[i + 1]) text[i] = text[i] " \\endcode"
        if (i == last && opening != "") text[i] = text[i] shown()
        print indent (i == at && opening != "" ? opening : "///") text[i]
    }
    return last + 1
}

# Returns the text with every sign escaped that could be read as a command or a tag, except between ` and ` and, where
# Doxygen shows it literally, between quotes. The name of a page of this folder becomes a link.
function plain(text,    parts, n, i, quoted, m, j, result, page, target) {
    n = split(text, parts, "`")
    for (i = 1; i <= n; ++i) {
        if (i % 2 == 1) {
            m = split(parts[i], quoted, "\"")
            parts[i] = ""
            for (j = 1; j <= m; ++j) {
                if (j % 2 == 1 || j == m) gsub(/[\\@#&<>%*$]/, "\\\\&", quoted[j])
                parts[i] = parts[i] (j == 1 ? "" : "\"") quoted[j]
            }
        }
        result = result (i == 1 ? "" : "`") parts[i]
    }
    if (match(result, /docs\/[a-z-]+\.md/)) {
        page = substr(result, RSTART, RLENGTH)
        target = "md_" substr(page, 1, length(page) - 3)
        gsub(/[\/-]/, "_", target)
        result = substr(result, 1, RSTART - 1) "\\ref " target " \"" page "\"" substr(result, RSTART + RLENGTH)
    }
    return result
}

function shown(    example, line) {
    example = "headers/" stem ".cpp"
    if ((getline line < (top "/examples/" example)) < 0) return ""
    return " \\details \\b Example: \\include " example
}
