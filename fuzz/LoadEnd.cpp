#include "LoadEnd.h"

#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/GbiFile.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoFileIO/ResultsFile.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <exception>

#include <sys/wait.h>
#include <unistd.h>

using namespace Nereo::Inspection;
using namespace Nereo::Io;

namespace {

template <class FileClass>
bool loads(const std::string& path)
{
    FileClass file;
    return file.loadFrom(path);
}

template <class FileClass>
bool loadsAndSaves(const std::string& path, const std::string& target)
{
    FileClass file;
    return file.loadFrom(path) && file.saveTo(target);
}

struct Class {
    FileKind kind;
    bool (*load)(const std::string& path);
    bool (*save)(const std::string& path, const std::string& target);
};

constexpr Class classes[] = {
    {FileKind::ConfigurationXml,  loads<Nereo2ConfigFile>,     loadsAndSaves<Nereo2ConfigFile>    },
    {FileKind::ConfigurationText, loads<Nereo2ConfigFile>,     loadsAndSaves<Nereo2ConfigFile>    },
    {FileKind::Control,           loads<ControlFile>,          loadsAndSaves<ControlFile>         },
    {FileKind::Materials,         loads<MaterialDatabaseFile>, loadsAndSaves<MaterialDatabaseFile>},
    {FileKind::GeometryBoundary,  loads<GbiFile>,              nullptr                            },
    {FileKind::Results,           loads<ResultsFile>,          nullptr                            },
};

const Class* classOf(FileKind kind)
{
    for (const Class& fileClass : classes) {
        if (fileClass.kind == kind)
            return &fileClass;
    }
    return nullptr;
}

} // namespace

Effect endOfLoad(const std::string& path, FileKind kind)
{
    try {
        return classOf(kind)->load(path) ? Effect::None : Effect::Fails;
    } catch (const std::exception&) {
        return Effect::Throws;
    }
}

Effect endOfLoadInAChild(const std::string& path, FileKind kind)
{
    const pid_t child = fork();
    if (child == 0) {
        std::fclose(stderr);
        std::signal(SIGABRT, SIG_DFL); // a fuzzer would make an exit of it
        _exit(int(endOfLoad(path, kind)));
    }
    int status = 0;
    while (waitpid(child, &status, 0) == -1 && errno == EINTR) // a fuzzer's timer interrupts it
        continue;
    return WIFEXITED(status) ? Effect(WEXITSTATUS(status)) : Effect::Stops;
}

Effect firstEnd(const std::vector<Finding>& findings)
{
    for (const Finding& finding : findings) {
        if (endsLoad(finding.effect))
            return finding.effect;
    }
    return Effect::None;
}

bool saveAgain(const std::string& path, FileKind kind, const std::string& target)
{
    const Class& fileClass = *classOf(kind);
    return fileClass.save != nullptr && fileClass.save(path, target);
}
