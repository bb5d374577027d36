// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/Vector.h>

#include <string>
#include <vector>

namespace vfApplication {

class UiOptionsPage;

/// The class names of the pages of the options dialog, in the order in which they were announced.
///
///     auto& pages = vfApplication::Registry::instance().getOptionsPageManager();
///     pages.addOptionsPageId("solar::ColorsPage");
///     vfBase::Vector<vfApplication::UiOptionsPage*> made = pages.createPages();  // the caller's to delete
///
/// Copies and assignment share one list, which each destructor frees: of managers that share a list, one only may be
/// destroyed. Names are added during the start, pages made on the thread of the user interface.
class VFAPPLICATION_EXPORT OptionsPageManager
{
public:
    OptionsPageManager();
    OptionsPageManager(const OptionsPageManager& other);

    /// The list that was here stays allocated for the process.
    OptionsPageManager& operator=(const OptionsPageManager& other);
    ~OptionsPageManager();

    /// Announces a page; twice gives two pages. @param id  the class, see ClassInfo; must not be null
    void addOptionsPageId(const char* id);

    /// Makes an object of any class, announced or not.
    /// @return the page, the caller's; null when the class is unknown or is not one of pages
    UiOptionsPage* createOptionsPage(const char* id) const;

    /// Makes the pages announced, in that order; the caller's, each time new ones. A class that is unknown or not one of
    /// pages is passed over; an object of the latter stays allocated for the process.
    vfBase::Vector<UiOptionsPage*> createPages() const;

private:
    std::vector<std::string>* ids;
};

} // namespace vfApplication
