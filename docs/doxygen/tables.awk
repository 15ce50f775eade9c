# Gives doxygen a header with the rows of the .def file where it is included: between braces doxygen itself leaves them
# out. The rest of a row becomes the description of what the row makes.
/^#include <.*\.def>/ {
    table = $2
    gsub(/[<>]/, "", table)
    while ((getline row < ("include/" table)) > 0) {
        if (row !~ /^[A-Z_]+\(/)
            continue
        description = row
        sub(/^[^,]*, */, "", description)
        sub(/\)[^)]*$/, "", description)
        print row " ///< " description
    }
    close("include/" table)
    next
}

{ print }
