#pragma once

#include <QIODevice>

#include <algorithm>
#include <cstring>

/// A device that gives some bytes and then fails every read, while it goes on to say that there is more: the
/// way a file behaves on a disk or a network share that has gone.
class FailingDevice : public QIODevice {
public:
    explicit FailingDevice(QByteArray readable) : readable_(std::move(readable))
    {
        open(QIODevice::ReadOnly);
    }

    qint64 size() const override { return readable_.size() + 1000; }

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        const qint64 count = std::min(maxSize, readable_.size() - position_);
        if (count <= 0)
            return -1;
        std::memcpy(data, readable_.constData() + position_, std::size_t(count));
        position_ += count;
        return count;
    }

    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray readable_;
    qint64 position_ = 0;
};
