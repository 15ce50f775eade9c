#pragma once

#include <QStringList>

#include <string>

/// What a program gave that was run to its end.
struct ProgramRun {
    int exitCode;
    std::string output;
    std::string errors;
};

/// Runs a program, which may take a minute.
ProgramRun runProgram(const QString& program, const QStringList& args);

/// What the program printed, errors last, where the exit code is as expected.
std::string printedBy(const QString& program, const QStringList& args, int expectedExitCode);
