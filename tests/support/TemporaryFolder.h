#pragma once

#include "Bytes.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

/// A folder of its own for a test, removed with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder() { EXPECT_TRUE(folder_.isValid()); }

    std::string path(const std::string& name = {}) const
    {
        return folder_.filePath(QString::fromStdString(name)).toStdString();
    }

    /// The path of a file that isn't there yet, or no more: some file systems take their time to replace one.
    std::string freshPath(const std::string& name) const
    {
        QFile::remove(folder_.filePath(QString::fromStdString(name)));
        return path(name);
    }

    /// Creates a file and gives its path.
    std::string write(const std::string& name, const std::string& bytes) const
    {
        writeBytes(path(name), bytes);
        return path(name);
    }

private:
    QTemporaryDir folder_;
};
