#include "support/Assertions.h"
#include "support/ResultsBytes.h"
#include "support/TemporaryFolder.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/GbiFile.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoFileIO/ResultsFile.h>
#include <NereoFileIO/ResultsFileHeader.h>

#include <gmock/gmock.h>

#include <cstdio>
#include <fstream>
#include <new>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

/// What docs/troubleshooting.md says, row by row: each cause leads to its symptom.

namespace Nereo::Io {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/// Loads what the bytes say from a file with the name into the object.
bool load(File& file, const std::string& name, const std::string& bytes)
{
    const TemporaryFolder folder;
    return file.loadFrom(folder.write(name, bytes));
}

bool load(ResultsFile& results, const ResultsBytes& bytes)
{
    return load(results, "a.res", bytes.bytes().toStdString());
}

ResultsLoadResult load(ResultsFile& results, const QByteArray& bytes, const ResultsLoadOptions& options)
{
    const TemporaryFolder folder;
    return results.loadFrom(folder.write("a.res", bytes.toStdString()), options);
}

/// What a save of the object writes.
std::string saved(const File& file)
{
    const TemporaryFolder folder;
    EXPECT_TRUE(file.saveTo(folder.path("saved.xml")));
    return readBytes(folder.path("saved.xml"));
}

/// A new object that was loaded from what the object writes.
template <class AnyFile>
AnyFile savedAndLoaded(const AnyFile& file)
{
    AnyFile copy;
    EXPECT_TRUE(load(copy, "saved.xml", saved(file)));
    return copy;
}

std::string inConfiguration(const std::string& elements)
{
    return "<Nereo2Config>" + elements + "</Nereo2Config>";
}

std::string inDatabase(const std::string& material)
{
    return "<material_database>" + material + "</material_database>";
}

std::string inControlFile(const std::string& sections)
{
    return "control file Ver 1.2.3.4\nby hand\n" + sections;
}

Nereo2ConfigFile configurationOf(const std::string& text)
{
    Nereo2ConfigFile config;
    EXPECT_TRUE(load(config, "a.cfg", text));
    return config;
}

int maxIter(const Nereo2ConfigFile& config)
{
    return config.setting(Nereo2ConfigFile::MaxIter).valueAsInt();
}

constexpr int defaultMaxIter = 10000;
const auto stopsInTheLibrary = AllOf(HasSubstr("ASSERT"), HasSubstr("file FileIO/"));
const char* const unknownKey = "invalid map<K, T> key";

void expectUnknownKey(const std::string& name, const std::string& bytes)
{
    Nereo2ConfigFile config;
    EXPECT_THAT([&] { load(config, name, bytes); }, ::testing::ThrowsMessage<std::out_of_range>(unknownKey));
}

/// The start of a results file, up to its records.
ResultsBytes fields(int nodeCount, std::initializer_list<const char*> names)
{
    return ResultsBytes().header(nodeCount).run().names(names);
}

QList<int> codesIn(const ResultsBytes& bytes)
{
    ResultsFile results;
    EXPECT_TRUE(load(results, bytes));
    return results.fieldDataCodes();
}

using Row = std::pair<std::string, std::string>; // the symptom and the cause

std::vector<Row>& rows()
{
    static std::vector<Row> rows;
    return rows;
}

bool addRow(const char* symptom, const char* cause)
{
    rows().emplace_back(symptom, cause);
    return true;
}

/// A row of the page, with the test that tries it.
#define ROW(name, symptom, cause)                                                                            \
    const bool is##name##Listed = addRow(symptom, cause);                                                    \
    TEST(TroubleshootingDeathTest, name)

ROW(NoFile, "A load gives false", "The file isn't there or is a folder; the path is empty.")
{
    const TemporaryFolder folder;
    ControlFile control;
    EXPECT_FALSE(control.loadFrom(folder.path("missing.ctl")));
    EXPECT_EQ(control.filePath(), folder.path("missing.ctl"));
    EXPECT_FALSE(control.loadFrom(folder.path()));
    EXPECT_FALSE(control.loadFrom(""));
}

ROW(PathInAnotherEncoding, "A load gives false", "The path isn't UTF-8.")
{
    const TemporaryFolder folder;
    const std::string path = folder.path() + "/\xe9t\xe9.ctl";
    std::ofstream(path) << inControlFile("");
    ASSERT_TRUE(std::ifstream(path).good());
    EXPECT_FALSE(ControlFile().loadFrom(path));
    std::remove(path.c_str()); // Qt can't
}

ROW(BrokenXml, "A load gives false", "The XML is malformed, cut off or empty.")
{
    Nereo2ConfigFile config;
    EXPECT_FALSE(load(config, "a.xml", ""));
    EXPECT_FALSE(load(config, "a.xml", inConfiguration("&")));
    EXPECT_FALSE(load(config, "a.xml", "<Nereo2Config><MaxIter>7</MaxIter>"));
    EXPECT_EQ(maxIter(config), 7);
}

ROW(XmlInUtf16, "A load gives false",
    "The XML is UTF-16 and says that it is UTF-8, or holds the byte 0x0D, as `č` does and the line ends of "
    "Windows.")
{
    const auto inUtf16 = [](const QString& declared, const QString& text) {
        const QString document = QStringLiteral("\uFEFF<?xml version=\"1.0\" encoding=\"%1\"?>"
                                                "<Nereo2Config><AnalyzePath>%2</AnalyzePath></Nereo2Config>")
                                     .arg(declared, text);
        return std::string(reinterpret_cast<const char*>(document.utf16()), std::size_t(document.size()) * 2);
    };
    Nereo2ConfigFile config;
    EXPECT_TRUE(load(config, "a.xml", inUtf16("UTF-16", "c\n")));
    EXPECT_FALSE(load(config, "a.xml", inUtf16("UTF-8", "c\n")));
    EXPECT_FALSE(load(config, "a.xml", inUtf16("UTF-16", QStringLiteral("\u010D"))));
    EXPECT_FALSE(load(config, "a.xml", inUtf16("UTF-16", "c\r\n")));
}

ROW(LongEntity, "A load gives false",
    "The XML declares an entity that makes it longer by more than 4096 characters, or by fewer where there "
    "are "
    "more than 15,625 ampersands.")
{
    const auto withEntity = [](std::size_t length, std::size_t ampersands) {
        return "<!DOCTYPE a [<!ENTITY e '" + std::string(length, 'x') + "'>]>"
            + inConfiguration("<JobPrefix>&e;</JobPrefix><!--" + std::string(ampersands, '&') + "-->");
    };
    Nereo2ConfigFile config;
    EXPECT_FALSE(load(config, "a.xml", withEntity(4200, 0)));
    EXPECT_FALSE(load(config, "a.xml", withEntity(4000, 20'000)));
    EXPECT_TRUE(load(config, "a.xml", withEntity(4000, 15'000)));
}

ROW(UnknownPropertyType, "A load gives false",
    "A material database has a property of a type that isn't known.")
{
    MaterialDatabaseFile database;
    EXPECT_FALSE(load(database, "a.xml",
                      inDatabase(R"(<material type="solid"><property type="weight"/></material>)")));
}

ROW(ElementInASetting, "A load gives false", "A setting in XML has an element in it.")
{
    Nereo2ConfigFile config;
    EXPECT_FALSE(load(config, "a.xml", inConfiguration("<MaxIter><b>7</b></MaxIter>")));
}

ROW(NoJobPrefix, "A load gives false", "The command line has no job prefix.")
{
    Nereo2ConfigFile config;
    EXPECT_FALSE(config.loadFromRequiredCommandLineArguments({"program"}));
    EXPECT_FALSE(config.loadFromOptionalCommandLineArguments({"program", "-MaxIter", "7"}));
    EXPECT_TRUE(config.loadFromOptionalCommandLineArguments({"program", "cavity", "-MaxIter", "7"}));
}

ROW(WrongOption, "A load gives false", "An option has no value, no minus sign or a name that is no key.")
{
    Nereo2ConfigFile config;
    EXPECT_FALSE(config.loadFromOptionalCommandLineArguments({"p", "job", "-MaxIter", "7", "-Mpi"}));
    EXPECT_EQ(maxIter(config), defaultMaxIter);
    EXPECT_FALSE(config.loadFromOptionalCommandLineArguments({"p", "job", "MaxIter", "7"}));
    EXPECT_FALSE(config.loadFromOptionalCommandLineArguments({"p", "job", "-maxiter", "7"}));
    EXPECT_EQ(maxIter(config), defaultMaxIter);
    EXPECT_FALSE(config.loadFromOptionalCommandLineArguments({"p", "job", "-MaxIter", "7", "-maxiter", "8"}));
    EXPECT_EQ(maxIter(config), 7);
}

ROW(NoFolder, "A save gives false", "The folder isn't there, or a folder has the name.")
{
    const TemporaryFolder folder;
    EXPECT_FALSE(ControlFile().saveTo(folder.path("missing/a.ctl")));
    EXPECT_FALSE(ControlFile().saveTo(folder.path()));
}

ROW(CharacterThatXmlCannotCarry, "A save gives false", "A text in an XML file holds a control character.")
{
    const TemporaryFolder folder;
    MaterialDatabaseFile database;
    database.add(Material());
    database.material(0).setName("Air\x01");
    EXPECT_FALSE(database.saveTo(folder.path("a.xml")));
    database.material(0).setName("Air\n");
    EXPECT_TRUE(database.saveTo(folder.path("a.xml")));
}

ROW(FullDisk, "A save gives false", "The disk is full, and the file is XML.")
{
    EXPECT_FALSE(MaterialDatabaseFile().saveTo("/dev/full"));
}

ROW(WordThatIsNoKey, "A load throws",
    "`std::out_of_range`, \"invalid map<K, T> key\": a line of a configuration in text begins with a word "
    "that is no key, such as `#`.")
{
    Nereo2ConfigFile config;
    EXPECT_THROW(load(config, "a.cfg", "MaxIter 7\n# a note\n"), std::out_of_range);
    EXPECT_EQ(maxIter(config), 7);
    expectUnknownKey("a.cfg", "# a note\n");
}

ROW(BlankLineAtTheEnd, "A load throws",
    "The same: a blank or an empty line stands behind the last line of such a file.")
{
    expectUnknownKey("a.cfg", "MaxIter 7\n\n");
    expectUnknownKey("a.cfg", "MaxIter 7\n ");
    EXPECT_EQ(maxIter(configurationOf("MaxIter 7\n")), 7);
}

ROW(XmlUnderAnotherName, "A load throws",
    "The same: the configuration is XML, but its name doesn't end in `.xml`, in small letters.")
{
    expectUnknownKey("a.cfg", inConfiguration(""));
    expectUnknownKey("a.XML", inConfiguration(""));
}

ROW(MoreNodesThanMemory, "A load throws",
    "`std::bad_alloc`: a results file announces more nodes than there is memory for, whatever its size.")
{
    ResultsFile results;
    const ResultsBytes bytes = fields(2'000'000'000, {"kU"});
    EXPECT_THROW(load(results, bytes), std::bad_alloc);

    ResultsLoadOptions options;
    options.memoryLimit = 1'000'000;
    EXPECT_EQ(load(results, bytes, options).outcome, ResultsLoadResult::OverLimit);
    const TemporaryFolder folder;
    ResultsFileHeader header;
    EXPECT_TRUE(header.readFrom(folder.write("a.res", bytes.bytes().toStdString())));
    EXPECT_EQ(header.nodeCount(), 2'000'000'000);
    EXPECT_EQ(header.wholeRecords(), 0);
}

ROW(WrongNumberOfFlags, "The process stops",
    "`controlFile_.flagCount() == count`: a control file has another number of flags than its flag section "
    "announces.")
{
    ControlFile control;
    EXPECT_DEATH(load(control, "a.ctl", inControlFile(" *** Flag section\n2\na 1\n\n")),
                 HasSubstr("ASSERT: \"controlFile_.flagCount() == count\""));
    EXPECT_TRUE(load(control, "a.ctl", inControlFile(" *** Flag section\n1\na 1\n\n")));
}

ROW(ResultsLoadedTwice, "The process stops",
    "`FileIO/ResultsFile`: results are loaded into an object that holds such fields already.")
{
    ResultsFile results;
    EXPECT_TRUE(load(results, fields(1, {"kU"})));
    EXPECT_DEATH(load(results, fields(1, {"kP", "kU"})), HasSubstr("in file FileIO/ResultsFile,"));
}

ROW(RepeatedField, "The process stops",
    "`FileIO/ResultsFile`: two fields of a results file have the same name, or names with the same code, as "
    "`kCond` and `kKXX`.")
{
    ResultsFile results;
    EXPECT_DEATH(load(results, fields(1, {"kU", "kU"})), HasSubstr("in file FileIO/ResultsFile,"));
    EXPECT_DEATH(load(results, fields(1, {"kCond", "kKXX"})), HasSubstr("in file FileIO/ResultsFile,"));
    EXPECT_EQ(load(results, fields(1, {"kU", "kU"}), {}).outcome, ResultsLoadResult::ContradictsItself);
}

ROW(WrongNodeNumber, "The process stops",
    "A results file holds a node number below 1 or above the number of nodes.")
{
    ResultsFile results;
    for (const int node : {0, -1, 3}) {
        const ResultsBytes bytes = fields(2, {"kU"}).record(node, {1.0});
        EXPECT_DEATH(load(results, bytes), stopsInTheLibrary) << node;
        EXPECT_EQ(load(results, bytes, {}).outcome, ResultsLoadResult::ContradictsItself) << node;
    }
}

ROW(ValueWithoutAPlace, "The process stops",
    "A value is stored with `setFieldData()` in a field that isn't there, or at node 0.")
{
    ResultsFile results;
    results.setNodeCount(1);
    EXPECT_DEATH(results.setFieldData(kU, 1, 2.0), HasSubstr("in file FileIO/ResultsFile,"));
    results.addFieldDataCode(kU);
    EXPECT_DEATH(results.setFieldData(kU, 0, 2.0), stopsInTheLibrary);
    results.setFieldData(kU, 1, 2.0);
}

ROW(IndexOutOfRange, "The process stops",
    "`\"index out of range\"`: an index is negative or not below the count, or a code of a `ControlFile` is "
    "outside the range of its accessor.")
{
    ControlFile control;
    EXPECT_INDEX_ASSERTION(control.flag(0), "QList<T>::operator[]", "FileIO/ControlFile");
    EXPECT_INDEX_ASSERTION(control.materialDatabase().material(-1), "QList<T>::operator[]",
                           "FileIO/MaterialDatabaseFile");
    for (const int code : {0, ControlFile::ConstantCount + 1})
        EXPECT_INDEX_ASSERTION(control.setConstant(code, 1.0), "QList<T>::operator[]", "FileIO/ControlFile");
}

ROW(MaterialOfNoDatabase, "The process stops",
    "The same: a material is asked for by name in an empty database.")
{
    MaterialDatabaseFile database;
    EXPECT_INDEX_ASSERTION(database.material("Air"), "QList<T>::operator[]", "FileIO/MaterialDatabaseFile");
    Material water;
    water.setName("Water");
    database.add(water);
    EXPECT_EQ(database.material("Air").name(), "Water");
    EXPECT_FALSE(database.contains("Air"));
}

ROW(PropertyOfNoType, "The process stops", "A property is asked for by a name that is no type of property.")
{
    EXPECT_DEATH(Material().property("weight"), stopsInTheLibrary);
}

ROW(CodeWithoutAName, "The process stops",
    "A file is saved that holds a code outside 0 to `kNone`, of a condition or an independent variable.")
{
    GbiFile geometry;
    geometry.addSurfaceBoundaryCondition(BoundaryCondition(kNone + 1));
    EXPECT_DEATH(saved(geometry), stopsInTheLibrary);

    MaterialDatabaseFile database;
    database.add(Material());
    database.material(0).property("density").setVariationType("piecewise_linear");
    database.material(0).property("density").setIndependentVariable(-1);
    EXPECT_DEATH(saved(database), stopsInTheLibrary);
}

ROW(NoNumber, "A value is 0", "The text in the file is no number: `12abc`, a decimal comma, nothing.")
{
    EXPECT_EQ(maxIter(configurationOf("MaxIter 12abc\n")), 0);
    EXPECT_EQ(maxIter(configurationOf("MaxIter\n")), 0);
    const Nereo2ConfigFile config = configurationOf("StopTime 12,5\n");
    EXPECT_EQ(config.setting(Nereo2ConfigFile::StopTime).valueAsDouble(), 0.0);
}

ROW(NoInteger, "A value is 0", "An integer is written with a point or exponent, or doesn't fit into 32 bits.")
{
    for (const char* text : {"500.0", "5e2", "3000000000"})
        EXPECT_EQ(maxIter(configurationOf(std::string("MaxIter ") + text + '\n')), 0) << text;
}

ROW(EmptySection, "A value is 0", "A section of a control file is empty or cut off.")
{
    ControlFile control;
    control.setUnits(3);
    control.setStopTime(5.0);
    EXPECT_TRUE(load(control, "a.ctl", inControlFile(" *** Title\na\n")));
    EXPECT_EQ(control.units(), 3);
    EXPECT_TRUE(load(control, "a.ctl", inControlFile(" *** Units\n *** Transient Data \n1 2\n")));
    EXPECT_EQ(control.units(), 0);
    EXPECT_EQ(control.numberOfTimeSteps(), 2);
    EXPECT_EQ(control.stopTime(), 0.0);
}

ROW(PropertyThatIsNotThere, "A value is 0", "A property of a fluid or solid isn't in the material database.")
{
    for (const char* type : {"fluid", "solid"}) {
        MaterialDatabaseFile database;
        const std::string material = "<material type=\"" + std::string(type) + "\"/>";
        EXPECT_TRUE(load(database, "a.xml", inDatabase(material)));
        const MaterialProperty density = database.material(0).property("density");
        EXPECT_EQ(density.type(), "density");
        EXPECT_EQ(density.value(), 0.0);
    }
}

ROW(ReferenceValueOfASolid, "A value is 0",
    "A reference value of a solid was saved, other than the temperature.")
{
    MaterialDatabaseFile database;
    for (const char* type : {"solid", "fluid"}) {
        Material material(type);
        material.setRefPressure(101325.0);
        material.setRefTemperature(293.15);
        database.add(material);
    }
    const MaterialDatabaseFile loaded = savedAndLoaded(database);
    EXPECT_EQ(loaded.material(0).refPressure(), 0.0);
    EXPECT_EQ(loaded.material(0).refTemperature(), 293.15);
    EXPECT_EQ(loaded.material(1).refPressure(), 101325.0);
}

ROW(ValueOfAnotherVariation, "A value is 0",
    "The value of a property was saved with a variation that has no value in files, such as `polynomial`.")
{
    const struct {
        const char* variation;
        double loaded;
    } cases[] = {
        {"polynomial",        0.0},
        {"constant",          2.5},
        {"equation_of_state", 2.5}
    };
    for (const auto& [variation, value] : cases) {
        MaterialDatabaseFile database;
        database.add(Material());
        database.material(0).property("density").setVariationType(variation);
        database.material(0).property("density").setValue(2.5);
        EXPECT_EQ(savedAndLoaded(database).material(0).property("density").value(), value) << variation;
    }
}

ROW(KeyInOtherLetters, "A setting has no effect", "Its name in XML isn't exactly a key.")
{
    Nereo2ConfigFile config;
    EXPECT_TRUE(load(config, "a.xml", inConfiguration("<maxIter>7</maxIter>")));
    EXPECT_EQ(maxIter(config), defaultMaxIter);
}

ROW(SettingOutsideTheRoot, "A setting has no effect", "It stands outside of the element `Nereo2Config`.")
{
    Nereo2ConfigFile config;
    EXPECT_TRUE(load(config, "a.xml", "<Config><MaxIter>7</MaxIter></Config>"));
    EXPECT_EQ(maxIter(config), defaultMaxIter);
}

ROW(CommandLineBeforeTheFile, "A setting has no effect", "The file is loaded after the command line.")
{
    Nereo2ConfigFile config;
    EXPECT_TRUE(config.loadFromOptionalCommandLineArguments({"p", "job", "-MaxIter", "7"}));
    EXPECT_TRUE(load(config, "a.cfg", "MaxIter 8\n"));
    EXPECT_EQ(maxIter(config), 8);
}

ROW(OptionBehindAWrongOne, "A setting has no effect", "It stands behind a wrong option on the command line.")
{
    Nereo2ConfigFile config;
    EXPECT_FALSE(config.loadFromOptionalCommandLineArguments({"p", "job", "-maxiter", "7", "-MaxIter", "8"}));
    EXPECT_EQ(maxIter(config), defaultMaxIter);
}

ROW(EmptiedText, "A setting has no effect", "It is a text that was made empty and saved.")
{
    Nereo2ConfigFile config;
    Setting& region = config.setting(Nereo2ConfigFile::AwsRegion);
    region.setValueFromString("");
    const std::string bytes = saved(config);
    region.setValueFromString("old");
    EXPECT_TRUE(load(config, "a.xml", bytes));
    EXPECT_EQ(region.valueAsString(), "old");
    config.reset(Nereo2ConfigFile::AwsRegion);
    EXPECT_EQ(region.valueAsString(), "us-east-1");
}

ROW(SettingOfTheFileBefore, "A setting has no effect",
    "An object is loaded again, and the new file doesn't name it.")
{
    Nereo2ConfigFile config = configurationOf("MaxIter 7\n");
    EXPECT_TRUE(load(config, "a.cfg", "Mpi 1\n"));
    EXPECT_EQ(maxIter(config), 7);
    config.resetAll();
    EXPECT_EQ(maxIter(config), defaultMaxIter);
}

ROW(TitleWithoutABlank, "A setting has no effect",
    "A title in a control file has no blank before its asterisks.")
{
    ControlFile control;
    EXPECT_TRUE(load(control, "a.ctl", inControlFile(" *** Title\na\n*** Units\n3\n")));
    EXPECT_EQ(control.units(), 0);
    EXPECT_TRUE(load(control, "a.ctl", inControlFile(" *** Title\na\n *** Units\n3\n")));
    EXPECT_EQ(control.units(), 3);
}

ROW(ConstantWithItsFactoryValue, "A setting has no effect",
    "It is a constant of a control file that was set back to its factory value and saved.")
{
    ControlFile control;
    const std::string bytes = saved(control);
    control.setConstant(kTurbI, 0.5);
    EXPECT_TRUE(load(control, "a.ctl", bytes));
    EXPECT_EQ(control.constant(kTurbI), 0.5);
    EXPECT_EQ(control.originalConstant(kTurbI), 0.05);
}

ROW(ConstantThatIsNotWritten, "A setting has no effect",
    "It is a constant with a code below 223, or of one of the four records.")
{
    ControlFile control;
    for (const int code : {222, 223, int(kInflate)})
        control.setConstant(code, 7.5);
    control.inflationData().number6 = 8.5;
    const ControlFile loaded = savedAndLoaded(control);
    EXPECT_EQ(loaded.constant(222), 0.0);
    EXPECT_EQ(loaded.constant(223), 7.5);
    EXPECT_NE(loaded.constant(kInflate), 7.5);
    EXPECT_EQ(loaded.inflationData().number6, 8.5);
}

ROW(VariableThatIsNotWritten, "A setting has no effect", "It is a variable of `phiSolve()` above 15.")
{
    ControlFile control;
    control.phiSolve(15).integer1 = 99;
    control.phiSolve(16).integer1 = 99;
    const ControlFile loaded = savedAndLoaded(control);
    EXPECT_EQ(loaded.phiSolve(15).integer1, 99);
    EXPECT_EQ(loaded.phiSolve(16).integer1, 15);
    EXPECT_TRUE(load(control, "a.ctl", inControlFile(" *** Solution Control\nkTotalP 98 1 1 1e-5\n")));
    EXPECT_EQ(control.phiSolve(16).integer1, 98);
}

ROW(ConvergenceSetting, "A setting has no effect",
    "It is an automatic convergence setting of a control file.")
{
    ControlFile control;
    control.setAutoConvOn(false);
    control.autoConvData().fieldFluctuation = 0.5;
    EXPECT_THAT(saved(control), HasSubstr("Field Fluctuation 0.5\n"));
    const ControlFile loaded = savedAndLoaded(control);
    EXPECT_TRUE(loaded.isAutoConvOn());
    EXPECT_EQ(loaded.autoConvData().fieldFluctuation, 0.0001);
}

ROW(FlagValueWithBlanks, "A setting has no effect", "A value of a flag has blanks in it.")
{
    ControlFile control;
    Flag flag;
    flag.setName("note");
    flag.setValue("two words");
    control.addFlag(flag);
    EXPECT_EQ(savedAndLoaded(control).flag(0).value(), "two");
}

ROW(UnknownField, "A field is missing",
    "Its name in the results file is none of `FieldVariable.def` and `NodeFlag.def`, or in other letters.")
{
    EXPECT_THAT(codesIn(fields(1, {"kVelocity", "ku", "kP"})), ElementsAre(kP));
}

ROW(FieldWithAnotherName, "A field is missing",
    "It has another name: `kCond`, `kGen` and `kMixF` are named `kKXX`, `kKYY` and `kKZZ`.")
{
    EXPECT_THAT(codesIn(fields(1, {"kCond", "kGen", "kMixF"})), ElementsAre(kCond, kGen, kMixF));
    const CodeNameTable& names = CodeNameTable::instance();
    EXPECT_EQ(names.nameForCode(kCond, false), "kKXX");
    EXPECT_EQ(names.nameForCode(kGen, false), "kKYY");
    EXPECT_EQ(names.nameForCode(kMixF, false), "kKZZ");
}

ROW(FieldOfAFlag, "A field is missing", "It is a flag of nodes, whose code is that of another field, too.")
{
    EXPECT_THAT(codesIn(fields(1, {"kMassRate"})), ElementsAre(31));
    const CodeNameTable& names = CodeNameTable::instance();
    EXPECT_EQ(names.nameForCode(31, true), "kMassRate");
    EXPECT_EQ(names.nameForCode(31, false), "kTransmis");
}

ROW(FileThatEndsBeforeItsFields, "A field is missing",
    "The results file ends in its header or run data, or a marker there isn't -1.")
{
    EXPECT_THAT(codesIn(ResultsBytes().header(1)), IsEmpty());
    EXPECT_THAT(codesIn(ResultsBytes().header(1, 0).run().names({"kU"})), IsEmpty());
    EXPECT_THAT(codesIn(ResultsBytes().header(1).run(0).names({"kU"})), IsEmpty());
    EXPECT_THAT(codesIn(ResultsBytes().header(1).run().names({"kU"})), ElementsAre(kU));
}

ROW(LoadThatFailed, "A field is missing", "The load gave false, and nobody looked.")
{
    ResultsFile results;
    EXPECT_FALSE(results.loadFrom("missing.res"));
    EXPECT_THAT(results.fieldDataCodes(), IsEmpty());
    EXPECT_THAT(results.fieldData(kU), IsEmpty());
}

ROW(FileThatIsCutOff, "Half of the values are zero", "The results file is cut off, or still being written.")
{
    const ResultsBytes whole = fields(4, {"kU", "kP"})
                                   .record(1, {1.0, 5.0})
                                   .record(2, {2.0, 6.0})
                                   .record(3, {3.0, 7.0})
                                   .record(4, {4.0, 8.0});
    EXPECT_EQ(whole.bytes().size(), 354 + 21 * 2 + 4 * (4 + 8 * 2));

    ResultsFile results;
    const QByteArray half = whole.bytes().chopped(2 * (4 + 8 * 2));
    EXPECT_TRUE(load(results, "a.res", half.toStdString()));
    EXPECT_THAT(results.fieldData(kU), ElementsAre(1.0, 2.0, 0.0, 0.0));
    EXPECT_THAT(results.fieldData(kP), ElementsAre(5.0, 6.0, 0.0, 0.0));

    const ResultsLoadResult result = load(results, half, {});
    EXPECT_EQ(result.outcome, ResultsLoadResult::CutShort);
    EXPECT_EQ(result.wholeRecords, 2);
}

ROW(NodesWithoutARecord, "Half of the values are zero", "The file has no record for these nodes.")
{
    ResultsFile results;
    EXPECT_TRUE(load(results, fields(2, {"kU"}).record(2, {1.0}).record(2, {2.0})));
    EXPECT_THAT(results.fieldData(kU), ElementsAre(0.0, 2.0));
}

ROW(WrongByteOrder, "Numbers are absurd", "A little-endian results file begins with 1.")
{
    QByteArray bytes = fields(3, {}).bytes();
    bytes[0] = 1;
    ResultsFile results;
    EXPECT_TRUE(load(results, "a.res", bytes.toStdString()));
    EXPECT_EQ(results.nodeCount(), 3 << 24);
}

ROW(PropertyOfAnotherType, "A saved material database doesn't load",
    "A material has a property that its type doesn't begin with, such as the `flow_rate` of an "
    "`internal_fan`. It is saved as `<property type=\"\">`.")
{
    MaterialDatabaseFile database;
    EXPECT_TRUE(load(database, "a.xml",
                     inDatabase(R"(<material type="internal_fan"><property type="flow_rate">)"
                                R"(<value>2</value></property></material>)")));
    const std::string bytes = saved(database);
    EXPECT_THAT(bytes, HasSubstr(R"(<property type="">)"));
    EXPECT_FALSE(load(database, "a.xml", bytes));
}

ROW(PropertyThatWasAddedByAsking, "A saved material database doesn't load",
    "Somebody asked a material that isn't `const` for a property that it didn't have, which added it.")
{
    MaterialDatabaseFile database;
    database.add(Material());
    const Material& fluid = database.material(0);
    EXPECT_EQ(fluid.property("bulk_modulus").value(), 0.0);
    EXPECT_TRUE(load(database, "a.xml", saved(database)));
    EXPECT_EQ(database.material(0).property("bulk_modulus").value(), 0.0);
    EXPECT_FALSE(load(database, "a.xml", saved(database)));
}

ROW(MaterialsOfAControlFile, "A saved file isn't what was loaded", "A control file has lost its materials.")
{
    Material air;
    air.setName("Air");
    ControlFile control;
    control.materialDatabase().add(air);
    EXPECT_THAT(saved(control), HasSubstr(" Air\n"));
    const ControlFile loaded = savedAndLoaded(control);
    EXPECT_EQ(loaded.materialDatabase().count(), 0);
    EXPECT_THAT(saved(loaded), Not(HasSubstr(" Air\n")));
}

ROW(FixedSections, "A saved file isn't what was loaded",
    "A control file has lost what its fixed sections said.")
{
    ControlFile control;
    EXPECT_TRUE(load(control, "a.ctl", inControlFile(" *** Restart\n1 2 3 4\n *** Probes\n5\n")));
    const std::string bytes = saved(control);
    EXPECT_THAT(bytes, HasSubstr(" *** Restart\n0 0 0 0\n"));
    EXPECT_THAT(bytes, Not(HasSubstr("Probes")));
}

ROW(SixDigits, "A saved file isn't what was loaded", "Digits behind the sixth are gone.")
{
    ControlFile control;
    control.setStopTime(1.23456789);
    EXPECT_EQ(savedAndLoaded(control).stopTime(), 1.23457);
    Nereo2ConfigFile config;
    config.setting(Nereo2ConfigFile::StopTime).setValueFromString("1.23456789");
    EXPECT_EQ(savedAndLoaded(config).setting(Nereo2ConfigFile::StopTime).valueAsDouble(), 1.23456789);
}

ROW(VersionOfTheFile, "A saved file isn't what was loaded",
    "The version is that of the file, not of the library.")
{
    ControlFile control;
    EXPECT_TRUE(load(control, "a.ctl", inControlFile("")));
    EXPECT_EQ(control.version(), Util::Version(1, 2, 3, 4));
    EXPECT_THAT(saved(control), HasSubstr(" Ver 1.2.3.4\n"));
}

ROW(FullDiskUnderText, "A saved file isn't what was loaded", "The file is cut off, and the save gave true.")
{
    EXPECT_TRUE(ControlFile().saveTo("/dev/full"));
    EXPECT_TRUE(GbiFile().saveTo("/dev/full"));
}

/// The rows of the page as it prints them: the heading above, and the first cell.
std::vector<Row> rowsOfThePage()
{
    std::vector<Row> found;
    std::istringstream page(readBytes(NEREO_DOCS_DIR "/troubleshooting.md"));
    std::string symptom;
    for (std::string line; std::getline(page, line);) {
        const std::string cause = line.substr(0, line.find(" | "));
        if (line.rfind("## ", 0) == 0)
            symptom = line.substr(3);
        else if (line.rfind("| ", 0) == 0 && cause != "| cause")
            found.emplace_back(symptom, cause.substr(2));
    }
    return found;
}

TEST(Troubleshooting, TriesEachRowOfThePage)
{
    EXPECT_EQ(rowsOfThePage(), rows());
}

} // namespace
} // namespace Nereo::Io
