// SPDX-License-Identifier: MIT
#include <velaforge/base/LaunchPolicy.h>
#include <velaforge/formats/internal/FlatArrays.h>
#include <velaforge/formats/internal/FlatScene.h>
#include <velaforge/formats/internal/SceneTransfer.h>
#include <velaforge/formats/internal/TransferBytes.h>
#include <velaforge/formats/internal/TransferParts.h>
#include <velaforge/formats/internal/ValidateScene.h>

#include <osg/Geometry>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <exception>
#include <new>

namespace vfFormats {

namespace {

/// An array of so many bytes is worth a thread of its own.
constexpr std::uint64_t worthAThread = std::uint64_t(2) * 1024 * 1024;

/// So much of an image is copied before it is looked whether to stop.
constexpr std::size_t copiedAtOnce = std::size_t(1024) * 1024;

osg::ref_ptr<osg::Image> whitePixel()
{
    osg::ref_ptr<osg::Image> pixel = new osg::Image;
    pixel->allocateImage(1, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE);
    std::memset(pixel->data(), 0xff, 4);
    return pixel;
}

/// Makes a scene of the bytes of a transfer.
class Arrival
{
public:
    Arrival(const TransferSource& source, const LargeArrayOwner& owner, const std::atomic<bool>& stop)
        : m_source(source), m_owner(owner), m_stop(stop)
    {}

    /// @return null for a scene that an honest reader does not send
    osg::ref_ptr<osg::Node> take(const Trailer& trailer)
    {
        FlatSceneView lists;
        std::uint64_t at = trailer.sceneAt;
        const bool isRight = takeNames(at) && m_source.takeRecords(at, m_arrays) &&
                             m_source.takeRecords(at, m_images) && takeLists(at, lists) &&
                             areValid(trailer.textsAt) && checkLists(lists) && fillArrays() && fillImages();
        const osg::ref_ptr<osg::Node> scene = isRight ? makeScene(lists, m_tables) : nullptr;
        if (!scene || m_stop || validateScene(*scene) > 0)
            return nullptr;
        const osg::BoundingSphere& bound = scene->getBound();
        return std::isfinite(bound.radius()) && std::isfinite(bound.center().length2()) ? scene : nullptr;
    }

    /// Returns the number of images for which there was no memory.
    unsigned int leftOut() const { return m_leftOut; }

private:
    bool takeNames(std::uint64_t& at)
    {
        std::vector<std::uint32_t> lengths;
        if (!m_source.takeRecords(at, lengths) || lengths.empty() || lengths[0] != 0)
            return false;
        m_tables.texts.reserve(lengths.size());
        for (const std::uint32_t length : lengths) {
            const char* text = m_source.at(at, length);
            if (!text || length > longestText)
                return false;
            m_tables.texts.emplace_back(text, length);
            at += length;
        }
        return true;
    }

    bool takeLists(std::uint64_t& at, FlatSceneView& lists) const
    {
        std::array<ListPart, flatLists> parts;
        if (!m_source.take(at, parts.data(), sizeof(parts)))
            return false;
        at = TransferSource::aligned(at);
        for (std::size_t i = 0; i < flatLists; ++i) {
            const std::uint64_t size = std::uint64_t(parts[i].words) * sizeof(std::uint32_t);
            const char* words = m_source.at(at, size);
            if (!words)
                return false;
            lists.lists[i] = {parts[i].records, reinterpret_cast<const std::uint32_t*>(words),
                              parts[i].words};
            at += size;
        }
        return true;
    }

