// SPDX-License-Identifier: MIT
// fuzz <target> [--seeds <directory>] [arguments of libFuzzer]
//
// Searches for bytes with which a target ends badly. With --seeds it only writes what the target should take, a file each.
#include "fuzz/FuzzTargets.h"

#include <velaforge/base/NotifyHandler.h>

#include <osg/Notify>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* bytes, std::size_t size, std::size_t most);

namespace {

const vfTest::FuzzTarget* target = nullptr;

void writeSeeds(const std::string& directory)
{
    std::size_t number = 0;
    for (const std::string& seed : target->seeds())
        std::ofstream(directory + "/seed" + std::to_string(number++), std::ios::binary) << seed;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    // libFuzzer starts the program anew for some of its work, without the name.
    constexpr const char* variable = "VELAFORGE_FUZZ_TARGET";
    target = *argc > 1 ? vfTest::fuzzTarget((*argv)[1]) : nullptr;
    const bool isNamed = target != nullptr;
    if (!isNamed && std::getenv(variable))
        target = vfTest::fuzzTarget(std::getenv(variable));
    if (!target) {
        std::fputs("fuzz <target> [--seeds <directory>] [arguments of libFuzzer]; the targets are:\n",
                   stderr);
        for (const vfTest::FuzzTarget& one : vfTest::fuzzTargets())
            std::fprintf(stderr, "  %s\n", one.name);
        std::exit(1);
    }
    osg::setNotifyLevel(osg::ALWAYS);
    setenv(variable, target->name, 1);
    if (*argc == 4 && !std::strcmp((*argv)[2], "--seeds")) {
        writeSeeds((*argv)[3]);
        std::exit(0);
    }
    // libFuzzer takes what begins without a dash for a directory.
    if (isNamed) {
        (*argv)[1] = (*argv)[0];
        ++*argv;
        --*argc;
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    target->run(bytes, size);
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t size, std::size_t most,
                                               unsigned int seed)
{
    const bool isOwn = target->mutate && seed % 4 != 0;
    const std::size_t mutated = isOwn ? target->mutate(bytes, size, seed) : 0;
    return mutated > 0 ? mutated : LLVMFuzzerMutate(bytes, size, most);
}
