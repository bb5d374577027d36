// SPDX-License-Identifier: MIT
#include <velaforge/base/RefObject.h>

namespace vfBase {

RefObject::~RefObject() = default;

} // namespace vfBase
