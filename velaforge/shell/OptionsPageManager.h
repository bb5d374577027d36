// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/Vector.h>

#include <string>
#include <vector>

namespace vfApplication {

class UiOptionsPage;

/// Holds the class names of the pages of the options dialog, in the order in which they were added.
///
///     auto& pages = vfApplication::Registry::instance().getOptionsPageManager();
///     pages.addOptionsPageId("solar::ColorsPage");
///     vfBase::Vector<vfApplication::UiOptionsPage*> made = pages.createPages();  // owned by the caller
///
/// Copies share one list, which the first of them to be destroyed deletes; use none of the others after that. Add names
/// while the program starts; make pages on the thread of the user interface.
class VFAPPLICATION_EXPORT OptionsPageManager
{
public:
    /// Makes a manager with an empty list.
    OptionsPageManager();

    /// Shares the list of @p other.
    OptionsPageManager(const OptionsPageManager& other);

    /// Shares the list of @p other. The former list is never deleted.
    OptionsPageManager& operator=(const OptionsPageManager& other);
    ~OptionsPageManager();

    /// Adds a page: @p id is the name of its class, see vfBase::ClassInfo, and must not be null. A name added
    /// twice gives two pages.
    void addOptionsPageId(const char* id);

    /// Makes a page of the class @p id, whether it was added or not.
    /// @return the page, owned by the caller; null if the class is unknown or is no UiOptionsPage
    UiOptionsPage* createOptionsPage(const char* id) const;

    /// Makes a new page of each class added, in that order. Skips a class that is unknown or is no
    /// UiOptionsPage; an object of a class of the second kind is never deleted.
    /// @return the pages, owned by the caller
    vfBase::Vector<UiOptionsPage*> createPages() const;

private:
    std::vector<std::string>* ids;
};

} // namespace vfApplication
