#include "support/TemporaryFolder.h"

#include <NereoInspection/FileKind.h>

#include <gtest/gtest.h>

namespace Nereo::Inspection {
namespace {

FileKind kindOfBytes(const std::string& bytes)
{
    const TemporaryFolder folder;
    return kindOfFile(folder.write("file", bytes));
}

TEST(FileKindTest, HasANameForEachKind)
{
    struct Row {
        FileKind kind;
        const char* name;
    };
    constexpr Row rows[] = {
        {FileKind::ConfigurationXml,  "configuration-xml" },
        {FileKind::ConfigurationText, "configuration-text"},
        {FileKind::Control,           "control"           },
        {FileKind::Materials,         "materials"         },
        {FileKind::GeometryBoundary,  "geometry-boundary" },
        {FileKind::Results,           "results"           },
        {FileKind::Unknown,           ""                  },
    };
    for (const auto& [kind, name] : rows) {
        EXPECT_EQ(kindName(kind), name);
        EXPECT_EQ(kindOfName(name), kind) << name;
    }
    EXPECT_EQ(kindOfName("Control"), FileKind::Unknown);
}

TEST(FileKindTest, KnowsTheSamples)
{
    struct Row {
        const char* name;
        FileKind kind;
    };
    constexpr Row rows[] = {
        {"NEREO2_default.xml", FileKind::ConfigurationXml },
        {"solver.cfg",         FileKind::ConfigurationText},
        {"cavity.ctl",         FileKind::Control          },
        {"materials.xml",      FileKind::Materials        },
        {"cavity.res",         FileKind::Results          },
        {"cavity-be.res",      FileKind::Results          },
    };
    for (const auto& [name, kind] : rows)
        EXPECT_EQ(kindOfFile(std::string(NEREO_SAMPLES_DIR "/") + name), kind) << name;
    EXPECT_EQ(kindOfFile(NEREO_GOLDEN_DIR "/cavity.gbi"), FileKind::GeometryBoundary);
}

TEST(FileKindTest, GoesByTheContent)
{
    using namespace std::string_literals;
    struct Row {
        std::string bytes;
        FileKind kind;
    };
    const std::string xml16 = "\xFF\xFE<\0N\0e\0r\0e\0o\0002\0C\0o\0n\0f\0i\0g\0/\0>\0"s;
    const Row rows[] = {
        {"<Nereo2Config/>",                                          FileKind::ConfigurationXml },
        {"<other><Nereo2Config/></other>",                           FileKind::ConfigurationXml },
        {"<!-- a comment --><material_database/>",                   FileKind::Materials        },
        {"\xEF\xBB\xBF<Nereo2Config/>",                              FileKind::ConfigurationXml },
        {xml16,                                                      FileKind::ConfigurationXml },
        {xml16.substr(2),                                            FileKind::ConfigurationXml },
        {"<Nereo2Config Version=\"1",                                FileKind::ConfigurationXml },
        {"\n<?xml version=\"1.0\"?><material_database/>",            FileKind::Materials        },
        {"<html/>",                                                  FileKind::Unknown          },
        {"<html>",                                                   FileKind::Unknown          },
        {"<!-- <material_database> --><html/>",                      FileKind::Unknown          },
        {"<html><![CDATA[<material_database>]]></html>",             FileKind::Unknown          },
        {"<material_database2/>",                                    FileKind::Unknown          },
        {"<material_database2",                                      FileKind::Unknown          },
        {"<Nereo2ConfigFile><material_database><",                   FileKind::Materials        },
        {"<<material_databases><material_database\t",                FileKind::Materials        },
        {"<material_database",                                       FileKind::Materials        },
        {"<!DOCTYPE a [<!ENTITY e \"<Nereo2Config/>\">]><a>&e;</a>", FileKind::ConfigurationXml },
        {"NEREO control file rev 06\n",                              FileKind::Control          },
        {"anything\nat all\n *** Title\n",                           FileKind::Control          },
        {"\xFE\xFF\0 \0*\0*\0*\0 \0T\0\n"s,                          FileKind::Control          },
        {"job\nNEREO\nVersion\n\n*** Summary\n",                     FileKind::GeometryBoundary },
        {" *** job\nNEREO\nVersion\n\n*** Summary\n*** Units\n",     FileKind::GeometryBoundary },
        {"a\nb\n *** Title\nc\n*** Units\n",                         FileKind::Control          },
        {"MaxIter 5\n",                                              FileKind::ConfigurationText},
        {"\n\tMaxIter\n",                                            FileKind::ConfigurationText},
        {"Unknown 5\r\nMaxIter 5\r\n",                               FileKind::ConfigurationText},
        {"maxiter 5\n",                                              FileKind::Unknown          },
        {"",                                                         FileKind::Unknown          },
        {"\n\n",                                                     FileKind::Unknown          },
        {"\0\0\0"s,                                                  FileKind::Unknown          },
        {"\0\0\0\0"s,                                                FileKind::Results          },
        {"\0\0\0\1"s,                                                FileKind::Results          },
        {"\1\0\0\0"s,                                                FileKind::Results          },
    };
    for (const auto& [bytes, kind] : rows)
        EXPECT_EQ(kindOfBytes(bytes), kind) << bytes;
}

TEST(FileKindTest, KnowsResultsByTheMarkerBehindTheirCounts)
{
    const std::string start = "\7\7\7\7" + std::string(302, ' ');
    EXPECT_EQ(kindOfBytes(start + "\xFF\xFF\xFF\xFF"), FileKind::Results);
    EXPECT_EQ(kindOfBytes(start + "\xFF\xFF\xFF\xFF and the rest"), FileKind::Results);
    EXPECT_EQ(kindOfBytes(start + " \xFF\xFF\xFF\xFF"), FileKind::Unknown);
    EXPECT_EQ(kindOfBytes(start.substr(1) + "\xFF\xFF\xFF\xFF"), FileKind::Unknown);
    EXPECT_EQ(kindOfBytes(start + "\xFF\xFF\xFF"), FileKind::Unknown);
}

TEST(FileKindTest, LooksForARootBehindALongComment)
{
    EXPECT_EQ(kindOfBytes("<!--" + std::string(500'000, ' ') + "--><Nereo2Config/>"),
              FileKind::ConfigurationXml);
    EXPECT_EQ(kindOfBytes("<!--" + std::string(2'000'000, ' ') + "--><Nereo2Config/>"), FileKind::Unknown);
}

TEST(FileKindTest, IsUnknownWhereThereIsNoFile)
{
    const TemporaryFolder folder;
    EXPECT_EQ(kindOfFile(folder.path("missing")), FileKind::Unknown);
    EXPECT_EQ(kindOfFile(folder.path()), FileKind::Unknown);
    EXPECT_EQ(kindOfFile(""), FileKind::Unknown);
}

} // namespace
} // namespace Nereo::Inspection
