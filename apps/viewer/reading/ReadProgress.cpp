// SPDX-License-Identifier: MIT
#include "reading/ReadProgress.h"

#include "reading/ReaderProtocol.h"

#include <algorithm>
#include <new>

#include <sys/mman.h>

namespace vfViewer {

namespace {

ReadProgress* shared = nullptr;

void* map(int file, int access)
{
    void* page = mmap(nullptr, progressSize, access, MAP_SHARED, file, 0);
    return page == MAP_FAILED ? nullptr : page;
}

} // namespace

void ReadProgress::share(int file)
{
    void* page = map(file, PROT_READ | PROT_WRITE);
    shared = page ? new (page) ReadProgress : nullptr;
}

void ReadProgress::tell(Stage stage)
{
    if (shared)
        shared->stage = stage;
}

void ReadProgress::tell(std::uint64_t done, std::uint64_t all)
{
    if (shared && all > 0)
        shared->thousandths = static_cast<std::uint32_t>(std::min(done, all) * 1000 / all);
}

const ReadProgress* ReadProgress::watch(int file)
{
    return static_cast<const ReadProgress*>(map(file, PROT_READ));
}

void ReadProgress::letGo(const ReadProgress* progress)
{
    if (progress)
        munmap(const_cast<ReadProgress*>(progress), progressSize);
}

} // namespace vfViewer
