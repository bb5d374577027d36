// SPDX-License-Identifier: MIT
// Part of each library and program of the coverage preset. Writes what was counted also where a process ends by _exit(),
// _Exit() or abort(), which the linker leads here: children of a fork end so, and would not be counted. The files of counts
// can be written by all users, since some of these children become another one.
#include <algorithm>
#include <iterator>

extern "C" {
#include <gcov.h>
}
#include <sys/stat.h>

/// The functions that write the counts, one of each library and program in the process: each writes its own only.
/// The libraries share the first of these arrays that was loaded.
__attribute__((weak, visibility("default"))) void (*velaforgeCoverageWriters[256])();

namespace {

struct Registration
{
    Registration() { replace(nullptr, __gcov_dump); }
    ~Registration()
    {
        replace(__gcov_dump, nullptr);
        umask(0); // for what is written after this
    }

    static void replace(void (*old)(), void (*writer)())
    {
        *std::find(std::begin(velaforgeCoverageWriters), std::end(velaforgeCoverageWriters) - 1, old) =
            writer;
    }
};

const Registration registration;

void writeAll()
{
    umask(0);
    for (auto* write : velaforgeCoverageWriters) {
        if (write)
            write();
    }
}

} // namespace

extern "C" {

[[noreturn]] void __real__exit(int status);
[[noreturn]] void __real_abort();

[[noreturn]] void __wrap__exit(int status)
{
    writeAll();
    __real__exit(status);
}

[[noreturn]] void __wrap__Exit(int status)
{
    __wrap__exit(status);
}

[[noreturn]] void __wrap_abort()
{
    writeAll();
    __real_abort();
}

} // extern "C"
