// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtApplicationProducer.h>

#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/internal/Docks.h>

#include <memory>

namespace vfApplication {

namespace {

std::unique_ptr<QtApplication>& shell()
{
    static std::unique_ptr<QtApplication> kept;
    return kept;
}

} // namespace

QtApplicationProducer::~QtApplicationProducer() = default;

void QtApplicationProducer::install()
{
    static QtApplicationProducer producer;
    Realizer = &producer;
    Docks::install();
}

ApplicationInterface* QtApplicationProducer::create(Application*, int& argc, char** argv, bool destroy)
{
    if (destroy)
        shell().reset();
    else
        shell() = std::make_unique<QtApplication>(argc, argv);
    return shell().get();
}

} // namespace vfApplication
