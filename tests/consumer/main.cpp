#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoInspection/Check.h>
#include <NereoUtility/StringConversion.h>

#include <iostream>

using Nereo::Io::Nereo2ConfigFile;

int main()
{
    Nereo2ConfigFile config;
    config.setting(Nereo2ConfigFile::MaxIter).setValueFromString("500");
    if (!config.saveTo("consumer.xml"))
        return 1;

    Nereo2ConfigFile loaded;
    if (!loaded.loadFrom("consumer.xml") || loaded.version() != Nereo::Util::Version::Current)
        return 1;
    const QString maxIter = Nereo::Util::toQString(loaded.setting(Nereo2ConfigFile::MaxIter).valueAsString());
    const Nereo::Inspection::CheckedFile checked = Nereo::Inspection::check("consumer.xml");
    if (checked.kind != Nereo::Inspection::FileKind::ConfigurationXml || !checked.findings.empty())
        return 1;
    std::cout << "MaxIter " << qPrintable(maxIter) << '\n';
    return maxIter == "500" ? 0 : 1;
}
