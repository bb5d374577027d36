// SPDX-License-Identifier: MIT
#include <velaforge/isolation/internal/Protocol.h>

#include <velaforge/base/Version.h>

#include <cstring>

#include <link.h>

namespace vfIsolation {

namespace {

std::string hexadecimal(const unsigned char* bytes, std::size_t size)
{
    constexpr const char* digits = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < size; ++i) {
        text += digits[bytes[i] / 16];
        text += digits[bytes[i] % 16];
    }
    return text;
}

/// Looks for the identity that the linker gave this library, in its notes.
int findNote(dl_phdr_info* info, std::size_t, void* found)
{
    const auto here = reinterpret_cast<ElfW(Addr)>(&buildId);
    bool isThis = false;
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const ElfW(Phdr)& part = info->dlpi_phdr[i];
        const ElfW(Addr) begin = info->dlpi_addr + part.p_vaddr;
        isThis = isThis || (part.p_type == PT_LOAD && here >= begin && here < begin + part.p_memsz);
    }
    for (int i = 0; isThis && i < info->dlpi_phnum; ++i) {
        const ElfW(Phdr)& notes = info->dlpi_phdr[i];
        if (notes.p_type != PT_NOTE)
            continue;
        const auto* at = reinterpret_cast<const unsigned char*>(info->dlpi_addr + notes.p_vaddr);
        const unsigned char* end = at + notes.p_memsz;
        while (end - at > static_cast<std::ptrdiff_t>(sizeof(ElfW(Nhdr)))) {
            ElfW(Nhdr) note;
            std::memcpy(&note, at, sizeof(note));
            const unsigned char* name = at + sizeof(note);
            const unsigned char* contents = name + (note.n_namesz + 3) / 4 * 4;
            if (note.n_type == NT_GNU_BUILD_ID && note.n_namesz == 4 && !std::memcmp(name, "GNU", 4)) {
                *static_cast<std::string*>(found) = hexadecimal(contents, note.n_descsz);
                return 1;
            }
            at = contents + (note.n_descsz + 3) / 4 * 4;
        }
    }
    return isThis ? 1 : 0;
}

std::string findBuildId()
{
    std::string id;
    dl_iterate_phdr(findNote, &id);
    return id.empty() ? vfBase::getVersion() : id.substr(0, sizeof(TaskRequest::build) - 1);
}

} // namespace

const std::string& buildId()
{
    // Never destroyed: threads of jobs may use it while the program ends.
    static const std::string& id = *new std::string(findBuildId());
    return id;
}

} // namespace vfIsolation
