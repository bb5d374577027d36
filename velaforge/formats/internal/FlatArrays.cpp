// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/FlatArrays.h>

#include <velaforge/formats/internal/FlatFields.h>
#include <velaforge/formats/internal/LargeArray.h>
#include <velaforge/formats/internal/LargeArrayOwner.h>

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace vfFormats {

namespace {

/// So much is copied from another process at once: it is still in the cache when it is put where it belongs.
constexpr std::size_t copiedAtOnce = std::size_t(128) * 1024;

/// Large arrays are written once, and not filled with zeros before.
template <class Array>
bool fill(osg::BufferData& data, std::size_t count, const FlatBytes& bytes)
{
    using Element = typename Array::value_type;
    auto& array = static_cast<Array&>(data);
    reserveLarge(array.asVector(), count);
    if (bytes.here) {
        const auto* elements = static_cast<const Element*>(bytes.here);
        array.insert(array.end(), elements, elements + count);
        return true;
    }
    std::vector<Element> some(std::min(copiedAtOnce / sizeof(Element), count));
    for (std::size_t done = 0; done < count; done += some.size()) {
        some.resize(std::min(some.size(), count - done));
        if (!bytes.copy(some.data(), done * sizeof(Element), some.size() * sizeof(Element)))
            return false;
        array.insert(array.end(), some.begin(), some.end());
    }
    return true;
}

template <class Array>
FlatArrayKind kind()
{
    return {&typeid(Array), sizeof(typename Array::value_type), std::is_base_of_v<osg::PrimitiveSet, Array>,
            [] { return osg::ref_ptr<osg::BufferData>(new Array); }, fill<Array>};
}

FlatArrayKind kindOfRanges()
{
    return {&typeid(osg::DrawArrays), 0, true,
            [] { return osg::ref_ptr<osg::BufferData>(new osg::DrawArrays); },
            [](osg::BufferData&, std::size_t, const FlatBytes&) { return true; }};
}

} // namespace

bool FlatBytes::copy(void* target, std::size_t offset, std::size_t size) const
{
    if (stop && *stop)
        return false;
    if (here) {
        std::memcpy(target, static_cast<const char*>(here) + offset, size);
        return true;
    }
    return owner && owner->copy && owner->copy(address + offset, target, size);
}

const std::vector<FlatArrayKind>& flatArrays()
{
    static const std::vector<FlatArrayKind> kinds = {kind<osg::Vec3Array>(),
                                                     kind<osg::Vec2Array>(),
                                                     kind<osg::Vec4Array>(),
                                                     kind<osg::Vec4ubArray>(),
                                                     kind<osg::Vec3dArray>(),
                                                     kind<osg::Vec2dArray>(),
                                                     kind<osg::Vec4dArray>(),
                                                     kind<osg::FloatArray>(),
                                                     kind<osg::DoubleArray>(),
                                                     kind<osg::ByteArray>(),
                                                     kind<osg::UByteArray>(),
                                                     kind<osg::ShortArray>(),
                                                     kind<osg::UShortArray>(),
                                                     kind<osg::IntArray>(),
                                                     kind<osg::UIntArray>(),
                                                     kind<osg::Vec2bArray>(),
                                                     kind<osg::Vec3bArray>(),
                                                     kind<osg::Vec4bArray>(),
                                                     kind<osg::Vec2ubArray>(),
                                                     kind<osg::Vec3ubArray>(),
                                                     kind<osg::Vec2sArray>(),
                                                     kind<osg::Vec3sArray>(),
                                                     kind<osg::Vec4sArray>(),
                                                     kind<osg::Vec2usArray>(),
                                                     kind<osg::Vec3usArray>(),
                                                     kind<osg::Vec4usArray>(),
                                                     kind<osg::Vec2iArray>(),
                                                     kind<osg::Vec3iArray>(),
                                                     kind<osg::Vec4iArray>(),
                                                     kind<osg::Vec2uiArray>(),
                                                     kind<osg::Vec3uiArray>(),
                                                     kind<osg::Vec4uiArray>(),
                                                     kind<osg::DrawElementsUInt>(),
                                                     kind<osg::DrawElementsUShort>(),
                                                     kind<osg::DrawElementsUByte>(),
                                                     kind<osg::DrawArrayLengths>(),
                                                     kindOfRanges()};
    return kinds;
}

std::size_t flatKindOf(const osg::BufferData& data)
{
    return findKind(flatArrays(), data);
}

} // namespace vfFormats
