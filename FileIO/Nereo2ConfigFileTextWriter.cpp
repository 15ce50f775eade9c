#include "Nereo2ConfigFileTextWriter.h"

#include "ExactText.h"

#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoUtility/StringConversion.h>

namespace Nereo::Io {

Nereo2ConfigFileTextWriter::Nereo2ConfigFileTextWriter(const Nereo2ConfigFile& config) : config_(&config) {}

void Nereo2ConfigFileTextWriter::write(QTextStream& out)
{
    for (const std::string& key : config_->keys()) {
        const QString value = toExactQString(config_->setting(key).valueAsString());
        if (!value.isEmpty())
            out << QStringLiteral("%1 %2\n").arg(Util::toQString(key), value);
    }
}

} // namespace Nereo::Io
