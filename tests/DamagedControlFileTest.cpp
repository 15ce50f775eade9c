#include "support/Bytes.h"
#include "support/DamagedLoads.h"
#include "support/SameContent.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/FieldVariable.h>

#include <QRegExp>
#include <QStringList>
#include <QTextStream>

namespace Nereo::Io {
namespace {

int integer(QTextStream& in)
{
    int value = 0;
    in >> value;
    return value;
}

double number(QTextStream& in)
{
    double value = 0.0;
    in >> value;
    return value;
}

bool flag(QTextStream& in)
{
    return integer(in) == 1;
}

QString word(QTextStream& in)
{
    QString value;
    in >> value;
    return value;
}

void expectConstant(ControlFile& file, int code, QTextStream& in)
{
    if (code == 290) {
        InflationData& data = file.inflationData();
        data.switch1 = flag(in);
        data.switch2 = flag(in);
        data.switch3 = flag(in);
        data.integer4 = integer(in);
        data.integer5 = integer(in);
        data.number6 = number(in);
        data.number7 = number(in);
        data.number8 = number(in);
        data.number9 = number(in);
        data.number10 = number(in);
        data.switch12 = flag(in);
        data.number11 = number(in);
    } else if (code == 291) {
        AutoYPlusData& data = file.autoYPlusData();
        data.integer1 = integer(in);
        data.integer2 = integer(in);
        data.integer3 = integer(in);
        data.integer4 = integer(in);
        data.number5 = number(in);
        data.number6 = number(in);
    } else if (code == 326) {
        SmokeData& data = file.smokeData();
        data.on = flag(in);
        data.number2 = number(in);
        data.number3 = number(in);
        data.number4 = number(in);
    } else if (code == 327) {
        ThermalComfortData& data = file.thermalComfortData();
        data.on = flag(in);
        data.number2 = number(in);
        data.number3 = number(in);
        data.number4 = number(in);
    } else if (code <= 328) {
        file.setConstant(code, number(in));
    }
}

void expectLineOfVariable(ControlFile& file, const QString& section, QTextStream& in)
{
    const int code = CodeNameTable::instance().codeForName(word(in));
    if (section == "Solution Control" && code <= 24) {
        PhiSolveType& solve = file.phiSolve(code);
        solve.integer1 = integer(in);
        solve.integer2 = integer(in);
        solve.integer3 = integer(in);
        solve.tolerance = number(in);
    } else if (section == "Relaxation") {
        const double underRelaxation = number(in);
        const double inertialRelaxation = number(in);
        if (code <= 46) {
            file.setPhiUnderRelax(code, underRelaxation);
            file.setPhiInertRelax(code, inertialRelaxation);
        }
    } else if (section == "Constants") {
        expectConstant(file, code, in);
    }
    in.readLine();
}

/// Whether there are as many flags as announced.
bool expectFlags(ControlFile& file, QTextStream& in)
{
    file.clearFlags();
    const int count = integer(in);
    in.readLine();
    for (const QString& line : in.readAll().split('\n')) {
        const QStringList words = line.simplified().split(' ');
        if (words[0].isEmpty())
            continue;
        Flag flag;
        flag.setName(words[0].toStdString());
        flag.setValue(words.value(1).toStdString());
        file.addFlag(flag);
    }
    return file.flagCount() == count;
}

void expectSection(ExpectedLoad<ControlFile>& expected, const QString& section, QString body)
{
    ControlFile& file = expected.content;
    QTextStream in(&body);
    if (section == "Title") {
        file.setTitle(in.readLine().toStdString());
    } else if (section == "Equation Selection") {
        for (int i = 0; i < 5; ++i) {
            file.setEquationFlag(i, integer(in));
            in.readLine();
        }
    } else if (section == "Units") {
        file.setUnits(integer(in));
    } else if (section == "Transient Data") {
        file.setTransientForm(integer(in));
        file.setNumberOfTimeSteps(integer(in));
        in.readLine();
        file.setTimeStepSize(number(in));
        in.readLine();
        file.setStopTime(number(in));
    } else if (section == "Sequential Solver Iterations") {
        SeqSolverType& solver = file.sequentialSolver();
        solver.integer1 = integer(in);
        in.readLine();
        solver.integer2 = integer(in);
        in.readLine();
        solver.integer3 = integer(in);
        in.readLine();
        solver.variable = word(in).toStdString();
        solver.tolerance = number(in);
    } else if (section == "Solution Control" || section == "Relaxation" || section == "Constants") {
        while (!in.atEnd())
            expectLineOfVariable(file, section, in);
    } else if (section == "Flag section" && !expectFlags(file, in)) {
        expected.stop = "ASSERT: \"controlFile_.flagCount() == count\" in file FileIO/ControlFileTextReader";
    }
}

/// The file as a list of lines, cut up at its titles.
ExpectedLoad<ControlFile> expectedFromText(const std::string& bytes)
{
    QTextStream in(QByteArray::fromStdString(bytes));
    in.setCodec("UTF-8");
    QStringList lines = in.readAll().split('\n');
    if (lines.last().isEmpty())
        lines.removeLast(); // the line end of the last line begins no other

    ExpectedLoad<ControlFile> expected;
    expected.content.setHeaderLine1(lines.value(0).toStdString());
    expected.content.setHeaderLine2(lines.value(1).toStdString());
    for (int title = 2; title + 1 < lines.size();) {
        QRegExp expression("^\\s\\*\\*\\*\\s(.+)");
        const QString section =
            expression.indexIn(lines[title]) >= 0 ? expression.cap(1).simplified() : QString();
        QString body;
        for (++title; title < lines.size() && !lines[title].startsWith(" *** "); ++title)
            body += lines[title] + '\n';
        expectSection(expected, section, body);
        if (!expected.stop.empty())
            break;
    }
    return expected;
}

TEST(DamagedControlFileDeathTest, LoadsWhatTheDescriptionSays)
{
    DamagedLoads<ControlFile> loads("ctl");
    for (const char* path : {NEREO_SAMPLES_DIR "/cavity.ctl", NEREO_GOLDEN_DIR "/new-control-file.ctl"})
        loads.expect(damaged(readBytes(path)), expectedFromText);
}

} // namespace
} // namespace Nereo::Io
