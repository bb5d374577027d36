// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtApplicationProducer.h>

#include <velaforge/base/StandardDescriptors.h>
#include <velaforge/documents/DocManagerProducer.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtDocManager.h>
#include <velaforge/qt/internal/Docks.h>

namespace vfApplication {

namespace {

/// The library keeps the pointer until the process ends, so the shell is never destroyed: a later application begins with
/// it anew.
QtApplication* shell = nullptr;

struct ManagerProducer : DocManagerProducer
{
    DocManager* create() override { return new QtDocManager; }
};

} // namespace

QtApplicationProducer::~QtApplicationProducer() = default;

void QtApplicationProducer::install()
{
    vfBase::openStandardDescriptors();
    static QtApplicationProducer producer;
    static ManagerProducer managers;
    Realizer = &producer;
    DocManagerProducer::Realizer = &managers;
    Docks::install();
}

ApplicationInterface* QtApplicationProducer::create(Application*, int& argc, char** argv, bool destroy)
{
    if (!destroy && !shell)
        shell = new QtApplication(argc, argv);
    else if (destroy && shell)
        shell->end();
    return shell;
}

} // namespace vfApplication
