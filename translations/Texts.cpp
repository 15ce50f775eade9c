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
