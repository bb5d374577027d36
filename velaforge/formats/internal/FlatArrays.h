// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <osg/Array>
#include <osg/PrimitiveSet>
#include <osg/ref_ptr>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <typeinfo>
#include <vector>

namespace vfFormats {

struct LargeArrayOwner;

/// Where the elements of an array come from: bytes of this process, or those that another one has.
struct VFFORMATS_EXPORT FlatBytes
{
    const void* here = nullptr;
    const LargeArrayOwner* owner = nullptr;  ///< who has them, when they are not here
    std::uint64_t address = 0;               ///< there
    const std::atomic<bool>* stop = nullptr; ///< when it becomes true, copying fails

    /// Copies some of them. @return false when they are not there, or the copying is to stop
    bool copy(void* target, std::size_t offset, std::size_t size) const;
};

/// A class of arrays, indices, or primitives.
struct VFFORMATS_EXPORT FlatArrayKind
{
    const std::type_info* type;
    std::size_t elementSize; ///< in bytes; 0 for primitives without elements
    bool isPrimitives;
    osg::ref_ptr<osg::BufferData> (*make)();
    /// Appends elements to an empty one. @return false when they are not there
    bool (*fill)(osg::BufferData& data, std::size_t count, const FlatBytes& bytes);
};

/// The classes that are sent from one process to another. The number of one is its place in the list.
VFFORMATS_EXPORT const std::vector<FlatArrayKind>& flatArrays();

/// @return the number of the class; the size of the list when it is not in it
VFFORMATS_EXPORT std::size_t flatKindOf(const osg::BufferData& data);

} // namespace vfFormats
