// SPDX-License-Identifier: MIT
#include <velaforge/toolkit/CommandNames.h>

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Registry_.h>
#include <velaforge/commands/Command.h>

#include <osgDB/FileNameUtils>

#include <algorithm>
#include <numeric>
#include <string>

namespace vfApplication {

namespace {

/// Returns the edit distance: the number of characters to insert, remove or replace to turn one text into the
/// other.
std::size_t distance(const std::string& from, const std::string& to)
{
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0u);
    for (std::size_t i = 1; i <= from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i - 1] != to[j - 1]);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
        }
    }
    return row.back();
}

std::string withoutNamespace(const std::string& name)
{
    const std::size_t colons = name.rfind("::");
    return colons == std::string::npos ? name : name.substr(colons + 2);
}

/// Returns whether a command of that name can be made; false if its constructor throws.
bool canBeMade(const char* name)
{
    try {
        return Command::getCommandByName(name).isValid();
    } catch (...) {
        return false;
    }
}

} // namespace

std::vector<vfBase::VfString> commandNames()
{
    std::vector<vfBase::VfString> names;
    const vfBase::ClassInfo* root = vfBase::Registry_::instance().findClass("vfApplication::CommandPrivate");
    for (const vfBase::ClassInfo* record : vfBase::Registry_::instance().getClasses()) {
        if (record != root && record->isDerivedFrom(root) && canBeMade(record->getClassId()))
            names.emplace_back(record->getClassId());
    }
    return names;
}

vfBase::VfString nearestName(const vfBase::VfString& name, const std::vector<vfBase::VfString>& names)
{
    constexpr std::size_t longest = 200; // longer names are no typing mistakes
    const std::string wanted = osgDB::convertToLowerCase(name.str().substr(0, longest));
    const bool isQualified = wanted.find("::") != std::string::npos;
    vfBase::VfString nearest;
    std::size_t fewest = std::string::npos;
    for (const vfBase::VfString& candidate : names) {
        const std::string text = isQualified ? candidate.str() : withoutNamespace(candidate.str());
        const std::size_t changes = distance(wanted, osgDB::convertToLowerCase(text));
        if (changes < fewest) {
            fewest = changes;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace vfApplication
