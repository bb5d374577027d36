// SPDX-License-Identifier: MIT
#include <velaforge/isolation/LentMemory.h>

#include <velaforge/isolation/internal/Launcher.h>

#include <cstdio>
#include <string>
#include <utility>

#include <sys/uio.h>
#include <unistd.h>

namespace vfIsolation {

LentMemory::LentMemory(std::shared_ptr<const HelperProcess> process) : m_process(std::move(process)) {}

LentMemory::~LentMemory() = default;

std::uint64_t LentMemory::size() const
{
    FILE* file = std::fopen(("/proc/" + std::to_string(m_process->process) + "/statm").c_str(), "re");
    unsigned long pages = 0;
    if (file) {
        if (std::fscanf(file, "%lu", &pages) != 1)
            pages = 0;
        std::fclose(file);
    }
    return std::uint64_t(pages) * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

bool LentMemory::copy(std::uint64_t address, void* to, std::size_t size) const
{
    auto* at = static_cast<char*>(to);
    while (size > 0) {
        const iovec here = {at, size};
        // NOLINTNEXTLINE(performance-no-int-to-ptr): it is none in this process
        const iovec there = {reinterpret_cast<void*>(address), size};
        const ssize_t taken = process_vm_readv(m_process->process, &here, 1, &there, 1, 0);
        if (taken <= 0)
            return false;
        at += taken;
        address += static_cast<std::uint64_t>(taken);
        size -= static_cast<std::size_t>(taken);
    }
    return true;
}

} // namespace vfIsolation
