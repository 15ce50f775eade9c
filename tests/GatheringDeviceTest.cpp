#include "FileIO/GatheringDevice.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Nereo::Io {
namespace {

/// Takes so many bytes, a few at a time.
class LimitedDevice : public GatheringDevice {
public:
    explicit LimitedDevice(int room) : room_(room) { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }

    using GatheringDevice::readData;

    QByteArray taken;
    int timesAsked = 0;

protected:
    qint64 put(const char* data, qint64 size) override
    {
        ++timesAsked;
        const int count = int(std::min({size, qint64(room_ - taken.size()), qint64(100'000)}));
        taken.append(data, count);
        return count;
    }

private:
    int room_;
};

QByteArray bytesOf(int count)
{
    QByteArray bytes(count, Qt::Uninitialized);
    for (int i = 0; i < count; ++i)
        bytes[i] = char(i % 251);
    return bytes;
}

constexpr int lots = 1'000'000;

TEST(GatheringDevice, PutsWhatItGathersInLargePieces)
{
    LimitedDevice device(lots);
    const QByteArray bytes = bytesOf(150'000);
    for (const char byte : bytes)
        ASSERT_EQ(device.write(&byte, 1), 1);
    EXPECT_EQ(device.timesAsked, 2);
    EXPECT_TRUE(device.flush());
    EXPECT_EQ(device.taken, bytes);
    EXPECT_EQ(device.timesAsked, 3);
}

TEST(GatheringDevice, HandsOnAtOnceWhatIsLargerThanItself)
{
    LimitedDevice device(lots);
    const QByteArray bytes = bytesOf(250'000);
    EXPECT_EQ(device.write(bytes.left(10)), 10);
    EXPECT_EQ(device.write(bytes.mid(10)), bytes.size() - 10);
    EXPECT_EQ(device.taken, bytes);
}

TEST(GatheringDevice, TakesNoMoreBehindAFailure)
{
    LimitedDevice device(70'000);
    const QByteArray bytes = bytesOf(60'000);
    EXPECT_EQ(device.write(bytes), bytes.size());
    EXPECT_EQ(device.write(bytes), bytes.size()); // the first have been put, these are gathered
    EXPECT_EQ(device.write(bytes), -1);
    const int timesAsked = device.timesAsked;
    EXPECT_EQ(device.write("x"), -1);
    EXPECT_EQ(device.write(bytesOf(100'000)), -1);
    EXPECT_FALSE(device.flush());
    EXPECT_EQ(device.timesAsked, timesAsked);
    EXPECT_EQ(device.taken, bytes + bytes.left(10'000));
}

TEST(GatheringDevice, SaysWhenALargePieceFindsNoRoom)
{
    LimitedDevice device(250'000);
    const QByteArray bytes = bytesOf(250'001);
    EXPECT_EQ(device.write(bytes), -1);
    EXPECT_EQ(device.taken, bytes.left(250'000));
}

TEST(GatheringDevice, GivesNothing)
{
    char byte;
    EXPECT_EQ(LimitedDevice(lots).readData(&byte, 1), -1);
}

} // namespace
} // namespace Nereo::Io
