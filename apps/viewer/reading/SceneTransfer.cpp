// SPDX-License-Identifier: MIT
#include "reading/SceneTransfer.h"

#include "reading/FileGate.h"
#include "reading/LargeArray.h"
#include "reading/PassiveScene.h"
#include "reading/SceneBlocks.h"
#include "reading/SideBySide.h"
#include "reading/SoundScene.h"
#include "reading/TransferBytes.h"

#include <velaforge/isolation/SharedMemory.h>

#include <osg/Geometry>
#include <osgDB/Registry>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <istream>
#include <new>
#include <set>
#include <sstream>
#include <streambuf>

#include <sys/uio.h>
#include <unistd.h>

namespace vfViewer {

/// An array or an image of a transfer.
struct SceneSender::Part
{
    std::uint64_t index = 0;   ///< among the arrays, or among the images, in the order of FindBlocks
    std::uint64_t size = 0;    ///< in bytes
    std::uint64_t offset = 0;  ///< in the file
    std::uint64_t address = 0; ///< in the process that sent it; 0 for one that is in the file
};

namespace {

using Part = SceneSender::Part;

constexpr std::uint32_t mostMipmaps = 20;

/// An image, with what its bytes mean.
struct ImagePart : Part
{
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t depth = 0;
    std::int32_t internalFormat = 0;
    std::uint32_t pixelFormat = 0;
    std::uint32_t dataType = 0;
    std::uint32_t packing = 0;
    std::uint32_t mipmapCount = 0;
    std::uint32_t mipmaps[mostMipmaps] = {};
};

/// What stands at the end of the file.
struct Trailer
{
    static constexpr std::uint64_t expectedMagic = 0x76665363656e6532;

    std::uint64_t magic = expectedMagic;
    std::uint64_t textsAt = 0;
    std::uint64_t partsAt = 0;
    std::uint64_t sceneAt = 0;
    std::uint64_t sceneSize = 0; ///< 0 for none
};

/// Smaller ones travel with the rest of the scene.
constexpr std::size_t smallestPart = 256;

/// Smaller ones are not worth copying from another process.
constexpr std::size_t smallestKept = std::size_t(64) * 1024;

/// So much is copied from another process at once: it is still in the cache when it is put where it belongs.
constexpr std::size_t takenAtOnce = std::size_t(128) * 1024;

/// Bytes that are worth a thread of their own to copy.
constexpr std::uint64_t worthAThread = std::uint64_t(8) * 1024 * 1024;

constexpr int widestImage = 1 << 16;

volatile const std::uint64_t probed = 0x76664c6f6f6b6564;

/// Reads from memory that it does not own.
class MemoryBuffer : public std::streambuf
{
public:
    MemoryBuffer(const char* data, std::size_t size)
    {
        char* begin = const_cast<char*>(data);
        setg(begin, begin, begin + size);
    }

protected:
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction, std::ios_base::openmode) override
    {
        const off_type size = egptr() - eback();
        if (direction == std::ios_base::cur)
            offset += gptr() - eback();
        else if (direction == std::ios_base::end)
            offset += size;
        if (offset < 0 || offset > size)
            return pos_type(off_type(-1));
        setg(eback(), eback() + offset, egptr());
        return pos_type(offset);
    }

