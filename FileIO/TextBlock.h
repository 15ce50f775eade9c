#pragma once

#include <NereoFileIO/Export.h>

#include <QString>
#include <QTextStream>

#include <vector>

namespace Nereo::Io {

/// Gives a text stream many short items in few large pieces. It writes what the stream with its default
/// settings would write, in a small part of the time.
///
/// Nothing else may write to the stream between the first item and flush(), which comes last: without it the
/// rest is lost.
class NEREOFILEIO_EXPORT TextBlock {
public:
    explicit TextBlock(QTextStream& out);
    TextBlock(const TextBlock&) = delete; // it points into itself
    TextBlock& operator=(const TextBlock&) = delete;

    TextBlock& operator<<(char character); ///< ASCII
    TextBlock& operator<<(int number);
    TextBlock& operator<<(double number);
    TextBlock& operator<<(const QString& text);

    void flush(); ///< gives the stream what it doesn't have yet

private:
    template <class Number>
    TextBlock& appendNumber(Number number);
    void makeRoom(int count);

    QTextStream& out_;
    std::vector<QChar> block_;
    QChar* end_;
};

} // namespace Nereo::Io
