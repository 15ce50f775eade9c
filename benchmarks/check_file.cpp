// check_file load|check FILE [TIMES] loads or checks a file of any kind once, or so many times;
// check_file compare FILE OTHER compares it with another one.
// Prints the seconds and the growth of the process's memory at its peak in bytes.

#include "Memory.h"

#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoFileIO/ResultsFile.h>
#include <NereoInspection/Check.h>
#include <NereoInspection/Comparison.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

using namespace Nereo;

namespace {

template <class FileClass>
void load(const std::string& path)
{
    FileClass file;
    file.loadFrom(path);
}

void loadByKind(const std::string& path)
{
    using Inspection::FileKind;
    switch (Inspection::kindOfFile(path)) {
    case FileKind::ConfigurationXml:
    case FileKind::ConfigurationText:
        return load<Io::Nereo2ConfigFile>(path);
    case FileKind::Control:
        return load<Io::ControlFile>(path);
    case FileKind::Materials:
        return load<Io::MaterialDatabaseFile>(path);
    case FileKind::Results:
        return load<Io::ResultsFile>(path);
    default:
        std::fprintf(stderr, "There is no load of this kind of file\n");
    }
}

} // namespace

int main(int argc, char** argv)
{
    const std::string method = argc >= 3 ? argv[1] : "";
    const bool isOfTwo = method == "compare";
    if ((method != "load" && method != "check" && !isOfTwo) || argc < (isOfTwo ? 4 : 3)) {
        std::fprintf(stderr, "check_file load|check FILE [TIMES], or check_file compare FILE OTHER\n");
        return 2;
    }
    const int times = argc > 3 && !isOfTwo ? std::atoi(argv[3]) : 1;
    const double memoryBefore = memory("VmHWM:");
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < times; ++i) {
        if (method == "load")
            loadByKind(argv[2]);
        else if (method == "check")
            Inspection::check(argv[2]);
        else
            Inspection::compare(argv[2], argv[3]);
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("%.6f %.0f\n", seconds.count(), memory("VmHWM:") - memoryBefore);
}
