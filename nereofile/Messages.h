#pragma once

#include <QString>
#include <QStringList>

namespace Nereo::Tool {

/// Tells people something on standard error, as a line that begins with the program's name.
void say(const QString& message);

/// That there is no such address, and which one was probably meant.
QString missingText(const QString& address, const QStringList& known);

/// Ends a command whose exit code is to be Refused.
class Refusal {
public:
    explicit Refusal(QString message) : message_(std::move(message)) {}

    const QString& message() const { return message_; }

private:
    QString message_;
};

} // namespace Nereo::Tool
