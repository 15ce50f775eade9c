#include "Checked.h"

#include "support/OwnProcess.h"
#include "support/Sanitizers.h"

#include "benchmarks/Memory.h"

/// Files that are made to take time and memory. A check takes no more of the latter than 64 MiB and twice the
/// file.

namespace Nereo::Inspection {
namespace {

constexpr int MiB = 1024 * 1024;
constexpr int large = 40 * MiB;

std::string repeated(const std::string& text, int size)
{
    std::string whole;
    whole.reserve(std::size_t(size) + text.size());
    while (whole.size() < std::size_t(size))
        whole += text;
    return whole;
}

/// Checks a file in a process of its own, which may have so much memory and no more.
void expectInProportion(const std::string& name, const std::string& bytes, qint64 findings)
{
    const TemporaryFolder folder;
    const std::string path = folder.write(name, bytes);
    inAProcessOfItsOwn([&] {
        [[maybe_unused]] const double before = memory("VmRSS:");
        const CheckedFile checked = check(path);
        EXPECT_EQ(checked.counts.errors + checked.counts.warnings, findings);
#ifndef NEREO_SANITIZER
        EXPECT_LE(memory("VmHWM:") - before, 64.0 * MiB + 2.0 * double(bytes.size()));
#endif
    });
}

TEST(HostileFilesDeathTest, TakeMemoryInProportion)
{
    struct Row {
        const char* name;
        std::string bytes;
        qint64 findings;
    };
    const Row rows[] = {
        {"line.cfg",    "AnalyzePath " + std::string(large,            'x'),                                   0},
        {"number.cfg",  "MaxIter " + std::string(large,                'x'),                                   1},
        {"key.cfg",     "MaxIter 5\n" + std::string(large,             'x'),                                   1},
        {"text.xml",
         "<Nereo2Config><AnalyzePath>" + std::string(large,            'x') + "</AnalyzePath></Nereo2Config>", 0},
        {"number.xml",  "<Nereo2Config><MaxIter>" + std::string(large, 'x') + "</MaxIter></Nereo2Config>",     1},
        {"comment.xml", "<Nereo2Config><!--" + std::string(large,      'x') + "--></Nereo2Config>",            0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        expectInProportion(row.name, row.bytes, row.findings);
    }
}

const std::string controlHead = "NEREO control file rev 07 NEREO Ver 2024.0.0.0\nNEREO 2024 (release)\n";
const std::string geometryHead = "job\nNEREO 2024 (release)\nVersion 2024.0.0.0\n\n";
constexpr int geometrySections = 27; // each of which is missed

TEST(HostileFilesDeathTest, MayHaveALongLineOrNameAnywhere)
{
    struct Row {
        const char* name;
        std::string before;
        std::string behind;
        qint64 findings;
    };
    const std::string material = "<material_database><material type='fluid'>";
    const std::string end = "</material></material_database>";
    const Row rows[] = {
        {"title.ctl",    controlHead + " *** Title\n",                     "\n",                        0                   },
        {"number.ctl",   controlHead + " *** Units\n",                     "\n",                        1                   },
        {"variable.ctl", controlHead + " *** Relaxation\n",                " 1 0\n",                    1                   },
        {"section.ctl",  controlHead + " *** ",                            "\n1\n",                     1                   },
        {"flag.ctl",     controlHead + " *** Flag section\n1\n",           " 1\n",                      0                   },
        {"material.ctl", controlHead + " *** Property Settings\n1 0 0 0 ", "\n",                        1                   },
        {"unknown.ctl",  controlHead + " *** Unknown\n",                   "\n",                        1                   },
        {"section.gbi",  geometryHead + "*** ",                            "\n",                        geometrySections + 1},
        {"unit.gbi",     geometryHead + "*** Units\n",                     "\n",                        geometrySections    },
        {"material.gbi", geometryHead + "*** Properties\n1 \"",            "\" 1 0\n-1\n",              geometrySections - 1},
        {"name.xml",     material + "<name>",                              "</name>" + end,             0                   },
        {"value.xml",    material + "<property type='density'><value>",    "</value></property>" + end, 1                   },
        {"element.xml",  material + "<",                                   "/>" + end,                  1                   },
        {"comment.xml",  material + "<!--",                                "-->" + end,                 0                   },
    };
    for (const auto& [name, before, behind, findings] : rows) {
        SCOPED_TRACE(name);
        expectInProportion(name, before + std::string(large, 'x') + behind, findings);
    }
}

TEST(HostileFilesDeathTest, MayBeNestedDeeply)
{
    constexpr int size = 300'000; // the reader of documents takes 110 bytes for each element that is open
    expectInProportion("file.xml", "<Nereo2Config>" + repeated("<a>", size), 2);
    expectInProportion("open.xml", "<material_database>" + repeated("<a>", size), 2);
    expectInProportion("closed.xml",
                       "<material_database>" + repeated("<a>", size) + repeated("</a>", size / 3 * 4)
                           + "</material_database>",
                       1);
    expectInProportion("materials.xml", "<material_database>" + repeated("<material type='fluid'>", size), 2);
}

TEST(HostileFilesDeathTest, MayHaveAMillionFaults)
{
    constexpr int size = 10'000'000;
    expectInProportion("numbers.cfg", repeated("MaxIter x\n", size), 1'999'999);
    expectInProportion("keys.cfg", "MaxIter 5\n" + repeated("Unheard x\n", size), 1'000'000);
    expectInProportion("bytes.cfg", repeated("Width 5 \xFF\n", size), 1'999'999);
    expectInProportion("spaces.cfg", "MaxIter 5\n" + repeated("\r\r \n", size) + "Width 5\n", size / 2);
    expectInProportion("elements.xml", "<Nereo2Config>" + repeated("<Other/>\n\n", size) + "</Nereo2Config>",
                       1'000'000);
}

TEST(HostileFilesDeathTest, MayHaveAMillionFaultsInSections)
{
    constexpr int size = 10'000'000;
    struct Row {
        const char* name;
        std::string before;
        std::string lines; ///< which come again and again
        std::string behind;
        int findings; ///< of these lines
        int others;
    };
    const std::string material = "1 0 0 0 a\nx\n-----end of this index property data\n";
    const Row rows[] = {
        {"variables.ctl",  controlHead + " *** Relaxation\n",                        "kFoo a b\n\n",    "",     1, 0                   },
        {"numbers.ctl",    controlHead + " *** Relaxation\n",                        "kU a b c\n\n",    "",     4, -1                  },
        {"sections.ctl",   controlHead,                                              " *** Foo\n\n",    "",     1, 0                   },
        {"flags.ctl",      controlHead + " *** Flag section\nx\n",                   "a b \xFF \r\r\n", "",     3, 0                   },
        {"materials.ctl",  controlHead + " *** Property Settings\n",                 material,          "",     3, -2                  },
        {"conditions.gbi", geometryHead + "*** Surface nodal boundary conditions\n", "1 kF x\n\n\n",    "-1\n",
         3,                                                                                                        geometrySections - 1},
        {"properties.gbi", geometryHead + "*** Properties\n",                        "1 \"a\" x\n\n",   "-1\n", 4,
         geometrySections - 3                                                                                                          },
    };
    for (const auto& [name, before, lines, behind, findings, others] : rows) {
        SCOPED_TRACE(name);
        const int length = int(lines.size());
        const int count = (size + length - 1) / length;
        expectInProportion(name, before + repeated(lines, size) + behind, qint64(findings) * count + others);
    }
}

} // namespace
} // namespace Nereo::Inspection
