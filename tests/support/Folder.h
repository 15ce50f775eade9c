#pragma once

#include <QDir>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <sys/stat.h>

/// What is in a folder, hidden files included, by name.
inline std::vector<std::string> namesIn(const std::string& folder)
{
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    std::vector<std::string> names;
    for (const QString& name : QDir(QString::fromStdString(folder)).entryList(all, QDir::Name))
        names.push_back(name.toStdString());
    return names;
}

/// That of a link itself.
inline struct stat statusOf(const std::string& path)
{
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status;
}

inline mode_t modeOf(const std::string& path)
{
    return statusOf(path).st_mode & mode_t(07777);
}
