// SPDX-License-Identifier: MIT
#include <velaforge/base/VfVariant.h>

namespace vfBase {

VfVariantPrivate::~VfVariantPrivate() = default;

VfVariant::VfVariant(const Referenced& other)
    : Referenced(dynamic_cast<VfVariantPrivate*>(other.getImp()), true)
{}

void VfVariant::setImp(const Referenced& other)
{
    *this = VfVariant(other);
}

} // namespace vfBase
