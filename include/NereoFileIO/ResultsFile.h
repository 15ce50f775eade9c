#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/File.h>
#include <NereoFileIO/ResultsLoadOptions.h>
#include <NereoFileIO/ResultsLoadResult.h>

#include <QList>
#include <QVector>

#include <map>
#include <string>

namespace Nereo::Io {

/// One snapshot of a solver run: run data and, for each stored field variable, one value per mesh node.
///
/// Fields are keyed by FieldVariable code, or by NodeFlag where the file names a flag. Each is a vector of
/// nodeCount() doubles in which entry n - 1 belongs to node number n; the values are as the solver wrote
/// them, in its units.
///
/// loadFrom() reads the solver's binary file in either byte order. It gives false only when the file can't be
/// opened; what a short file lacks reads as zero. Loading adds to what the object holds, so read each file
/// into a new one. Nothing is ever written: saveTo() gives true and touches no file, and neither does
/// saveWholeTo(), which gives NoWriter.
///
/// A file that contradicts itself stops the process: a field that is named twice, or is held already; a node
/// number outside 1 to nodeCount() where a field is known; a negative count of fields, or of nodes where a
/// field is known. A field of too many nodes for memory, or for a QVector (268 million), throws
/// std::bad_alloc out of loadFrom(). Each field that is named takes memory for the announced number of nodes,
/// whether or not the file holds them: a file of 400 bytes may announce gigabytes. Load files from strangers
/// with ResultsLoadOptions: that load keeps to a limit of memory, and says what is wrong with a file.
class NEREOFILEIO_EXPORT ResultsFile : public File {
public:
    ResultsFile();                         ///< no fields, all numbers zero, all texts empty
    ResultsFile(const ResultsFile& other); ///< shares the values of the fields until one side changes them
    ResultsFile& operator=(const ResultsFile& other);
    ResultsFile(ResultsFile&& other) noexcept;
    ResultsFile& operator=(ResultsFile&& other) noexcept;
    ~ResultsFile() override;

    using File::loadFrom;

    /// Replaces what this object holds by what the options say of the file. Whatever is in the file, this
    /// neither stops the process nor throws; only memory that runs out within the limit throws
    /// std::bad_alloc, and the progress function may throw. Unless the result is that something was loaded,
    /// the object stays what it was, filePath() included.
    ResultsLoadResult loadFrom(const std::string& path, const ResultsLoadOptions& options);

    std::string title() const;
    void setTitle(const std::string& title);

    /// Date and time of the snapshot in the solver's words.
    std::string dateTimeString() const;
    void setDateTimeString(const std::string& dateTimeString);

    /// The number of mesh nodes, and so of values in each field that is added from now on.
    int nodeCount() const;
    void setNodeCount(int nodeCount);

    int elementCount() const;
    void setElementCount(int elementCount);

    int startingIteration() const; ///< the first one of the run
    int currentIteration() const;  ///< that of the snapshot
    void setIterations(int starting, int current);

    int startingTimeStep() const; ///< the first one of the run
    int currentTimeStep() const;  ///< that of the snapshot
    void setTimeSteps(int starting, int current);

    double currentTime() const; ///< physical time of the snapshot
    void setCurrentTime(double currentTime);

    double timeStepSize() const;
    void setTimeStepSize(double timeStepSize);

    /// Adds a field of nodeCount() zeros. Stops the process when the code is already present, or nodeCount()
    /// is negative.
    void addFieldDataCode(int code);
    bool containsFieldData(int code) const;
    QList<int> fieldDataCodes() const; ///< ascending

    /// The values of a field, by node number less one; empty when there is no such field. The vector shares
    /// them with this object, so that asking costs no copy.
    QVector<double> fieldData(int code) const;

    /// Stores the value at a node, counted from 1. Stops the process when there is no such field, or no such
    /// node.
    void setFieldData(int code, int node, double value);

protected:
    bool doLoadFrom(const std::string& path) override;
    bool doSaveTo(const std::string& path) const override; ///< true; results are the solver's to write

private:
    friend class ResultsFileReader; // fills whole fields
    friend class ResultsFileLoad;   // likewise

    void requireNewField(int code) const; // and a number of nodes that a field can have
    void takeContent(ResultsFile& other);

    std::string dateTimeString_;
    std::string title_;
    int nodeCount_ = 0;
    int elementCount_ = 0;
    int startingIteration_ = 0;
    int currentIteration_ = 0;
    int startingTimeStep_ = 0;
    int currentTimeStep_ = 0;
    double currentTime_ = 0.0;
    double timeStepSize_ = 0.0;
    std::map<int, QVector<double>> fieldData_;
};

} // namespace Nereo::Io
