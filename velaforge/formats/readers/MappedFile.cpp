// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/MappedFile.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vfFormats {

MappedFile::MappedFile(const std::string& path, Wanted wanted)
{
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0)
        return;
    struct stat status;
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
        const auto size = static_cast<std::size_t>(status.st_size);
        const int pages = wanted == Wanted::Whole ? MAP_POPULATE : 0;
        void* data = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | pages, file, 0);
        if (data != MAP_FAILED)
            m_text = {static_cast<const char*>(data), size};
    }
    close(file);
}

MappedFile::~MappedFile()
{
    if (!m_text.empty())
        munmap(const_cast<char*>(m_text.data()), m_text.size());
}

} // namespace vfFormats
