// SPDX-License-Identifier: MIT
#include <velaforge/base/FileIdentity.h>

#include <sys/stat.h>

namespace vfBase {

FileIdentity FileIdentity::of(const std::string& path)
{
    FileIdentity identity;
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return identity;
    for (const long long number :
         {static_cast<long long>(status.st_dev), static_cast<long long>(status.st_ino),
          static_cast<long long>(status.st_size), static_cast<long long>(status.st_mtim.tv_sec),
          static_cast<long long>(status.st_mtim.tv_nsec)})
        identity.m_text += (identity.m_text.empty() ? "" : " ") + std::to_string(number);
    return identity;
}

FileIdentity FileIdentity::fromText(const std::string& text)
{
    FileIdentity identity;
    identity.m_text = text;
    return identity;
}

} // namespace vfBase