    /// Returns whether arrays and images are as they should be: those among the bytes lie one behind the other before @p end,
    /// and the others do not have more bytes than their owner.
    bool areValid(std::uint64_t end) const
    {
        std::uint64_t left = m_owner.size;
        std::uint64_t begin = 0;
        const auto isThere = [&](const PlacePart& part) {
            if (part.size == 0)
                return true;
            if (part.address != 0) {
                const bool isLeft = part.size <= left;
                left -= isLeft ? part.size : 0;
                return isLeft;
            }
            if (part.offset < begin || part.offset > end || part.size > end - part.offset ||
                part.offset != TransferSource::aligned(part.offset))
                return false;
            begin = part.offset + part.size;
            return m_source.at(part.offset, part.size) != nullptr;
        };
        const std::size_t texts = m_tables.texts.size();
        return std::all_of(m_arrays.begin(), m_arrays.end(),
                           [&](const ArrayPart& part) {
                               return isThere(part) && isValid(part) && part.name < texts;
                           }) &&
               std::all_of(m_images.begin(), m_images.end(), [&](const ImagePart& part) {
                   return isThere(part) && isValid(part) && part.name < texts && part.fileName < texts;
               });
    }

    /// Checks the lists before anything is made.
    bool checkLists(const FlatSceneView& lists)
    {
        std::vector<osg::ref_ptr<osg::BufferData>> prototypes;
        for (const FlatArrayKind& kind : flatArrays())
            prototypes.push_back(kind.make());
        for (const ArrayPart& part : m_arrays)
            m_tables.blocks.push_back(prototypes[part.kind]);
        m_tables.images.assign(m_images.size(), new osg::Image);
        return checkScene(lists, m_tables);
    }

    /// As a rule there are two large ones, the points and their normals: two threads take turns at them. What is small is not
    /// worth it: threads that ask for memory in turns are in each other's way.
    bool fillArrays()
    {
        std::vector<std::size_t> large;
        for (std::size_t i = 0; i < m_arrays.size(); ++i) {
            const osg::ref_ptr<osg::BufferData> data = makeArray(m_arrays[i]);
            m_tables.blocks[i] = data;
            if (m_arrays[i].size >= worthAThread)
                large.push_back(i);
            else if (!fill(*data, m_arrays[i]))
                return false;
        }
        const auto fillEach = [this, &large](std::size_t first) {
            for (std::size_t i = first; i < large.size(); i += 2) {
                if (!fill(*m_tables.blocks[large[i]], m_arrays[large[i]]))
                    return false;
            }
            return true;
        };
        if (large.size() < 2)
            return fillEach(0);
        auto odd = std::async(vfBase::asyncOrDeferred, fillEach, 1);
        const bool isDone = fillEach(0);
        return odd.get() && isDone;
    }

    osg::ref_ptr<osg::BufferData> makeArray(const ArrayPart& part) const
    {
        osg::ref_ptr<osg::BufferData> data = flatArrays()[part.kind].make();
        data->setDataVariance(static_cast<osg::Object::DataVariance>(part.variance));
        if (part.name != 0)
            data->setName(m_tables.texts[part.name]);
        if (osg::Array* array = data->asArray()) {
            array->setBinding(static_cast<osg::Array::Binding>(part.binding));
            array->setNormalize(part.isNormalized != 0);
            array->setPreserveDataType(part.isPreserved != 0);
        } else if (osg::PrimitiveSet* primitives = data->asPrimitiveSet()) {
            primitives->setMode(part.mode);
        }
        if (auto* range = dynamic_cast<osg::DrawArrays*>(data.get()))
            range->set(part.mode, part.first, part.count);
        else if (auto* lengths = dynamic_cast<osg::DrawArrayLengths*>(data.get()))
            lengths->setFirst(part.first);
        return data;
    }

    bool fill(osg::BufferData& data, const ArrayPart& part) const
    {
        const FlatArrayKind& kind = flatArrays()[part.kind];
        if (part.size == 0)
            return true;
        if (m_stop || !kind.fill(data, part.size / kind.elementSize, bytesOf(part)))
            return false;
        data.dirty();
        return true;
    }

    FlatBytes bytesOf(const PlacePart& part) const
    {
        FlatBytes bytes;
        if (part.address == 0)
            bytes.here = m_source.at(part.offset, part.size);
        bytes.owner = &m_owner;
        bytes.address = part.address;
        bytes.stop = &m_stop;
        return bytes;
    }

