// The texts that are translated, as lupdate is to see them: the preprocessor makes each row of the tables a
// marked text, which lupdate doesn't do by itself. Nothing of this is compiled.

#define MATERIAL_TYPE(object, name, displayName) QT_TRANSLATE_NOOP("Clt::MaterialType", displayName)
#include <NereoFileIO/MaterialType.def>

#define PROPERTY_TYPE(object, name, displayName, unitCategory, code)                                         \
    QT_TRANSLATE_NOOP("Clt::PropertyType", displayName)
#include <NereoFileIO/PropertyType.def>

#define VARIATION_TYPE(object, name, displayName, code, alias)                                               \
    QT_TRANSLATE_NOOP("Clt::VariationType", displayName)
#include <NereoFileIO/VariationType.def>

#define FINDING(rule, code, severity, effect, kinds, expected, message)                                      \
    QT_TRANSLATE_NOOP("Nereo::Inspection", expected) QT_TRANSLATE_NOOP("Nereo::Inspection", message)
#include <Inspection/Rules.def>

QT_TRANSLATE_NOOP("Nereo::Inspection", "did you mean \"%1\"?")
QT_TRANSLATE_NOOP("Nereo::Inspection", "so are those behind it")
QT_TRANSLATE_NOOP("Nereo::Inspection", "a load takes the next line for it, and so on for those below")
QT_TRANSLATE_NOOP("Nereo::Inspection", "those behind it are read as")
QT_TRANSLATE_NOOP("Nereo::Inspection", "what is left of it is read for the values behind it:")
QT_TRANSLATE_NOOP("Nereo::Inspection", "a load takes the next line for it:")
QT_TRANSLATE_NOOP("Nereo::Inspection", "the version is read as %1")
QT_TRANSLATE_NOOP(
    "Nereo::Inspection",
    "a line is missing before it, and the first title with what stands up to the next one is ignored")
QT_TRANSLATE_NOOP("Nereo::Inspection", "a writer puts the section \"%1\" here")
QT_TRANSLATE_NOOP("Nereo::Inspection", "a load leaves out bytes 0D of characters, the first in line %1")
QT_TRANSLATE_NOOP("Nereo::Inspection", "a load stops the process")
QT_TRANSLATE_NOOP("Nereo::Inspection", "a load throws")
QT_TRANSLATE_NOOP("Nereo::Inspection", "what a load doesn't find is read as 0")
QT_TRANSLATE_NOOP("Nereo::Inspection", "the name of the job")
QT_TRANSLATE_NOOP("Nereo::Inspection", "the program that writes the file")
QT_TRANSLATE_NOOP("Nereo::Inspection", "\"Version\" and the version")
QT_TRANSLATE_NOOP("Nereo::Inspection", "an empty line")
QT_TRANSLATE_NOOP("Nereo::Inspection", "a section's title")
