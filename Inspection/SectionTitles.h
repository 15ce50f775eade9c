#pragma once

#include <QLatin1String>
#include <QStringView>

#include <optional>

namespace Nereo::Inspection {

/// Whether a line without white space around it names a section behind asterisks of which one is lost, or
/// among which there is something else.
bool isDamagedTitleOf(QLatin1String section, QStringView line);

/// The same of any section, asked first, since it takes little time.
bool mayBeDamagedTitle(QStringView line);

/// The order of the titles of a file, held against the one in which a writer writes its sections.
///
/// A doubtful title, which is unknown or stands there twice, stands in the place of another section if it
/// stands alone between those before and behind that one: it is the same fault that this one is missing.
class TitleOrder {
public:
    /// Of so many sections that a writer always writes, which are numbered from 0 on. What has a higher
    /// number stands behind them.
    explicit TitleOrder(int count) : count_(count) {}

    /// A doubtful title is next.
    void addDoubtful() { ++doubtful_; }

    /// The title of a section is next, or the end of the file where nothing more is given. The number of the
    /// section in whose place a doubtful title stands before, if one does.
    std::optional<int> add(std::optional<int> section = {});

private:
    const int count_;
    int last_ = -1;    ///< the number of the last section
    int doubtful_ = 0; ///< how many doubtful titles stand behind it
};

} // namespace Nereo::Inspection
