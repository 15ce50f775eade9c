#pragma once

#include "Output.h"

#include <vector>

namespace Nereo::Tool {

/// One JSON document on standard output, written as it comes and in its order, indented as Qt indents. Qt's
/// own document would have to be held as a whole, sorted.
class Json {
public:
    explicit Json(Output& output) : output_(output) {}

    void beginObject() { begin("{"); }
    void endObject() { end("}"); }
    void beginArray() { begin("["); }
    void endArray() { end("]"); }
    void key(const QString& name);

    void value(const QString& text);
    void value(qint64 number);
    void value(double number); ///< null where it isn't finite
    void null();

    void textOrNull(const QString& text); ///< null where it is empty

    template <class Value>
    void member(const char* name, const Value& content)
    {
        key(QString::fromLatin1(name));
        value(content);
    }

private:
    void begin(const char* bracket);
    void end(const char* bracket);
    void startLine();
    void startValue();

    Output& output_;
    std::vector<bool> areEmpty_; ///< the objects and arrays around this place
    bool isBehindKey_ = false;
};

} // namespace Nereo::Tool
