// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <osg/Image>
#include <osg/ref_ptr>

#include <cstddef>
#include <cstdint>

namespace vfFormats {

// What a transfer says of its arrays, images and lists: see SceneTransfer.h. Each is written as it lies in memory.

constexpr std::uint32_t mostMipmaps = 20;

/// Where bytes of a transfer are.
struct PlacePart
{
    std::uint64_t size = 0;
    std::uint64_t offset = 0;  ///< in the file
    std::uint64_t address = 0; ///< in the process that sent them; 0 for those that are in the file
};

/// An array, or primitives.
struct ArrayPart : PlacePart
{
    std::uint32_t kind = 0; ///< in flatArrays()
    std::uint32_t name = 0; ///< among the texts
    std::uint32_t variance = osg::Object::UNSPECIFIED;
    std::int32_t binding = 0;
    std::uint32_t isNormalized = 0;
    std::uint32_t isPreserved = 0; ///< the type of its numbers is to stay as it is
    std::uint32_t mode = 0;        ///< of primitives
    std::int32_t first = 0;        ///< of primitives that are a range, and how many
    std::int32_t count = 0;
    std::uint32_t unused = 0;
};

/// An image, with what its bytes mean.
struct ImagePart : PlacePart
{
    std::uint32_t name = 0; ///< among the texts
    std::uint32_t fileName = 0;
    std::uint32_t isTopFirst = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t depth = 0;
    std::int32_t internalFormat = 0;
    std::uint32_t pixelFormat = 0;
    std::uint32_t dataType = 0;
    std::uint32_t packing = 0;
    std::uint32_t variance = osg::Object::UNSPECIFIED;
    std::uint32_t mipmapCount = 0;
    std::uint32_t mipmaps[mostMipmaps] = {};
};

/// The size of a list of records.
struct ListPart
{
    std::uint32_t records = 0;
    std::uint32_t words = 0;
};

/// What stands at the end of the file.
struct Trailer
{
    static constexpr std::uint64_t expectedMagic = 0x76665363656e6533;

    std::uint64_t magic = expectedMagic;
    std::uint64_t textsAt = 0;  ///< why not, warnings, details, files; arrays and images stand before them
    std::uint64_t sceneAt = 0;  ///< texts of the scene, arrays, images, lists
    std::uint64_t hasScene = 0; ///< 0 for none
};

/// Fills in what the bytes of an image mean. @return false for an image that cannot be sent
VFFORMATS_EXPORT bool describe(const osg::Image& image, ImagePart& part);

/// Returns whether an image is of a kind that can be sent, and its levels lie one behind the other within its bytes.
VFFORMATS_EXPORT bool isValid(const ImagePart& part);

/// Returns whether an array is of a kind that can be sent, and what is said of it means something.
VFFORMATS_EXPORT bool isValid(const ArrayPart& part);

} // namespace vfFormats
