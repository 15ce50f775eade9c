#pragma once

#include <QFile>

#include <gtest/gtest.h>

#include <string>

/// What stands in a file, byte for byte.
inline std::string readBytes(const std::string& path)
{
    QFile file(QString::fromStdString(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    return file.readAll().toStdString();
}

inline void writeBytes(const std::string& path, const std::string& bytes)
{
    QFile file(QString::fromStdString(path));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path;
    ASSERT_EQ(file.write(QByteArray::fromStdString(bytes)), qint64(bytes.size())) << path;
}
