#pragma once

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <string>
#include <thread>

/// A named pipe that gives some bytes to the first who opens it, and then ends.
class Pipe {
public:
    Pipe(std::string path, std::string bytes) : path_(std::move(path))
    {
        std::signal(SIGPIPE, SIG_IGN); // who refuses the bytes need not read them all
        EXPECT_EQ(mkfifo(path_.c_str(), 0600), 0) << path_;
        writer_ = std::thread([path = path_, bytes = std::move(bytes)] { std::ofstream(path) << bytes; });
    }

    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    ~Pipe()
    {
        close(open(path_.c_str(), O_RDONLY | O_NONBLOCK)); // lets go of a writer whom nobody read
        writer_.join();
        unlink(path_.c_str());
    }

    const std::string& path() const { return path_; }

private:
    std::string path_;
    std::thread writer_;
};
