// SPDX-License-Identifier: MIT
#include <velaforge/shell/OptionsPageManager.h>

#include <velaforge/base/CopyGroup.h>
#include <velaforge/base/LeakForProcess.h>
#include <velaforge/base/Registry_.h>
#include <velaforge/base/Require.h>
#include <velaforge/shell/UiOptionsPage.h>

#include <cstddef>
#include <memory>

namespace vfApplication {

OptionsPageManager::OptionsPageManager() : ids(new std::vector<std::string>)
{
    vfBase::CopyGroup::leave(this);
}

OptionsPageManager::OptionsPageManager(const OptionsPageManager& other) : ids(other.ids)
{
    vfBase::CopyGroup::join(this, &other);
}

OptionsPageManager& OptionsPageManager::operator=(const OptionsPageManager& other)
{
    if (ids == other.ids)
        return *this;
    vfBase::CopyGroup::join(this, &other);
    // By contract the former list is never deleted: other managers may share it.
    vfBase::leakForProcess(ids);
    ids = other.ids;
    return *this;
}

OptionsPageManager::~OptionsPageManager()
{
    if (vfBase::CopyGroup::end(this))
        delete ids;
}

void OptionsPageManager::addOptionsPageId(const char* id)
{
    VF_REQUIRE(id, "OptionsPageManager::addOptionsPageId", "the id is null");
    ids->emplace_back(id);
}

UiOptionsPage* OptionsPageManager::createOptionsPage(const char* id) const
{
    std::unique_ptr<vfBase::VfObject> object(vfBase::Registry_::instance().createType(id));
    auto* page = dynamic_cast<UiOptionsPage*>(object.get());
    if (page)
        static_cast<void>(object.release());
    return page;
}

vfBase::Vector<UiOptionsPage*> OptionsPageManager::createPages() const
{
    vfBase::Vector<UiOptionsPage*> pages;
    // By index and with a copy of the id: the constructor of a page may add further pages.
    for (std::size_t i = 0; i < ids->size(); ++i) {
        const std::string id = (*ids)[i];
        vfBase::VfObject* object = vfBase::Registry_::instance().createType(id.c_str());
        if (auto* page = dynamic_cast<UiOptionsPage*>(object))
            pages.append(page);
        else
            vfBase::leakForProcess(object); // never deleted, by contract
    }
    return pages;
}

} // namespace vfApplication
