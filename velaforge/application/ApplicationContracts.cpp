// SPDX-License-Identifier: MIT
// The default behaviour of the classes that toolkit sides and programs derive from.
#include <velaforge/application/ApplicationCallback.h>
#include <velaforge/application/ApplicationInterface.h>
#include <velaforge/application/ApplicationProducer.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/modules/MinimalUiSetup.h>

namespace vfApplication {

ApplicationInterface::~ApplicationInterface() = default;

void ApplicationInterface::removeFileFromFileSystemWatcher(vfBase::VfString) {}

ApplicationProducer* ApplicationProducer::Realizer = nullptr;

ApplicationProducer::~ApplicationProducer() = default;

void ApplicationProducer::destroy()
{
    if (!Realizer)
        return;
    int argc = 0;
    Realizer->create(nullptr, argc, nullptr, true);
}

void ApplicationCallback::onApplicationInterfaceCreated(Application*) {}

ApplicationSetup::~ApplicationSetup() = default;

const UiSetup& ApplicationSetup::getUiSetup() const
{
    static const MinimalUiSetup shared;
    return shared;
}

void ApplicationSetup::onRegisterDocumentType() const {}

} // namespace vfApplication
