// save_conditions METHOD COUNT FILE: saves a file with so many boundary conditions of two extra values each,
// and prints the seconds, the growth of the process's memory at its peak in bytes, and the size of the file.
//
// The methods: the library; what a plain C program does, fprintf with %g; and a text stream for each item.

#include "Memory.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/GbiFile.h>

#include <QFile>
#include <QTextStream>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

using namespace Nereo::Io;

namespace {

GbiFile fileWith(int count)
{
    constexpr int codes[] = {1, 4, 5, 20, 27};
    GbiFile file;
    for (int i = 0; i < count; ++i) {
        BoundaryCondition condition(codes[i % 5]);
        condition.setEntityId(i + 1);
        condition.setValue(i * 0.001);
        condition.addExtraValue(293.15 + i * 1e-5);
        condition.addExtraValue(1.0 / (i + 1));
        condition.setTimeCurveId(i % 3 - 1);
        file.addSurfaceBoundaryCondition(condition);
    }
    return file;
}

void saveWithLibrary(const GbiFile& file, const std::string& path)
{
    file.saveTo(path);
}

/// The names are ready at hand, as a C program would have them.
void saveWithPrintf(const GbiFile& file, const std::string& path)
{
    std::string names[kNone + 1];
    for (int code = 0; code <= kNone; ++code)
        names[code] = CodeNameTable::instance().nameForCode(code, true).toStdString();
    std::FILE* const out = std::fopen(path.c_str(), "w");
    for (int i = 0; i < file.surfaceBoundaryConditionCount(); ++i) {
        const BoundaryCondition& condition = file.surfaceBoundaryCondition(i);
        std::fprintf(out, "%d %s %g %g %g %d %d\n", condition.entityId(), names[condition.kCode()].c_str(),
                     condition.value(), condition.extraValue(0), condition.extraValue(1),
                     condition.timeCurveFlag(), condition.timeCurveId());
    }
    std::fclose(out);
}

void saveWithStream(const GbiFile& file, const std::string& path)
{
    QFile device(QString::fromStdString(path));
    device.open(QIODevice::WriteOnly | QIODevice::Text);
    QTextStream out(&device);
    out.setCodec("UTF-8");
    for (int i = 0; i < file.surfaceBoundaryConditionCount(); ++i) {
        const BoundaryCondition& condition = file.surfaceBoundaryCondition(i);
        out << condition.entityId() << ' ' << CodeNameTable::instance().nameForCode(condition.kCode(), true)
            << ' ' << condition.value() << ' ' << condition.extraValue(0) << ' ' << condition.extraValue(1)
            << ' ' << condition.timeCurveFlag() << ' ' << condition.timeCurveId() << '\n';
    }
}

} // namespace

int main(int argc, char** argv)
{
    const std::string method = argc == 4 ? argv[1] : "";
    const auto save = method == "library" ? saveWithLibrary
        : method == "printf"              ? saveWithPrintf
        : method == "stream"              ? saveWithStream
                                          : nullptr;
    if (save == nullptr) {
        std::fprintf(stderr, "usage: save_conditions library|printf|stream COUNT FILE\n");
        return 2;
    }
    const GbiFile file = fileWith(std::atoi(argv[2]));
    CodeNameTable::instance();
    const double memoryBefore = memory("VmHWM:");
    const auto start = std::chrono::steady_clock::now();
    save(file, argv[3]);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    std::printf("%.6f %.0f %ju\n", time.count(), memory("VmHWM:") - memoryBefore,
                std::uintmax_t(std::filesystem::file_size(argv[3])));
    return 0;
}
