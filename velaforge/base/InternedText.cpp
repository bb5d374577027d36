// SPDX-License-Identifier: MIT
#include <velaforge/base/InternedText.h>

#include <mutex>
#include <set>

namespace vfBase {

const char* internedText(const std::string& text)
{
    static std::mutex& mutex = *new std::mutex;
    static auto& texts = *new std::set<std::string>; // the elements of a set never move
    const std::lock_guard<std::mutex> guard(mutex);
    return texts.insert(text).first->c_str();
}

} // namespace vfBase
