// Gives a target each of the files that the command line names: to see that what once was found stays mended,
// with any compiler.

#include <QFile>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool replay(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "can't be read: %s\n", qPrintable(path));
        return false;
    }
    std::printf("%s\n", qPrintable(path));
    std::fflush(stdout); // the last name is that of the input that stops the process
    const QByteArray bytes = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           std::size_t(bytes.size()));
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    bool isComplete = true;
    for (int i = 1; i < argc; ++i)
        isComplete = replay(QFile::decodeName(argv[i])) && isComplete;
    return isComplete ? 0 : 1;
}
