// SPDX-License-Identifier: MIT
// A program for what can be seen only at the beginning or the end of one.
//
//     services_program late-warning
//         warns from a static destructor and prints on standard output what the monitor kept
//     services_program descriptors <file>
//         opens the standard descriptors, then writes into <file> which of them lead to /dev/null, whether the
//         next file gets a number of its own, and how many bytes standard input gives

#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/StandardDescriptors.h>

#include <osg/Notify>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isLateWarningWanted = false;

struct LastOfAll
{
    ~LastOfAll()
    {
        if (!isLateWarningWanted)
            return;
        osg::notify(osg::WARN) << "a late warning, long enough to be allocated on the heap" << std::endl;
        const vfBase::StringList kept = vfBase::getMonitorMessages();
        std::printf("%u %s\n", kept.size(),
                    vfBase::NotifyHandler::instance().isNotifyEnabled() ? "on" : "off");
        for (unsigned int i = 0; i < kept.size(); ++i)
            std::printf("%s\n", kept.get(i).c_str());
    }
};

// Constructed before anything that main() uses, and so destroyed after it.
const LastOfAll lastOfAll;

bool isNowhere(int descriptor)
{
    struct stat status;
    struct stat nowhere;
    return fstat(descriptor, &status) == 0 && stat("/dev/null", &nowhere) == 0 &&
           status.st_rdev == nowhere.st_rdev && status.st_ino == nowhere.st_ino;
}

int reportDescriptors(const char* path)
{
    const bool opened = vfBase::openStandardDescriptors();
    const int next = open("/", O_RDONLY | O_CLOEXEC);
    std::ofstream report(path);
    report << (opened ? "opened" : "failed");
    for (int stream = 0; stream < 3; ++stream)
        report << (isNowhere(stream) ? " nowhere" : " kept");
    char byte = 0;
    report << " next " << (next > 2 ? "free" : "taken") << " read " << read(0, &byte, 1) << '\n';
    return report ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && std::strcmp(argv[1], "descriptors") == 0)
        return reportDescriptors(argv[2]);
    vfBase::NotifyHandler::instance().install();
    isLateWarningWanted = true;
    for (int i = 0; i < 5; ++i)
        osg::notify(osg::WARN) << "an early warning, long enough to be allocated on the heap" << std::endl;
    return 0;
}
