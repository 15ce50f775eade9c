#pragma once

#include <QString>
#include <QVector>

#include <atomic>
#include <mutex>

namespace Clt {

/// The English text in the application's language, as the translators that are installed now have it.
QString translate(const char* context, const QString& english);

/// The display names of a vocabulary: in English until somebody asks for their translations, and from then on
/// as they were translated at that moment.
///
/// Names are appended by one thread, before any other uses them.
class DisplayNames {
public:
    explicit DisplayNames(const char* context);

    void append(const QString& english);

    const QVector<QString>& current() const;
    const QVector<QString>& translated();

private:
    const char* context_; // under which translators know the names
    QVector<QString> english_;
    QVector<QString> translated_;
    std::once_flag translation_;
    std::atomic<bool> isTranslated_ {false};
};

} // namespace Clt
