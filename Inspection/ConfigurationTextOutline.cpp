#include "ConfigurationValues.h"
#include "TextFile.h"
#include "Walker.h"

#include <FileIO/ConfigurationForms.h>

#include <algorithm>
#include <limits>

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
            if (!text_.readLine(line_)) {
                meetNoLine();
                break;
            }
            const Range key = wordFrom(line_, 0);
            if (key.size() == 0) {
                skipLine();
                continue;
            }
            readLine(key);
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
        const QString name = excerpt(QStringView(line_).mid(key.begin, key.size())); // no key is that long
        if (!values_.isKey(name)) {
            text_.cover(begin_ + key.begin, begin_ + key.end);
            if (!listener_.onlyCounts(Rule::UnknownKey))
                values_.reportUnknown(Rule::UnknownKey, name, placeAt(key.begin));
            return;
        }
        if (values_.isRepeated(name) && !listener_.onlyCounts(Rule::RepeatedKey))
            listener_.finding({Rule::RepeatedKey, placeAt(key.begin), name, name});
        readValue(name, restFrom(line_, key.end));
    }

    void readValue(const QString& key, const Range& value)
    {
        const QStringView spelling = QStringView(line_).mid(value.begin, value.size());
        if (listener_.wantsItems()) {
            const qint64 length = text_.length(begin_ + value.begin, begin_ + value.end);
            values_.tellItem(key, placeAt(value.begin), length, spelling.toString(),
                             spelling.toString().simplified());
        }
        // White space within makes a number none in either form, and is no byte-order mark.
        if (std::optional<Discovery> fault = values_.faultOf(key, spelling)) {
            if (!listener_.onlyCounts(fault->rule)) {
                fault->place = placeAt(value.begin);
                listener_.finding(*fault);
            }
            return text_.cover(begin_ + value.begin, begin_ + value.end);
        }
        text_.addPart(begin_ + value.begin, begin_ + value.end, key);
    }

    /// The stream has said that there is more, but no character comes of it. Either the device has failed; or
    /// a load goes on, as it does where white space is left.
    void meetNoLine()
    {
        if (!text_.atEnd() || blankEnd_ >= 0)
            return;
        blankEnd_ = begin_;
        text_.cover(begin_ - 1, std::numeric_limits<qint64>::max());
    }

    /// White space alone is no line, unless no line follows it.
    void skipLine()
    {
        constexpr int few = 8; // lines take no longer by themselves
        if (blankEnd_ < 0) {
            blankEnd_ = begin_;
            blankLines_ = 0;
        }
        if (blankLines_ < few)
            ++blankLines_;
        else
            text_.skipSpaces();
    }

    Place placeAt(int character) { return text_.place(begin_ + character); }

    TextFile text_;
    ConfigurationValues values_;
    Listener& listener_;
    QString line_;
    qint64 begin_ = 0;     ///< of the line
    qint64 blankEnd_ = -1; ///< of the white space behind the last line
    int blankLines_ = 0;   ///< the first few of it
};

} // namespace

void walkConfigurationText(const InputFile& file, Listener& listener)
{
    if (Io::isXmlConfiguration(file.path()))
        listener.finding({
            Rule::TextWithXmlSuffix, {1, 1, 0}
        });
    ConfigurationTextWalk(file, listener).run();
}

} // namespace Nereo::Inspection
