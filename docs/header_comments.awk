# Turns the comments of a header into documentation for Doxygen; line numbers stay.   awk -v top=<tree> -f <this> <header>
#
#   the comment at the top      becomes the page of the file, with the header's example program at its end, and the
#                               text of the class that is called like the header and has no comment of its own
#   lines further indented      are code: from four blanks on an example, with two or three a table
#   all else                    is plain text: nothing in it is a command or a tag, only - lists and `code` count

{ lines[NR] = $0 }

END {
    stem = FILENAME
    sub(/.*\//, "", stem)
    sub(/\.h$/, "", stem)
    name = substr(FILENAME, length(top "/src/") + 1)
    at = tell(1, "//", "/// \\file " name " \\brief ")
    for (; at <= NR; ++at) {
        if (lines[at] ~ /^ *\/\/\/[ ]/) {
            at = tell(at, "///", "") - 1
        } else if (lines[at] ~ "^(template <.*> )?(class|struct) ([A-Z_]+_API )?" stem "([ :].*)?[{]$" && lines[at - 1] !~ /\/\/\//) {
            print "/** \\copydoc " name " */ " lines[at]
        } else if (split(lines[at], parts, /\/\/\/< /) == 2) {
            print parts[1] "///< " plain(parts[2])
        } else {
            print lines[at]
        }
    }
}

# Tells the comment that begins at a line and whose lines begin with `mark`; returns the line behind it.
function tell(at, mark, opening,    last, text, indent, listing, code, i) {
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

# The text with every sign that could be read as a command or a tag escaped, but between ` and `; a page of this folder
# becomes a link.
function plain(text,    parts, n, i, result, page, target) {
    n = split(text, parts, "`")
    for (i = 1; i <= n; ++i) {
        if (i % 2 == 1) gsub(/[\\@#&<>%*$]/, "\\\\&", parts[i])
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
    return " \\n\\n \\b Example: \\include " example
}
