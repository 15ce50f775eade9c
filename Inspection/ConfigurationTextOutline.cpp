#include "ConfigurationValues.h"
#include "TextFile.h"
#include "Walker.h"

#include <algorithm>

namespace Nereo::Inspection {

namespace {

/// A part of a line, by its first character and the one behind its last.
struct Range {
    int begin;
    int end;

    int size() const { return end - begin; }
};

bool isSpace(QChar character)
{
    return character.isSpace();
}

/// The first word from a place on, as the stream would extract it; empty at the end if there is none.
Range wordFrom(const QString& line, int from)
{
    const auto begin = std::find_if_not(line.begin() + from, line.end(), isSpace);
    const auto end = std::find_if(begin, line.end(), isSpace);
    return {int(begin - line.begin()), int(end - line.begin())};
}

/// All from a place on without white space at both ends; empty at the end if there is nothing else.
Range restFrom(const QString& line, int from)
{
    const int begin = wordFrom(line, from).begin;
    int end = line.size();
    while (end > begin && line[end - 1].isSpace())
        --end;
    return {begin, end};
}

/// The way through one file.
class ConfigurationTextWalk {
public:
    ConfigurationTextWalk(const InputFile& file, Listener& listener)
        : text_(file, listener), values_(listener), listener_(listener)
    {
    }

    void run()
    {
        while (!text_.atEnd()) {
            begin_ = text_.nextIndex();
            line_.clear();
            if (!text_.appendLine(line_))
                break; // the device has failed
            const Range key = wordFrom(line_, 0);
            if (key.size() > 0)
                readLine(key);
            else
                skipLine();
            text_.reportCharacters();
        }
        if (blankEnd_ >= 0)
            listener_.finding({Rule::BlankEnd, text_.place(blankEnd_)});
        text_.reportEnd();
    }

private:
    void readLine(const Range& key)
    {
        blankEnd_ = -1;
        const QString name = line_.mid(key.begin, key.size());
        if (!values_.isKey(name)) {
            text_.cover(begin_ + key.begin, begin_ + key.end);
            return values_.unknownKey(Rule::UnknownKey, name, placeAt(key.begin));
        }
        const Range value = restFrom(line_, key.end);
        const int valueBegin = value.size() > 0 ? value.begin : line_.size();
        const bool hasFault =
            values_.value(name, placeAt(key.begin), placeAt(valueBegin),
                          text_.length(begin_ + value.begin, begin_ + value.end),
                          QStringView(line_).mid(value.begin, value.size()), ConfigurationValues::simplified);
        if (hasFault)
            text_.cover(begin_ + value.begin, begin_ + value.end);
    }

    /// White space alone is no line, unless no line follows it.
    void skipLine()
    {
        if (blankEnd_ < 0)
            blankEnd_ = begin_;
    }

    Place placeAt(int character) { return text_.place(begin_ + character); }

    TextFile text_;
    ConfigurationValues values_;
    Listener& listener_;
    QString line_;
    qint64 begin_ = 0;     ///< of the line
    qint64 blankEnd_ = -1; ///< of the white space behind the last line
};

} // namespace

void walkConfigurationText(const InputFile& file, Listener& listener)
{
    ConfigurationTextWalk(file, listener).run();
}

} // namespace Nereo::Inspection
