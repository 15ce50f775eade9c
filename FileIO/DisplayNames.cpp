#include "DisplayNames.h"

#include <QCoreApplication>

namespace Clt {

QString translate(const char* context, const QString& english)
{
    return QCoreApplication::translate(context, english.toLatin1().constData());
}

DisplayNames::DisplayNames(const char* context) : context_(context) {}

void DisplayNames::append(const QString& english)
{
    english_.append(english);
}

const QVector<QString>& DisplayNames::current() const
{
    return isTranslated_ ? translated_ : english_;
}

const QVector<QString>& DisplayNames::translated()
{
    std::call_once(translation_, [this] {
        QVector<QString> names;
        names.reserve(english_.size());
        for (const QString& english : qAsConst(english_))
            names.append(translate(context_, english));
        translated_ = names;
        isTranslated_ = true;
    });
    return translated_;
}

} // namespace Clt
