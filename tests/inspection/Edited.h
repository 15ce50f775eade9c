#pragma once

#include <NereoInspection/Edit.h>

#include <string>
#include <vector>

/// The name of a problem, as in "NotANumber".
const char* nameOf(Nereo::Inspection::EditProblem problem);

/// One edit: a value gets a text, or goes.
std::vector<Nereo::Inspection::Edit> setTo(const QString& address, const QString& text);
std::vector<Nereo::Inspection::Edit> removed(const QString& address);

/// The bytes of a file after edits; where they are refused "refused: " and why. Everything that holds of each
/// edit is expected of it.
std::string edited(Nereo::Inspection::FileKind kind, const std::string& bytes,
                   const std::vector<Nereo::Inspection::Edit>& edits);

std::string withCarriageReturns(std::string text);

/// Expects that an edit that makes the one text of the other does the same where lines end in carriage return
/// and line feed, and behind a byte-order mark.
void expectEdited(Nereo::Inspection::FileKind kind, const std::string& before,
                  const std::vector<Nereo::Inspection::Edit>& edits, const std::string& after);
