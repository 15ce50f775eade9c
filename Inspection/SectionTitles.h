#pragma once

#include "Listener.h"

#include <QLatin1String>
#include <QStringList>
#include <QStringView>

#include <optional>
#include <vector>

namespace Nereo::Inspection {

/// The names of sections, as they stand in a table of them.
template <class Sections>
QStringList sectionNamesOf(const Sections& sections)
{
    QStringList names;
    for (const auto& section : sections)
        names.append(QLatin1String(section.name));
    return names;
}

/// Whether a line without white space around it names a section behind asterisks of which one is lost, or
/// among which there is something else.
bool isDamagedTitleOf(QLatin1String section, QStringView line);

/// The same of any section, asked first, since it takes little time.
bool mayBeDamagedTitle(QStringView line);

/// The titles of a file, held against the sections that a writer always writes: their names in its order, by
/// which they are numbered from 0 on. A section that it doesn't always write has a higher number.
///
/// A doubtful title, which is unknown or stands there twice, stands in the place of another section if it
/// stands alone between those before and behind that one: it is the same fault that this one is missing. What
/// there is to say of it is therefore told when the next title is known.
class SectionTitles {
public:
    /// The names may be more than those of the sections that are always written.
    SectionTitles(const QStringList& names, int written, Listener& listener);

    /// The title of a section is next.
    void add(int section);

    /// A doubtful title is next. Where nothing is given, it is told of otherwise, or only counted.
    void addDoubtful(const std::optional<Discovery>& discovery = {});

    /// The file ends here.
    void addEnd() { add(written_); }

    /// Somewhere a title is meant for the section, which isn't missing then.
    void setMeant(int section);

    bool isMissing(int section) const { return section < written_ && !isThere_[std::size_t(section)]; }

    /// The section that a writer puts behind the last title; none if that is doubtful.
    std::optional<int> next() const;

private:
    void tellDoubtful(std::optional<int> place);

    const QStringList& names_;
    const int written_;
    Listener& listener_;
    std::vector<bool> isThere_;          ///< by its title, or by one that is meant for it
    int last_ = -1;                      ///< the number of the last section
    int doubtful_ = 0;                   ///< how many doubtful titles stand behind it
    std::optional<Discovery> held_ = {}; ///< of the last doubtful title
};

} // namespace Nereo::Inspection
