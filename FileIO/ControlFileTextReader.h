#pragma once

#include "Reader.h"

#include <QTextStream>

namespace Nereo::Io {

class ControlFile;

/// Reads the sections of a control file, in any order, and skips those that it doesn't know.
class NEREOFILEIO_EXPORT ControlFileTextReader : public Reader<QTextStream> {
public:
    explicit ControlFileTextReader(ControlFile& controlFile);

    bool read(QTextStream& in) override;

private:
    using SectionReader = void (ControlFileTextReader::*)(QTextStream& body);

    static SectionReader readerOf(const QString& section);

    void readTitle(QTextStream& body);
    void readEquationSelection(QTextStream& body);
    void readUnits(QTextStream& body);
    void readTransientData(QTextStream& body);
    void readSequentialSolverIterations(QTextStream& body);
    void readSolutionControl(QTextStream& body);
    void readRelaxation(QTextStream& body);
    void readConstants(QTextStream& body);
    void readConstant(QTextStream& body, int code);
    void readFlagSection(QTextStream& body);

    ControlFile& controlFile_; // a reference, since the text of the assertion about the flags names it so
};

} // namespace Nereo::Io
