// Says what is wrong with the files of a case, which lie in a folder of their own: check_folder FOLDER

#include <NereoInspection/Check.h>

#include <filesystem>
#include <iostream>
#include <set>

using namespace Nereo::Inspection;

int main(int argc, char** argv)
{
    std::error_code problem;
    std::set<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(argc == 2 ? argv[1] : "", problem)) {
        if (!entry.is_directory())
            paths.insert(entry.path().string());
    }
    if (problem) {
        std::cerr << "usage: check_folder FOLDER\n";
        return 2;
    }
    bool hasErrors = false;
    for (const CheckedFile& file : checkCase({paths.begin(), paths.end()})) {
        for (const Finding& finding : file.findings) {
            if (finding.code == "unknown-kind")
                continue; // other files lie in such a folder, too
            std::cout << findingLine(file.file, finding).toStdString() << '\n';
            hasErrors = hasErrors || finding.severity == Severity::Error;
        }
    }
    return hasErrors ? 1 : 0;
}
