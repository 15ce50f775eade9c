#pragma once

#include "Marked.h"

#include "support/TemporaryFolder.h"

#include <NereoInspection/Check.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

/// A fault in an otherwise good file, and the one finding that a check must have of it. The place and what is
/// found are those that the text marks.
struct Fault {
    std::string text; ///< with [[…]] around the place
    const char* code;
    Nereo::Inspection::Severity severity;
    Nereo::Inspection::Effect effect;
    QString address = {};
    QString message = {}; ///< a part of it
};

/// What a check says of bytes in a file of that name.
Nereo::Inspection::CheckedFile
checkedBytes(const std::string& name, const std::string& bytes,
             Nereo::Inspection::FileKind kind = Nereo::Inspection::FileKind::Unknown);

/// Expects this one finding, with and without carriage returns and a byte-order mark, and in the other
/// encodings of a text or a document.
void expectFinding(const std::string& name, const Fault& fault, bool isText);

/// Expects that a check finds nothing.
void expectClean(const std::string& name, const std::string& bytes);

/// The findings of a check as lines.
std::string linesOf(const Nereo::Inspection::CheckedFile& checked);
