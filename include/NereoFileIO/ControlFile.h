#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/File.h>
#include <NereoFileIO/Flag.h>
#include <NereoFileIO/MaterialDatabaseFile.h>

#include <QString>

#include <array>
#include <string>
#include <vector>

namespace Nereo::Io {

// The records of the control file. A field whose meaning only the solver knows is named by its type and its
// place in the record, counted from 1. The initial values are those of a new control file.

/// The iterations of the sequential solver, and a variable with its tolerance.
struct SeqSolverType {
    int integer1 = 100;
    int integer2 = 10;
    int integer3 = 0;
    std::string variable = "kP"; ///< the name of a FieldVariable
    double tolerance = 1e-5;
};

/// How one variable is solved.
struct PhiSolveType {
    int integer1 = 15;
    int integer2 = 5;
    int integer3 = 1; ///< loaded, but always saved as 1
    double tolerance = 1e-5;
};

/// The thresholds of the four criteria by which a run is found converged.
struct AutoConvData {
    double instantaneousSlope = 0.001;
    double timeAverageSlope = 0.03162;
    double timeAverageConcavity = 0.03162;
    double fieldFluctuation = 0.0001;
};

/// The record of the constant kInflate.
struct InflationData {
    bool switch1 = true;
    bool switch2 = false;
    bool switch3 = true;
    int integer4 = 3;
    int integer5 = 0;
    double number6 = 1.0;
    double number7 = 3.0;
    double number8 = 0.45;
    double number9 = 1.0;
    double number10 = 0.01;
    double number11 = 1.05;
    bool switch12 = false; ///< stands before number11 in the file
};

/// The record of the constant kAutoYP.
struct AutoYPlusData {
    int integer1 = 0;
    int integer2 = 1;
    int integer3 = 36;
    int integer4 = 1;
    double number5 = 300.0;
    double number6 = 1.0;
};

/// The record of the constant kSmokeOn.
struct SmokeData {
    bool on = false;
    double number2 = 21000.0;
    double number3 = 3.0;
    double number4 = 0.05;
};

/// The record of the constant kThComfOn.
struct ThermalComfortData {
    bool on = false;
    double number2 = 60.0;
    double number3 = 76.0;
    double number4 = 0.61;
};

/// All settings of one solver run: the equations that are solved and how, the solver's constants, the
/// materials and free flags.
///
/// **Loading a file and saving it loses its materials, its auto-convergence settings and what its fixed
/// sections said:** a load doesn't read them. A save writes the materials and settings that the object has,
/// which in a new one are none and the defaults, and the same fixed sections in every file.
///
/// Loading changes only what the file carries. saveTo() writes of the constants only those that differ from
/// their factory values, so load into a new object unless changed constants are to stay. Saving
/// stops the process at a material's curve over a variable outside 0 to kNone.
///
/// loadFrom() gives false only when the file can't be opened. Sections and names that it doesn't know are
/// skipped, and numbers that it can't read are zero; but a file whose number of flags is not the one that it
/// announces stops the process.
///
/// Accessors that take a code are indexed by FieldVariable. A code or an index outside the range that each
/// states stops the process.
///
/// References hold until the whole object is assigned to, those to flags also only until a flag is added or
/// removed. They never reach a copy.
class NEREOFILEIO_EXPORT ControlFile : public File {
public:
    /// A variant of the file, which nothing interprets; the product has the other enumerators.
    enum Format : int { DefaultFormat = 0 };

    // How many there are of what is accessed by an index or a code.
    static constexpr int EquationCount = 5;
    static constexpr int SolvedVariableCount = 24;
    static constexpr int RelaxedVariableCount = 46;
    static constexpr int ConstantCount = 328;

    ControlFile(); ///< everything with its default
    ControlFile(const ControlFile& other);
    ControlFile& operator=(const ControlFile& other);
    ControlFile(ControlFile&& other) noexcept;
    ControlFile& operator=(ControlFile&& other) noexcept;
    ~ControlFile() override;

    Format format() const;
    void setFormat(Format format);

    /// The first line of the file, which ends with the version of the program: "… Ver 2024.0.0.0".
    std::string headerLine1() const;

