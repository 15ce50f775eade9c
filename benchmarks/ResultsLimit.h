#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// The fields of a results file, by the column that they had in it.
struct PlainFields {
    std::vector<double*> columns;
    std::size_t nodeCount = 0;
};

/// What plain C++ can do with a results file that is complete and right: the practical limit of a load. The
/// memory is never freed.
///
/// Each reads in blocks and swaps bytes where the machine needs it.

/// In runs of one field into zeroed arrays on ordinary pages. The nodes must be ascending.
PlainFields loadRunsOnOrdinaryPages(const std::string& path);

/// The same with every trick: all arrays side by side on large pages, filled in tiles that stay in the
/// first-level cache.
PlainFields loadRunsWithEveryTrick(const std::string& path);

/// To the place that the node number says, on ordinary pages.
PlainFields loadScatteredOnOrdinaryPages(const std::string& path);