    pos_type seekpos(pos_type position, std::ios_base::openmode mode) override
    {
        return seekoff(position, std::ios_base::beg, mode);
    }
};

osgDB::ReaderWriter* sceneFormat()
{
    return osgDB::Registry::instance()->getReaderWriterForExtension("osgb");
}

/// @return the scene without what travels apart, empty when it cannot be written
std::string writeRest(const osg::Node& scene)
{
    std::ostringstream stream;
    const osg::ref_ptr<osgDB::Options> options = new osgDB::Options("WriteImageHint=IncludeData");
    osgDB::ReaderWriter* format = sceneFormat();
    if (!format || !format->writeNode(scene, stream, options).success())
        return std::string();
    return stream.str();
}

/// Returns the bytes of a level of an image, 0 for what is no image. More than four gigabytes are beyond what
/// OpenSceneGraph counts.
std::uint64_t bytesOf(const ImagePart& part, std::uint32_t level)
{
    const bool isSized = part.width > 0 && part.height > 0 && part.depth > 0 && part.width <= widestImage &&
                         part.height <= widestImage && part.depth <= widestImage && part.packing > 0 &&
                         part.packing <= 8;
    if (!isSized || level > mostMipmaps)
        return 0;
    const auto reduced = [level](std::int32_t size) { return std::max(1, size >> level); };
    const int packing = static_cast<int>(part.packing);
    const std::uint64_t pixels =
        static_cast<std::uint64_t>(reduced(part.width)) * static_cast<std::uint64_t>(reduced(part.height));
    const std::uint64_t bytesOfPixel =
        osg::Image::computePixelSizeInBits(part.pixelFormat, part.dataType) / 8 + 1;
    if (pixels > 0xffffffffu / bytesOfPixel / static_cast<std::uint64_t>(reduced(part.depth)))
        return 0;
    return osg::Image::computeImageSizeInBytes(reduced(part.width), reduced(part.height), reduced(part.depth),
                                               part.pixelFormat, part.dataType, packing);
}

/// Returns whether the levels of an image lie one behind the other within its bytes.
bool isSound(const ImagePart& part)
{
    if (part.mipmapCount > mostMipmaps)
        return false;
    std::uint64_t end = bytesOf(part, 0);
    bool isInside = end > 0 && end <= part.size;
    for (std::uint32_t i = 0; i < part.mipmapCount && isInside; ++i) {
        const std::uint64_t size = bytesOf(part, i + 1);
        isInside = size > 0 && part.mipmaps[i] >= end && part.mipmaps[i] + size <= part.size;
        end = part.mipmaps[i] + size;
    }
    return isInside;
}

/// Fills in what the bytes of an image mean. @return false for an image that cannot be sent
bool describe(const osg::Image& image, ImagePart& part)
{
    if ((image.getRowLength() != 0 && image.getRowLength() != image.s()) ||
        image.getNumMipmapLevels() > mostMipmaps)
        return false;
    part.width = image.s();
    part.height = image.t();
    part.depth = image.r();
    part.internalFormat = image.getInternalTextureFormat();
    part.pixelFormat = image.getPixelFormat();
    part.dataType = image.getDataType();
    part.packing = image.getPacking();
    part.size = image.getTotalSizeInBytesIncludingMipmaps();
    for (const unsigned int offset : image.getMipmapLevels())
        part.mipmaps[part.mipmapCount++] = offset;
    return isSound(part);
}

template <class Record>
void putRecords(TransferSink& sink, const std::vector<Record>& records)
{
    const std::uint64_t count = records.size();
    sink.put(&count, sizeof(count));
    sink.put(records.data(), records.size() * sizeof(Record));
}

bool isLargeKind(const osg::BufferData& data)
{
    return dynamic_cast<const osg::Vec3Array*>(&data) || dynamic_cast<const osg::Vec2Array*>(&data) ||
           dynamic_cast<const osg::Vec4Array*>(&data) || dynamic_cast<const osg::DrawElementsUInt*>(&data);
}

} // namespace

void loadSceneFormat()
{
    writeRest(*osg::ref_ptr<osg::Node>(new osg::Group)); // loads what knows the classes of scenes
}

