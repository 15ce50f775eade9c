#pragma once

#include <NereoInspection/Export.h>
#include <NereoInspection/Place.h>

#include <QString>

#include <string>

namespace Nereo::Inspection {

enum class Severity {
    Error,   ///< a load ends early, or what it gives isn't what the file says
    Warning, ///< something is ignored, overridden, lost on the next save, or hardly meant
    Note     ///< worth knowing
};

/// What becomes of the place of a finding when the file is loaded.
enum class Effect {
    None,
    Fails,    ///< the load gives false
    Throws,   ///< the load throws
    Stops,    ///< the load stops the process
    Zero,     ///< a number reads as 0
    Start,    ///< a number reads as far as it goes
    Wrapped,  ///< an integer past 32 bits reads as its low ones
    Infinite, ///< a number past the range of a double
    Off,      ///< a switch
    Replaced, ///< characters
    Ignored,
    Lost ///< on saving
};

/// The names for people and scripts: "error", "zero" and so on, in lower case.
NEREOINSPECTION_EXPORT QString severityName(Severity severity);
NEREOINSPECTION_EXPORT QString effectName(Effect effect);

/// Whether a load ends early.
constexpr bool endsLoad(Effect effect)
{
    return effect == Effect::Fails || effect == Effect::Throws || effect == Effect::Stops;
}

/// Something that is wrong with a file, or worth knowing.
struct Finding {
    Severity severity = Severity::Error;
    QString code; ///< such as "not-a-number"
    Effect effect = Effect::None;
    Place place;
    QString address;  ///< of the value that it is about; empty if it is about none
    QString found;    ///< what stands in the file, shortened where it is long; empty if nothing does
    QString expected; ///< in words; empty where nothing can be said
    QString message;  ///< a sentence in the application's language, which says all of this
    qint64 more = 0;  ///< how many further findings of the code were counted, at the last one that is listed
};

/// The finding as a line of text that editors can jump to:
/// `run/cavity.ctl:57:4: error: "abc" is not a number; it is read as 0 [not-a-number] relaxation/kP/under`,
/// of a binary file `run/cavity.res@354: error: …`. Control characters and ends of lines are written as in
/// JSON.
NEREOINSPECTION_EXPORT QString findingLine(const std::string& file, const Finding& finding);

} // namespace Nereo::Inspection
