#pragma once

#include <NereoFileIO/ResultsProblem.h>

#include <QtGlobal>

namespace Nereo::Io {

/// What became of reading a results file.
struct ResultsLoadResult {
    enum Outcome : int {
        Loaded,            ///< all that was asked for
        CutShort,          ///< the file ends early; what is there was read
        CannotOpen,        ///< there is no such file, or it may not be read
        ReadFailed,        ///< the disk gives no more
        NoResultsFile,     ///< a marker is wrong, or the file ends before the first one
        ContradictsItself, ///< the problem says which way; a plain loadFrom() would stop the process
        OverLimit,         ///< of memory, or a field of more values than a QVector holds
        Cancelled          ///< by the progress function
    };

    Outcome outcome = CannotOpen;

    /// Which problem of the file led to the outcome, and where; of a file that is cut short, its end.
    ResultsProblem problem;

    int recordsAnnounced = 0;
    int wholeRecords = 0;    ///< of these, as far as the file was read
    qint64 memoryNeeded = 0; ///< by a load in bytes, where the outcome is OverLimit
    bool isLoaded() const { return outcome == Loaded || outcome == CutShort; } ///< whether anything was
};

} // namespace Nereo::Io