long long SceneSender::send(ReadOutcome& outcome, LargeArrays place)
{
    m_kept.clear();
    if (ftruncate(m_file, 0) != 0)
        return 0;
    TransferSink sink(m_file);
    std::vector<Part> arrays;
    std::vector<ImagePart> images;
    std::string rest;
    const auto put = [&](Part& part, const void* data, osg::Referenced& owner, bool mayBeKept) {
        if (place == LargeArrays::InThisProcess && mayBeKept && part.size >= smallestKept) {
            part.address = reinterpret_cast<std::uintptr_t>(data);
            m_kept.emplace_back(&owner);
            return;
        }
        sink.align();
        part.offset = static_cast<std::uint64_t>(sink.offset());
        sink.put(data, part.size);
    };
    if (outcome.scene) {
        FindBlocks finder;
        outcome.scene->accept(finder);
        DetachBlocks detach;
        for (std::size_t i = 0; i < finder.arrays.size(); ++i) {
            osg::BufferData& data = *finder.arrays[i];
            Part part;
            part.index = i;
            part.size = data.getTotalDataSize();
            if (part.size < smallestPart || !data.getDataPointer())
                continue;
            put(part, data.getDataPointer(), data, isLargeKind(data));
            arrays.push_back(part);
            detach.add(data);
        }
        for (std::size_t i = 0; i < finder.images.size(); ++i) {
            osg::Image& image = *finder.images[i];
            ImagePart part;
            part.index = i;
            if (!image.data())
                continue;
            if (!describe(image, part)) {
                outcome.warnings.push_back("an image that is too large, or of an unusual kind, is left out");
                detach.drop(image);
                continue;
            }
            put(part, image.data(), image, true);
            images.push_back(part);
            detach.add(image);
        }
        outcome.scene->accept(detach);
        rest = writeRest(*outcome.scene);
        if (rest.empty())
            outcome.reason = "it cannot be handed on by the process that read it";
    }
    Trailer trailer;
    trailer.textsAt = static_cast<std::uint64_t>(sink.offset());
    sink.put(outcome.reason);
    sink.put(outcome.warnings);
    sink.put(outcome.details);
    sink.put(outcome.files);
    trailer.partsAt = static_cast<std::uint64_t>(sink.offset());
    putRecords(sink, arrays);
    putRecords(sink, images);
    trailer.sceneAt = static_cast<std::uint64_t>(sink.offset());
    trailer.sceneSize = rest.size();
    sink.put(rest.data(), rest.size());
    sink.put(&trailer, sizeof(trailer));
    return sink.isGood() && vfIsolation::sealContents(m_file) ? sink.offset() : 0;
}

