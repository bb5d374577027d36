// SPDX-License-Identifier: MIT
#include <velaforge/headless/HeadlessApplicationProducer.h>

#include <velaforge/base/StandardDescriptors.h>
#include <velaforge/documents/DocManagerProducer.h>
#include <velaforge/headless/HeadlessApplication.h>
#include <velaforge/headless/HeadlessDocManager.h>
#include <velaforge/headless/HeadlessDockWindowProducer.h>

namespace vfApplication {

namespace {

/// Never destroyed: the library keeps the pointer until the process ends, and a later application uses the
/// same shell.
HeadlessApplication* shell = nullptr;

struct ManagerProducer : DocManagerProducer
{
    DocManager* create() override { return new HeadlessDocManager; }
};

} // namespace

HeadlessApplicationProducer::~HeadlessApplicationProducer() = default;

void HeadlessApplicationProducer::install()
{
    vfBase::openStandardDescriptors();
    static HeadlessApplicationProducer producer;
    static ManagerProducer managers;
    Realizer = &producer;
    DocManagerProducer::Realizer = &managers;
    HeadlessDockWindowProducer::install();
}

ApplicationInterface* HeadlessApplicationProducer::create(Application*, int&, char**, bool destroy)
{
    if (destroy) {
        HeadlessApplication::forgetOptions();
        if (shell)
            shell->reset();
    } else if (!shell) {
        shell = new HeadlessApplication;
    }
    return shell;
}

} // namespace vfApplication
