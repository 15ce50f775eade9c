#include "Agreement.h"

#include "support/Bytes.h"

#include <NereoFileIO/Nereo2ConfigFile.h>

#include <gtest/gtest.h>

namespace Nereo::Inspection {
namespace {

TEST(ConfigurationAgreementTest, AgreesWithLoadsOfDamagedXml)
{
    Agreement agreement("damaged.xml", FileKind::ConfigurationXml);
    for (const char* path :
         {NEREO_SAMPLES_DIR "/NEREO2_default.xml", NEREO_GOLDEN_DIR "/new-configuration.xml"})
        agreement.expectEach(damaged(readBytes(path)));
}

TEST(ConfigurationAgreementTest, AgreesWithLoadsOfDamagedText)
{
    Agreement agreement("damaged.cfg", FileKind::ConfigurationText);
    for (const char* path : {NEREO_SAMPLES_DIR "/solver.cfg", NEREO_GOLDEN_DIR "/new-configuration.cfg"})
        agreement.expectEach(damaged(readBytes(path)));
}

TEST(ConfigurationAgreementTest, AgreesWhereTheSuffixIsThatOfTheOtherForm)
{
    Agreement xml("file.cfg", FileKind::ConfigurationXml);
    xml.expect({"XML without its suffix", "<Nereo2Config><MaxIter>5</MaxIter></Nereo2Config>"});
    Agreement text("file.xml", FileKind::ConfigurationText);
    text.expect({"text with the suffix of XML", "MaxIter 5\n"});
}

TEST(ConfigurationAgreementTest, AgreesWhereABlockOfTheStreamEnds)
{
    // What comes behind the last line in a block of its own decides whether the stream is at its end.
    Agreement agreement("file.cfg", FileKind::ConfigurationText);
    const std::string line = "AnalyzePath ";
    for (const int size : {16383, 16384, 16385, 32768}) {
        const std::string whole = line + std::string(std::size_t(size) - line.size() - 1, 'x') + '\n';
        for (const char* rest : {"", "\r", "\xC3", "\n", " ", "\r\n", "\xE2\x82", "MaxIter 5"})
            agreement.expect({std::to_string(size) + " bytes and " + rest, whole + rest});
    }
}

TEST(ConfigurationAgreementTest, AgreesWithLoadsInOtherEncodings)
{
    using namespace std::string_literals;
    Agreement text("file.cfg", FileKind::ConfigurationText);
    text.expect({"UTF-16",
                 "\xFE\xFF\0W\0i\0d\0t\0h\0 \0"
                 "5\0\n"s});
    text.expect({"half a UTF-16 character at the end",
                 "\xFE\xFF\0W\0i\0d\0t\0h\0 \0"
                 "5\0\n\0"s});
    text.expect({"UTF-32",
                 "\xFF\xFE\0\0W\0\0\0i\0\0\0d\0\0\0t\0\0\0h\0\0\0 \0\0\0"
                 "5\0\0\0"s});

    Agreement xml("file.xml", FileKind::ConfigurationXml);
    xml.expect({"UTF-16",
                "\xFF\xFE<\0N\0e\0r\0e\0o\0"
                "2\0C\0o\0n\0f\0i\0g\0/\0>\0"s});
    xml.expect({"UTF-16 with carriage returns",
                "\xFF\xFE<\0N\0e\0r\0e\0o\0"
                "2\0C\0o\0n\0f\0i\0g\0\r\0\n\0/\0>\0"s});
    for (const char* encoding : {"UTF-8", "ISO-8859-1", "windows-1252", "US-ASCII", "UTF-16", "UTF-7",
                                 "Shift_JIS", "GB18030", "IBM037", "nothing"}) {
        for (const char* content : {"5", "\xE4", "\xC3\xA4", "+AOQ-"}) {
            xml.expect({encoding,
                        std::string("<?xml version='1.0' encoding='") + encoding
                            + "'?><Nereo2Config><Other/><MaxIter>" + content + "</MaxIter><JobPrefix>"
                            + content + "</JobPrefix></Nereo2Config>"});
        }
    }
}

TEST(ConfigurationAgreementTest, AgreesWithLoadsOfEntities)
{
    Agreement agreement("file.xml", FileKind::ConfigurationXml);
    const std::string declaration = "<!DOCTYPE a [<!ENTITY n '5'><!ENTITY e '<MaxIter>x</MaxIter>'>"
                                    "<!ENTITY b '<MaxIter>'><!ATTLIST Nereo2Config Version CDATA '1'>]>";
    for (const char* content : {"<MaxIter>&n;</MaxIter>", "&e;", "<JobPrefix/>&e;<Width>&n;x</Width>", "&u;",
                                "&b;", "<MaxIter>&e;</MaxIter>", "x&e;y", "<Other>&e;</Other>"})
        agreement.expect({content, declaration + "<Nereo2Config>" + content + "</Nereo2Config>"});
    std::string many = "<!DOCTYPE a [<!ENTITY n '" + std::string(5000, 'x') + "'>]><Nereo2Config>";
    for (int i = 0; i < 3000; ++i)
        many += "<JobPrefix>&n;</JobPrefix>";
    agreement.expect({"more than entities may give", many + "</Nereo2Config>"});
}

} // namespace
} // namespace Nereo::Inspection
