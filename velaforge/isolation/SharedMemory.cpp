// SPDX-License-Identifier: MIT
#include <velaforge/isolation/SharedMemory.h>

#include <fcntl.h>
#include <sys/mman.h>

namespace vfIsolation {

namespace {

constexpr int sizeSeals = F_SEAL_SHRINK | F_SEAL_GROW;
constexpr int contentSeals = sizeSeals | F_SEAL_WRITE | F_SEAL_SEAL;

} // namespace

int makeSharedMemory(const char* name)
{
    return memfd_create(name, MFD_CLOEXEC | MFD_ALLOW_SEALING);
}

bool sealSize(int file)
{
    return fcntl(file, F_ADD_SEALS, sizeSeals) == 0;
}

bool sealContents(int file)
{
    return fcntl(file, F_ADD_SEALS, contentSeals) == 0;
}

bool isSealed(int file)
{
    const int seals = fcntl(file, F_GET_SEALS);
    return seals >= 0 && (seals & (sizeSeals | F_SEAL_WRITE)) == (sizeSeals | F_SEAL_WRITE);
}

} // namespace vfIsolation
