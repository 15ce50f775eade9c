#pragma once

#include <QIODevice>

#include <cstddef>
#include <cstring>
#include <memory>

namespace Nereo::Io {

/// Gathers what is written and puts it where it belongs in large pieces. Behind the first failure it takes no
/// more, so that nothing can be missing in the middle.
class GatheringDevice : public QIODevice {
public:
    GatheringDevice() : buffer_(new char[capacity]) {}

    bool isSequential() const override { return true; }

    bool flush()
    {
        const bool isWritten = putAll(buffer_.get(), used_);
        used_ = 0;
        return isWritten;
    }

protected:
    /// Puts some of the bytes, or all, and gives how many; none or less where that fails.
    virtual qint64 put(const char* data, qint64 size) = 0;

    qint64 readData(char*, qint64) override { return -1; }

    qint64 writeData(const char* data, qint64 size) override
    {
        if (size > capacity - used_ && !flush())
            return -1;
        if (size > capacity)
            return putAll(data, size) ? size : -1;
        if (hasFailed_)
            return -1;
        std::memcpy(buffer_.get() + used_, data, std::size_t(size));
        used_ += size;
        return size;
    }

private:
    static constexpr qint64 capacity = qint64(64) * 1024;

    bool putAll(const char* data, qint64 size)
    {
        while (!hasFailed_ && size > 0) {
            const qint64 count = put(data, size);
            hasFailed_ = count <= 0;
            data += count;
            size -= count;
        }
        return !hasFailed_;
    }

    std::unique_ptr<char[]> buffer_;
    qint64 used_ = 0;
    bool hasFailed_ = false;
};

} // namespace Nereo::Io