namespace {

/// Copies memory of another process. @return whether all of it was there
bool look(pid_t process, std::uint64_t address, void* target, std::size_t size)
{
    auto* bytes = static_cast<char*>(target);
    while (size > 0) {
        const iovec here = {bytes, size};
        // NOLINTNEXTLINE(performance-no-int-to-ptr): it is none in this process
        const iovec there = {reinterpret_cast<void*>(address), size};
        const ssize_t taken = process_vm_readv(process, &here, 1, &there, 1, 0);
        if (taken <= 0)
            return false;
        bytes += taken;
        address += static_cast<std::uint64_t>(taken);
        size -= static_cast<std::size_t>(taken);
    }
    return true;
}

/// @return how many bytes of addresses a process has in use
std::uint64_t addressesOf(pid_t process)
{
    FILE* file = std::fopen(("/proc/" + std::to_string(process) + "/statm").c_str(), "re");
    unsigned long pages = 0;
    if (file) {
        if (std::fscanf(file, "%lu", &pages) != 1)
            pages = 0;
        std::fclose(file);
    }
    return std::uint64_t(pages) * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

void resize(osg::BufferData& data, unsigned int count)
{
    if (auto* array = dynamic_cast<osg::Array*>(&data))
        array->resizeArray(count);
    else
        dynamic_cast<osg::DrawElements&>(data).resizeElements(count);
}

/// Calls the work with an array as what it is, where it is of a kind of which large models have many.
/// @return what the work returns; false for another kind
template <class Work>
bool withLargeKind(osg::BufferData& data, Work work)
{
    if (auto* points = dynamic_cast<osg::Vec3Array*>(&data))
        return work(*points);
    if (auto* places = dynamic_cast<osg::Vec2Array*>(&data))
        return work(*places);
    if (auto* colors = dynamic_cast<osg::Vec4Array*>(&data))
        return work(*colors);
    if (auto* indices = dynamic_cast<osg::DrawElementsUInt*>(&data))
        return work(*indices);
    return false;
}

/// Puts the arrays and images of a transfer where they belong.
class Arrival
{
public:
    Arrival(const TransferSource& source, pid_t process, const std::atomic<bool>& stop)
        : m_source(source), m_process(process), m_stop(stop)
    {}

    /// Takes the list of what there is. @return false when it cannot be right
    bool takeParts(std::uint64_t offset)
    {
        if (!m_source.takeRecords(offset, m_arrays) || !m_source.takeRecords(offset, m_images))
            return false;
        std::uint64_t left = m_process != 0 ? addressesOf(m_process) : 0; // no sound transfer has more
        const auto isThere = [&](const Part& part) {
            if (part.address == 0 || m_process == 0)
                return part.address == 0 && m_source.at(part.offset, part.size) != nullptr;
            const bool isLeft = part.size <= left;
            left -= isLeft ? part.size : 0;
            return isLeft;
        };
        return std::all_of(m_arrays.begin(), m_arrays.end(), isThere) &&
               std::all_of(m_images.begin(), m_images.end(), isThere) && areDifferent(m_arrays) &&
               areDifferent(m_images);
    }

    /// @return whether everything got what it is to have
    bool fill(const FindBlocks& found)
    {
        const auto isKnown = [](const auto& parts, std::size_t count) {
            return std::all_of(parts.begin(), parts.end(),
                               [count](const Part& part) { return part.index < count; });
        };
        if (!isKnown(m_arrays, found.arrays.size()) || !isKnown(m_images, found.images.size()))
            return false;
        const bool areFilled = inTwoThreads([&](std::size_t i) {
            const Part& part = m_arrays[i];
            osg::BufferData& data = *found.arrays[part.index];
            if (m_stop || !fillArray(data, part) || data.getTotalDataSize() != part.size)
                return false;
            data.dirty();
            return true;
        });
        std::size_t withData = 0;
        for (const osg::ref_ptr<osg::Image>& image : found.images)
            withData += image->data() != nullptr;
        // An image that did not travel apart has no data.
        return areFilled && withData == m_images.size() &&
               std::all_of(m_images.begin(), m_images.end(), [&](const ImagePart& part) {
                   return !m_stop && fillImage(*found.images[part.index], part);
               });
    }

    /// Returns the number of images for which there was no memory.
    unsigned int leftOut() const { return m_leftOut; }

private:
    template <class Record>
    static bool areDifferent(const std::vector<Record>& parts)
    {
        std::set<std::uint64_t> seen;
        return std::all_of(parts.begin(), parts.end(),
                           [&seen](const Part& part) { return seen.insert(part.index).second; });
    }

    /// Works on even and odd arrays at the same time where there are enough bytes for it: as a rule there are two large
    /// ones, the points and their normals. @return whether all succeeded
    template <class Work>
    bool inTwoThreads(Work work) const
    {
        const auto each = [&](std::size_t first, std::size_t step) {
            for (std::size_t i = first; i < m_arrays.size(); i += step) {
                if (!work(i))
                    return false;
            }
            return true;
        };
        std::uint64_t size = 0;
        for (const Part& part : m_arrays)
            size += std::min(part.size, worthAThread);
        if (size < worthAThread)
            return each(0, 1);
        auto odd = std::async(sideBySide, each, 1, 2);
        const bool isDone = each(0, 2);
        return odd.get() && isDone;
    }

    /// Large arrays are written once, and not filled with zeros before; the others are made as large first.
    bool fillArray(osg::BufferData& data, const Part& part) const
    {
        if (isLargeKind(data))
            return withLargeKind(data, [&](auto& array) { return append(array, part); });
        if (part.address != 0)
            return false;
        resize(data, 1);
        const std::uint64_t element = data.getTotalDataSize();
        if (element == 0 || part.size % element != 0 || part.size / element > 0xffffffffu)
            return false;
        resize(data, static_cast<unsigned int>(part.size / element));
        return data.getTotalDataSize() == part.size &&
               copy(const_cast<void*>(data.getDataPointer()), part); // which is that of this process
    }

    template <class Array>
    bool append(Array& array, const Part& part) const
    {
        using Element = typename Array::value_type;
        if (part.size % sizeof(Element) != 0)
            return false;
        const std::size_t count = part.size / sizeof(Element);
        array.clear();
        reserveLarge(array.asVector(), count);
        if (part.address == 0) {
            const auto* elements = reinterpret_cast<const Element*>(m_source.at(part.offset, part.size));
            array.insert(array.end(), elements, elements + count);
            return true;
        }
        std::vector<Element> some(std::min(takenAtOnce / sizeof(Element), count));
        for (std::size_t done = 0; done < count && !m_stop; done += some.size()) {
            some.resize(std::min(some.size(), count - done));
            if (!look(m_process, part.address + done * sizeof(Element), some.data(),
                      some.size() * sizeof(Element)))
                return false;
            array.insert(array.end(), some.begin(), some.end());
        }
        return !m_stop;
    }

    bool copy(void* target, const Part& part) const
    {
        if (part.address == 0) {
            std::memcpy(target, m_source.at(part.offset, part.size), part.size);
            return true;
        }
        for (std::uint64_t done = 0; done < part.size; done += takenAtOnce) {
            const std::size_t some = std::min<std::uint64_t>(takenAtOnce, part.size - done);
            if (m_stop || !look(m_process, part.address + done, static_cast<char*>(target) + done, some))
                return false;
        }
        return true;
    }

    bool fillImage(osg::Image& image, const ImagePart& part)
    {
        if (!isSound(part))
            return false;
        // OpenSceneGraph deletes it with the image.
        auto* data = new (std::nothrow) unsigned char[part.size];
        if (!data) {
            ++m_leftOut;
            return true;
        }
        if (!copy(data, part)) {
            delete[] data;
            return false;
        }
        image.setImage(part.width, part.height, part.depth, part.internalFormat, part.pixelFormat,
                       part.dataType, data, osg::Image::USE_NEW_DELETE, static_cast<int>(part.packing));
        image.setMipmapLevels({part.mipmaps, part.mipmaps + part.mipmapCount});
        return image.getTotalSizeInBytesIncludingMipmaps() == part.size;
    }

    const TransferSource& m_source;
    pid_t m_process;
    const std::atomic<bool>& m_stop;
    std::vector<Part> m_arrays;
    std::vector<ImagePart> m_images;
    unsigned int m_leftOut = 0;
};

/// @return null for a scene that an honest reader does not send
osg::ref_ptr<osg::Node> takeScene(const TransferSource& source, const Trailer& trailer, Arrival& arrival)
{
    const char* rest = source.at(trailer.sceneAt, trailer.sceneSize);
    osgDB::ReaderWriter* format = sceneFormat();
    if (!rest || !format || !arrival.takeParts(trailer.partsAt))
        return nullptr;
    MemoryBuffer buffer(rest, trailer.sceneSize);
    std::istream stream(&buffer);
    const FileGate::Shut shut; // everything the scene needs has come with it
    osg::ref_ptr<osg::Node> scene = format->readNode(stream, nullptr).getNode();
    if (!scene || !isPassive(*scene))
        return nullptr;
    FindBlocks finder;
    scene->accept(finder);
    if (!arrival.fill(finder) || makeSceneSound(*scene) > 0)
        return nullptr;
    const osg::BoundingSphere& bound = scene->getBound();
    return std::isfinite(bound.radius()) && std::isfinite(bound.center().length2()) ? scene : nullptr;
}

ReadOutcome take(int file, long long size, const LargeArrayOwner& owner, const std::atomic<bool>& stop)
{
    ReadOutcome outcome;
    const TransferSource source(file, size);
    Trailer trailer;
    std::uint64_t at = source.size() - sizeof(trailer); // beyond the end where there is less
    const bool isWhole =
        source.take(at, &trailer, sizeof(trailer)) && trailer.magic == Trailer::expectedMagic &&
        source.take(trailer.textsAt, outcome.reason) && source.take(trailer.textsAt, outcome.warnings) &&
        source.take(trailer.textsAt, outcome.details) && source.take(trailer.textsAt, outcome.files);
    if (isWhole && trailer.sceneSize > 0) {
        Arrival arrival(source, owner.process, stop);
        outcome.scene = takeScene(source, trailer, arrival);
        if (arrival.leftOut() > 0)
            outcome.warnings.push_back("there is not enough memory for all of its images");
    }
    if (!isWhole || (!outcome.scene && outcome.reason.empty()))
        outcome.reason = notTransferred;
    return outcome;
}

} // namespace

std::uint64_t memoryProbe()
{
    return reinterpret_cast<std::uintptr_t>(&probed);
}

bool canReadMemoryOf(pid_t process, std::uint64_t probe)
{
    std::uint64_t seen = 0;
    return look(process, probe, &seen, sizeof(seen)) && seen == probed;
}

ReadOutcome receiveScene(int file, long long size, const LargeArrayOwner& owner,
                         const std::atomic<bool>& stop)
{
    ReadOutcome outcome;
    try {
        return take(file, size, owner, stop);
    } catch (const std::bad_alloc&) {
        outcome.reason = "there is not enough memory";
    } catch (const std::exception&) {
        outcome.reason = notTransferred;
    }
    return outcome;
}

} // namespace vfViewer
