// SPDX-License-Identifier: MIT
#include <velaforge/headless/HeadlessApplicationProducer.h>

#include <velaforge/headless/HeadlessApplication.h>
#include <velaforge/headless/HeadlessDockWindowProducer.h>

#include <memory>

namespace vfApplication {

namespace {

std::unique_ptr<HeadlessApplication>& shell()
{
    static std::unique_ptr<HeadlessApplication> kept;
    return kept;
}

} // namespace

HeadlessApplicationProducer::~HeadlessApplicationProducer() = default;

void HeadlessApplicationProducer::install()
{
    static HeadlessApplicationProducer producer;
    Realizer = &producer;
    HeadlessDockWindowProducer::install();
}

ApplicationInterface* HeadlessApplicationProducer::create(Application*, int&, char**, bool destroy)
{
    if (destroy)
        shell().reset();
    else
        shell() = std::make_unique<HeadlessApplication>();
    return shell().get();
}

} // namespace vfApplication
