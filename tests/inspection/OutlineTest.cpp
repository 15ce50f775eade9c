#include "support/TemporaryFolder.h"

#include <NereoInspection/Outline.h>
#include <NereoUtility/Version.h>

#include <gtest/gtest.h>

namespace Nereo::Inspection {
namespace {

const char* nameOf(Item::Type type)
{
    static constexpr const char* names[] = {"integer", "number", "switch", "text", "version", "field"};
    return names[int(type)];
}

/// A line for each value: address, type, line:column@offset+length, what stands there, what a load makes of
/// it.
std::string outlined(const std::string& name, const std::string& bytes)
{
    const TemporaryFolder folder;
    std::string lines;
    const bool hasOutline = outline(folder.write(name, bytes), [&](const Item& item) {
        lines += item.address.toStdString() + ' ' + nameOf(item.type) + ' ' + std::to_string(item.place.line)
            + ':' + std::to_string(item.place.column) + '@' + std::to_string(item.place.offset) + '+'
            + std::to_string(item.length) + " [" + item.spelling.toStdString() + "] "
            + item.value.toString().toStdString() + '\n';
    });
    return hasOutline ? lines : "none";
}

TEST(OutlineTest, WritesTheSignsOfAddressesInAnotherWay)
{
    EXPECT_EQ(addressPart("a/b%c#d"), "a%2Fb%25c%23d");
    EXPECT_EQ(addressPart("%2F"), "%252F");
    EXPECT_EQ(addressPart(""), "");
}

TEST(OutlineTest, TellsTheValuesOfAConfigurationInText)
{
    EXPECT_EQ(outlined("file.cfg",
                       "MaxIter  5 \n"
                       "Unheard of\n"
                       "AnalyzePath  C:/My   \xC3\xA4 \r\n"
                       "\n"
                       "StopTime 1e3\n"
                       "MaxIter x\n"
                       "TimeStepSize\n"
                       "JobPrefix"),
              "MaxIter integer 1:10@9+1 [5] 5\n"
              "AnalyzePath text 3:14@36+10 [C:/My   \xC3\xA4] C:/My \xC3\xA4\n"
              "StopTime number 5:10@59+3 [1e3] 1000\n"
              "MaxIter integer 6:9@71+1 [x] 0\n"
              "TimeStepSize number 7:13@85+0 [] 0\n"
              "JobPrefix text 8:10@95+0 [] \n");
}

/// An empty version is ignored, so that a new object keeps its own.
TEST(OutlineTest, TellsTheVersionThatAConfigurationKeeps)
{
    const std::string current = Util::Version::Current.toString().toStdString();
    EXPECT_EQ(outlined("file.xml", "<Nereo2Config Version=''/>"),
              "version version 1:24@23+0 [] " + current + '\n');
}

TEST(OutlineTest, TellsTheValuesOfAConfigurationInXml)
{
    EXPECT_EQ(outlined("file.xml",
                       "<?xml version='1.0'?>\n"
                       "<Nereo2Config a='\"' Version=\"2024.1\">\n"
                       "<MaxIter> 5 </MaxIter><Other><Width>7</Width></Other>\n"
                       "<JobPrefix>\xC3\xA4 &amp;<![CDATA[<]]></JobPrefix>\n"
                       "<Width/></Nereo2Config>"),
              "version version 2:30@51+6 [2024.1] 2024.1.0.0\n"
              "MaxIter integer 3:10@69+3 [ 5 ] 5\n"
              "JobPrefix text 4:12@125+21 [\xC3\xA4 &amp;<![CDATA[<]]>] \xC3\xA4 &<\n"
              "Width integer 5:9@167+0 [] 0\n");
}

TEST(OutlineTest, TellsPlacesWithoutAByteWhereThereIsNone)
{
    EXPECT_EQ(
        outlined(
            "file.xml",
            "<?xml version='1.0' encoding='ISO-8859-1'?><Nereo2Config>\n\xE4<Width>5</Width></Nereo2Config>"),
        "Width integer 2:9@-1+0 [5] 5\n");
    EXPECT_EQ(outlined("file.xml",
                       "<!DOCTYPE a [<!ENTITY e '<Width>5</Width>'><!ENTITY n '7'>]>\n<Nereo2Config>&e;"
                       "<MaxIter>&n;</MaxIter></Nereo2Config>"),
              "Width integer 2:18@-1+0 [5] 5\n"
              "MaxIter integer 2:27@87+3 [&n;] 7\n");
}

TEST(OutlineTest, IsOfKnownKindsOnly)
{
    EXPECT_EQ(outlined("file", "anything"), "none");
    EXPECT_FALSE(outline("/no/such/file", FileKind::ConfigurationText, [](const Item&) {}));
}

} // namespace
} // namespace Nereo::Inspection
