#pragma once

#include "ControlFileLines.h"
#include "Listener.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace Nereo::Inspection {

/// What a save makes of a value that was loaded.
enum class Save { AsItIs, AsOne, Never };

/// A value in a line of a control file.
struct Field {
    const char* name = ""; ///< the last part of its address; empty where the line has no other value
    Item::Type type = Item::Type::Number;
    bool endsLine = false; ///< in a section where each line has its own values
    Save save = Save::AsItIs;
};

/// Fields that stand in an array.
struct Fields {
    const Field* first = nullptr;
    int count = 0;

    const Field& operator[](int i) const { return first[i]; }
    Fields mid(int from, int to) const { return {first + from, to - from}; }
};

/// Reads the values of a control file, tells of them and of what is wrong with them.
///
/// What is wrong is judged word by word, each as the one that it is by its place in the line; what a load
/// makes of the values is read as it reads them. Both are the same until a word is missing or isn't read to
/// its end.
class ControlFileValues {
public:
    /// What there is to say of the line from a place on if that was meant for a title.
    using LostTitle = std::function<std::optional<Discovery>(int at)>;

    ControlFileValues(ControlFileLines& lines, Listener& listener, LostTitle lostTitle)
        : lines_(lines), listener_(listener), lostTitle_(std::move(lostTitle)),
          wantsItems_(listener.wantsItems())
    {
    }

    void beginSection() { isBehindTitle_ = false; }

    /// Reads the values of a section with lines of its own.
    void readSection(const QString& address, Fields fields);

    /// Reads values in the line from a place on, and all that a load takes for them. False if that is not
    /// only this line.
    bool readLine(const QString& address, Fields fields, int from);

    /// Whether a part of the line is a value of the type and nothing else.
    bool isValue(Item::Type type, Range range);

    /// Whether a word is two values with another character for the blank between them.
    bool isTwoInOne(Range word, Item::Type first, Item::Type second);

    /// A value of which a load doesn't take notice. False if it is none.
    bool unloaded(const QString& address, Item::Type type, Range word);

    /// Something that is wrong with a part of the line.
    void finding(Rule rule, const QString& address, Range range);

    /// Text that a load keeps.
    void text(const QString& address, Range range);

    /// A byte-order mark at the beginning of a text gets lost.
    void byteOrderMark(const QString& address, Range range);

    /// Tells of the line if it is meant for a title. False if it isn't.
    bool reportLostTitle();

    /// Text that stands behind what a load reads of a line, and lines behind those that it reads.
    void trailingText(const QString& address, int at);
    void trailingLines(const QString& address);

    void item(const QString& address, Item::Type type, Range word, const QVariant& value);

    bool wantsItems() const { return wantsItems_; }

    void element(const QString& address) { listener_.element(address); }

    /// The part of an address that is a name, whole in an item and shortened in a finding.
    QString addressPartOf(Range name) const;

    /// What a load takes of the lines behind for what is missing in the current one, as a part of a sentence.
    static QString takenInstead(QStringView line);

private:
    /// A value that has been judged and not yet told.
    struct Read {
        Range word;
        double alone = 0; ///< what the word says by itself
        std::optional<WordFault> fault = {};
        std::optional<Item> item = {};
        std::optional<Discovery> discovery = {};
    };

    static Fields firstLine(Fields fields);
    bool isLike(Fields fields);
    void tell(const Discovery& discovery);
    void tellHeld();
    bool isSwitchMissing(Fields fields, Range word);
    bool readField(const QString& address, const Field& field, Range word);
    void variable(const QString& address, Range word);
    bool isNameAndNumber(Range word);
    bool readBroken(const QString& address, Fields fields, int at);
    int judge(const QString& address, Fields fields, int at);
    void discover(const QString& address, Fields fields);
    bool isTwoInOne(Fields fields);
    bool isWordTooMany(Fields fields, int behind);
    bool isOfLaterField(Item::Type type, Range word);
    void readJudged(Fields fields);
    void readShifted(const QString& address, Fields fields);
    void missingAtEnd(const QString& address, Fields fields, int field);
    std::optional<WordFault> faultOf(Item::Type type, Range word, double& value);
    Discovery found(Rule rule, const QString& address, Range range, const QStringList& details = {});
    std::optional<Discovery> trailing(const QString& address, int at);
    double readNext(Item::Type type);

    ControlFileLines& lines_;
    Listener& listener_;
    const LostTitle lostTitle_;
    const bool wantsItems_;
    std::vector<Read> reads_;    ///< of the line that is read
    std::vector<double> values_; ///< as a load has read them, of the section
    std::optional<Place> blank_; ///< the first line that it has skipped
    int fieldAtBlank_ = 0;
    bool isMissingTold_ = false; ///< that the line has a word too few
    bool isBehindTitle_ = false; ///< that stands behind a value of the section

    // What is wrong with a line that is as the one behind it should be is told at the end of the section: if
    // that comes a line early, this is where a line is missing, and nothing else is wrong.
    bool isHeld_ = false; ///< what is told now
    std::vector<Discovery> held_;
    Place placeHeld_; ///< of the first word in the line
    int fieldHeld_ = 0;
};

/// The address of a field of a line or section.
QString fieldAddress(const QString& address, const Field& field);

/// A text in the language of the application.
QString translated(const char* english);

} // namespace Nereo::Inspection
