// SPDX-License-Identifier: MIT
#include <velaforge/base/VfString.h>

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/StringList.h>

#include <ostream>

namespace vfBase {

namespace {

VfObject* createString()
{
    return new VfString;
}

} // namespace

const ClassInfo VfString::s_classInfo("vfBase", "VfString", VfString::classId(), &VfObject::s_classInfo,
                                      nullptr, static_cast<int>(sizeof(VfString)), &createString);

const ClassInfo* VfString::getClassInfo() const
{
    return &s_classInfo;
}

StringList VfString::split(char separator) const
{
    StringList pieces;
    std::size_t begin = 0;
    while (begin < m_text.size()) {
        std::size_t end = m_text.find(separator, begin);
        if (end == std::string::npos)
            end = m_text.size();
        if (end > begin)
            pieces.append(VfString(m_text.substr(begin, end - begin)));
        begin = end + 1;
    }
    return pieces;
}

const char* VfString::classId()
{
    return "vfBase::VfString";
}

std::ostream& operator<<(std::ostream& stream, const VfString& text)
{
    return stream << text.str();
}

} // namespace vfBase
