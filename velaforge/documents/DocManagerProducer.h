// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class DocManager;

/// Makes the document manager that Application has from its construction on.
///
/// A toolkit side derives from it, makes one and stores it in Realizer before the application is constructed.
/// The templates of ApplicationSetup::onRegisterDocumentType then belong to the toolkit side's manager. This
/// library neither assigns nor deletes a producer.
struct VFAPPLICATION_EXPORT DocManagerProducer
{
    /// The producer in use. If it is null, as until a toolkit side sets it, the application makes a plain
    /// DocManager.
    static DocManagerProducer* Realizer;

    /// Makes a manager, while Application::instance is still null.
    /// @return the new manager, which the application owns; never null
    virtual DocManager* create() = 0;

protected:
    virtual ~DocManagerProducer();
};

} // namespace vfApplication