    bool fillImages()
    {
        for (std::size_t i = 0; i < m_images.size(); ++i) {
            m_tables.images[i] = new osg::Image;
            if (!fill(m_tables.images[i], m_images[i]))
                return false;
        }
        return true;
    }

    bool fill(osg::ref_ptr<osg::Image>& image, const ImagePart& part)
    {
        // OpenSceneGraph deletes it with the image.
        auto* data = new (std::nothrow) unsigned char[part.size];
        if (!data) {
            ++m_leftOut;
            image = whitePixel();
        } else {
            image->setImage(part.width, part.height, part.depth, part.internalFormat, part.pixelFormat,
                            part.dataType, data, osg::Image::USE_NEW_DELETE, static_cast<int>(part.packing));
            image->setMipmapLevels({part.mipmaps, part.mipmaps + part.mipmapCount});
        }
        image->setName(m_tables.texts[part.name]);
        image->setFileName(m_tables.texts[part.fileName]);
        image->setDataVariance(static_cast<osg::Object::DataVariance>(part.variance));
        image->setOrigin(part.isTopFirst ? osg::Image::TOP_LEFT : osg::Image::BOTTOM_LEFT);
        const FlatBytes bytes = bytesOf(part);
        for (std::uint64_t done = 0; data && done < part.size; done += copiedAtOnce) {
            if (!bytes.copy(data + done, done, std::min<std::uint64_t>(copiedAtOnce, part.size - done)))
                return false;
        }
        return !data || image->getTotalSizeInBytesIncludingMipmaps() == part.size;
    }

    const TransferSource& m_source;
    const LargeArrayOwner& m_owner;
    const std::atomic<bool>& m_stop;
    std::vector<ArrayPart> m_arrays;
    std::vector<ImagePart> m_images;
    FlatTables m_tables;
    unsigned int m_leftOut = 0;
};

ReadOutcome take(const TransferSource& source, const LargeArrayOwner& owner, const std::atomic<bool>& stop)
{
    ReadOutcome outcome;
    Trailer trailer;
    std::uint64_t at = source.size() - sizeof(trailer); // beyond the end where there is less
    const bool isWhole =
        source.take(at, &trailer, sizeof(trailer)) && trailer.magic == Trailer::expectedMagic;
    std::uint64_t texts = trailer.textsAt;
    const bool hasTexts = isWhole && source.take(texts, outcome.reason) &&
                          source.take(texts, outcome.warnings) && source.take(texts, outcome.details) &&
                          source.take(texts, outcome.files) && source.take(texts, outcome.missed);
    if (hasTexts && outcome.reason.empty() && trailer.hasScene != 0) {
        Arrival arrival(source, owner, stop);
        outcome.scene = arrival.take(trailer);
        if (arrival.leftOut() > 0)
            outcome.warnings.emplace_back("there is not enough memory for all of its images");
    }
    if (!hasTexts || (!outcome.scene && outcome.reason.empty()))
        outcome.reason = notTransferred;
    return outcome;
}

template <class Work>
ReadOutcome guarded(Work work)
{
    ReadOutcome outcome;
    try {
        return work();
    } catch (const std::bad_alloc&) {
        outcome.reason = "there is not enough memory";
    } catch (const std::exception&) {
        outcome.reason = notTransferred;
    }
    return outcome;
}

} // namespace

ReadOutcome receiveScene(const void* bytes, std::size_t size, const LargeArrayOwner& owner,
                         const std::atomic<bool>& stop)
{
    return guarded([&] { return take(TransferSource(bytes, size), owner, stop); });
}

ReadOutcome receiveScene(const void* bytes, std::size_t size)
{
    const std::atomic<bool> stop{false};
    return receiveScene(bytes, size, {}, stop);
}

} // namespace vfFormats
