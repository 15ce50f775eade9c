#pragma once

#include "Formats.h"
#include "Requirement.h"

#include <QSet>

/// What has to hold when a model is loaded and saved again and again.

/// How a model gets into a file and back. A target whose reader needs something around it hides these
/// members.
template <class FileModel, class FormatReader, class FormatWriter>
struct Format {
    using Model = FileModel;

    static Model fresh() { return Model(); } ///< what a load begins with
    static bool read(const QByteArray& bytes, Model& model) { return loadBytes<FormatReader>(bytes, model); }
    static QByteArray written(const Model& model) { return savedBytes<FormatWriter>(model); }
};

/// Whether the bytes are met for the first time. Most inputs are saved as one before them, and to load that
/// again would only take time.
inline bool isNew(const QByteArray& saved)
{
    constexpr int mostRemembered = 10000;

    static QSet<QByteArray> remembered;
    if (remembered.contains(saved))
        return false;
    if (remembered.size() == mostRemembered)
        remembered.clear();
    remembered.insert(saved);
    return true;
}

/// What is loaded from the bytes, after a second load of them has changed nothing.
template <class Format>
typename Format::Model loadedTwice(const QByteArray& bytes)
{
    typename Format::Model model = Format::fresh();
    const bool isLoaded = Format::read(bytes, model);
    const QByteArray saved = Format::written(model);
    require(Format::read(bytes, model) == isLoaded, "a second load has the result of the first");
    requireSame(Format::written(model), saved, "a second load changes nothing");
    return model;
}

template <class Format>
QByteArray loadedAndSaved(const QByteArray& saved)
{
    typename Format::Model model = Format::fresh();
    require(Format::read(saved, model), "what was saved can be loaded");
    return Format::written(model);
}

/// Requires that the model can be saved and loaded, and is saved as the same from the second time on. The
/// first time may round numbers, and drop carriage returns and what the format has no place for.
template <class Format>
void requireReloadable(const typename Format::Model& model)
{
    // At the beginning of a text it is lost whenever a std::string becomes a QString.
    constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

    const QByteArray saved = Format::written(model);
    if (!isNew(saved))
        return;
    const QByteArray savedAgain = loadedAndSaved<Format>(saved);
    if (!saved.contains(byteOrderMark))
        requireSame(loadedAndSaved<Format>(savedAgain), savedAgain, "what was loaded is saved as the same");
}