    /// Also sets version(), to what follows the last " Ver " or, without one, to what the whole line says.
    /// What is no number there is 0.
    void setHeaderLine1(const std::string& line);

    std::string headerLine2() const;
    void setHeaderLine2(const std::string& line);

    std::string title() const;
    void setTitle(const std::string& title);

    /// Whether an equation is solved; index 0 to 4.
    int equationFlag(int index) const;
    void setEquationFlag(int index, int value);

    int units() const; ///< the number of the unit system
    void setUnits(int units);

    int transientForm() const;
    void setTransientForm(int transientForm);

    int numberOfTimeSteps() const;
    void setNumberOfTimeSteps(int numberOfTimeSteps);

    double timeStepSize() const;
    void setTimeStepSize(double timeStepSize);

    double stopTime() const; ///< -1 until set
    void setStopTime(double stopTime);

    SeqSolverType& sequentialSolver();
    const SeqSolverType& sequentialSolver() const;

    /// Code 1 to 24. Files carry 1 to 15 when saved; all 24 are loaded.
    PhiSolveType& phiSolve(int code);
    const PhiSolveType& phiSolve(int code) const;

    double phiUnderRelax(int code) const; ///< code 1 to 46
    void setPhiUnderRelax(int code, double factor);

    double phiInertRelax(int code) const; ///< code 1 to 46
    void setPhiInertRelax(int code, double factor);

    bool isAutoConvOn() const;
    void setAutoConvOn(bool on);

    bool isAutoStopOn() const;
    void setAutoStopOn(bool on);

    AutoConvData& autoConvData();
    const AutoConvData& autoConvData() const;

    /// The materials of the run.
    MaterialDatabaseFile& materialDatabase();
    const MaterialDatabaseFile& materialDatabase() const;
    void setMaterialDatabase(const MaterialDatabaseFile& materialDatabase);

    /// Code 1 to 328. Codes from 223 are saved where they differ from the original, except for the codes of
    /// the four records below, in whose place the record is saved.
    double constant(int code) const;
    void setConstant(int code, double value);

    double originalConstant(int code) const; ///< the factory value; code 1 to 328

    InflationData& inflationData();
    const InflationData& inflationData() const;

    AutoYPlusData& autoYPlusData();
    const AutoYPlusData& autoYPlusData() const;

    SmokeData& smokeData();
    const SmokeData& smokeData() const;

    ThermalComfortData& thermalComfortData();
    const ThermalComfortData& thermalComfortData() const;

    /// Flags keep the order in which they were added, and several may have one name. Index 0 to
    /// flagCount() - 1.
    Flag& flag(int index);
    const Flag& flag(int index) const;
    int flagCount() const;
    int indexOfFlag(const std::string& name) const; ///< of the first with the name; -1 when there is none
    void addFlag(const Flag& flag);                 ///< at the end
    void removeFlag(int index);
    void clearFlags();

protected:
    bool doLoadFrom(const std::string& path) override;
    bool doSaveTo(const std::string& path) const override;

private:
    void setDefaults();

    // What has no initial value here gets it from setDefaults().
    Format format_ = DefaultFormat;
    QString headerLine1_;
    QString headerLine2_;
    QString title_;
    std::array<int, EquationCount> equationFlags_;
    int units_ = 0;
    int transientForm_ = 0;
    int numberOfTimeSteps_ = 0;
    double timeStepSize_;
    double stopTime_;
    SeqSolverType sequentialSolver_;
    std::array<PhiSolveType, SolvedVariableCount> phiSolve_; // here and below, each at its code - 1
    std::array<double, RelaxedVariableCount> phiUnderRelax_ {};
    std::array<double, RelaxedVariableCount> phiInertRelax_ {};
    bool isAutoConvOn_;
    bool isAutoStopOn_;
    AutoConvData autoConvData_;
    MaterialDatabaseFile materialDatabase_;
    std::array<double, ConstantCount> constants_ {};
    std::array<double, ConstantCount> originalConstants_;
    InflationData inflationData_;
    AutoYPlusData autoYPlusData_;
    SmokeData smokeData_;
    ThermalComfortData thermalComfortData_;
    std::vector<Flag> flags_; // not a QList, whose copies share items that references still lead to
};

} // namespace Nereo::Io
