#pragma once

#include <NereoInspection/Check.h>
#include <NereoInspection/Export.h>
#include <NereoInspection/Finding.h>
#include <NereoInspection/Place.h>

#include <QString>

#include <optional>
#include <string>
#include <vector>

namespace Nereo::Inspection {

/// Where the value of a setting comes from.
enum class Origin {
    Default, ///< nothing says anything else
    File,
    CommandLine ///< which goes over the file
};

/// The name for people and scripts: "default", "file", "command-line".
NEREOINSPECTION_EXPORT QString originName(Origin origin);

/// A setting as a solver will have it.
struct EffectiveSetting {
    QString key;
    QString value; ///< as Setting::valueAsString() gives it
    Origin origin = Origin::Default;
    Place place; ///< of the value in the file, if it comes from there
};

/// All settings as a solver will have them, which loads a file and then takes its command line.
struct EffectiveConfiguration {
    std::vector<EffectiveSetting> settings; ///< by ascending keys

    /// Why a load of the file ends early, after which it has set only what stands before. None if it doesn't.
    std::optional<Finding> endOfLoad;

    /// Why the command line isn't taken, or not to its end, in English; empty if it is. What stands before in
    /// it has been taken.
    QString commandLineError;
};

/// The settings after a load of a file and of the solver's command line: the executable, the prefix of the
/// job, and pairs of a key with a minus sign and its value. An empty one is none.
///
/// The file is loaded by the suffix of its path, as the solver loads it. A kind that is given in the options
/// says instead what it is.
NEREOINSPECTION_EXPORT EffectiveConfiguration
effectiveConfiguration(const std::string& path, const std::vector<std::string>& commandLine = {},
                       const CheckOptions& options = {});

} // namespace Nereo::Inspection
