#include <NereoFileIO/ControlFile.h>

#include "Assertion.h"
#include "ControlFileSections.h"
#include "ControlFileTextReader.h"
#include "ControlFileTextWriter.h"
#include "ExactText.h"
#include "FileAccess.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoUtility/StringConversion.h>

#include <algorithm>

namespace Nereo::Io {

namespace {

constexpr const char* product = "NEREO";
constexpr const char* release = "NEREO 2024";

struct SolveDefaults {
    int firstCode;
    int lastCode;
    PhiSolveType settings;
};

// The other variables have those of a new PhiSolveType.
constexpr SolveDefaults solveDefaults[] = {
    {kP,     kT,       {14, 1000, 1, 1e-8}},
    {kScal1, kScal1,   {6, 1900, 1, 1e-7} },
    {kVOF,   kElecPot, {6, 1900, 1, 1e-10}},
};

struct FactorDefault {
    int firstCode;
    int lastCode;
    double factor;
};

// Factors that don't stand here are 0.
constexpr FactorDefault underRelaxationDefaults[] = {
    {kU,      kP,       0.5},
    {kT,      kT,       1.0},
    {kKin,    kDiss,    0.5},
    {kScal1,  kElecPot, 1.0},
    {kTurbMu, kTurbMu,  0.5},
    {kVeff,   kVeff,    0.1},
    {kCeff,   kCeff,    0.5},
    {kRho,    kCond,    0.5},
    {kCp,     kDRhoDP,  1.0},
};

struct ConstantDefault {
    int code;
    double value;
};

// Constants that don't stand here are 0.
constexpr ConstantDefault constantDefaults[] = {
    {kTurbRatio,   100.0},
    {kTurbI,       0.05 },
    {kCMu,         0.09 },
    {kCE1,         1.44 },
    {kCE2,         1.92 },
    {kKappa,       0.4  },
    {kVanDriest,   26.0 },
    {kBWall,       5.5  },
    {kRNGBeta,     0.015},
    {kRNGEta0,     4.38 },
    {kRNGCE0,      1.42 },
    {kSSTFFKF,     0.01 },
    {kSSTFFWF,     2.0  },
    {kSSTAutoWall, 1.0  },
    {kTurbMomDC1,  1.0  },
    {kTStag,       300.0},
    {kSpecWall,    1.0  },
    {kFastLDU,     1.0  },
    {kQuadLevel,   1.0  },
    {kAutoTurb,    1.0  },
    {kWalForc,     1.0  },
    {kWalHeat,     1.0  },
    {kReLen,       1.0  },
    {kNuA,         0.8  },
    {kNuB,         0.33 },
    {kNuC,         0.023},
    {kNuLen,       1.0  },
    {kDivChk,      1e30 },
    {kNormOne,     0.995},
    {kAdvFlux,     1.0  },
};

constexpr std::array<int, ControlFile::EquationCount> defaultEquationFlags {1, 1, 0, 1, 0};

template <class Array>
auto& elementAt(Array& array, qint64 index)
{
    NEREO_ASSERT_INDEX(index, qint64(array.size()), "QList<T>::operator[]", "FileIO/ControlFile");
    return array[std::size_t(index)];
}

/// The element of a code in an array that starts with code 1.
template <class Array>
auto& elementOf(Array& array, int code)
{
    return elementAt(array, qint64(code) - 1);
}

template <class Array, class Value>
void fill(Array& array, int firstCode, int lastCode, const Value& value)
{
    std::fill(array.begin() + firstCode - 1, array.begin() + lastCode, value);
}

Util::Version versionIn(const QString& headerLine)
{
    const QString mark = QLatin1String(versionMark);
    const int found = headerLine.lastIndexOf(mark);
    return Util::Version(found < 0 ? headerLine : headerLine.mid(found + mark.size()));
}

} // namespace

ControlFile::ControlFile()
{
    setDefaults();
}

ControlFile::ControlFile(const ControlFile& other) = default;
ControlFile& ControlFile::operator=(const ControlFile& other) = default;
ControlFile::ControlFile(ControlFile&& other) noexcept = default;
ControlFile& ControlFile::operator=(ControlFile&& other) noexcept = default;
ControlFile::~ControlFile() = default;

ControlFile::Format ControlFile::format() const
{
    return format_;
}

void ControlFile::setFormat(Format format)
{
    format_ = format;
}

std::string ControlFile::headerLine1() const
{
    return Util::toStdString(headerLine1_);
}

void ControlFile::setHeaderLine1(const std::string& line)
{
    headerLine1_ = Util::toQString(line);
    setVersion(versionIn(headerLine1_));
}

std::string ControlFile::headerLine2() const
{
    return Util::toStdString(headerLine2_);
}

void ControlFile::setHeaderLine2(const std::string& line)
{
    headerLine2_ = Util::toQString(line);
}

std::string ControlFile::title() const
{
    return Util::toStdString(title_);
}

void ControlFile::setTitle(const std::string& title)
{
    title_ = Util::toQString(title);
}

int ControlFile::equationFlag(int index) const
{
    return elementAt(equationFlags_, index);
}

void ControlFile::setEquationFlag(int index, int value)
{
    elementAt(equationFlags_, index) = value;
}

int ControlFile::units() const
{
    return units_;
}

void ControlFile::setUnits(int units)
{
    units_ = units;
}

int ControlFile::transientForm() const
{
    return transientForm_;
}

void ControlFile::setTransientForm(int transientForm)
{
    transientForm_ = transientForm;
}

int ControlFile::numberOfTimeSteps() const
{
    return numberOfTimeSteps_;
}

void ControlFile::setNumberOfTimeSteps(int numberOfTimeSteps)
{
    numberOfTimeSteps_ = numberOfTimeSteps;
}

double ControlFile::timeStepSize() const
{
    return timeStepSize_;
}

void ControlFile::setTimeStepSize(double timeStepSize)
{
    timeStepSize_ = timeStepSize;
}

double ControlFile::stopTime() const
{
    return stopTime_;
}

void ControlFile::setStopTime(double stopTime)
{
    stopTime_ = stopTime;
}

SeqSolverType& ControlFile::sequentialSolver()
{
    return sequentialSolver_;
}

const SeqSolverType& ControlFile::sequentialSolver() const
{
    return sequentialSolver_;
}

PhiSolveType& ControlFile::phiSolve(int code)
{
    return elementOf(phiSolve_, code);
}

const PhiSolveType& ControlFile::phiSolve(int code) const
{
    return elementOf(phiSolve_, code);
}

double ControlFile::phiUnderRelax(int code) const
{
    return elementOf(phiUnderRelax_, code);
}

void ControlFile::setPhiUnderRelax(int code, double factor)
{
    elementOf(phiUnderRelax_, code) = factor;
}

double ControlFile::phiInertRelax(int code) const
{
    return elementOf(phiInertRelax_, code);
}

void ControlFile::setPhiInertRelax(int code, double factor)
{
    elementOf(phiInertRelax_, code) = factor;
}

bool ControlFile::isAutoConvOn() const
{
    return isAutoConvOn_;
}

void ControlFile::setAutoConvOn(bool on)
{
    isAutoConvOn_ = on;
}

bool ControlFile::isAutoStopOn() const
{
    return isAutoStopOn_;
}

void ControlFile::setAutoStopOn(bool on)
{
    isAutoStopOn_ = on;
}

AutoConvData& ControlFile::autoConvData()
{
    return autoConvData_;
}

const AutoConvData& ControlFile::autoConvData() const
{
    return autoConvData_;
}

MaterialDatabaseFile& ControlFile::materialDatabase()
{
    return materialDatabase_;
}

const MaterialDatabaseFile& ControlFile::materialDatabase() const
{
    return materialDatabase_;
}

void ControlFile::setMaterialDatabase(const MaterialDatabaseFile& materialDatabase)
{
    materialDatabase_ = materialDatabase;
}

double ControlFile::constant(int code) const
{
    return elementOf(constants_, code);
}

void ControlFile::setConstant(int code, double value)
{
    elementOf(constants_, code) = value;
}

double ControlFile::originalConstant(int code) const
{
    return elementOf(originalConstants_, code);
}

InflationData& ControlFile::inflationData()
{
    return inflationData_;
}

const InflationData& ControlFile::inflationData() const
{
    return inflationData_;
}

AutoYPlusData& ControlFile::autoYPlusData()
{
    return autoYPlusData_;
}

const AutoYPlusData& ControlFile::autoYPlusData() const
{
    return autoYPlusData_;
}

SmokeData& ControlFile::smokeData()
{
    return smokeData_;
}

const SmokeData& ControlFile::smokeData() const
{
    return smokeData_;
}

ThermalComfortData& ControlFile::thermalComfortData()
{
    return thermalComfortData_;
}

const ThermalComfortData& ControlFile::thermalComfortData() const
{
    return thermalComfortData_;
}

Flag& ControlFile::flag(int index)
{
    return elementAt(flags_, index);
}

const Flag& ControlFile::flag(int index) const
{
    return elementAt(flags_, index);
}

int ControlFile::flagCount() const
{
    return int(flags_.size());
}

int ControlFile::indexOfFlag(const std::string& name) const
{
    const QString wanted = toExactQString(name);
    if (Util::toStdString(wanted) != name) // bytes that no name has
        return -1;
    const auto found = std::find_if(flags_.begin(), flags_.end(),
                                    [&wanted](const Flag& flag) { return flag.name_ == wanted; });
    return found == flags_.end() ? -1 : int(found - flags_.begin());
}

void ControlFile::addFlag(const Flag& flag)
{
    flags_.push_back(flag);
}

void ControlFile::removeFlag(int index)
{
    NEREO_ASSERT_INDEX(index, flagCount(), "QList<T>::removeAt", "FileIO/ControlFile");
    flags_.erase(flags_.begin() + index);
}

void ControlFile::clearFlags()
{
    flags_.clear();
}

bool ControlFile::doLoadFrom(const std::string& path)
{
    return load<ControlFileTextReader>(path, *this);
}

bool ControlFile::doSaveTo(const std::string& path) const
{
    return save<ControlFileTextWriter>(path, *this);
}

void ControlFile::setDefaults()
{
    headerLine1_ = QStringLiteral("NEREO control file rev 07 %1 Ver %2")
                       .arg(QLatin1String(product), Util::Version::Current.toString());
    headerLine2_ = QStringLiteral("%1 (%2)").arg(QLatin1String(release), Util::Version::Branch());
    title_ = QStringLiteral("%1 control file settings").arg(QLatin1String(product));
    equationFlags_ = defaultEquationFlags;
    timeStepSize_ = 0.001;
    stopTime_ = -1.0;
    for (const auto& [firstCode, lastCode, settings] : solveDefaults)
        fill(phiSolve_, firstCode, lastCode, settings);
    for (const auto& [firstCode, lastCode, factor] : underRelaxationDefaults)
        fill(phiUnderRelax_, firstCode, lastCode, factor);
    isAutoConvOn_ = true;
    isAutoStopOn_ = true;
    for (const auto& [code, value] : constantDefaults)
        setConstant(code, value);
    originalConstants_ = constants_;
}

} // namespace Nereo::Io
