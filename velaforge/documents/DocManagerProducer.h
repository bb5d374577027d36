// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class DocManager;

/// Makes the document manager that an application has from the start. A toolkit side installs one, so that the templates
/// of ApplicationSetup::onRegisterDocumentType belong to a manager of that side without a word of the program;
/// Application::setDocManager replaces it.
struct VFAPPLICATION_EXPORT DocManagerProducer
{
    /// Null unless a toolkit side sets it; the application makes a plain DocManager then.
    static DocManagerProducer* Realizer;

    /// @return a new manager, which the application owns; never null. There is no Application::instance yet.
    virtual DocManager* create() = 0;

protected:
    virtual ~DocManagerProducer();
};

} // namespace vfApplication
