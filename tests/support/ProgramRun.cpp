#include "ProgramRun.h"

#include <gtest/gtest.h>

#include <QProcess>

ProgramRun runProgram(const QString& program, const QStringList& args)
{
    QProcess process;
    process.start(program, args);
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitCode(), process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
}

std::string printedBy(const QString& program, const QStringList& args, int expectedExitCode)
{
    const ProgramRun run = runProgram(program, args);
    EXPECT_EQ(run.exitCode, expectedExitCode);
    return run.output + run.errors;
}
