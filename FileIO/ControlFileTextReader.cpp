#include "ControlFileTextReader.h"

#include "Assertion.h"
#include "ControlFileRecords.h"
#include "ControlFileSections.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ControlFile.h>
#include <NereoUtility/StringConversion.h>

#include <QStringList>

namespace Nereo::Io {

namespace {

/// The name in a title line, simplified; empty when there is none.
QString sectionName(const QString& line)
{
    return hasSectionName(line) ? line.mid(5).simplified() : QString();
}

// A number that is missing or can't be read is zero: the stream's operators say so themselves.

int readInt(QTextStream& in)
{
    int value = 0;
    in >> value;
    return value;
}

double readDouble(QTextStream& in)
{
    double value = 0.0;
    in >> value;
    return value;
}

QString readWord(QTextStream& in)
{
    QString word;
    in >> word;
    return word;
}

int readCode(QTextStream& in)
{
    return CodeNameTable::instance().codeForName(readWord(in));
}

/// Whether there is a code among those that count from 1.
bool isOneOf(int code, int count)
{
    return 1 <= code && code <= count;
}

void skipRestOfLine(QTextStream& in)
{
    in.readLine();
}

void readField(QTextStream& in, bool& field)
{
    field = readInt(in) == 1;
}

void readField(QTextStream& in, int& field)
{
    field = readInt(in);
}

void readField(QTextStream& in, double& field)
{
    field = readDouble(in);
}

template <class Record, class... Fields>
void readRecord(QTextStream& in, Record& record, const std::tuple<Fields...>& fields)
{
    std::apply([&](auto... field) { (readField(in, record.*field), ...); }, fields);
}

} // namespace

ControlFileTextReader::ControlFileTextReader(ControlFile& controlFile) : controlFile_(controlFile) {}

bool ControlFileTextReader::read(QTextStream& in)
{
    controlFile_.setHeaderLine1(Util::toStdString(in.readLine()));
    controlFile_.setHeaderLine2(Util::toStdString(in.readLine()));
    QString name = sectionName(in.readLine());

    // A line that can't be read ends the file: a device that fails may never say that it is at its end. A
    // title in the last line of the file has no section.
    QString line;
    bool hasLine = in.readLineInto(&line);
    while (hasLine) {
        const SectionReader readSection = readerOf(name);
        QString lines;
        for (; hasLine && !isTitle(line); hasLine = in.readLineInto(&line)) {
            if (readSection)
                lines.append(line).append(QLatin1Char('\n'));
        }
        if (readSection) {
            QTextStream body(&lines, QIODevice::ReadOnly); // on bytes it would crash when memory runs out
            (this->*readSection)(body);
        }
        if (hasLine) {
            name = sectionName(line);
            hasLine = in.readLineInto(&line);
        }
    }
    return true;
}

ControlFileTextReader::SectionReader ControlFileTextReader::readerOf(const QString& section)
{
    struct Section {
        const char* name;
        SectionReader read;
    };
    static constexpr Section sections[] = {
        {SectionName::title,             &ControlFileTextReader::readTitle                     },
        {SectionName::equationSelection, &ControlFileTextReader::readEquationSelection         },
        {SectionName::units,             &ControlFileTextReader::readUnits                     },
        {SectionName::transientData,     &ControlFileTextReader::readTransientData             },
        {SectionName::sequentialSolver,  &ControlFileTextReader::readSequentialSolverIterations},
        {SectionName::solutionControl,   &ControlFileTextReader::readSolutionControl           },
        {SectionName::relaxation,        &ControlFileTextReader::readRelaxation                },
        {SectionName::constants,         &ControlFileTextReader::readConstants                 },
        {SectionName::flags,             &ControlFileTextReader::readFlagSection               },
    };
    for (const Section& known : sections) {
        if (section == QLatin1String(known.name))
            return known.read;
    }
    return nullptr; // the model has no place for what the other sections hold
}

void ControlFileTextReader::readTitle(QTextStream& body)
{
    controlFile_.setTitle(Util::toStdString(body.readLine()));
}

void ControlFileTextReader::readEquationSelection(QTextStream& body)
{
    for (int i = 0; i < ControlFile::EquationCount; ++i) {
        controlFile_.setEquationFlag(i, readInt(body));
        skipRestOfLine(body);
    }
}

void ControlFileTextReader::readUnits(QTextStream& body)
{
    controlFile_.setUnits(readInt(body));
}

void ControlFileTextReader::readTransientData(QTextStream& body)
{
    controlFile_.setTransientForm(readInt(body));
    controlFile_.setNumberOfTimeSteps(readInt(body));
    skipRestOfLine(body);
    controlFile_.setTimeStepSize(readDouble(body));
    skipRestOfLine(body);
    controlFile_.setStopTime(readDouble(body));
}

void ControlFileTextReader::readSequentialSolverIterations(QTextStream& body)
{
    SeqSolverType& solver = controlFile_.sequentialSolver();
    for (int* integer : {&solver.integer1, &solver.integer2, &solver.integer3}) {
        *integer = readInt(body);
        skipRestOfLine(body);
    }
    solver.variable = Util::toStdString(readWord(body));
    solver.tolerance = readDouble(body);
}

void ControlFileTextReader::readSolutionControl(QTextStream& body)
{
    while (!body.atEnd()) {
        const int code = readCode(body);
        if (isOneOf(code, ControlFile::SolvedVariableCount)) {
            PhiSolveType& solve = controlFile_.phiSolve(code);
            solve.integer1 = readInt(body);
            solve.integer2 = readInt(body);
            solve.integer3 = readInt(body);
            solve.tolerance = readDouble(body);
        }
        skipRestOfLine(body);
    }
}

void ControlFileTextReader::readRelaxation(QTextStream& body)
{
    while (!body.atEnd()) {
        const int code = readCode(body);
        const double underRelaxation = readDouble(body);
        const double inertialRelaxation = readDouble(body);
        if (isOneOf(code, ControlFile::RelaxedVariableCount)) {
            controlFile_.setPhiUnderRelax(code, underRelaxation);
            controlFile_.setPhiInertRelax(code, inertialRelaxation);
        }
        skipRestOfLine(body);
    }
}

void ControlFileTextReader::readConstants(QTextStream& body)
{
    while (!body.atEnd()) {
        const int code = readCode(body);
        if (isOneOf(code, ControlFile::ConstantCount))
            readConstant(body, code);
        skipRestOfLine(body);
    }
}

void ControlFileTextReader::readConstant(QTextStream& body, int code)
{
    const auto read = [&body](auto& record, const auto& fields) { readRecord(body, record, fields); };
    if (!visitRecord(controlFile_, code, read))
        controlFile_.setConstant(code, readDouble(body));
}

void ControlFileTextReader::readFlagSection(QTextStream& body)
{
    controlFile_.clearFlags();
    const int count = readInt(body);
    skipRestOfLine(body);
    QString line;
    while (body.readLineInto(&line)) {
        const QStringList words = line.simplified().split(QLatin1Char(' '));
        if (words.first().isEmpty())
            continue;
        Flag flag;
        flag.setName(Util::toStdString(words.first()));
        flag.setValue(Util::toStdString(words.value(1))); // empty where there is none
        controlFile_.addFlag(flag);
    }
    NEREO_ASSERT_AT(controlFile_.flagCount() == count, "FileIO/ControlFileTextReader", __LINE__);
}

} // namespace Nereo::Io
