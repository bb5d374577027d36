// SPDX-License-Identifier: MIT
#include <velaforge/documents/DocManagerProducer.h>

namespace vfApplication {

DocManagerProducer* DocManagerProducer::Realizer = nullptr;

DocManagerProducer::~DocManagerProducer() = default;

} // namespace vfApplication
