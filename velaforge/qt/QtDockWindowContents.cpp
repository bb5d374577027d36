// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtDockWindowContents.h>

#include <map>
#include <string>

namespace vfApplication {

namespace {

std::map<std::string, QtDockWindowContents::Create>& creators()
{
    static std::map<std::string, QtDockWindowContents::Create> known;
    return known;
}

} // namespace

QtDockWindowContents::~QtDockWindowContents() = default;

void QtDockWindowContents::setContents(const char* id, Create create)
{
    creators()[id] = std::move(create);
}

QtDockWindowContents::Create QtDockWindowContents::findContents(const char* id)
{
    const auto found = creators().find(id);
    return found == creators().end() ? Create() : found->second;
}

} // namespace vfApplication
