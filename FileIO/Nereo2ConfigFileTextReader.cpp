#include "Nereo2ConfigFileTextReader.h"

#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoUtility/StringConversion.h>

namespace Nereo::Io {

Nereo2ConfigFileTextReader::Nereo2ConfigFileTextReader(Nereo2ConfigFile& config) : config_(&config) {}

bool Nereo2ConfigFileTextReader::read(QTextStream& in)
{
    while (!in.atEnd()) {
        QString key;
        in >> key; // empty where only white space is left, which then is an unknown key
        if (key.isEmpty() && !in.atEnd())
            break; // the device has failed and may never be at its end; it doesn't matter what came of this
                   // line
        const QString value = in.readLine().simplified();
        config_->setting(Util::toStdString(key)).setValueFromString(Util::toStdString(value));
    }
    return true;
}

} // namespace Nereo::Io
