#pragma once

#include "KindEditor.h"

#include <unordered_map>
#include <vector>

namespace Nereo::Inspection {

/// What is done to a file in one go.
struct EditStep {
    Replacements replacements;
    std::unordered_map<const Item*, NewText> set; ///< values of the file before, and what they get
    std::vector<AddedValue> added;
    QStringList removed;
    bool isRenamed = false; ///< a material gets another name, which changes addresses
};

/// Whether a value is the name of a material, with which addresses begin.
bool isNameOfMaterial(FileKind kind, const QString& address);

/// Whether the file after a step has the values of the one before, with just what the step was to do.
bool hasDone(const EditStep& step, const EditedFile& before, const EditedFile& after);

} // namespace Nereo::Inspection
