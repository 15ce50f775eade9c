#pragma once

#include "Damage.h"
#include "LoadWatch.h"
#include "SameContent.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

/// How a load must end, by the description of the format.
template <class FileKind>
struct ExpectedLoad {
    bool result = true;
    std::string exception; ///< what it says, where the load throws
    std::string stop;      ///< what is printed, where the load stops the process
    FileKind content;      ///< what the object holds afterwards, unless the process has stopped
};

/// Loads damaged files from the disk and compares each load with what it must be. Loads that must stop the
/// process run in a child of it, the others in this one, where a leak is found.
template <class FileKind>
class DamagedLoads {
public:
    explicit DamagedLoads(const std::string& suffix) : path_(folder_.path("damaged." + suffix)) {}

    /// The expected load is expectedLoad(bytes).
    template <class ExpectedLoadOf>
    void expect(const std::vector<DamagedFile>& files, ExpectedLoadOf expectedLoad)
    {
        for (const auto& [damage, bytes] : files) {
            SCOPED_TRACE(damage);
            std::remove(path_.c_str()); // some file systems take their time over a file that is truncated
            writeBytes(path_, bytes);
            const ExpectedLoad<FileKind> expected = expectedLoad(bytes);
            if (!expected.stop.empty()) {
                FileKind file;
                EXPECT_DEATH(load(file, damage), ::testing::HasSubstr(expected.stop));
                ++stopped_;
                continue;
            }
            FileKind actual;
            expectEnd(actual, expected, damage);
            expectSameContent(actual, expected.content);
            if (::testing::Test::HasFailure())
                return; // one of thousands says enough
        }
        ::testing::Test::RecordProperty("true", succeeded_);
        ::testing::Test::RecordProperty("false", failed_);
        ::testing::Test::RecordProperty("thrown", thrown_);
        ::testing::Test::RecordProperty("stopped", stopped_);
    }

private:
    bool load(FileKind& file, const std::string& damage)
    {
        const LoadWatch watch(damage);
        return file.loadFrom(path_);
    }

    void expectEnd(FileKind& file, const ExpectedLoad<FileKind>& expected, const std::string& damage)
    {
        try {
            const bool result = load(file, damage);
            EXPECT_EQ(result, expected.result);
            EXPECT_EQ(expected.exception, "");
            ++(result ? succeeded_ : failed_);
        } catch (const std::exception& error) {
            EXPECT_EQ(error.what(), expected.exception);
            ++thrown_;
        }
    }

    TemporaryFolder folder_;
    std::string path_;
    int succeeded_ = 0;
    int failed_ = 0;
    int thrown_ = 0;
    int stopped_ = 0;
};
