#pragma once

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>
#include <cstddef>

/// While it lives, no file of this process can grow beyond a size.
class FileSizeLimit {
public:
    explicit FileSizeLimit(std::size_t bytes) : signalHandler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signalHandler_);
    }

private:
    rlimit before_;
    void (*signalHandler_)(int);
};
