// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <osg/Referenced>

namespace vfBase {

/// A reference counted body without fields, for bodies that need no other base class.
class VFBASE_EXPORT RefObject : public osg::Referenced
{
public:
    RefObject() = default;

protected:
    ~RefObject() override;
};

} // namespace vfBase
