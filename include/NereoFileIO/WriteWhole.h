#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/SaveResult.h>

#include <QIODevice>

#include <functional>
#include <string>

namespace Nereo::Io {

/// Writes a file of any content as File::saveWholeTo() does: whole or not at all.
///
/// The function is given a device that takes bytes one after the other and translates no line ends. It says
/// whether it wrote all; with false nothing is saved. Whether the device took them needn't concern it. What
/// it throws comes out, and nothing is saved.
NEREOFILEIO_EXPORT SaveResult writeWhole(const std::string& path,
                                         const std::function<bool(QIODevice& device)>& write);

} // namespace Nereo::Io
